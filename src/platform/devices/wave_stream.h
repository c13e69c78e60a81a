// SPDX-License-Identifier: GPL-2.0-or-later
// What lies between a sound device and the main thread: the driver moves bytes at one end, on a
// thread of its own and in its own time, the main thread at the other. Neither end locks anything.
//
// A device in real time goes on when the bytes run out: an output plays silence, an input drops
// what has no room, and both are counted. A file in the place of a device knows no time, so there
// the driver's end waits.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/devices/byte_ring.h"

namespace corvelin {

class WaveStream {
 public:
  explicit WaveStream(std::size_t room) : ring_(room) {}
  virtual ~WaveStream() = default;
  WaveStream(const WaveStream&) = delete;
  WaveStream& operator=(const WaveStream&) = delete;

  /// Has `transfer` wait where bytes or room are missing. To be called before the first of them.
  void wait_in_transfer() { waits_ = true; }

  /// Moves the bytes of one period to or from the device. For the driver's thread.
  virtual void transfer(std::span<std::uint8_t> period) = 0;

  /// Lets the driver's end wait no more, so that the device can be closed.
  void cancel();

  /// Wakes the main thread when `moved` has reached this count. It may have by now: look again
  /// behind this.
  void wake_at(std::uint64_t count) { wake_at_.store(count); }

  /// Has a waiting driver look again. The main thread does so before it waits itself.
  void tell_change();

  /// How many bytes have been played, or recorded, in all.
  [[nodiscard]] virtual std::uint64_t moved() const = 0;

 protected:
  // For the driver's thread.
  void wake_if_due();
  [[nodiscard]] std::uint32_t changes() const { return changes_.load(); }
  [[nodiscard]] bool waits() const { return waits_; }
  bool wait_for_change(std::uint32_t seen) const;  // false when nobody waits here

  ByteRing ring_;

 private:
  static constexpr std::uint64_t never = UINT64_MAX;

  bool waits_ = false;
  std::atomic<bool> is_cancelled_ = false;
  std::atomic<std::uint32_t> changes_ = 0;  // that a waiting driver has to look at
  std::atomic<std::uint64_t> wake_at_ = never;
};

class OutputStream : public WaveStream {
 public:
  using WaveStream::WaveStream;

  void transfer(std::span<std::uint8_t> period) override;

  /// Adds as many bytes as there is room for, and returns how many. `is_end`: nothing is to follow
  /// them, so that running dry behind them is no underrun.
  std::size_t add(std::span<const std::uint8_t> bytes, bool is_end);

  /// Drops what has not been played.
  void discard();

  /// What the device has taken in earlier periods. The last period may be on its way yet.
  [[nodiscard]] std::uint64_t moved() const override { return played_.load(); }
  [[nodiscard]] std::uint64_t added() const { return ring_.written(); }

  /// The periods that had to be filled up with silence in the middle of the sound.
  [[nodiscard]] std::uint32_t underruns() const { return underruns_.load(); }

 private:
  enum class Flow : std::uint8_t { idle, flowing, ending };

  void tell_played();  // for the driver's thread

  std::atomic<std::uint64_t> played_ = 0;
  std::atomic<std::uint64_t> wanted_ = 0;  // what a waiting driver needs to be added, in all
  std::atomic<Flow> flow_ = Flow::idle;
  std::atomic<std::uint32_t> underruns_ = 0;
};

class InputStream : public WaveStream {
 public:
  using WaveStream::WaveStream;

  void transfer(std::span<std::uint8_t> period) override;

  std::size_t take(std::span<std::uint8_t> bytes);

  [[nodiscard]] std::uint64_t moved() const override { return ring_.written(); }
  [[nodiscard]] std::uint64_t taken() const { return ring_.taken(); }

  /// Bytes that the device recorded and that nobody fetched in time.
  [[nodiscard]] std::uint64_t lost() const { return lost_.load(); }

 private:
  std::atomic<std::uint64_t> lost_ = 0;
};

/// The loudness of all outputs, linear: 65535 leaves the samples as they are.
void wave_volume(std::uint16_t level);

/// A descriptor that becomes readable when a stream wakes the main thread.
int wave_wake_descriptor();
void wake_main_thread();
void forget_wake();

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Sound devices, as their users on the main thread see them. A user lends an open device buffers;
// each comes back once, in order, in an event, when it has been played or filled. Events come out
// of `deliver_wave_events` alone, which whoever waits for the user calls: a window's event loop or
// the loop of a run without one.
//
// Which library reaches the devices is the wave system's business. Without it, or without a device,
// opening fails with the reason, which is an ordinary condition.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/devices/wave_format.h"
#include "platform/devices/wave_stream.h"

namespace corvelin {

/// A buffer that is lent to a device. It stays where it is, and untouched, until it is back.
struct WaveHeader {
  std::vector<std::uint8_t> data;  // the room for its samples
  std::size_t length = 0;          // bytes of it that are to be played, or that were recorded
  std::uint32_t user = 0;          // what its owner notes on it
  bool is_end = false;             // output: nothing is to follow it
  bool was_played = false;         // output: to its end; a reset gives it back without
};

/// What a device tells its user, who may close it or open it again in there.
struct WaveEvents {
  std::function<void(WaveHeader& header)> buffer_done;
  /// The device is gone or does not move any more. What it still has does not come back.
  std::function<void()> lost;
};

enum class WaveDirection : std::uint8_t { output, input };

/// A device that the wave system has opened. It transfers until it is destroyed.
class WaveDriver {
 public:
  virtual ~WaveDriver() = default;
  [[nodiscard]] virtual bool is_lost() const = 0;
};

/// The library behind all devices.
class WaveSystem {
 public:
  virtual ~WaveSystem() = default;

  /// The names of the devices there are; empty when they can't be told.
  virtual std::vector<std::string> device_names(WaveDirection direction) = 0;

  /// Opens a device, 0 for the system's choice, n for the one of the n-th name, and starts it. Null
  /// and a `reason` for the user when that fails.
  virtual std::unique_ptr<WaveDriver> open(WaveDirection direction, std::uint32_t device,
                                           const WaveFormat& format,
                                           std::shared_ptr<WaveStream> stream,
                                           std::string& reason) = 0;
};

WaveSystem& wave_system();

/// Puts another system in the place of the default one; null for the default. Nothing is open.
void install_wave_system(WaveSystem* system);

using WaveClock = std::chrono::steady_clock;

/// What outputs and inputs have in common.
class WaveDevice {
 public:
  WaveDevice(const WaveDevice&) = delete;
  WaveDevice& operator=(const WaveDevice&) = delete;

  [[nodiscard]] bool is_open() const { return driver_ != nullptr; }

  /// Closes the device, if it is open. What it has is the owners' again, without an event.
  void close();

 protected:
  WaveDevice() = default;
  virtual ~WaveDevice() { close(); }

  std::string open_driver(WaveDirection direction, std::uint32_t device, const WaveFormat& format,
                          const std::shared_ptr<WaveStream>& stream, WaveEvents events);
  void look(WaveClock::time_point now);
  void arm();
  [[nodiscard]] std::uint64_t moved() const { return moved_; }

 private:
  friend bool deliver_wave_events(WaveClock::time_point now);

  bool deliver_one();

  [[nodiscard]] virtual bool holds_buffers() const = 0;
  virtual WaveHeader* take_done() = 0;  // the next buffer to be given back, or null
  [[nodiscard]] virtual std::uint64_t wake_place() const = 0;  // for `WaveStream::wake_at`
  virtual void drop_buffers() = 0;

  std::shared_ptr<WaveStream> stream_;
  std::unique_ptr<WaveDriver> driver_;
  WaveEvents events_;
  std::uint64_t moved_ = 0;  // bytes that the device has surely moved
  WaveClock::duration stalled_ = {};
  WaveClock::time_point last_look_;
  bool is_lost_ = false;
  bool is_loss_told_ = false;
};

class WaveOutput : public WaveDevice {
 public:
  ~WaveOutput() override { close(); }

  /// Opens a device for buffers of up to `queue_size` bytes in all. It plays silence until it is
  /// given some. Returns why it can't, or an empty text.
  std::string open(std::uint32_t device, const WaveFormat& format, std::size_t queue_size,
                   WaveEvents events);

  /// Lends it the next buffer to be played.
  void write(WaveHeader& header);

  /// Drops what has not been played. All buffers come back, in order.
  void reset();

  /// How often the sound was interrupted as no buffer came in time.
  [[nodiscard]] std::uint32_t underruns() const { return stream_ ? stream_->underruns() : 0; }

 private:
  struct Lent {
    WaveHeader* header = nullptr;
    std::size_t passed_on = 0;  // bytes that the stream has
    bool is_whole = false;      // it has them all
    std::uint64_t end = 0;      // of those bytes in the stream
  };

  void pass_on();
  [[nodiscard]] bool holds_buffers() const override { return !lent_.empty(); }
  WaveHeader* take_done() override;
  [[nodiscard]] std::uint64_t wake_place() const override;
  void drop_buffers() override;

  std::shared_ptr<OutputStream> stream_;
  std::deque<Lent> lent_;
  std::deque<WaveHeader*> reset_;
};

class WaveInput : public WaveDevice {
 public:
  ~WaveInput() override { close(); }

  /// Opens a device, which records at once. `queue_size` bytes are kept while nobody fetches them.
  std::string open(std::uint32_t device, const WaveFormat& format, std::size_t queue_size,
                   WaveEvents events);

  /// Lends it the next buffer to be filled.
  void add(WaveHeader& header);

  /// How many buffers of this size are recorded by now and wait to be fetched.
  [[nodiscard]] std::size_t waiting(std::size_t buffer_size) const;

  /// Fetches what was recorded behind the last buffer that came back. Returns how many bytes.
  std::size_t take_rest(std::span<std::uint8_t> bytes);

  /// Bytes that were lost so far, as they were not fetched in time.
  [[nodiscard]] std::uint64_t lost_bytes() const { return stream_ ? stream_->lost() : 0; }

 private:
  [[nodiscard]] std::size_t recorded() const;
  [[nodiscard]] bool holds_buffers() const override { return !lent_.empty(); }
  WaveHeader* take_done() override;
  [[nodiscard]] std::uint64_t wake_place() const override;
  void drop_buffers() override;

  std::shared_ptr<InputStream> stream_;
  std::deque<WaveHeader*> lent_;
};

/// The names of the devices, the first being number 1.
std::vector<std::string> wave_device_names(WaveDirection direction);

/// Readable when an event is due. While a device is open also call `deliver_wave_events` whenever
/// `wave_look_interval` has passed without: only a look shows that a device is gone.
int wave_event_descriptor();
constexpr std::chrono::milliseconds wave_look_interval(250);

/// Delivers one event. False when none was due.
bool deliver_wave_events(WaveClock::time_point now = WaveClock::now());

}  // namespace corvelin

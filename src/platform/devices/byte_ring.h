// SPDX-License-Identifier: GPL-2.0-or-later
// A ring of bytes between two threads: one writes, the other reads, and neither ever waits.
//
// Bytes are counted from the first one that was ever written, so that a place in the flow keeps its
// number for good.
#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvelin {

class ByteRing {
 public:
  explicit ByteRing(std::size_t least_size) : bytes_(std::bit_ceil(least_size)) {}

  /// Writes as many of the bytes as there is room for, and returns how many. For the writing
  /// thread.
  std::size_t write(std::span<const std::uint8_t> bytes) {
    const std::uint64_t end = written_.load(std::memory_order_relaxed);
    const auto room =
        bytes_.size() - static_cast<std::size_t>(end - taken_.load(std::memory_order_acquire));
    bytes = bytes.first(std::min(bytes.size(), room));
    const std::size_t at = place(end);
    const std::size_t in_front = std::min(bytes.size(), bytes_.size() - at);
    std::copy_n(bytes.begin(), in_front, bytes_.begin() + static_cast<std::ptrdiff_t>(at));
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(in_front), bytes.end(), bytes_.begin());
    written_.store(end + bytes.size());
    return bytes.size();
  }

  /// Has the reader skip all that was written so far. Its room is free when the reader comes by.
  /// For the writing thread.
  void discard() { discarded_.store(written_.load(std::memory_order_relaxed)); }

  /// Reads as many bytes as there are, up to the size of `bytes`, and returns how many. For the
  /// reading thread.
  std::size_t read(std::span<std::uint8_t> bytes) {
    const std::uint64_t begin = next();
    const auto ready = static_cast<std::size_t>(written_.load(std::memory_order_acquire) - begin);
    const std::size_t count = std::min(bytes.size(), ready);
    const std::size_t at = place(begin);
    const std::size_t in_front = std::min(count, bytes_.size() - at);
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at), in_front, bytes.begin());
    std::copy_n(bytes_.begin(), count - in_front,
                bytes.begin() + static_cast<std::ptrdiff_t>(in_front));
    taken_.store(begin + count);
    return count;
  }

  /// How many bytes wait to be read. For the reading thread.
  [[nodiscard]] std::size_t ready() const {
    const std::uint64_t begin = next();
    return static_cast<std::size_t>(written_.load(std::memory_order_acquire) - begin);
  }

  [[nodiscard]] std::uint64_t written() const { return written_.load(); }
  [[nodiscard]] std::uint64_t taken() const { return taken_.load(); }

 private:
  [[nodiscard]] std::size_t place(std::uint64_t offset) const {
    return static_cast<std::size_t>(offset) & (bytes_.size() - 1);
  }

  // Looked up in front of `written_`, which is never behind it.
  [[nodiscard]] std::uint64_t next() const {
    const std::uint64_t discarded = discarded_.load(std::memory_order_acquire);
    return std::max(taken_.load(std::memory_order_relaxed), discarded);
  }

  std::vector<std::uint8_t> bytes_;
  std::atomic<std::uint64_t> written_ = 0;
  std::atomic<std::uint64_t> discarded_ = 0;  // what lies before is not read any more
  std::atomic<std::uint64_t> taken_ = 0;
};

}  // namespace corvelin

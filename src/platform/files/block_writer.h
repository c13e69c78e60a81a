// SPDX-License-Identifier: GPL-2.0-or-later
// Writes a long run of bytes to a file in large blocks that begin and end at round offsets, which
// the file system takes in far more quickly than blocks of any size. The bytes are made in place in
// one buffer while a thread writes those of the other: the system can hold up a write for seconds
// when a disk falls behind, and a window must stay alive meanwhile.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <system_error>

#include "platform/files/file.h"
#include "platform/processes/patient_thread.h"

namespace corvelin {

class BlockWriter {
 public:
  /// `file` is touched by nobody else while something is being written.
  explicit BlockWriter(OutputFile& file);
  ~BlockWriter() { wait(); }
  BlockWriter(const BlockWriter&) = delete;
  BlockWriter& operator=(const BlockWriter&) = delete;

  /// Goes to the end of the file, which is a new one or has been written to by others. What went
  /// before is over and forgotten.
  void begin();

  /// Whether there is room for the next bytes. Waits for it no longer than told.
  [[nodiscard]] bool has_room(std::chrono::milliseconds in_time);

  /// The room, at least `least_room` bytes, when there is any.
  [[nodiscard]] std::span<std::uint8_t> room();
  static constexpr std::size_t least_room = std::size_t{256} * 1024;

  /// Takes the first `size` bytes of the room as made. There may be no more of it then.
  void commit(std::size_t size);

  /// Copies bytes into the room that are made elsewhere, not more than the least room.
  void commit(std::span<const std::uint8_t> bytes);

  /// Has what is still in the buffer written, when there is room. Not done by itself: a writer that
  /// is given up writes no more.
  void flush();

  /// Writes at a place that was written before.
  void write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes);

  /// Whether nothing is being written any more. Waits for that no longer than told.
  [[nodiscard]] bool is_idle(std::chrono::milliseconds in_time);
  void wait();

  /// Of the first write that failed; none follows it. Known at the latest when the writer is idle.
  [[nodiscard]] std::error_code error() const { return has_failed_ ? error_ : std::error_code{}; }

  /// The offset in the file at which the next bytes will stand.
  [[nodiscard]] std::uint64_t offset() const { return start_ + filled_; }

 private:
  static constexpr std::size_t buffer_size = std::size_t{2} * 1024 * 1024;

  // One huge page, where the system has them: it copies to and from such a buffer by a tenth faster
  // than from small pages, and by a third faster than from an odd address.
  struct alignas(buffer_size) Buffer {
    std::array<std::uint8_t, buffer_size> bytes;
  };

  struct Block {
    std::unique_ptr<Buffer> buffer{new Buffer};
    PatientThread::Ticket written = 0;
  };

  void hand_over(std::size_t size);
  PatientThread::Ticket give(std::function<std::error_code()> work);

  OutputFile& file_;
  std::array<Block, 2> blocks_;
  std::size_t current_ = 0;  // the block that is being filled
  std::size_t filled_ = 0;
  std::uint64_t start_ = 0;                // offset of its first byte
  std::span<const std::uint8_t> carried_;  // of the other block: what this one begins with
  PatientThread thread_;
  PatientThread::Ticket last_ = 0;
  std::error_code error_;  // the thread's until:
  std::atomic<bool> has_failed_ = false;
};

}  // namespace corvelin

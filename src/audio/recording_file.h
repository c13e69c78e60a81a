// SPDX-License-Identifier: GPL-2.0-or-later
// The file that a recording goes into. It takes encoded bytes at once and has a thread write them
// and bring them to disk: a disk can hold up both for many seconds, and the sound of that time
// would be lost, in front of a window that stands still.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "platform/devices/byte_ring.h"
#include "platform/files/file.h"
#include "platform/processes/patient_thread.h"

namespace corvelin {

class RecordingFile {
 public:
  RecordingFile() = default;
  ~RecordingFile() { thread_.wait(last_); }
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;

  /// Creates the file, or `at_its_end` opens one that is there.
  std::error_code open(const std::string& name, bool at_its_end);

  /// Whether so many bytes can be taken, while no more than a minute of sound waits to be written.
  [[nodiscard]] bool has_room(std::size_t count) const;

  /// Takes bytes that have room. Behind the last ones the encoder's tail always has.
  void give(std::span<const std::uint8_t> bytes);

  /// Has all that was given written, and brought to disk, if there is anything new.
  void write_out();

  /// Has it written, and what is given from now on go into a new file. The old one is left only
  /// when the new one is there.
  void go_on_in(const std::string& name);

  /// Has what is left written, also what could not be written before, and the file closed.
  void finish();

  /// Whether nothing is being written any more. Waits for that no longer than told.
  [[nodiscard]] bool is_idle(std::chrono::milliseconds in_time) {
    return thread_.is_done(last_, in_time);
  }
  void wait() { thread_.wait(last_); }

  /// Of what failed first; nothing is written behind it before `finish`.
  [[nodiscard]] std::error_code error() const { return has_failed_ ? error_ : std::error_code{}; }

  // When nothing is being written:
  [[nodiscard]] const std::string& name() const { return name_; }  // of the file that was reached
  [[nodiscard]] std::uint64_t size() const { return size_; }       // its bytes

 private:
  static constexpr std::size_t most_waiting = 60 * std::size_t{320'000} / 8;  // at any bitrate
  static constexpr std::size_t tail_room = 64'000;

  template <typename Work>
  void give_work(Work work);
  std::error_code write_up_to(std::uint64_t end);

  ByteRing ring_{most_waiting + tail_room};
  std::atomic<std::uint64_t> asked_for_ = 0;  // bytes of the ring that are to be written by now
  PatientThread thread_;
  PatientThread::Ticket last_ = 0;

  // The thread's, while it works:
  OutputFile file_;
  std::string name_;
  std::uint64_t size_ = 0;
  std::vector<std::uint8_t> block_;  // out of the ring, and not in the file yet
  std::error_code error_;            // until:
  std::atomic<bool> has_failed_ = false;
};

}  // namespace corvelin

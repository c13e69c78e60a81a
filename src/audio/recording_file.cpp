// SPDX-License-Identifier: GPL-2.0-or-later
// The thread between a recording and its disk.
#include "audio/recording_file.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace corvelin {

namespace {

constexpr std::size_t most_at_once = std::size_t{64} * 1024;  // bytes

// A file that was removed, perhaps with its folder, could still be written to, and all of that
// would be lost at the end. False when the system can't tell at the moment, as on a network that is
// slow: that is no reason to end a recording.
bool is_gone(const std::string& name) {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(name, error);
  return status.type() == std::filesystem::file_type::not_found;
}

}  // namespace

std::error_code RecordingFile::open(const std::string& name, bool at_its_end) {
  name_ = name;
  const std::error_code error = at_its_end ? file_.open_existing(name) : file_.create_new(name);
  size_ = error ? 0 : file_.size();
  return error;
}

bool RecordingFile::has_room(std::size_t count) const {
  return ring_.written() - ring_.taken() + count <= most_waiting;
}

void RecordingFile::give(std::span<const std::uint8_t> bytes) { ring_.write(bytes); }

// `work` is told up to where in the ring.
template <typename Work>
void RecordingFile::give_work(Work work) {
  asked_for_ = ring_.written();
  last_ = thread_.give([this, work, end = ring_.written()] {
    const std::error_code error = work(end);
    if (!error || has_failed_) return;
    error_ = error;
    has_failed_ = true;
  });
}

std::error_code RecordingFile::write_up_to(std::uint64_t end) {
  if (is_gone(name_)) return std::make_error_code(std::errc::no_such_file_or_directory);
  while (!block_.empty() || ring_.taken() < end) {
    if (block_.empty()) {
      block_.resize(std::min<std::uint64_t>(end - ring_.taken(), most_at_once));
      ring_.read(block_);
    }
    if (const std::error_code error = file_.write_at(size_, block_)) return error;
    size_ += block_.size();
    block_.clear();
  }
  return {};
}

// Whatever happens to the machine from now on, this is safe. A disk that is behind is asked once
// for all that came meanwhile.
void RecordingFile::write_out() {
  if (asked_for_ == ring_.written()) return;
  give_work([this](std::uint64_t end) {
    if (has_failed_) return std::error_code{};
    const std::error_code error = write_up_to(end);
    return error || asked_for_ != end ? error : file_.sync();
  });
}

void RecordingFile::go_on_in(const std::string& name) {
  give_work([this, name](std::uint64_t end) {
    if (has_failed_) return std::error_code{};
    if (const std::error_code error = write_up_to(end)) return error;
    if (const std::error_code error = file_.sync()) return error;
    OutputFile next;
    if (const std::error_code error = next.create_new(name)) return error;
    OutputFile before = std::exchange(file_, std::move(next));
    name_ = name;
    size_ = 0;
    return before.close();
  });
}

void RecordingFile::finish() {
  give_work([this](std::uint64_t end) {
    std::error_code error = write_up_to(end);
    if (!error) error = file_.sync();
    const std::error_code close_error = file_.close();
    return error ? error : close_error;
  });
}

}  // namespace corvelin

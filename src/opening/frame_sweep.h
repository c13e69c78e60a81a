// SPDX-License-Identifier: GPL-2.0-or-later
// Searches for frames that go through one file from front to back, as a probe does thousands of
// them. Each finds what the locator would find, but through a window of the file, and whatever the
// junk, a byte is looked at only once or twice: searches from places close together share what they
// saw.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "model/frame_locator.h"
#include "platform/files/file.h"
#include "platform/files/file_window.h"

namespace corvelin {

class FrameSweep {
 public:
  FrameSweep(const InputFile& file, FrameFormat format, std::uint32_t audio_end)
      : file_(file), format_(format), audio_end_(audio_end) {}

  /// What `find_frame` finds from the file offset `from`, which is never before that of an earlier
  /// call. The place is a file offset.
  std::optional<FramePlace> find(std::uint32_t from, std::uint32_t rate_before = any_sample_rate);

 private:
  [[nodiscard]] std::optional<FramePlace> frame_at(std::uint32_t from);
  void scan(std::uint32_t from);
  void believe(const FramePlace& place);
  void forget_before(std::uint32_t from);

  const InputFile& file_;
  FrameFormat format_;
  std::uint32_t audio_end_;
  FileWindow window_;
  std::uint32_t scanned_ = 0;  // headers that begin before this offset are known

  // A search sees only 10000 bytes. A header is believed as soon as they hold the one that follows
  // it; until then it waits, in the order of where it will be seen whole.
  std::multimap<std::uint64_t, FramePlace> waiting_;
  std::map<std::uint32_t, FrameInfo> believed_;  // by offset
  // The believed headers with the sample rate of the one before them: what a search takes that has
  // come past a header of a new rate.
  std::set<std::uint32_t> confirmed_;
};

}  // namespace corvelin

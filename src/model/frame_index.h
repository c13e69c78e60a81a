// SPDX-License-Identifier: GPL-2.0-or-later
// The index of one source file: where each of its frames lies, and at which time it begins. Made in
// one pass over the headers, it needs the file no more, and never changes: any number of readers on
// any threads may ask it. A frame that isn't there takes no time.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "frames/frame_header.h"
#include "platform/files/file.h"

namespace corvelin {

/// A place in a source file and what lies in front of it there.
struct IndexPlace {
  std::uint64_t ticks = 0;   // that its frames take, in parts of a second (`ticks_per_second`)
  std::uint32_t offset = 0;  // in the file, bytes
  std::uint32_t frames = 0;
};

class FrameIndex {
 public:
  /// Walks over the audio of `file` from `first_audio` to `audio_end`. Memory: two bytes a frame,
  /// in a file full of garbage less than the file has.
  FrameIndex(const InputFile& file, FrameFormat format, std::uint32_t first_audio,
             std::uint32_t audio_end);

  /// Behind the last frame that ends at or before `offset`.
  [[nodiscard]] IndexPlace at_offset(std::uint32_t offset) const;

  /// The first frame that begins `ticks` or more behind the start; behind the last frame when there
  /// is none.
  [[nodiscard]] IndexPlace at_ticks(std::uint64_t ticks) const;

 private:
  // Where reading of the codes may begin: behind a frame.
  struct Entry {
    IndexPlace place;
    std::size_t code = 0;  // index in `codes_`
    std::uint32_t ticks_of_a_frame = 0;
  };
  class Steps;

  void add_number(std::uint16_t code, std::uint32_t number);

  // In the order of the file: the length of a frame, or one of two codes that no length has, with a
  // number in two halves behind it.
  static constexpr std::uint16_t gap_code = 0;    // bytes that are no frame
  static constexpr std::uint16_t ticks_code = 1;  // of each frame from here on
  std::vector<std::uint16_t> codes_;
  std::vector<Entry> entries_;  // one in 128 frames
  IndexPlace end_;              // behind the last frame
};

/// The index of a file whose bounds stand. It is made when it is first asked for, once for all
/// copies, whichever thread asks.
class SharedIndex {
 public:
  /// All calls name the same file, format and bounds.
  [[nodiscard]] const FrameIndex& of(const InputFile& file, FrameFormat format,
                                     std::uint32_t first_audio, std::uint32_t audio_end) const;

 private:
  struct Cell {
    std::once_flag is_made;
    std::optional<FrameIndex> index;
  };
  std::shared_ptr<Cell> cell_ = std::make_shared<Cell>();
};

}  // namespace corvelin

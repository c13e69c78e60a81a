// SPDX-License-Identifier: GPL-2.0-or-later
// A walk over the frames of one source file, in the order of the file: what the reader would
// deliver of it, without its data. Only headers are looked at, through a window of the file, so
// that a whole file costs one read of it.
#pragma once

#include <cstdint>

#include "frames/frame_header.h"
#include "platform/files/file.h"
#include "platform/files/file_window.h"

namespace corvelin {

class FrameWalk {
 public:
  /// From the file offset `begin` up to `end`, where the audio ends.
  FrameWalk(const InputFile& file, FrameFormat format, std::uint32_t begin, std::uint32_t end)
      : file_(&file), format_(format), behind_(begin), end_(end) {}

  /// Goes to the next frame: the one at the walk's place, or, where the file is damaged, the next
  /// true one within `most_blocks` times 10000 bytes. False when there is none, or the audio ends
  /// within it; the walk's place then stays.
  bool next(std::uint32_t most_blocks = any_distance) {
    const std::uint32_t length = similar_.length_of(window_.bytes_at(*file_, behind_, header_size));
    if (length == 0 || behind_ >= end_ || length > end_ - behind_) return find(most_blocks);
    length_ = length;
    behind_ += length;
    return true;
  }
  static constexpr std::uint32_t any_distance = 0xFFFFFFFF;

  // Of the frame that `next` went to:
  [[nodiscard]] std::uint32_t offset() const { return behind_ - length_; }  // in the file
  [[nodiscard]] std::uint32_t behind() const { return behind_; }            // the walk's place
  [[nodiscard]] std::uint64_t ticks() const { return ticks_; }              // see below

 private:
  bool find(std::uint32_t most_blocks);
  bool search(std::uint32_t most_blocks, std::uint32_t& offset, FrameInfo& frame);

  const InputFile* file_;
  FrameFormat format_;
  FileWindow window_;
  std::uint32_t behind_;
  std::uint32_t end_;
  std::uint32_t length_ = 0;
  std::uint64_t ticks_ = 0;
  std::uint32_t sample_rate_ = 0;
  SimilarFrames similar_;
};

/// The time that frames take is counted in parts of a second of which every frame, at any sample
/// rate, takes a whole number.
constexpr std::uint64_t ticks_per_second = 28'224'000;

}  // namespace corvelin

// A walk over the frames of one source file, in the order of the file: what the reader would
// deliver of it, without its data. Only headers are looked at, through a window of the file, so
// that a whole file costs one read of it.
#pragma once

#include <cstdint>

#include "platform/file.h"
#include "platform/file_window.h"
#include "stream/frame_header.h"

namespace corvelin {

class FrameWalk {
 public:
  /// From the file offset `begin` up to `end`, where the audio ends.
  FrameWalk(const InputFile& file, std::uint32_t begin, std::uint32_t end)
      : file_(file), behind_(begin), end_(end) {}

  /// Goes to the next frame: the one at the walk's place, or, where the file is damaged, the next
  /// true one within `most_blocks` times 10000 bytes. False when there is none, or the audio ends
  /// within it; the walk's place then stays.
  bool next(std::uint32_t most_blocks = any_distance);
  static constexpr std::uint32_t any_distance = 0xFFFFFFFF;

  /// The frame that `next` went to.
  [[nodiscard]] const FrameInfo& frame() const { return frame_; }
  [[nodiscard]] std::uint32_t offset() const { return behind_ - frame_.frame_length; }

  /// The walk's place, behind that frame.
  [[nodiscard]] std::uint32_t behind() const { return behind_; }

 private:
  bool find(std::uint32_t most_blocks, std::uint32_t& offset, FrameInfo& frame);

  const InputFile& file_;
  FileWindow window_;
  FrameInfo frame_;
  std::uint32_t behind_;
  std::uint32_t end_;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The steps of a walk that are not to a frame like the one before.
#include "model/frame_walk.h"

#include <algorithm>

#include "model/frame_locator.h"

namespace corvelin {

bool FrameWalk::find(std::uint32_t most_blocks) {
  std::uint32_t offset = behind_;
  FrameInfo frame;
  const std::span<const std::uint8_t> header = window_.bytes_at(*file_, offset, header_size);
  const bool is_here = has_sync(header, 0) && decode_frame_header(frame, header, format_);
  if (!is_here && !search(most_blocks, offset, frame)) return false;
  if (offset >= end_ || frame.frame_length > end_ - offset) return false;
  length_ = frame.frame_length;
  behind_ = offset + length_;
  ticks_ = samples_per_frame(frame) * (ticks_per_second / frame.sample_rate);
  sample_rate_ = frame.sample_rate;
  similar_ = SimilarFrames(frame);
  return true;
}

// Looks for the next frame in the blocks in which the reader would look.
bool FrameWalk::search(std::uint32_t most_blocks, std::uint32_t& offset, FrameInfo& frame) {
  for (; offset < end_ && most_blocks > 0; --most_blocks) {
    const auto block = window_.bytes_at(*file_, offset, search_read_size);
    const auto usable = std::min<std::size_t>({block.size(), search_block_size, end_ - offset});
    const auto found = find_frame_in_block(block, usable, format_, sample_rate_);
    if (found) {
      offset += found->pos;
      frame = found->frame;
      return true;
    }
    if (usable < search_block_size) return false;
    offset += search_block_size;  // stays below `end_`
  }
  return false;
}

}  // namespace corvelin

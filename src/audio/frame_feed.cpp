// SPDX-License-Identifier: GPL-2.0-or-later
// Reading ahead of the edit cursor.
#include "audio/frame_feed.h"

#include <utility>

#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"

namespace corvelin {

Frames FrameFeed::take(std::uint32_t most, EditPosition end) {
  Frames frames = stands_at_edit_cursor(end) ? next_frames(most) : Frames{};
  if (frames.count < most) {
    read_block(end);
    frames = next_frames(most);
  }
  begin_ += frames.bytes.size();
  next_.pos += static_cast<std::uint32_t>(frames.bytes.size());
  bytes_ += static_cast<std::uint32_t>(frames.bytes.size());
  if (begin_ == size_) {
    next_ = behind_;
    resyncs_ += std::exchange(resyncs_ahead_, 0);
  }
  selection.cursor = next_.pos;
  document.current_part = next_.part;
  selection.current_frame = next_.frame;
  return frames;
}

Frames FrameFeed::next_frames(std::uint32_t most) {
  const std::span<const std::uint8_t> ahead = std::span(block_).first(size_).subspan(begin_);
  Frames frames;
  std::size_t size = 0;
  for (; frames.count < most && size < ahead.size(); ++frames.count) {
    decode_frame_header(next_.frame, ahead.subspan(size), frame_format(document.stream));
    size += next_.frame.frame_length;
  }
  frames.bytes = ahead.first(size);
  return frames;
}

bool FrameFeed::stands_at_edit_cursor(EditPosition end) const {
  return begin_ < size_ && next_.pos == selection.cursor && end == end_ &&
         revision_ == document.revision;
}

void FrameFeed::read_block(EditPosition end) {
  block_.resize(frame_block_limit);
  next_ = behind_ = {
      .pos = selection.cursor, .part = document.current_part, .frame = selection.current_frame};
  begin_ = 0;
  const FramesRead read = read_frames(document, block_, behind_, end);
  size_ = read.size;
  resyncs_ahead_ = read.resync_count;
  end_ = end;
  revision_ = document.revision;
}

}  // namespace corvelin

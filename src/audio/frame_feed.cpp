// SPDX-License-Identifier: GPL-2.0-or-later
// Reading ahead of a cursor.
#include "audio/frame_feed.h"

#include <utility>

#include "model/stream_info.h"

namespace corvelin {

Frames FrameFeed::take(const Document& document, FrameCursor& cursor, std::uint32_t most,
                       EditPosition end) {
  const FrameFormat format = frame_format(document.stream);
  Frames frames = stands_at(document, cursor.pos, end) ? next_frames(format, most) : Frames{};
  if (frames.count < most) {
    read_block(document, cursor, end);
    frames = next_frames(format, most);
  }
  begin_ += frames.bytes.size();
  next_.pos += static_cast<std::uint32_t>(frames.bytes.size());
  bytes_ += static_cast<std::uint32_t>(frames.bytes.size());
  if (begin_ == size_) {
    next_ = behind_;
    resyncs_ += std::exchange(resyncs_ahead_, 0);
  }
  cursor = next_;
  return frames;
}

Frames FrameFeed::next_frames(FrameFormat format, std::uint32_t most) {
  const std::span<const std::uint8_t> ahead = std::span(block_).first(size_).subspan(begin_);
  Frames frames;
  std::size_t size = 0;
  for (; frames.count < most && size < ahead.size(); ++frames.count) {
    decode_frame_header(next_.frame, ahead.subspan(size), format);
    size += next_.frame.frame_length;
  }
  frames.bytes = ahead.first(size);
  return frames;
}

bool FrameFeed::stands_at(const Document& document, EditPosition pos, EditPosition end) const {
  return begin_ < size_ && next_.pos == pos && end == end_ && revision_ == document.revision;
}

void FrameFeed::read_block(const Document& document, const FrameCursor& cursor, EditPosition end) {
  block_.resize(frame_block_limit);
  next_ = behind_ = cursor;
  begin_ = 0;
  const FramesRead read = read_frames(document, block_, behind_, end);
  size_ = read.size;
  resyncs_ahead_ = read.resync_count;
  end_ = end;
  revision_ = document.revision;
}

}  // namespace corvelin

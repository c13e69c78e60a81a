// SPDX-License-Identifier: GPL-2.0-or-later
// Copying of frames.
#include "exchange/range_copy.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <span>

#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/tag_bounds.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool wants_vbr_frame(const Document& document) {
  const bool variable = settings.write_xing != 0 && document.stream.vbr != vbr_constant;
  const bool constant = settings.keep_info != 0 && document.stream.has_info_header != 0;
  return variable || constant;
}

// The frame that was gone to last, unless that is none of the stream's: then the first one of what
// is written.
FrameInfo shape_of_header(const Document& document, const Selection& selection, EditRange range) {
  if (kind_of(selection.current_frame) == document.kind) return selection.current_frame;
  return find_frame_forward(document, part_at(document, range.begin), range.begin).frame;
}

}  // namespace

void RangeCopy::begin_frames() {
  cursor_ = frame_cursor_at(document_, range_.begin);
  block_size_ = std::numeric_limits<std::size_t>::max();
  marks_.clear();
  has_header_ = is_header_complete_ = false;
  file_.reserve(std::uint64_t{document_.stream.id3v2_size} + frame_unit +
                (range_.end - range_.begin) + id3v1_size);
}

std::error_code RangeCopy::write_header_frame() {
  if (!wants_vbr_frame(document_)) return {};
  const std::vector<std::uint8_t> frame =
      make_vbr_frame(document_, shape_of_header(document_, selection_, range_));
  has_header_ = !frame.empty();
  writer_.commit(frame);
  return {};
}

// Up to two megabytes. Reads that end early, at bad data or a part's border, are followed by small
// ones: what they read too far is read again.
std::error_code RangeCopy::write_frames() {
  constexpr std::size_t least_block = std::size_t{64} * 1024;
  constexpr std::uint64_t mark_distance = std::uint64_t{1024} * 1024;  // bytes
  if (marks_.empty() || writer_.offset() - marks_.back().offset >= mark_distance)
    marks_.push_back({frames_ + 1, writer_.offset()});
  const std::span<std::uint8_t> room = writer_.room();
  block_size_ = std::clamp(block_size_, least_block, room.size());
  const EditPosition before = cursor_.pos;
  const FramesRead read = read_frames(document_, room.first(block_size_), cursor_, range_.end);
  left_out_.add(document_, before + static_cast<std::uint32_t>(read.size),
                std::min(cursor_.pos, range_.end), cursor_.frame.frame_length);
  frames_ += read.frames;
  resyncs_ += read.resync_count;
  block_size_ = read.size < block_size_ / 2 ? least_block : block_size_ * 2;
  writer_.commit(read.size);
  return {};
}

std::error_code RangeCopy::finish_header() {
  if (!has_header_) return {};
  quality_ = header_quality(document_);
  const VbrHeaderFields header = make_vbr_header(document_, file_, id3v2_.size(), frames_, marks_);
  is_header_complete_ = header.is_complete;
  if (!header.error) writer_.write_at(header.place, header.fields);
  return header.error;
}

bool RangeCopy::has_problem() const {
  return RangeWriter::has_problem() || (has_header_ && !is_header_complete_);
}

std::string RangeCopy::log_of_frames() const {
  if (!has_header_) return {};
  return fmt::format("VBR/Info header... {}\r\n", is_header_complete_ ? "Ok" : ui_text(row::error));
}

}  // namespace corvelin

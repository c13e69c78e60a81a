// The steps of writing a range.
#include "exchange/range_copy.h"

#include <algorithm>
#include <limits>
#include <span>

#include "document/tag_bounds.h"
#include "model/stream_info.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

bool wants_vbr_frame() {
  const bool variable = settings.write_xing != 0 && stream.vbr != vbr_constant;
  const bool constant = settings.keep_info != 0 && stream.has_info_header != 0;
  return variable || constant;
}

}  // namespace

void RangeCopy::begin(EditPosition begin, EditPosition end) {
  begin_ = begin;
  end_ = end;
  cursor_ = frame_cursor_at(begin);
  frames_ = 0;
  resyncs_ = 0;
  marks_.clear();
  block_size_ = std::numeric_limits<std::size_t>::max();
  for (SourceFile& file : document.files) file.handle.forget_read_error();
  const std::uint32_t length = end > begin ? end - begin : 0;
  target.reserve(std::uint64_t{stream.id3v2_size} + frame_unit + length + id3v1_size);
}

std::error_code RangeCopy::write_header_frame() {
  header_offset_ = target.size();
  stream.vbr_frame_size = 0;
  std::error_code error;
  if (wants_vbr_frame()) error = write_vbr_frame(target, stream.current_frame);
  has_header_ = stream.vbr_frame_size != 0;
  return error;
}

// Reads that end early, at bad data or a part's border, are followed by small ones: what they read
// too far is read again.
std::error_code RangeCopy::copy_frames() {
  constexpr std::size_t least_block = std::size_t{64} * 1024;
  constexpr std::uint64_t mark_distance = std::uint64_t{1024} * 1024;  // bytes
  if (marks_.empty() || writer_.offset() - marks_.back().offset >= mark_distance)
    marks_.push_back({frames_ + 1, writer_.offset()});
  const std::span<std::uint8_t> room = writer_.room();
  block_size_ = std::clamp(block_size_, least_block, room.size());
  const FramesRead read = read_frames(room.first(block_size_), cursor_, end_);
  frames_ += read.frames;
  resyncs_ += read.resync_count;
  block_size_ = read.size < block_size_ / 2 ? least_block : block_size_ * 2;
  return writer_.commit(read.size);
}

std::string RangeCopy::source_fault() const {
  for (const Part& part : document.parts) {
    const bool is_outside = part.part_beg >= end_ || part.part_beg + part.part_size <= begin_;
    if (is_outside) continue;
    const SourceFile& file = document.files[part.part_file];
    if (const std::error_code error = file.handle.read_error())
      return file.file_name + "\n" + error.message();
    const std::uint64_t copied_to =
        std::uint64_t{part.part_filepos} + std::min(end_ - part.part_beg, part.part_size);
    if (file.handle.facts().size < std::min<std::uint64_t>(copied_to, file.audio_end))
      return file.file_name + "\nThis file has become shorter since it was first opened.";
  }
  return {};
}

VbrHeaderResult RangeCopy::finish_header() {
  return finish_vbr_header(target, header_offset_, frames_, marks_);
}

std::error_code RangeCopy::write_id3v1() { return target.write(stream.id3v1); }

void RangeCopy::give_up() {
  frames_ = 0;
  target.close();  // it is incomplete, whatever the answer
}

int RangeCopy::percent_done() const {
  if (end_ <= begin_) return 100;
  const std::uint64_t done = std::min(cursor_.pos, end_) - begin_;
  return static_cast<int>(done * 100 / (end_ - begin_));
}

}  // namespace corvelin

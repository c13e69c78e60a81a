// The steps of writing a range.
#include "exchange/range_copy.h"

#include <algorithm>
#include <limits>
#include <span>

#include "document/tag_bounds.h"
#include "exchange/id3v2_copy.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

bool wants_vbr_frame() {
  const bool variable = settings.write_xing != 0 && stream.vbr != vbr_constant;
  const bool constant = settings.keep_info != 0 && stream.has_info_header != 0;
  return variable || constant;
}

// The frame that was gone to last, unless that is none of the stream's: then the first one of what
// is written.
FrameInfo shape_of_header(EditRange range) {
  if (kind_of(stream.current_frame) == stream_kind) return stream.current_frame;
  return find_frame_forward(part_at(range.begin), range.begin).frame;
}

}  // namespace

EditRange whole_stream() { return {.begin = 0, .end = document.total_size}; }

std::error_code give_date_of_source(OutputFile& file) {
  const InputFile& source = document.files[0].handle;
  const FileFacts facts = source.facts();
  return facts.found ? file.set_write_time(facts.write_time) : source.read_error();
}

void RangeCopy::begin(EditRange range, TagsToWrite tags) {
  range_ = {.begin = range.begin, .end = std::max(range.begin, range.end)};
  tags_ = tags;
  phase_ = Phase::id3v2;
  cursor_ = frame_cursor_at(range.begin);
  frames_ = resyncs_ = 0;
  block_size_ = std::numeric_limits<std::size_t>::max();
  marks_.clear();
  id3v2_size_ = 0;
  has_header_ = is_header_complete_ = false;
  file_.reserve(std::uint64_t{stream.id3v2_size} + frame_unit + (range_.end - range_.begin) +
                id3v1_size);
}

std::error_code RangeCopy::step() {
  std::error_code error;
  switch (phase_) {
    case Phase::id3v2:
      error = write_id3v2();
      break;
    case Phase::header_frame:
      error = write_header_frame();
      break;
    case Phase::frames:
      error = copy_frames();
      break;
    case Phase::header:
      error = finish_header();
      break;
    case Phase::id3v1:
      if (tags_.id3v1) error = file_.write(stream.id3v1);
      break;
    case Phase::over:
      return {};
  }
  const bool goes_on = !error && !(phase_ == Phase::frames && has_more());
  if (goes_on) phase_ = static_cast<Phase>(static_cast<int>(phase_) + 1);
  return error;
}

std::error_code RangeCopy::write_id3v2() {
  if (!tags_.id3v2) return {};
  const Id3v2Copy copy = copy_id3v2(file_);
  id3v2_size_ = copy.written;
  return copy.error;
}

std::error_code RangeCopy::write_header_frame() {
  stream.vbr_frame_size = 0;
  if (!wants_vbr_frame()) return {};
  const std::error_code error = write_vbr_frame(file_, shape_of_header(range_));
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
  const FramesRead read = read_frames(room.first(block_size_), cursor_, range_.end);
  frames_ += read.frames;
  resyncs_ += read.resync_count;
  block_size_ = read.size < block_size_ / 2 ? least_block : block_size_ * 2;
  const std::error_code error = writer_.commit(read.size);
  return error || has_more() ? error : writer_.flush();
}

std::error_code RangeCopy::finish_header() {
  if (!has_header_) return {};
  const VbrHeaderResult result = finish_vbr_header(file_, id3v2_size_, frames_, marks_);
  is_header_complete_ = result.is_complete;
  return result.error;
}

std::string RangeCopy::source_fault() const {
  std::string fault = read_fault();
  if (!fault.empty()) return fault;
  for (const Part& part : document.parts) {
    const bool is_outside =
        part.part_beg >= range_.end || part.part_beg + part.part_size <= range_.begin;
    if (is_outside) continue;
    const SourceFile& file = document.files[part.part_file];
    const std::uint64_t copied_to =
        std::uint64_t{part.part_filepos} + std::min(range_.end - part.part_beg, part.part_size);
    if (file.handle.facts().size < std::min<std::uint64_t>(copied_to, file.audio_end))
      return file.file_name + "\nThis file has become shorter since it was first opened.";
  }
  return {};
}

int RangeCopy::percent_done() const {
  if (range_.end <= range_.begin) return 100;
  const std::uint64_t done = std::min(cursor_.pos, range_.end) - range_.begin;
  return static_cast<int>(done * 100 / (range_.end - range_.begin));
}

}  // namespace corvelin

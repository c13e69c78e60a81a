// SPDX-License-Identifier: GPL-2.0-or-later
// The steps of writing a range.
#include "exchange/range_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "frames/frame_header.h"
#include "model/document.h"
#include "opening/tag_bounds.h"
#include "platform/long_run.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

EditRange whole_stream(const Document& document) {
  return {.begin = 0, .end = document.total_size};
}

std::error_code give_date_of_source(const Document& document, OutputFile& file) {
  const InputFile& source = *document.files[0].handle;
  const FileFacts facts = source.facts();
  return facts.found ? file.set_write_time(facts.write_time) : source.read_error();
}

void RangeWriter::begin(EditRange range, TagsToWrite tags) {
  range_ = {.begin = range.begin, .end = std::max(range.begin, range.end)};
  tags_ = tags;
  phase_ = Phase::id3v2;
  state_ = State::goes_on;
  frames_ = resyncs_ = 0;
  id3v2_ = {};
  left_out_ = {};
  missing_.clear();
  if (tags_.id3v2) id3v2_.begin(document_);
  writer_.begin();
  begin_frames();
}

std::error_code RangeWriter::step() {
  if (phase_ == Phase::over || !writer_.has_room(slice_patience)) return {};
  switch (state_) {
    case State::goes_on:
      if (const std::error_code error = writer_.error()) return error;
      return write_piece();
    case State::is_made:
      writer_.flush();
      state_ = State::is_handed_over;
      [[fallthrough]];
    case State::is_handed_over:
      if (!writer_.is_idle(slice_patience)) return {};
      if (const std::error_code error = writer_.error()) return error;
      phase_ = static_cast<Phase>(static_cast<int>(phase_) + 1);
      state_ = State::goes_on;
  }
  return {};
}

std::error_code RangeWriter::write_piece() {
  state_ = State::is_made;
  switch (phase_) {
    case Phase::id3v2:
      return tags_.id3v2 ? write_id3v2() : std::error_code{};
    case Phase::header_frame:
      return write_header_frame();
    case Phase::frames:
      if (!has_more()) {
        missing_ = left_out_.text(document_);
        return write_rest();
      }
      state_ = State::goes_on;
      return write_frames();
    case Phase::header:
      return finish_header();
    case Phase::id3v1:
      if (tags_.id3v1) writer_.commit(*tags_.id3v1);
      break;
    case Phase::over:
      break;
  }
  return {};
}

std::error_code RangeWriter::write_id3v2() {
  const std::size_t size = id3v2_.read(writer_.room());
  writer_.commit(size);
  if (size != 0) state_ = State::goes_on;
  return id3v2_.error();
}

std::string RangeWriter::source_fault() const {
  std::string fault = read_fault(document_);
  return fault.empty() ? shrunk_source(document_, range_.begin, range_.end) : fault;
}

int RangeWriter::percent_done() const {
  if (range_.end <= range_.begin) return 100;
  const EditPosition done = std::clamp(position(), range_.begin, range_.end) - range_.begin;
  return static_cast<int>(std::uint64_t{done} * 100 / (range_.end - range_.begin));
}

std::string RangeWriter::log() const {
  std::string log;
  if (id3v2_.size() != 0)
    log = fmt::format("ID3v2 {} ({} bytes)\r\n", ui_text(row::written), id3v2_.size());
  log += log_of_frames();
  if (tags_.id3v1 && phase_ == Phase::over)
    log += fmt::format("ID3v1 {}\r\n", ui_text(row::written));
  return log;
}

}  // namespace corvelin

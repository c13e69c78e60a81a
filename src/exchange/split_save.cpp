// The regions of a split, one after the other.
#include "exchange/split_save.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "document/open_state.h"
#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "exchange/split_name.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "platform/host.h"
#include "platform/numbers.h"
#include "platform/path.h"
#include "settings/settings.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool begins_region(const Part& part) { return part.part_iscue != 0; }

// A piece may begin with the end of the one before. Its own end never moves.
EditPosition with_overlap(EditPosition begin) {
  if ((settings.split_overlap & split_overlap_on) == 0) return begin;
  const unsigned seconds = settings.split_overlap & (split_overlap_on - 1);
  const std::uint32_t wanted = whole_part(seconds * double{stream.avg_bitrate} * 0.125);
  const EditPosition back = begin - std::min(wanted, begin);
  const EditPosition frame = locate_frame(part_at(back), back);
  return std::min(frame, begin);  // where none was found there is no overlap
}

}  // namespace

std::uint16_t count_split_regions() {
  if (document.parts.empty()) return 0;
  const auto cues = std::count_if(document.parts.begin() + 1, document.parts.end(), begins_region);
  return static_cast<std::uint16_t>(cues + 1);
}

SplitRun::SplitRun(std::string folder, std::uint16_t first_number)
    : path_(std::move(folder)),
      first_number_(first_number),
      split_total_(count_split_regions()),
      shape_(stream.current_frame) {
  open_state.save_name = path_;
}

bool SplitRun::step() {
  if (is_over_) return false;
  result_ = next_region();
  if (result_ == SplitResult::more) return true;
  finish();
  return false;
}

SplitResult SplitRun::next_region() {
  if (document.parts.empty()) return SplitResult::finished;
  const EditPosition begin = document.parts[split_region_part_].part_beg;
  const EditPosition end = find_region_end();
  ++split_done_;
  make_split_name(path_, split_done_, first_number_, split_total_, split_region_part_);
  open_state.save_name = path_;
  if (settings.split_id3v11 != 0)
    set_id3v1_of_piece(split_region_part_, split_done_ - 1U + first_number_);
  const SplitResult result = save_region(with_overlap(begin), end);
  if (result != SplitResult::more) return result;
  if (split_scan_ >= part_count()) return SplitResult::finished;
  split_region_part_ = split_scan_++;
  return SplitResult::more;
}

EditPosition SplitRun::find_region_end() {
  while (split_scan_ < part_count() && !begins_region(document.parts[split_scan_])) ++split_scan_;
  return split_scan_ < part_count() ? document.parts[split_scan_].part_beg : document.total_size;
}

SplitResult SplitRun::save_region(EditPosition begin, EditPosition end) {
  stream.current_frame = shape_;
  const SplitResult result = write_region(begin, end);
  split_resyncs_ += copy_.resyncs();
  if (result == SplitResult::more) {
    log_ += path_ + "\r\n";
  } else {
    copy_.give_up();
  }
  return result;
}

SplitResult SplitRun::write_region(EditPosition begin, EditPosition end) {
  const std::error_code error = copy_.target.create_new(path_);
  if (error) return unless(error, SplitResult::create_error);
  copy_.begin(begin, end);
  for (const auto step : {&SplitRun::write_front, &SplitRun::write_audio, &SplitRun::write_header,
                          &SplitRun::write_back}) {
    const SplitResult result = (this->*step)();
    if (result != SplitResult::more) return result;
  }
  return SplitResult::more;
}

SplitResult SplitRun::write_front() {
  if (keeps_id3v2(true)) {
    const SplitResult result = unless(copy_.write_id3v2().error, SplitResult::id3v2_error);
    if (result != SplitResult::more) return result;
  }
  return unless(copy_.write_header_frame(), SplitResult::write_error);
}

SplitResult SplitRun::write_audio() {
  while (copy_.has_more()) {
    const SplitResult result = unless(copy_.copy_frames(), SplitResult::write_error);
    if (result != SplitResult::more) return result;
  }
  reason_ = copy_.source_fault();
  if (reason_.empty() && copy_.frames() == 0) reason_ = ui_text(msg, 50);
  if (!reason_.empty()) return SplitResult::write_error;
  return unless(copy_.end_frames(), SplitResult::write_error);
}

SplitResult SplitRun::write_header() {
  if (!copy_.has_header()) return SplitResult::more;
  const VbrHeaderResult header = copy_.finish_header();
  return header.is_complete ? unless(header.error, SplitResult::xing_error)
                            : SplitResult::xing_error;
}

SplitResult SplitRun::write_back() {
  if (keeps_id3v1()) {
    const SplitResult result = unless(copy_.write_id3v1(), SplitResult::id3v1_error);
    if (result != SplitResult::more) return result;
  }
  std::error_code error;
  if ((settings.keep_date & keep_date_on_new) != 0)
    error = copy_.target.set_write_time(document.files[0].handle.facts().write_time);
  if (!error) error = copy_.target.close();
  return unless(error, SplitResult::write_error);
}

// `more` without an error, else the failure, whose reason is kept.
SplitResult SplitRun::unless(std::error_code error, SplitResult failure) {
  if (!error) return SplitResult::more;
  reason_ = error.message();
  return failure;
}

void SplitRun::finish() {
  is_over_ = true;
  stream.current_frame = shape_;
  keep_id3v1_as_set();
  clear_selection();
  open_state.selection_only = false;
  if (!status().empty()) {
    report_ = fmt::format("{}\r\n{}\r\n", status(), path_);
    if (!reason_.empty()) report_ += reason_ + "\r\n";
    return;
  }
  if (result_ != SplitResult::finished || split_resyncs_ == 0 || batch_active) return;
  host().show_message_box({.caption = std::string(ui_text(msg, 7)),
                           .text = format_row(ui_text(msg, 15), split_done_, split_resyncs_),
                           .icon = BoxIcon::warning});
}

void SplitRun::cancel() {
  if (!is_over_) finish();
}

int SplitRun::percent_done() const {
  return split_total_ == 0 ? 100 : split_done_ * 100 / split_total_;
}

std::string SplitRun::progress_text() const {
  return fmt::format("{} / {}", split_done_, split_total_);
}

std::string_view SplitRun::status() const {
  constexpr std::array<std::string_view, 5> words = {"Create error!", "ID3v2 error!",
                                                     "Write error!", "Xing error!", "ID3v1 error!"};
  if (result_ < SplitResult::create_error) return {};
  return words[static_cast<std::size_t>(result_) -
               static_cast<std::size_t>(SplitResult::create_error)];
}

}  // namespace corvelin

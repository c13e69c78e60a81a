// SPDX-License-Identifier: GPL-2.0-or-later
// The regions of a split, one after the other, each in slices.
#include "exchange/split_save.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "exchange/id3v2_copy.h"
#include "exchange/split_name.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/text/numbers.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool begins_region(const Part& part) { return part.part_iscue != 0; }

// A piece may begin with the end of the one before. Its own end never moves.
EditPosition with_overlap(const Document& document, EditPosition begin) {
  if ((settings.split_overlap & split_overlap_on) == 0) return begin;
  const unsigned seconds = settings.split_overlap & (split_overlap_on - 1);
  const std::uint32_t wanted = whole_part(seconds * double{document.stream.avg_bitrate} * 0.125);
  const EditPosition back = begin - std::min(wanted, begin);
  const EditPosition frame = find_frame(document, part_at(document, back), back).pos;
  return std::min(frame, begin);  // where none was found there is no overlap
}

SplitResult failure_in(RangeCopy::Phase phase) {
  switch (phase) {
    case RangeCopy::Phase::id3v2:
      return SplitResult::id3v2_error;
    case RangeCopy::Phase::header:
      return SplitResult::xing_error;
    case RangeCopy::Phase::id3v1:
      return SplitResult::id3v1_error;
    default:
      return SplitResult::write_error;
  }
}

}  // namespace

std::uint16_t count_split_regions(const Document& document) {
  if (document.parts.empty()) return 0;
  const auto cues = std::count_if(document.parts.begin() + 1, document.parts.end(), begins_region);
  return static_cast<std::uint16_t>(cues + 1);
}

SplitRun::SplitRun(Document& document, Selection& selection, OpenState& open_state,
                   std::string folder, std::uint16_t first_number, bool batch_active)
    : document_(document),
      selection_(selection),
      open_state_(open_state),
      path_(std::move(folder)),
      first_number_(first_number),
      batch_active_(batch_active),
      split_total_(count_split_regions(document_)) {
  open_state_.save_name = path_;
}

bool SplitRun::step() {
  if (is_over_) return false;
  result_ = is_in_piece_ ? write_piece() : begin_piece();
  if (result_ == SplitResult::more) return true;
  finish();
  return false;
}

SplitResult SplitRun::begin_piece() {
  if (document_.parts.empty()) return SplitResult::finished;
  const EditPosition begin = document_.parts[split_region_part_].part_beg;
  const EditPosition end = find_region_end();
  ++split_done_;
  make_split_name(document_, path_, split_done_, first_number_, split_total_, split_region_part_,
                  open_state_.audio_name);
  open_state_.save_name = path_;
  if (settings.split_id3v11 != 0 && can_create_tag(document_))
    id3v1_ =
        id3v1_of_piece(document_, id3v1_, split_region_part_, split_done_ - 1U + first_number_);
  reason_ = read_fault(document_);
  if (!reason_.empty()) return SplitResult::write_error;
  if (const std::error_code error = file_.create_new(path_, permissions_of_sources(document_)))
    return failed(SplitResult::create_error, error);
  is_in_piece_ = true;
  copy_.begin({.begin = with_overlap(document_, begin), .end = end},
              {.id3v2 = keeps_id3v2(document_, true), .id3v1 = id3v1_});
  return SplitResult::more;
}

EditPosition SplitRun::find_region_end() {
  while (split_scan_ < part_count(document_) && !begins_region(document_.parts[split_scan_]))
    ++split_scan_;
  return split_scan_ < part_count(document_) ? document_.parts[split_scan_].part_beg
                                             : document_.total_size;
}

SplitResult SplitRun::write_piece() {
  if (is_closing_) return look_at_closing();
  const RangeCopy::Phase phase = copy_.phase();
  if (phase == RangeCopy::Phase::over) return close_piece();
  if (const std::error_code error = copy_.step()) return failed(failure_in(phase), error);
  if (copy_.phase() == phase) return SplitResult::more;
  reason_ = copy_.source_fault();
  if (!reason_.empty()) return SplitResult::write_error;
  if (phase == RangeCopy::Phase::frames && copy_.frames() == 0) return pass_over_piece();
  const bool is_header_missing = copy_.has_header() && !copy_.is_header_complete();
  if (phase == RangeCopy::Phase::header && is_header_missing) return SplitResult::xing_error;
  return SplitResult::more;
}

SplitResult SplitRun::close_piece() {
  if ((settings.keep_date & keep_date_on_new) != 0) {
    if (const std::error_code error = give_date_of_source(document_, file_))
      return failed(SplitResult::write_error, error);
  }
  is_closing_ = true;
  closing_ = thread_.give([this] { closing_error_ = file_.close(); });
  return SplitResult::more;
}

SplitResult SplitRun::look_at_closing() {
  if (!thread_.is_done(closing_, slice_patience)) return SplitResult::more;
  is_closing_ = false;
  if (closing_error_) return failed(SplitResult::write_error, closing_error_);
  log_ += path_ + "\r\n";
  if (!copy_.missing().empty())
    losses_ += fmt::format("{} is not whole: {}\r\n", path_, copy_.missing());
  return end_piece();
}

// A region in a damaged stretch makes no file. The others are still wanted.
SplitResult SplitRun::pass_over_piece() {
  if (const std::error_code error = drop_piece()) return failed(SplitResult::write_error, error);
  passed_over_ += path_ + "\r\n";
  return end_piece();
}

SplitResult SplitRun::end_piece() {
  is_in_piece_ = false;
  split_resyncs_ += copy_.resyncs();
  if (split_scan_ >= part_count(document_)) return SplitResult::finished;
  split_region_part_ = split_scan_++;
  return SplitResult::more;
}

// The system takes its time to free the space of a large file when it is closed. Nobody has to wait
// for that.
std::error_code SplitRun::drop_piece() {
  copy_.wait();
  thread_.wait(closing_);
  const std::error_code error = remove_file(path_);
  thread_.give([file = std::make_shared<OutputFile>(std::move(file_))] {});
  return error;
}

// Where a source is what failed, it is named.
SplitResult SplitRun::failed(SplitResult failure, std::error_code error) {
  reason_ = read_fault(document_);
  if (reason_.empty()) reason_ = error.message();
  return failure;
}

// A piece that could not be completed stays as far as it is written, and is named.
void SplitRun::finish() {
  is_over_ = true;
  copy_.wait();
  file_.close();
  clear_selection(selection_);
  if (result_ == SplitResult::finished && log_.empty()) result_ = SplitResult::write_error;
  if (result_ == SplitResult::finished && !losses_.empty()) result_ = SplitResult::not_whole;
  report_ += losses_;
  if (!passed_over_.empty())
    report_ += fmt::format("{}:\r\n{}", ui_text(row::no_sync_found), passed_over_);
  if (!status().empty()) {
    report_ += fmt::format("{}\r\n{}{}\r\n", status(), path_, is_in_piece_ ? " is not whole." : "");
    if (!reason_.empty()) report_ += reason_ + "\r\n";
    return;
  }
  if (result_ != SplitResult::finished || split_resyncs_ == 0 || batch_active_) return;
  host().show_message_box(
      {.caption = std::string(ui_text(row::warning)),
       .text = format_row(ui_text(row::resyncs_while_saving), split_done_, split_resyncs_),
       .icon = BoxIcon::warning});
}

void SplitRun::cancel() {
  if (is_over_) return;
  if (is_in_piece_ && drop_piece()) report_ = fmt::format("{} is not whole.\r\n", path_);
  finish();
}

bool SplitRun::try_cancel() {
  if (!copy_.is_idle() || !thread_.is_done(closing_, {})) return false;
  cancel();
  return true;
}

int SplitRun::percent_done() const {
  if (split_total_ == 0) return 100;
  return (regions_written() * 100 + (is_in_piece_ ? copy_.percent_done() : 0)) / split_total_;
}

std::string SplitRun::progress_text() const {
  return fmt::format("{} / {}", regions_written(), split_total_);
}

std::string_view SplitRun::status() const {
  constexpr std::array<std::string_view, 5> words = {"Create error!", "ID3v2 error!",
                                                     "Write error!", "Xing error!", "ID3v1 error!"};
  if (result_ < SplitResult::create_error || result_ == SplitResult::not_whole) return {};
  return words[static_cast<std::size_t>(result_) -
               static_cast<std::size_t>(SplitResult::create_error)];
}

}  // namespace corvelin

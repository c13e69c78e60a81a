// SPDX-License-Identifier: GPL-2.0-or-later
// The phases of a save.
#include "exchange/save_run.h"

#include <fmt/format.h>

#include <utility>

#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "exchange/range_copy.h"
#include "exchange/range_reencode.h"
#include "platform/processes/interruption.h"
#include "platform/text/numbers.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string with_cause(const std::string& cause, const std::string& text) {
  return cause.empty() ? text : fmt::format("{}\n{}", cause, text);
}

}  // namespace

SaveRun::SaveRun(Document& document, const Selection& selection, const OpenState& open_state,
                 const std::string& name, EditRange range, std::optional<std::uint16_t> replaced,
                 SaveMode mode)
    : document_(document),
      open_state_(open_state),
      name_(in_current_folder(name)),
      range_(range),
      replaced_(replaced) {
  if (mode == SaveMode::copy) {
    audio_ = std::make_unique<RangeCopy>(document, selection, target_.file);
  } else {
    audio_ = std::make_unique<RangeReencode>(document, target_);
  }
}

// The system takes its time to free the space of a large file when the last one closes it who has
// it open. Nobody has to wait for that.
SaveRun::~SaveRun() {
  thread_.wait(completion_);
  if (has_replaced()) thread_.give([source = std::move(source_)] {});
}

bool SaveRun::begin() {
  const std::string fault = read_fault(document_);
  if (!fault.empty()) {
    give_up(fault + "\nSome of this file could not be read, so nothing is saved.");
    return false;
  }
  if (replaced_ && !check(lock_source())) return false;
  if (!audio_->open()) {
    cancel();
    return false;
  }
  const std::string_view extension = extension_of(document_.files[0].file_name);
  const std::uint32_t permissions = permissions_of_sources(document_);
  if (!check(replaced_ ? target_.begin_marked(name_, temporary_mark, extension, permissions)
                       : target_.begin(name_, permissions)))
    return false;
  audio_->begin(range_, {.id3v2 = keeps_id3v2(document_, false),
                         .id3v1 = kept_id3v1(document_, open_state_)});
  return true;
}

// The name must still be that of the file that was opened, and no other run may be about to put
// its own work there. Where nothing has the name any more, nothing can be lost.
std::error_code SaveRun::lock_source() {
  if (!file_facts(name_).found) return {};
  if (const std::error_code error = source_->open(name_)) return error;
  if (const std::error_code error = source_->lock()) return error;
  const FileFacts& opened = document_.files[*replaced_].handle->facts_at_open();
  return is_unchanged(opened, source_->facts()) ? std::error_code{} : FileError::changed;
}

// A slice is up to two megabytes, or a second to encode.
bool SaveRun::step() {
  if (!is_over_) is_completing_ ? look_at_completion() : step_audio();
  return !is_over_;
}

void SaveRun::step_audio() {
  const RangeWriter::Phase phase = audio_->phase();
  if (phase == RangeWriter::Phase::over) return complete();
  if (check(audio_->step()) && phase == RangeWriter::Phase::frames && audio_->phase() != phase)
    check_sources();
}

// What there still is of a source makes a new file, but it takes no other's place. Nor does what
// bad data left take the place of the source that has these data. The parts of a project may lie
// where a file has no frames any more.
void SaveRun::check_sources() {
  std::string fault = audio_->source_fault();
  const bool is_readable = fault.empty();
  const bool has_frames = audio_->frames() != 0;
  if (is_readable && !has_frames) fault = fmt::format("{}\n{}", name_, ui_text(row::no_sync_found));
  if (fault.empty() && audio_->missing().empty()) return;
  const bool may_go_on = has_frames && (is_readable ? !replaced_ : !target_.replaces());
  if (!may_go_on) return give_up(fault);
  has_failed_ = true;
  show_error(with_cause(fault, not_whole()));
}

// The date, a file that is really on disk, and its name. The disk may take long for that.
void SaveRun::complete() {
  const unsigned date_bit = replaced_ ? keep_date_of_source : keep_date_on_new;
  if ((settings.keep_date & date_bit) != 0 && !check(give_date_of_source(document_, target_.file)))
    return;
  is_completing_ = true;
  completion_ = thread_.give([this] {
    completion_error_ = target_.complete();
    if (!completion_error_ && !is_unwanted_) commit_error_ = target_.commit();
  });
}

void SaveRun::look_at_completion() {
  if (thread_.is_done(completion_, slice_patience)) finish();
}

void SaveRun::finish() {
  if (!check(completion_error_)) return;
  if (!replaced_ && !check(commit_error_)) return;
  is_over_ = true;
  if (!commit_error_) return;
  // What was written beside the source is whole and stays.
  has_failed_ = true;
  show_error(commit_error_.message() + "\n" + name_);
}

// A file that is already in its place stays there.
void SaveRun::cancel() {
  if (is_over_) return;
  is_unwanted_ = true;
  thread_.wait(completion_);
  target_.has_its_name() ? finish() : abandon();
}

bool SaveRun::try_cancel() {
  is_unwanted_ = true;
  if (!audio_->is_idle() || !thread_.is_done(completion_, {})) return false;
  cancel();
  return true;
}

// After an interruption nobody will look for what was written beside a source.
void SaveRun::abandon() {
  audio_->wait();
  is_over_ = is_cancelled_ = has_failed_ = true;
  target_.give_up(interruption() == 0 ? LeftBeside::stays : LeftBeside::goes);
  if (target_.is_unfinished()) report_ = not_whole() + "\r\n";
}

// Gives up after a failure. Returns whether there was none. Where a source is what failed, it is
// named.
bool SaveRun::check(std::error_code error) {
  if (!error) return true;
  const std::string fault = read_fault(document_);
  give_up(fault.empty() ? error.message() + "\n" + name_ : fault);
  return false;
}

void SaveRun::give_up(const std::string& reason) {
  abandon();
  report_.clear();
  show_error(target_.is_unfinished() ? with_cause(reason, not_whole()) : reason);
}

std::string SaveRun::not_whole() const {
  const std::string& missing = audio_->missing();
  return fmt::format("{} is not whole{}{}", target_.written_name(), missing.empty() ? "." : ": ",
                     missing);
}

bool SaveRun::has_problem() const {
  return audio_->has_problem() || (replaced_ && !has_replaced());
}

std::string SaveRun::report() const {
  if (is_cancelled_) return report_;
  return has_problem() ? progress_text() + "\r\n" + log() : std::string{};
}

std::string SaveRun::progress_text() const {
  std::string text = "Frames: " + group_thousands(audio_->frames());
  if (audio_->resyncs() != 0) text += fmt::format("    Re-syncs: {}", audio_->resyncs());
  return text;
}

std::string SaveRun::log() const {
  std::string log = audio_->log();
  if (replaced_ && is_written() && !has_replaced())
    log += fmt::format("{}\r\n{}\r\n", ui_text(row::could_not_replace),
                       name_of(target_.written_name()));
  return log;
}

}  // namespace corvelin

// The phases of a save.
#include "exchange/save_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "document/close_all.h"
#include "document/open_state.h"
#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "platform/numbers.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// What the name of the file beside a source has in front of its extension, until it takes its
// place: song.mp3 is written as song.mp3.~~~.mp3.
constexpr std::string_view temporary_mark = ".~~~";

constexpr int rounds_per_slice = 4;  // of up to two megabytes

// The source is replaced by a file that a person can make out should the replacement fail. One that
// an earlier failure left is not touched: it may be all that there is of somebody's work.
std::string free_temporary_name(const std::string& name) {
  constexpr std::size_t longest_name = 255;  // bytes, as common file systems have it
  std::string end = fmt::format("{}{}", temporary_mark, extension_of(document.files[0].file_name));
  for (int number = 2;; ++number) {
    const std::size_t room = longest_name - std::min(longest_name, end.size());
    std::string beside =
        fmt::format("{}{}{}", folder_of(name), cut_to_bytes(name_of(name), room), end);
    if (!is_name_taken(beside)) return beside;
    end = fmt::format("{}.{}{}", temporary_mark, number, extension_of(document.files[0].file_name));
  }
}

}  // namespace

SaveRun::SaveRun(const std::string& name, bool replaces_source)
    : name_(behind_links(in_current_folder(name))),  // a link stays a link
      written_(name_),
      replaces_source_(replaces_source) {
  if (replaces_source_) {
    written_ = free_temporary_name(name_);
  } else if (file_facts(name_).is_regular) {
    written_ = name_beside(name_);
  }
}

bool SaveRun::begin() {
  // A name that was free a moment ago, and one beside another file, somebody may have taken. Only a
  // link that leads to no file yet is written through.
  const bool is_link = written_ == name_ && is_name_taken(name_);
  if (!check(is_link ? copy_.target.create(written_) : copy_.target.create_new(written_)))
    return false;
  if (settings.keep_date != 0) write_time_ = document.files[0].handle.facts().write_time;
  if (open_state.selection_only && has_selection()) {
    copy_.begin(selection.sel_beg, selection.sel_end);
  } else {
    copy_.begin(0, document.total_size);
  }
  return write_front();
}

// The tag and the placeholder of the VBR/Info frame.
bool SaveRun::write_front() {
  if (written_ != name_ && !check(copy_.target.copy_permissions_of(name_))) return false;
  if (keeps_id3v2(false)) {
    const Id3v2Copy copy = copy_.write_id3v2();
    if (!check(copy.error)) return false;
    log_ += fmt::format("ID3v2 {} ({} bytes)\r\n", ui_text(dlg, 92), copy.written);
  }
  return check(copy_.write_header_frame());
}

bool SaveRun::step() {
  switch (phase_) {
    case Phase::frames:
      return frames_step();
    case Phase::header:
      return header_step();
    case Phase::finish:
      return finish();
    case Phase::over:
      break;
  }
  return false;
}

bool SaveRun::frames_step() {
  for (int round = 0; round < rounds_per_slice && copy_.has_more(); ++round)
    if (!check(copy_.copy_frames())) return false;
  if (copy_.resyncs() != 0) problem_ = true;
  if (copy_.has_more()) return true;
  if (!sources_are_whole() || !has_frames() || !check(copy_.end_frames())) return false;
  phase_ = copy_.has_header() ? Phase::header : Phase::finish;
  return true;
}

// What there still is of a source makes a new file, but it takes no other's place.
bool SaveRun::sources_are_whole() {
  const std::string fault = copy_.source_fault();
  if (fault.empty()) return true;
  show_error(fault);
  has_failed_ = true;
  if (written_ != name_) cancel();
  return written_ == name_;
}

// The parts of a project may lie where a file has no frames any more.
bool SaveRun::has_frames() {
  return copy_.frames() > 0 || give_up(fmt::format("{}\n{}", name_, ui_text(msg, 50)));
}

bool SaveRun::header_step() {
  log_ += "VBR/Info header... ";
  const VbrHeaderResult header = copy_.finish_header();
  if (!check(header.error)) return false;
  log_ += header.is_complete ? "Ok\r\n" : fmt::format("{}\r\n", ui_text(msg, 6));
  if (!header.is_complete) problem_ = true;
  phase_ = Phase::finish;
  return true;
}

bool SaveRun::finish() {
  if (!complete_target()) return false;
  phase_ = Phase::over;
  const bool is_selection = std::exchange(open_state.selection_only, false);
  if (replaces_source_) {
    replace_source();
    return false;
  }
  if (written_ != name_) {
    const std::error_code error = rename_over(written_, name_);
    if (!check(error)) return false;
  }
  if (!is_selection && !has_failed_) {
    add_recent(open_state.save_name);
    open_state.document_modified = false;
  }
  return false;
}

// The tag behind the audio, the date, and a file that is really on disk before it replaces another.
bool SaveRun::complete_target() {
  if (keeps_id3v1()) {
    if (!check(copy_.write_id3v1())) return false;
    log_ += fmt::format("ID3v1 {}\r\n", ui_text(dlg, 92));
  }
  const unsigned date_bit = replaces_source_ ? keep_date_of_source : keep_date_on_new;
  if ((settings.keep_date & date_bit) != 0 && !check(copy_.target.set_write_time(write_time_)))
    return false;
  if (written_ != name_ && !check(copy_.target.sync())) return false;
  return check(copy_.target.close());
}

// The document is closed either way: its first source is not what it was, or about to be.
void SaveRun::replace_source() {
  close_all();
  open_state.document_modified = false;
  open_state.save_name = name_;
  const std::error_code error = rename_over(written_, name_);
  if (!error) return;
  has_failed_ = true;
  show_error(error.message() + "\n" + name_);
  if (!file_facts(written_).found) return;  // it is replaced, but may not last
  log_ += fmt::format("{}\r\n{}\r\n", ui_text(msg, 14), name_of(written_));
  open_state.save_name.clear();
  problem_ = true;
}

void SaveRun::cancel() {
  phase_ = Phase::over;
  has_failed_ = true;
  open_state.selection_only = false;
  copy_.give_up();
  if (!replaces_source_ && written_ != name_) remove_file(written_);
}

// Gives up after a failure of the file. Returns whether there was none.
bool SaveRun::check(std::error_code error) {
  return !error || give_up(error.message() + "\n" + (replaces_source_ ? written_ : name_));
}

bool SaveRun::give_up(const std::string& reason) {
  show_error(reason);
  cancel();
  return false;
}

std::string SaveRun::report() const {
  return problem_ ? progress_text() + "\r\n" + log_ : std::string{};
}

int SaveRun::percent_done() const { return copy_.percent_done(); }

std::string SaveRun::progress_text() const {
  std::string text = "Frames: " + group_thousands(copy_.frames());
  if (copy_.resyncs() != 0) text += fmt::format("    Re-syncs: {}", copy_.resyncs());
  return text;
}

}  // namespace corvelin

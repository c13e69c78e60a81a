// The phases of a save.
#include "exchange/save_run.h"

#include <fmt/format.h>

#include <utility>

#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "platform/interruption.h"
#include "platform/numbers.h"
#include "platform/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// What the name of the file beside a source has behind it until it takes its place: song.mp3 is
// written as song.mp3.~~~.mp3, which a person can make out should the replacement fail.
constexpr std::string_view temporary_mark = ".~~~";

constexpr int pieces_per_slice = 4;  // of up to two megabytes

}  // namespace

SaveRun::SaveRun(const std::string& name, EditRange range, std::optional<std::uint16_t> replaced)
    : name_(in_current_folder(name)), range_(range), replaced_(replaced) {}

bool SaveRun::begin() {
  const std::string fault = read_fault();
  if (!fault.empty()) {
    give_up(fault + "\nSome of this file could not be read, so nothing is saved.");
    return false;
  }
  if (replaced_ && !check(lock_source())) return false;
  const std::string_view extension = extension_of(document.files[0].file_name);
  if (!check(replaced_ ? target_.begin_marked(name_, temporary_mark, extension)
                       : target_.begin(name_)))
    return false;
  copy_.begin(range_, {.id3v2 = keeps_id3v2(false), .id3v1 = keeps_id3v1()});
  return true;
}

// The name must still be that of the file that was opened, and no other run may be about to put
// its own work there. Where nothing has the name any more, nothing can be lost.
std::error_code SaveRun::lock_source() {
  if (!file_facts(name_).found) return {};
  if (const std::error_code error = source_.open(name_)) return error;
  if (const std::error_code error = source_.lock()) return error;
  const FileFacts& opened = document.files[*replaced_].handle.facts_at_open();
  return is_unchanged(opened, source_.facts()) ? std::error_code{} : FileError::changed;
}

bool SaveRun::step() {
  for (int i = 0; i < pieces_per_slice && !is_over_; ++i) {
    const RangeCopy::Phase phase = copy_.phase();
    if (phase == RangeCopy::Phase::over) {
      finish();
    } else if (check(copy_.step()) && phase == RangeCopy::Phase::frames && copy_.phase() != phase) {
      check_sources();
    }
  }
  return !is_over_;
}

// What there still is of a source makes a new file, but it takes no other's place. The parts of a
// project may lie where a file has no frames any more.
void SaveRun::check_sources() {
  std::string fault = copy_.source_fault();
  const bool has_frames = copy_.frames() != 0;
  if (fault.empty() && !has_frames) fault = fmt::format("{}\n{}", name_, ui_text(msg, 50));
  if (fault.empty()) return;
  if (!has_frames || target_.replaces()) return give_up(fault);
  has_failed_ = true;
  show_error(fmt::format("{}\n{}", fault, not_whole()));
}

// The date, a file that is really on disk, and its name.
void SaveRun::finish() {
  const unsigned date_bit = replaced_ ? keep_date_of_source : keep_date_on_new;
  if ((settings.keep_date & date_bit) != 0 && !check(give_date_of_source(target_.file))) return;
  if (!check(target_.complete())) return;
  const std::error_code error = target_.commit();
  if (!replaced_ && !check(error)) return;
  is_over_ = true;
  if (!error) return;
  // What was written beside the source is whole and stays.
  has_failed_ = true;
  show_error(error.message() + "\n" + name_);
}

// After an interruption nobody will look for what was written beside a source.
void SaveRun::cancel() {
  if (is_over_) return;
  is_over_ = is_cancelled_ = has_failed_ = true;
  target_.give_up(interruption() == 0 ? LeftBeside::stays : LeftBeside::goes);
  if (target_.is_unfinished()) report_ = not_whole() + "\r\n";
}

// Gives up after a failure. Returns whether there was none. Where a source is what failed, it is
// named.
bool SaveRun::check(std::error_code error) {
  if (!error) return true;
  const std::string fault = read_fault();
  give_up(fault.empty() ? error.message() + "\n" + name_ : fault);
  return false;
}

void SaveRun::give_up(const std::string& reason) {
  cancel();
  report_.clear();
  show_error(target_.is_unfinished() ? fmt::format("{}\n{}", reason, not_whole()) : reason);
}

std::string SaveRun::not_whole() const {
  return fmt::format("{} is not whole.", target_.written_name());
}

bool SaveRun::has_problem() const {
  const bool has_bad_header = copy_.has_header() && !copy_.is_header_complete();
  return copy_.resyncs() != 0 || has_bad_header || (replaced_ && !has_replaced());
}

std::string SaveRun::report() const {
  if (is_cancelled_) return report_;
  return has_problem() ? progress_text() + "\r\n" + log() : std::string{};
}

std::string SaveRun::progress_text() const {
  std::string text = "Frames: " + group_thousands(copy_.frames());
  if (copy_.resyncs() != 0) text += fmt::format("    Re-syncs: {}", copy_.resyncs());
  return text;
}

std::string SaveRun::log() const {
  std::string log;
  if (copy_.id3v2_size() != 0)
    log += fmt::format("ID3v2 {} ({} bytes)\r\n", ui_text(dlg, 92), copy_.id3v2_size());
  if (copy_.has_header())
    log += fmt::format("VBR/Info header... {}\r\n",
                       copy_.is_header_complete() ? "Ok" : ui_text(msg, 6));
  if (copy_.has_id3v1()) log += fmt::format("ID3v1 {}\r\n", ui_text(dlg, 92));
  if (replaced_ && is_written() && !has_replaced())
    log += fmt::format("{}\r\n{}\r\n", ui_text(msg, 14), name_of(target_.written_name()));
  return log;
}

}  // namespace corvelin

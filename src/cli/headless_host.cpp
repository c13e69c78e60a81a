// SPDX-License-Identifier: GPL-2.0-or-later
// The headless host.
#include "cli/headless_host.h"

#include <fmt/format.h>

#include <utility>

#include "cli/messages.h"
#include "edit/split_dialog.h"
#include "platform/files/file.h"
#include "platform/processes/interruption.h"
#include "platform/text/text.h"
#include "unattended/dialog_runs.h"

namespace corvelin {

namespace {

std::string with_plain_line_ends(std::string text) {
  std::erase(text, '\r');
  return text;
}

}  // namespace

void HeadlessHost::print(const MessageBox& box) {
  messages_.push_back(box);
  if (line_ != nullptr) line_->clear();
  std::string text = box.text;
  while (text.ends_with('\n')) text.pop_back();
  tell(printable(fmt::format("{}: {}", box.caption, text)));
  if (!box.cause.empty()) tell(printable(box.cause));
}

BoxAnswer HeadlessHost::show_message_box(const MessageBox& box) {
  print(box);
  if (box.buttons == BoxButtons::ok) return BoxAnswer::ok;
  if (!fixed_answer_) return box.default_answer;
  if (box.buttons != BoxButtons::ok_cancel) return *fixed_answer_;
  return fixed_answer_ == BoxAnswer::yes ? BoxAnswer::ok : BoxAnswer::cancel;
}

// The long notes are for somebody who has a window to learn.
bool HeadlessHost::show_note(const MessageBox&) { return false; }

std::optional<std::string> HeadlessHost::take_next_path(const FileDialog& dialog) {
  if (!next_path_) tell(printable(dialog.title) + ": There is nobody here to choose a file.");
  return std::exchange(next_path_, std::nullopt);
}

bool HeadlessHost::may_write(const std::string& path) const {
  if (fixed_answer_ == BoxAnswer::yes || !is_name_taken(path)) return true;
  complain(path + " exists; it is replaced with --yes");
  return false;
}

// Whatever the settings say of warnings: what a script writes over is gone before anybody looks.
std::optional<std::string> HeadlessHost::ask_for_new_file(const FileDialog& dialog) {
  std::optional<std::string> path = take_next_path(dialog);
  if (path && !may_write(*path)) return std::nullopt;
  return path;
}

std::optional<std::string> HeadlessHost::ask_for_existing_file(const FileDialog& dialog) {
  return take_next_path(dialog);
}

// Dialogs with buttons alone need no answer: they run with the settings as they stand. Texts to
// fill in are a matter for the lines that name them.
bool HeadlessHost::show(Dialog& dialog) {
  if (const auto fill_in = std::exchange(next_dialog_, nullptr)) return fill_in(dialog);
  if (auto* const normalize = dynamic_cast<NormalizeDialog*>(&dialog))
    return run_unattended(*normalize);
  if (auto* const pause = dynamic_cast<PauseDialog*>(&dialog)) return run_unattended(*pause);
  if (auto* const auto_cue = dynamic_cast<AutoCueDialog*>(&dialog)) {
    if (run_unattended(*auto_cue)) return true;
    if (auto_cue->result == Result::nothing) tell("No cue was set.");
    return false;
  }
  auto* const split = dynamic_cast<SplitDialog*>(&dialog);
  if (split == nullptr) {
    tell(
        "There is nobody here to fill in a dialog; see the lines \"names\", \"tag\", "
        "\"header_bits\" and \"level\".");
    return false;
  }
  if (!split->accept()) return false;
  corvelin::drive(*split->run);
  return split->run->result() == SplitResult::finished;
}

void HeadlessHost::drive(LongRun& run) {
  {
    ProgressLine line;
    line_ = &line;
    int shown = -1;
    while (interruption() == 0 && run.step()) {
      const int percent = run.percent_done();
      if (std::exchange(shown, percent) != percent)
        line.show(fmt::format("{:3}%  {}", percent, run.progress_text()));
    }
    if (interruption() != 0) run.cancel();
    line.show(fmt::format("{:3}%  {}", run.percent_done(), run.progress_text()));
    line_ = nullptr;
  }
  const std::string report = run.report();
  write_message(printable(with_plain_line_ends(report)));
}

std::vector<MessageBox> HeadlessHost::take_messages() { return std::exchange(messages_, {}); }

}  // namespace corvelin

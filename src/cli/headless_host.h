// SPDX-License-Identifier: GPL-2.0-or-later
// The host of a run without a window: boxes go to standard error, questions are answered by the
// command line, and runs are stepped in a plain loop.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/progress_line.h"
#include "cli/unsaved.h"
#include "platform/host.h"

namespace corvelin {

class HeadlessHost : public Host {
 public:
  /// `fixed_answer`: yes or no to every question. Without it each takes its default.
  explicit HeadlessHost(std::optional<BoxAnswer> fixed_answer) : fixed_answer_(fixed_answer) {}

  BoxAnswer show_message_box(const MessageBox& box) override;
  bool show_note(const MessageBox& note) override;
  std::optional<std::string> ask_for_new_file(const FileDialog& dialog) override;
  std::optional<std::string> ask_for_existing_file(const FileDialog& dialog) override;
  bool show(Dialog& dialog) override;
  void drive(LongRun& run) override;
  void close() override { wants_close_ = true; }

  /// The answer to the next question for a file name; nothing takes it back.
  void set_next_path(std::optional<std::string> path) { next_path_ = std::move(path); }

  /// What the next dialog is filled in with and whether it is closed by OK; null takes it back.
  void set_next_dialog(std::function<bool(Dialog&)> fill_in) { next_dialog_ = std::move(fill_in); }

  /// Whether a file may be written under this name: where none stands, or with `--yes`. Tells that
  /// it may not.
  [[nodiscard]] bool may_write(const std::string& path) const;

  /// The boxes shown since the last call.
  std::vector<MessageBox> take_messages();

  [[nodiscard]] bool wants_close() const { return wants_close_; }

  /// What of the document is saved, by the lines so far.
  SavedContent saved;

 private:
  std::optional<BoxAnswer> fixed_answer_;
  std::optional<std::string> next_path_;
  std::function<bool(Dialog&)> next_dialog_;
  std::vector<MessageBox> messages_;
  bool wants_close_ = false;
  ProgressLine* line_ = nullptr;  // of the run under way

  void print(const MessageBox& box);
  std::optional<std::string> take_next_path(const FileDialog& dialog);
};

}  // namespace corvelin

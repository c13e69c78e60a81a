// SPDX-License-Identifier: GPL-2.0-or-later
// The order of a headless run: settings, file, edit lines, reports, work, end.
#include "cli/headless_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <system_error>

#include "cli/batch.h"
#include "cli/edit_lines.h"
#include "cli/headless_host.h"
#include "cli/line_reader.h"
#include "cli/messages.h"
#include "cli/open_files.h"
#include "cli/options.h"
#include "cli/record_run.h"
#include "cli/reports.h"
#include "cli/state_json.h"
#include "cli/times.h"
#include "cli/unsaved.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "edit/requirements.h"
#include "edit/save_audio.h"
#include "model/document.h"
#include "platform/files/clipboard.h"
#include "platform/processes/interruption.h"
#include "platform/processes/process.h"
#include "settings/setting_table.h"
#include "settings/settings_file.h"
#include "settings/settings_storage.h"
#include "shell/start_up.h"
#include "unattended/remote_control.h"

namespace corvelin {

namespace {

// The settings given on the command line hold for this run: they are not stored at its end.
class RunSettings {
 public:
  bool apply(const Options& options) {
    stored_ = settings;
    if (settings.ffmpeg.empty() && has_program("ffmpeg")) settings.ffmpeg = "ffmpeg";
    for (const auto& [key, value] : options.settings) {
      const std::string refusal = set_refusal(set_setting(key, value), key, value);
      if (refusal.empty()) continue;
      complain(refusal);
      return false;
    }
    at_start_ = settings;
    return true;
  }

  // Puts back what the command line changed and nothing else did since.
  void take_back() {
    for (const SettingKey& row : setting_keys()) std::visit(*this, row.field);
  }

  template <typename Value>
  void operator()(Value Settings::*field) const {
    if (settings.*field == at_start_.*field) settings.*field = stored_.*field;
  }

 private:
  Settings stored_;
  Settings at_start_;
};

class HeadlessRun {
 public:
  explicit HeadlessRun(const Options& options) : options_(options), host_(answer_of(options)) {
    install_host(&host_);
  }
  ~HeadlessRun() { install_host(nullptr); }
  HeadlessRun(const HeadlessRun&) = delete;
  HeadlessRun& operator=(const HeadlessRun&) = delete;

  int run() {
    const std::optional<std::string> path = settings_path();
    if (!start_up(editor_, path)) return failed;
    if (!run_settings_.apply(options_)) return wrong_usage;
    load_language();
    clipboard_file = options_.clipboard;
    uses_display_scale = std::ranges::any_of(
        options_.settings, [](const auto& setting) { return setting.first == "use_toc"; });
    work();
    shut_down(editor_);
    end_remote_control(editor_);
    store();
    if (!flush_output()) fail("standard output: write error");
    return interruption() == 0 ? status_ : status_of_signals + interruption();
  }

 private:
  static std::optional<BoxAnswer> answer_of(const Options& options) {
    if (!options.answer) return std::nullopt;
    return *options.answer ? BoxAnswer::yes : BoxAnswer::no;
  }

  [[nodiscard]] std::optional<std::string> settings_path() const {
    return options_.localini ? choose_settings_file(true) : options_.settings_path;
  }

  void fail(const std::string& text) {
    complain(text);
    status_ = failed;
  }

  // What is refused ends the work: the document isn't what the user meant to go on with.
  void work() {
    if (options_.batch) {
      if (!run_batch(*options_.batch)) status_ = failed;
      return;
    }
    if (options_.records) {
      record();
    } else {
      open();
    }
    run_edits();
    report();
    if (options_.work != nullptr && interruption() == 0) run_work(*options_.work);
    fail_at_bad_source();
    if (status_ == succeeded) tell_unsaved_edits(editor_.document, host_.saved);
  }

  void open() {
    if (options_.files.empty()) return;
    const Refusal refusal = open_paths(editor_, options_.files);
    host_.saved = content_of(editor_.document);
    if (!refusal.empty()) fail(refusal);
    fail_at_bad_source();
  }

  // What was recorded is the document from here on, also when the recording broke off.
  void record() {
    editor_.remote_control_on = options_.remote;
    if (!record_unattended(editor_,
                           options_.files.empty() ? std::string() : options_.files.front()))
      status_ = failed;
    host_.saved = content_of(editor_.document);
  }

  [[nodiscard]] bool goes_on() const {
    const bool may_go_on = status_ == succeeded || options_.keep_going;
    return may_go_on && !host_.wants_close() && interruption() == 0;
  }

  void run_edits() {
    if (status_ != succeeded) return;  // without its document no line means anything
    for (const EditSource& source : options_.edits) {
      if (!goes_on()) return;
      if (source.is_script) {
        run_script(source.text);
      } else {
        run_line(source.text, source.text);
      }
    }
    if (status_ == succeeded && !options_.output.empty() && goes_on()) run_output();
  }

  void run_script(const std::string& path) {
    const std::string name = path == "-" ? "standard input" : path;
    LineReader script;
    if (const std::error_code error = script.open(path))
      return fail(fmt::format("{}: {}", name, error.message()));
    std::string line;
    while (goes_on()) {
      const LineReader::Read read = script.next(line);
      if (read == LineReader::Read::end) break;
      const std::string place = fmt::format("{}:{}", name, script.number());
      if (read == LineReader::Read::too_long) {
        fail(place + ": the line is too long");
      } else {
        run_line(line, place);
      }
    }
    if (script.error() && interruption() == 0)
      fail(fmt::format("{}: {}", name, script.error().message()));
  }

  void run_line(const std::string& line, const std::string& place) {
    const Refusal refusal = run_edit_line(editor_, line, host_);
    if (!refusal.empty()) fail(fmt::format("{}: {}", place, refusal));
    fail_at_bad_source();
  }

  // A source that can't be read in full is not what it seems, though nothing was refused.
  void fail_at_bad_source() {
    std::string fault = read_fault(editor_.document);
    std::ranges::replace(fault, '\n', ':');
    if (!fault.empty() && fault != told_fault_) fail(fault);
    told_fault_ = fault;
  }

  void run_output() {
    const Refusal refusal = run_edit_words(editor_, {"save", options_.output}, host_);
    if (!refusal.empty()) fail(fmt::format("--output {}: {}", options_.output, refusal));
  }

  void report() {
    if (editor_.document.files.empty()) {
      if (status_ == succeeded && (options_.info || options_.frames)) fail("no document is open");
    } else if (options_.info) {
      print(stream_summary(editor_));
    }
    if (options_.json) print_state();
    if (options_.frames && !editor_.document.files.empty()) print_frames(editor_.document);
  }

  void run_work(const WorkSwitch& work) {
    if (status_ != succeeded) return fail(fmt::format("/{} was not run", work.name));
    if (host_.wants_close()) return;
    if (editor_.document.parts.empty()) return fail("no document is open");
    if (work.needs_levels) require(need_level_control(editor_.document));  // tells what is missing
    if (do_work(editor_, work, options_.request) != SaveOutcome::saved) {
      status_ = failed;
    } else {
      host_.saved = content_of(editor_.document);
    }
  }

  void store() {
    if (!options_.settings_path && !options_.localini) return;
    run_settings_.take_back();
    const std::error_code error =
        options_.localini ? store_settings() : write_settings(*options_.settings_path);
    if (error) fail("the settings were not written: " + error.message());
  }

  void print_state() { print(state_as_json(editor_, host_.take_messages()) + "\n"); }

  const Options& options_;
  Editor editor_;
  HeadlessHost host_;
  RunSettings run_settings_;
  int status_ = succeeded;
  std::string told_fault_;  // of a source
};

}  // namespace

int run_headless(int argc, const char* const* argv) {
  const ParsedOptions parsed = parse_options(argc, argv);
  if (parsed.exit_status) return *parsed.exit_status;
  if (parsed.options.listing != nullptr) {
    parsed.options.listing();
    return flush_output() ? succeeded : failed;
  }
  return HeadlessRun(parsed.options).run();
}

}  // namespace corvelin

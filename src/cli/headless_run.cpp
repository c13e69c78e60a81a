// The order of a headless run: settings, file, edit lines, reports, work, end.
#include "cli/headless_run.h"

#include <fmt/format.h>

#include <fstream>
#include <iostream>
#include <istream>

#include "cli/edit_lines.h"
#include "cli/headless_host.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/reports.h"
#include "cli/state_json.h"
#include "document/open_state.h"
#include "edit/save_audio.h"
#include "exchange/split_save.h"
#include "model/document.h"
#include "platform/clipboard.h"
#include "settings/setting_table.h"
#include "settings/settings_file.h"
#include "settings/settings_storage.h"
#include "shell/start_up.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

// The settings given on the command line hold for this run: they are not stored at its end.
class RunSettings {
 public:
  bool apply(const Options& options) {
    stored_ = settings;
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
    if (!start_up(path)) return failed;
    if (!run_settings_.apply(options_)) return wrong_usage;
    load_language();
    clipboard_file = options_.clipboard;
    work();
    shut_down();
    store();
    if (!flush_output()) fail("standard output: write error");
    return status_;
  }

 private:
  static std::optional<BoxAnswer> answer_of(const Options& options) {
    if (!options.answer) return std::nullopt;
    return *options.answer ? BoxAnswer::yes : BoxAnswer::no;
  }

  [[nodiscard]] std::optional<std::string> settings_path() const {
    return options_.work.localini ? choose_settings_file(true) : options_.settings_path;
  }

  void fail(const std::string& text) {
    complain(text);
    status_ = failed;
  }

  void work() {
    for (const std::string& name : options_.work.unavailable)
      fail(fmt::format("/{} is not available yet", name));
    if (status_ != succeeded) return;
    if (!options_.file.empty() && !open_file(options_.file)) {
      fail(options_.file + " was not opened");
      if (options_.json) print_state();
      return;
    }
    for (const EditSource& source : options_.edits) run_edits(source);
    report();
    if (options_.work.save || options_.work.split) run_switches();
  }

  void run_edits(const EditSource& source) {
    if (!source.is_script) return run_line(source.text, source.text);
    if (source.text == "-") return run_script(std::cin, "standard input");
    std::ifstream file(source.text, std::ios::binary);
    if (!file) return fail(source.text + " can't be read");
    run_script(file, source.text);
  }

  void run_script(std::istream& script, const std::string& name) {
    int number = 0;
    for (std::string line; !host_.wants_close() && std::getline(script, line);)
      run_line(line, fmt::format("{}:{}", name, ++number));
    if (script.bad()) fail(name + " can't be read");
  }

  void run_line(const std::string& line, const std::string& place) {
    if (host_.wants_close()) return;
    const std::string refusal = run_edit_line(line, host_);
    if (!refusal.empty()) fail(fmt::format("{}: {}", place, refusal));
  }

  void report() {
    if (document.files.empty()) {
      if (options_.info || options_.frames) fail("no document is open");
    } else if (options_.info) {
      print(stream_summary());
    }
    if (options_.json) print_state();
    if (options_.frames && !document.files.empty()) print_frames();
  }

  // After an edit that was refused the document isn't what the user meant to save. Of several
  // switches the first decides.
  void run_switches() {
    if (status_ != succeeded) return fail("nothing is saved after a failure");
    if (document.parts.empty()) return fail("no document is open");
    if (host_.wants_close()) return;
    batch_active = true;
    const SaveOutcome outcome = options_.work.save ? save_unattended(options_.work.overwrite)
                                                   : split_unattended(*options_.work.split);
    if (outcome != SaveOutcome::saved) status_ = failed;
  }

  void store() {
    if (!options_.settings_path && !options_.work.localini) return;
    run_settings_.take_back();
    const std::error_code error =
        options_.work.localini ? store_settings() : write_settings(*options_.settings_path);
    if (error) fail("the settings were not written: " + error.message());
  }

  void print_state() { print(state_as_json(host_.take_messages()) + "\n"); }

  const Options& options_;
  HeadlessHost host_;
  RunSettings run_settings_;
  int status_ = succeeded;
};

}  // namespace

int run_headless(int argc, const char* const* argv) {
  const ParsedOptions parsed = parse_options(argc, argv);
  if (parsed.exit_status) return *parsed.exit_status;
  return HeadlessRun(parsed.options).run();
}

}  // namespace corvelin

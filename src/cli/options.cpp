// Parsing of the command line with CLI11.
#include "cli/options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string_view>

#include "cli/messages.h"
#include "platform/program.h"

namespace corvelin {

namespace {

// A work switch is also one in the form of the desktop's command line: /save beside --save. Only
// these words are, so that a path of this platform is never taken for one.
constexpr std::array<std::string_view, 9> switch_words = {"save",     "overwrite", "normalize",
                                                          "autocrop", "autocue",   "pausesplit",
                                                          "split",    "localini",  "rec"};

std::vector<std::string> with_dashed_switches(int argc, const char* const* argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  for (std::string& word : words) {
    if (word == "--") break;
    const bool is_switch = word.starts_with('/') &&
                           std::ranges::find(switch_words, word.substr(1)) != switch_words.end();
    if (is_switch) word = "--" + word.substr(1);
  }
  return words;
}

void add_work_switches(CLI::App& app, WorkSwitches& work) {
  constexpr const char* group = "Work switches (also in the form /save)";
  app.add_flag("--save", work.save, "Save beside the file: song.mp3 gives song.mp3.mp3")
      ->group(group);
  app.add_flag("--overwrite", work.overwrite, "With --save: replace the file")->group(group);
  app.add_flag("--localini", work.localini, "Keep the settings beside the program")->group(group);
  for (const char* const name : {"normalize", "autocrop", "rec"}) {
    app.add_flag_callback(
           std::string("--") + name, [&work, name] { work.unavailable.emplace_back(name); },
           "Not available yet")
        ->group(group);
  }
  app.add_option_function<std::string>(
         "--split", [&work](const std::string& folder) { work.split = folder; },
         "Split at the cues into a file a track, in FOLDER or beside the audio")
      ->expected(0, 1)
      ->type_name("[FOLDER]")
      ->group(group);
  for (const char* const name : {"autocue", "pausesplit"}) {
    app.add_option_function<std::string>(
           std::string("--") + name,
           [&work, name](const std::string&) { work.unavailable.emplace_back(name); },
           "Not available yet")
        ->expected(0, 1)
        ->type_name("[FOLDER]")
        ->group(group);
  }
}

// Checks what CLI11 has no words for.
std::string usage_fault(const Options& options) {
  if (options.file.empty() && options.edits.empty()) return "FILE is required; see --help";
  if (options.settings_path && options.work.localini)
    return "--settings and --localini exclude each other";
  return {};
}

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv) {
  ParsedOptions parsed;
  Options& options = parsed.options;
  CLI::App app("Edits MP3, MP2 and AAC files without decoding them.", "corvelin-cli");
  app.set_version_flag("--version", "corvelin-cli " + std::string(program_version));
  app.add_option("FILE", options.file,
                 "The file to open: audio, a project, a cue sheet or a playlist");
  app.add_flag("--info", options.info, "Print the summary of the stream");
  app.add_flag("--json", options.json, "Print the state as one line of JSON");
  app.add_flag("--frames", options.frames,
               "Print a line a frame: position, file, file offset, length, bitrate, gain");
  app.add_option_function<std::string>(
         "-e,--edit",
         [&](const std::string& line) {
           options.edits.push_back({false, line});
         },
         "Run one edit line; may be repeated")
      ->type_name("LINE")
      ->trigger_on_parse();
  app.add_option_function<std::string>(
         "--script",
         [&](const std::string& path) {
           options.edits.push_back({true, path});
         },
         "Run the edit lines of a file, - for standard input")
      ->type_name("PATH")
      ->trigger_on_parse();
  std::vector<std::string> assignments;
  app.add_option_function<std::string>(
         "--set", [&](const std::string& assignment) { assignments.push_back(assignment); },
         "Set a setting for this run; may be repeated")
      ->type_name("KEY=VALUE")
      ->trigger_on_parse();
  app.add_option("--settings", options.settings_path,
                 "Read the settings from PATH, and keep them there")
      ->type_name("PATH");
  app.add_option("--clipboard", options.clipboard, "Use PATH as the clipboard")->type_name("PATH");
  bool yes = false;
  bool no = false;
  auto* const yes_flag = app.add_flag("--yes", yes, "Answer every question with yes");
  app.add_flag("--no", no, "Answer every question with no")->excludes(yes_flag);
  add_work_switches(app, options.work);

  try {
    std::vector<std::string> words = with_dashed_switches(argc, argv);
    std::ranges::reverse(words);  // as CLI11 takes them
    app.parse(words);
  } catch (const CLI::ParseError& error) {
    parsed.exit_status = app.exit(error) == 0 ? 0 : wrong_usage;
    return parsed;
  }
  if (yes || no) options.answer = yes;

  std::string fault = usage_fault(options);
  for (const std::string& assignment : assignments) {
    const std::size_t equal = assignment.find('=');
    if (equal == std::string::npos) {
      fault = fmt::format("--set takes KEY=VALUE, not {}", assignment);
      break;
    }
    options.settings.emplace_back(assignment.substr(0, equal), assignment.substr(equal + 1));
  }
  if (!fault.empty()) {
    complain(fault);
    parsed.exit_status = wrong_usage;
  }
  return parsed;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Parsing of the command line with CLI11.
#include "cli/options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "cli/batch_words.h"
#include "cli/listings.h"
#include "cli/manual_page.h"
#include "cli/messages.h"
#include "cli/nearest_word.h"
#include "cli/place.h"
#include "platform/processes/program.h"

namespace corvelin {

namespace {

bool is_switch(std::string_view name) {
  return name == "overwrite" || name == "localini" || name == "rec" ||
         std::ranges::find(work_switches(), name, &WorkSwitch::name) != work_switches().end();
}

// An empty word comes from a variable that a script forgot to set.
std::string is_named(const std::string& path) { return path.empty() ? "the name is empty" : ""; }

// A switch is also one in the form of the desktop's command line: /save beside --save. Only these
// words are, so that a path of this platform is never taken for one.
std::vector<std::string> with_dashed_switches(int argc, const char* const* argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  for (std::string& word : words) {
    if (word == "--") break;
    if (word.starts_with('/') && is_switch(std::string_view(word).substr(1)))
      word = "--" + word.substr(1);
  }
  return words;
}

class CommandLine {
 public:
  CommandLine() {
    app_.set_version_flag("--version", "corvelin-cli " + std::string(program_version));
    app_.allow_extras();  // to be told by the nearest known ones
    app_.get_formatter()->column_width(width_of_names);
    app_.add_option("FILE", options.files,
                    "Audio, a project, a cue sheet or a playlist; several audio files make one "
                    "document")
        ->type_name("");
    add_reports();
    add_editing();
    add_settings();
    add_switches();
    add_batch();
    app_.footer(fmt::format(
        "\nForms of POS, a place in the edited stream:\n{}\nExit status: {}\n\nExamples:\n{}\n"
        "The edit lines are listed by --commands, the settings by --keys.\n",
        place_forms, exit_statuses, example_lines));
  }

  /// Reads the words. Nothing when there is something to run.
  std::optional<int> parse(int argc, const char* const* argv) {
    try {
      std::vector<std::string> words = with_dashed_switches(argc, argv);
      std::ranges::reverse(words);  // as CLI11 takes them
      app_.parse(words);
    } catch (const CLI::CallForHelp&) {
      print(app_.help());
      return flush_output() ? succeeded : failed;
    } catch (const CLI::CallForVersion& version) {
      print(version.what() + std::string("\n"));
      return flush_output() ? succeeded : failed;
    } catch (const CLI::ParseError& error) {
      complain(error.what());
      return wrong_usage;
    }
    if (yes_ || no_) options.answer = yes_;
    const std::string fault = usage_fault();
    if (fault.empty()) return std::nullopt;
    complain(fault);
    return wrong_usage;
  }

  [[nodiscard]] std::vector<OptionRow> rows() const {
    std::vector<OptionRow> rows;
    for (const CLI::Option* const option : app_.get_options()) {
      if (option->get_group().empty()) continue;
      std::string names = option->get_name(option->get_positional(), true);
      if (const std::size_t comma = names.find(','); comma != std::string::npos)
        names.insert(comma + 1, " ");
      if (!option->get_type_name().empty()) names += " " + option->get_type_name();
      rows.push_back({option->get_group(), names, option->get_description()});
    }
    return rows;
  }

  Options options;

 private:
  static constexpr std::size_t width_of_names = 26;  // columns

  void add_reports() {
    app_.add_flag("--info", options.info, "Print the summary of the stream, and its parts");
    app_.add_flag("--json", options.json,
                  "Print the same as one line of JSON; with --batch its results");
    app_.add_flag("--frames", options.frames,
                  "Print a line a frame: position, file, file offset, length, bitrate, gain");
    add_listing("--commands", print_commands, "Print the edit lines and commands");
    add_listing("--keys", print_keys, "Print the settings: values, default and meaning");
    add_listing("--pattern", print_pattern, "Print the letters of the setting split_pattern");
    add_listing("--man", print_manual_page, "Print the page for man")->group("");  // for the build
  }

  CLI::Option* add_listing(const char* name, void (*listing)(), const char* help) {
    return app_.add_flag_callback(
        name, [this, listing] { options.listing = listing; }, help);
  }

  void add_editing() {
    const auto add_edits = [this](const char* names, bool is_script, const char* type,
                                  const char* help) {
      app_.add_option_function<std::string>(
              names,
              [this, is_script](const std::string& text) {
                options.edits.push_back({is_script, text});
              },
              help)
          ->type_name(type)
          ->trigger_on_parse();  // each as it comes, so that lines and scripts keep their order
    };
    add_edits("-e,--edit", false, "LINE", "Run an edit line; may be repeated");
    add_edits("--script", true, "PATH", "Run the edit lines of a file, - for standard input");
    app_.add_flag("--keep-going", options.keep_going, "Go on with the next line after a refusal");
    app_.add_option("-o,--output", options.output,
                    "Save the result of the edit lines under this name")
        ->type_name("PATH")
        ->check(is_named);
    auto* const yes = app_.add_flag("--yes", yes_, "Answer every question with yes");
    app_.add_flag("--no", no_, "Answer every question with no")->excludes(yes);
    app_.add_option("--clipboard", options.clipboard, "Use a file as the clipboard")
        ->type_name("PATH");
  }

  void add_settings() {
    app_.add_option_function<std::string>(
            "--set", [this](const std::string& assignment) { take_setting(assignment); },
            "Set a setting for this run; may be repeated")
        ->type_name("KEY=VALUE")
        ->trigger_on_parse();
    app_.add_option("--settings", options.settings_path,
                    "Read the settings from a file, and keep changes there")
        ->type_name("PATH");
    app_.add_flag("--remote", options.remote,
                  "With /rec: take commands from corvlremote.txt in the folder of file_savepath");
  }

  void take_setting(const std::string& assignment) {
    const std::size_t equal = assignment.find('=');
    if (equal == std::string::npos)
      throw CLI::ConversionError("--set takes KEY=VALUE, not " + assignment);
    options.settings.emplace_back(assignment.substr(0, equal), assignment.substr(equal + 1));
  }

  void add_switches() {
    constexpr const char* group = "Work switches (each also in the form /save)";
    for (const WorkSwitch& work : work_switches()) {
      const std::string name = "--" + std::string(work.name);
      const std::string help(work.help);
      if (work.takes_folder) {
        app_.add_option_function<std::string>(
                name,
                [this, &work](const std::string& folder) {
                  choose_work(work);
                  options.request.folder = folder;
                },
                help)
            ->expected(0, 1)
            ->type_name("[FOLDER]")
            ->group(group);
      } else {
        app_.add_flag_callback(
                name, [this, &work] { choose_work(work); }, help)
            ->group(group);
      }
    }
    app_.add_flag("--overwrite", options.request.overwrite,
                  "With a switch that saves, or --batch: replace the file itself")
        ->group(group);
    app_.add_flag(
            "--rec", options.records,
            "Record into FILE, or by the settings, until rec_time, Ctrl+C or SIGTERM; SIGUSR1 "
            "sets a cue, SIGUSR2 tells the status")
        ->group(group);
    app_.add_flag("--localini", options.localini, "Keep the settings beside the program")
        ->group(group);
  }

  void choose_work(const WorkSwitch& work) {
    if (options.work != nullptr)
      throw CLI::ExcludesError("/" + std::string(options.work->name), "/" + std::string(work.name));
    options.work = &work;
  }

  void add_batch() {
    constexpr const char* group = "Batch processing";
    app_.add_option_function<std::string>(
            "--batch",
            [this](const std::string& folder) {
              is_batch_ = true;
              batch_.job.source_folder = folder;
            },
            "Work on the files of a folder, or of --files, each by itself")
        ->expected(0, 1)
        ->type_name("[FOLDER]")
        ->group(group);
    app_.add_option("--files", batch_.list,
                    "Take the files from a list, a name a line; - for standard input")
        ->type_name("LIST")
        ->check(is_named)
        ->group(group);
    app_.add_flag_callback(
            "-0", [this] { batch_.list_end = '\0'; }, "The names of the list end with a zero byte")
        ->group(group);
    app_.add_option("--do", batch_words_, batch_help())
        ->type_name("WORD[,WORD...]")
        ->delimiter(',')
        ->group(group);
    app_.add_option("--mask", batch_.job.mask, "Only files of such names; *.mp3 without it")
        ->type_name("MASK")
        ->group(group);
    app_.add_option("--to", batch_.job.dest_folder,
                    "Where the results go, those of a list with their folders; song.mp3.mp3 beside "
                    "its source without it")
        ->type_name("FOLDER")
        ->check(is_named)
        ->group(group);
    app_.add_flag("--json-lines", json_lines_,
                  "Record each file as a line of JSON, before it is written and once it is done")
        ->group(group);
    app_.add_option("--skip-done", batch_.earlier_runs,
                    "Leave out the files that are done by the records of earlier runs")
        ->type_name("FILE")
        ->check(is_named)
        ->group(group);
    app_.add_option("-j", batch_.jobs, "How many files at a time; one a core without it")
        ->type_name("N")
        ->check(CLI::Range(1, 64).description(""))
        ->group(group);
  }

  // Takes the words together as a batch. Returns what is wrong with them.
  std::string take_batch() {
    BatchJob& job = batch_.job;
    const bool has_mask = job.mask != BatchJob{}.mask;
    const bool is_list = !batch_.list.empty();
    if (!is_batch_) {
      const bool has_any = !batch_words_.empty() || !job.dest_folder.empty() || has_mask ||
                           is_list || batch_.list_end == '\0' || json_lines_ ||
                           !batch_.earlier_runs.empty() || batch_.jobs != 0;
      return has_any ? "--do, --mask, --to, --files, -0, --json-lines, --skip-done and -j go with "
                       "--batch"
                     : "";
    }
    if (is_list == !job.source_folder.empty())
      return is_list ? "--batch takes a FOLDER or --files LIST, not both"
                     : "--batch needs a FOLDER, or --files LIST";
    if (is_list && has_mask) return "--mask goes with a FOLDER";
    if (!is_list && batch_.list_end == '\0') return "-0 goes with --files LIST";
    if (options.json && json_lines_) return "--json and --json-lines exclude each other";
    if (!options.files.empty() || !options.edits.empty() || !options.output.empty() ||
        options.work != nullptr || options.records || options.info || options.frames)
      return "--batch goes with no FILE, edit line, report or other switch";
    if (batch_words_.empty()) return "--batch needs --do WORD; see --help";
    if (options.request.overwrite && !job.dest_folder.empty())
      return "--to and --overwrite exclude each other";
    job.set_option(BatchOption::overwrite_originals, options.request.overwrite);
    job.batch_bottom = no_bottom_given;
    for (const std::string& word : batch_words_) {
      std::string fault = take_batch_word(word, job);
      if (!fault.empty()) return fault;
    }
    if (job.batch_bottom != no_bottom_given && !job.can_edit_bottom())
      return "bottom goes with autocrop or fade";
    if (job.has(BatchOption::join) && !batch_.earlier_runs.empty())
      return "--do join and --skip-done exclude each other";
    if (is_list) job.mask = "*.*";
    if (options.json) batch_.report = BatchReport::json;
    if (json_lines_) batch_.report = BatchReport::json_lines;
    options.batch = std::move(batch_);
    return {};
  }

  // Checks what CLI11 has no words for.
  std::string usage_fault() {
    for (const std::string& word : app_.remaining())
      if (word != "--") return unknown_option(word);
    if (options.listing != nullptr) return {};
    if (options.settings_path && options.localini)
      return "--settings and --localini exclude each other";
    if (options.remote && !options.records) return "--remote goes with /rec";
    std::string batch_fault = take_batch();
    if (!batch_fault.empty() || options.batch) return batch_fault;
    if (options.records && options.files.size() > 1) return "/rec takes one FILE";
    if (!options.records && options.files.empty() && options.edits.empty())
      return "FILE is missing; see --help";
    if (options.request.overwrite && (options.work == nullptr || !options.work->saves))
      return "/overwrite goes with a switch that saves: /save";
    if (!options.output.empty() && options.work != nullptr && options.work->saves)
      return fmt::format("-o and /{} exclude each other, as both save the result",
                         options.work->name);
    return {};
  }

  std::string unknown_option(const std::string& word) {
    std::vector<std::string_view> known;
    std::vector<std::string> names;
    for (const CLI::Option* const option : app_.get_options())
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    known.assign(names.begin(), names.end());
    return fmt::format("there is no option {}{}", word, did_you_mean(word, known));
  }

  CLI::App app_{"Edits MP3, MP2 and AAC files without decoding them.", "corvelin-cli"};
  bool yes_ = false;
  bool no_ = false;
  BatchRequest batch_;
  bool is_batch_ = false;
  bool json_lines_ = false;
  std::vector<std::string> batch_words_;
};

}  // namespace

std::vector<OptionRow> option_rows() { return CommandLine().rows(); }

ParsedOptions parse_options(int argc, const char* const* argv) {
  CommandLine line;
  const std::optional<int> exit_status = line.parse(argc, argv);
  return {std::move(line.options), exit_status};
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Reads the words, and prints the help and the manual page.
#include "desktop/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "edit/command_help.h"
#include "edit/command_table.h"
#include "edit/editor.h"
#include "shell/button_texts.h"
#include "text/man_page.h"

namespace corvelin {

namespace {

struct HelpRow {
  std::string_view word;
  std::string_view help;
};

constexpr HelpRow options[] = {
    {"--settings PATH", "Read the settings from PATH, and store them there"},
    {"--help", "Tell this, and end"},
    {"--version", "Tell the version, and end"},
};

constexpr HelpRow other_switches[] = {
    {"overwrite", "With a switch that saves: replace FILE instead of saving beside it"},
    {"rec", "Record at once, into FILE if it is named"},
    {"localini", "Keep the settings beside the program"},
};

constexpr std::string_view about_file =
    "Opens FILE: MP3, MP2, AAC, MP4, a project (.cvp), a cue sheet (.cue) or a playlist (.m3u, "
    ".m3u8).";
constexpr std::string_view about_switches =
    "Switches, each also in the form --save. The program ends behind those that save; they ask "
    "only "
    "where a file is in the way:";

constexpr std::string_view words_of_call = "[--settings PATH] [FILE] [SWITCHES]";

const WorkSwitch* work_of(std::string_view name) {
  const auto row = std::ranges::find(work_switches(), name, &WorkSwitch::name);
  return row == work_switches().end() ? nullptr : &*row;
}

// All switches in the form /split [FOLDER], with their help.
std::vector<std::pair<std::string, std::string_view>> switch_rows() {
  std::vector<std::pair<std::string, std::string_view>> rows;
  for (const WorkSwitch& work : work_switches())
    rows.emplace_back(fmt::format("/{}{}", work.name, work.takes_folder ? " [FOLDER]" : ""),
                      work.help);
  for (const HelpRow& row : other_switches)
    rows.emplace_back(fmt::format("/{}", row.word), row.help);
  return rows;
}

// What a key does: the text of its menu entry or button, or the line of help.
std::string purpose_of(const Editor& editor, const Command& command) {
  if (!text_of(command).empty()) return button_name(editor, command.id);
  return std::string(command_help(command.name));
}

// The name of a switch, or an empty one for a word that is none: a path begins with "/" too.
std::string_view switch_name(std::string_view word) {
  if (word.starts_with("--")) {
    word.remove_prefix(2);
  } else if (word.starts_with('/')) {
    word.remove_prefix(1);
  } else {
    return {};
  }
  const bool is_other =
      std::ranges::find(other_switches, word, &HelpRow::word) != std::end(other_switches);
  return is_other || work_of(word) != nullptr ? word : std::string_view{};
}

bool takes_value(std::string_view option) {
  const WorkSwitch* const work = work_of(switch_name(option));
  return option == "--settings" || (work != nullptr && work->takes_folder);
}

// The words with --split=FOLDER as --split FOLDER.
std::vector<std::string> with_values_apart(const std::vector<std::string>& words) {
  std::vector<std::string> apart;
  for (const std::string& word : words) {
    const std::string option = word.substr(0, word.find('='));
    const bool has_value =
        option.size() < word.size() && option.starts_with("--") && takes_value(option);
    apart.push_back(has_value ? option : word);
    if (has_value) apart.push_back(word.substr(option.size() + 1));
  }
  return apart;
}

}  // namespace

CommandLine parse_command_line(const std::vector<std::string>& command_words) {
  const std::vector<std::string> words = with_values_apart(command_words);
  CommandLine line;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool has_next = i + 1 < words.size();
    const std::string_view name = switch_name(words[i]);
    if (const WorkSwitch* const work = work_of(name)) {
      if (line.work == nullptr || work < line.work) line.work = work;
      if (work->takes_folder && has_next && switch_name(words[i + 1]).empty())
        line.request.folder = words[++i];
    } else if (name == "overwrite") {
      line.request.overwrite = true;
    } else if (name == "rec") {
      line.records = true;
    } else if (name == "localini") {
      line.localini = true;
    } else if (words[i] == "--settings") {
      if (has_next) line.settings_path = words[++i];
    } else if (line.file.empty() && !words[i].starts_with("--")) {
      line.file = words[i];
    }
  }
  return line;
}

std::string command_line_help() {
  std::string text = fmt::format("Usage: corvelin {}\n\n{}\n\n", words_of_call, about_file);
  const auto add = [&text](std::string_view word, std::string_view help) {
    text += fmt::format("  {:<20}  {}\n", word, help);
  };
  for (const HelpRow& row : options) add(row.word, row.help);
  text += fmt::format("\n{}\n", about_switches);
  for (const auto& [word, help] : switch_rows()) add(word, help);
  return text + "\nWithout a window: corvelin-cli.\n";
}

std::string manual_page() {
  const Editor editor{};  // of a window with nothing open
  ManPage page("corvelin", "edit and record compressed audio", words_of_call);
  page.section("DESCRIPTION");
  page.paragraph(about_file);
  page.paragraph(
      "Cuts, joins, splits, levels and records without encoding anew: the frames that are kept are "
      "copied as they are. F1 opens the manual.");
  page.section("OPTIONS");
  for (const HelpRow& row : options) page.entry(row.word, row.help);
  page.section("SWITCHES");
  page.paragraph(about_switches);
  for (const auto& [word, help] : switch_rows()) page.entry(word, help);
  page.section("KEYS");
  for (const Command& command : command_table()) {
    if (!command.keys.empty()) page.entry(command.keys, purpose_of(editor, command));
  }
  page.section("FILES");
  page.entry("~/.config/Corvelin/Corvelin.ini",
             "The settings, below $XDG_CONFIG_HOME if that is set");
  page.section("SEE ALSO");
  page.paragraph("corvelin-cli(1)");
  return page.text();
}

}  // namespace corvelin

// Words and switches.
#include "desktop/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace corvelin {

namespace {

constexpr std::string_view other_switches[] = {"overwrite", "rec", "localini"};

const WorkSwitch* work_of(std::string_view name) {
  const auto row = std::ranges::find(work_switches(), name, &WorkSwitch::name);
  return row == work_switches().end() ? nullptr : &*row;
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
  const bool is_other = std::ranges::find(other_switches, word) != std::end(other_switches);
  return is_other || work_of(word) != nullptr ? word : std::string_view{};
}

}  // namespace

CommandLine parse_command_line(const std::vector<std::string>& words) {
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
  std::string text = R"(Usage: corvelin [--settings PATH] [FILE] [SWITCHES]

Opens FILE: MP3, MP2, AAC, a project (.cvp), a cue sheet (.cue) or a playlist (.m3u, .m3u8).

  --settings PATH       read the settings from PATH, and store them there
  --help, --version     tell this, or the version, and end

Switches that work on FILE without asking; the program ends behind them:
)";
  for (const WorkSwitch& work : work_switches()) {
    const std::string word = fmt::format("/{}{}", work.name, work.takes_folder ? " [FOLDER]" : "");
    text += fmt::format("  {:<20}  {}\n", word, work.help);
  }
  return text + R"(  /overwrite            replace FILE instead of saving beside it

Others:
  /rec                  record at once, into FILE if it is named
  /localini             keep the settings beside the program

Without a window: corvelin-cli.
)";
}

}  // namespace corvelin

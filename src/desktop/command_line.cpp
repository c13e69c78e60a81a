// Words and switches.
#include "desktop/command_line.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace corvelin {

namespace {

constexpr struct {
  std::string_view name;
  Work work;
} works[] = {
    {"save", Work::save},       {"normalize", Work::normalize},   {"autocrop", Work::autocrop},
    {"autocue", Work::autocue}, {"pausesplit", Work::pausesplit}, {"split", Work::split},
};

constexpr std::string_view other_switches[] = {"overwrite", "rec", "localini"};

// The name of a switch, or an empty one for a word that is none: a path begins with "/" too.
std::string_view switch_name(std::string_view word) {
  if (word.starts_with("--")) {
    word.remove_prefix(2);
  } else if (word.starts_with('/')) {
    word.remove_prefix(1);
  } else {
    return {};
  }
  const bool is_known =
      std::ranges::any_of(works, [&](const auto& row) { return row.name == word; }) ||
      std::ranges::find(other_switches, word) != std::end(other_switches);
  return is_known ? word : std::string_view{};
}

bool takes_folder(Work work) { return work >= Work::autocue; }

void take_work(CommandLine& line, Work work) {
  if (line.work == Work::none || work < line.work) line.work = work;
}

}  // namespace

CommandLine parse_command_line(const std::vector<std::string>& words) {
  CommandLine line;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool has_next = i + 1 < words.size();
    const std::string_view name = switch_name(words[i]);
    const auto* const row =
        std::ranges::find_if(works, [&](const auto& it) { return it.name == name; });
    if (row != std::end(works)) {
      take_work(line, row->work);
      if (takes_folder(row->work) && has_next && switch_name(words[i + 1]).empty())
        line.folder = words[++i];
    } else if (name == "overwrite") {
      line.overwrite = true;
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
  return R"(Usage: corvelin [--settings PATH] [FILE] [SWITCHES]

Opens FILE: MP3, MP2, AAC, a project (.cvp), a cue sheet (.cue) or a playlist (.m3u, .m3u8).

  --settings PATH       read the settings from PATH, and store them there
  --help, --version     tell this, or the version, and end

Switches work without asking, and the program ends then:
  /save                 save beside the file: song.mp3 gives song.mp3.mp3
  /normalize            normalize, and save
  /autocrop             crop silence at both ends, and save
  /overwrite            with one of these: replace the file instead
  /autocue [FOLDER]     set cues by the rules of Auto cue, and split
  /pausesplit [FOLDER]  set cues by Pause detection, and split
  /split [FOLDER]       split at the cues of the file

  /rec                  record at once, into FILE if it is named
  /localini             keep the settings beside the program

Without a window: corvelin-cli.
)";
}

}  // namespace corvelin

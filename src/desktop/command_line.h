// The command line of the desktop program.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvelin {

enum class Work { none, save, normalize, autocrop, autocue, pausesplit, split };

struct CommandLine {
  std::optional<std::string> settings_path;
  bool localini = false;
  std::string file;  // empty: none
  Work work = Work::none;
  bool overwrite = false;
  bool records = false;
  std::string folder;  // for the pieces of a split; empty: that of the audio
};

/// `words` without the program's own name. Switches may stand in any order, with "/" or "--"; of
/// several pieces of work the first one of `Work` counts. A word that means nothing is passed over.
CommandLine parse_command_line(const std::vector<std::string>& words);

/// What `--help` prints.
std::string command_line_help();

}  // namespace corvelin

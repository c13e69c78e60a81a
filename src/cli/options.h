// The command line of corvelin-cli.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvelin {

/// What the program ends with.
enum ExitStatus : int { succeeded = 0, failed = 1, wrong_usage = 2 };

/// One `--edit` or `--script`, in the order of the command line.
struct EditSource {
  bool is_script = false;
  std::string text;  // the line, or the path of the script ("-" for standard input)
};

/// The switches that name a piece of work.
struct WorkSwitches {
  bool save = false;
  bool overwrite = false;
  bool localini = false;
  std::optional<std::string> split;      // the folder, empty for that of the audio
  std::vector<std::string> unavailable;  // those given that this version doesn't have
};

struct Options {
  std::string file;  // empty: none
  WorkSwitches work;
  std::vector<EditSource> edits;
  std::vector<std::pair<std::string, std::string>> settings;  // for this run only
  std::optional<std::string> settings_path;
  std::string clipboard;       // the clipboard's file; empty: the user's own
  std::optional<bool> answer;  // to every question
  bool info = false;
  bool json = false;
  bool frames = false;
};

/// Reads the command line. When there is nothing to run (`--help`, wrong usage), it has been told
/// and `exit_status` is set.
struct ParsedOptions {
  Options options;
  std::optional<int> exit_status;
};
ParsedOptions parse_options(int argc, const char* const* argv);

}  // namespace corvelin

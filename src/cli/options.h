// SPDX-License-Identifier: GPL-2.0-or-later
// The command line of corvelin-cli.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/batch.h"
#include "unattended/work_switches.h"

namespace corvelin {

/// What the program ends with.
enum ExitStatus : int { succeeded = 0, failed = 1, wrong_usage = 2, status_of_signals = 128 };

/// One `--edit` or `--script`, in the order of the command line.
struct EditSource {
  bool is_script = false;
  std::string text;  // the line, or the path of the script ("-" for standard input)
};

struct Options {
  std::vector<std::string> files;    // opened as one document
  const WorkSwitch* work = nullptr;  // at most one
  WorkRequest request;
  bool records = false;  // into the one of `files`, if there is one
  bool remote = false;   // the remote control file is looked at meanwhile
  bool localini = false;
  std::optional<BatchRequest> batch;
  std::vector<EditSource> edits;
  bool keep_going = false;
  std::string output;                                         // empty: none
  std::vector<std::pair<std::string, std::string>> settings;  // for this run only
  std::optional<std::string> settings_path;
  std::string clipboard;       // the clipboard's file; empty: the user's own
  std::optional<bool> answer;  // to every question
  bool info = false;
  bool json = false;
  bool frames = false;
  void (*listing)() = nullptr;  // prints what the program knows, and is all that is done
};

/// An option as the help shows it.
struct OptionRow {
  std::string group;
  std::string names;  // with its value: "-o, --output PATH"
  std::string help;
};
std::vector<OptionRow> option_rows();

/// Reads the command line. When there is nothing to run (`--help`, wrong usage), it has been told
/// and `exit_status` is set.
struct ParsedOptions {
  Options options;
  std::optional<int> exit_status;
};
ParsedOptions parse_options(int argc, const char* const* argv);

}  // namespace corvelin

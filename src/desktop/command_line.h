// SPDX-License-Identifier: GPL-2.0-or-later
// The command line of the desktop program.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "unattended/work_switches.h"

namespace corvelin {

struct CommandLine {
  std::optional<std::string> settings_path;
  bool localini = false;
  bool records = false;
  std::string file;                  // empty: none
  const WorkSwitch* work = nullptr;  // the program ends behind it
  WorkRequest request;
};

/// The words without the program's own name. Switches may stand in any order, with "/" or "--"; of
/// several pieces of work the first one of the table counts. A word that means nothing is passed
/// over.
CommandLine parse_command_line(const std::vector<std::string>& command_words);

/// What `--help` prints.
std::string command_line_help();

/// The page for `man`, with the options, switches and keys as they stand in the tables.
std::string manual_page();

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The lists, made from the tables that do the work.
#include "cli/listings.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/edit_lines.h"
#include "cli/messages.h"
#include "edit/command_help.h"
#include "edit/commands.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string line_text(const EditLine& line) {
  std::string form(line.name);
  if (!line.arguments.empty()) form += fmt::format(" {}", line.arguments);
  return fmt::format("{:42} {}", form, line.help);
}

std::string command_text(const Command& command) {
  return fmt::format("{:28} {:<6} {}", command.name, command.id, command_help(command.name));
}

}  // namespace

const std::string_view exit_statuses = "0 done; 1 the work failed or was refused; 2 wrong usage.";

const std::string_view example_lines =
    "  corvelin-cli talk.mp3 --info\n"
    "  corvelin-cli talk.mp3 -e 'cut 10:00 12:30 40:15 43:00' -o talk-without-adverts.mp3\n"
    "  corvelin-cli talk.mp3 -e 'keep 4.5s end-7s' /save /overwrite\n"
    "  corvelin-cli one.mp3 two.mp3 three.mp3 -o joined.mp3\n"
    "  corvelin-cli album.cue --set 'split_pattern=%N %T' --split tracks\n";

void print_commands() {
  print("Edit lines:\n");
  for (const auto& table : line_tables())
    for (const EditLine& line : table) print(line_text(line) + "\n");
  print("\nCommands, by name or number:\n");
  for (const Command& command : command_table()) print(command_text(command) + "\n");
  print(fmt::format("{:28} {:<6} moves the cursor to the start of part 0; {} of part 1 …\n", "",
                    first_part_command, first_part_command + 1));
}

void print_keys() {
  print("Key, default, meaning and values:\n");
  settings = default_settings();
  complete_settings();
  for (const SettingKey& row : setting_keys()) {
    const auto standard = get_setting(row.key);
    if (!standard) continue;  // several lines, which no single value sets
    print(fmt::format("{:20} {:12} {} ({})\n", row.key, standard->empty() ? "-" : *standard,
                      row.meaning, allowed_text(row)));
  }
}

void print_pattern() { print(printable(fmt::format("{}\n", ui_text(row::split_variables)))); }

std::string help_for(std::string_view word) {
  if (const EditLine* const line = find_line(word)) return line_text(*line);
  const auto commands = command_table();
  const auto command = std::ranges::find(commands, word, &Command::name);
  return command == commands.end() ? std::string() : command_text(*command);
}

std::vector<std::string_view> known_lines() {
  std::vector<std::string_view> names;
  for (const auto& table : line_tables())
    for (const EditLine& line : table) names.push_back(line.name);
  for (const Command& command : command_table()) names.push_back(command.name);
  return names;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines about the run itself: settings, undo, state, help.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include "cli/edit_lines.h"
#include "cli/headless_host.h"
#include "cli/listings.h"
#include "cli/messages.h"
#include "cli/nearest_word.h"
#include "cli/state_json.h"
#include "edit/editor.h"
#include "edit/undo.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

Refusal set_line(Editor&, Arguments words, HeadlessHost&) {
  return set_refusal(set_setting(words[0], words[1]), words[0], words[1]);
}

Refusal undo_line(Editor& editor, Arguments, HeadlessHost&) {
  return undo_pop(editor) ? no_refusal : "there is nothing to undo";
}

Refusal state_line(Editor& editor, Arguments, HeadlessHost& host) {
  print(state_as_json(editor, host.take_messages()) + "\n");
  flush_output();  // a failure shows at the end of the run
  return no_refusal;
}

Refusal help_line(Editor&, Arguments words, HeadlessHost&) {
  if (words.empty()) {
    print_commands();
    return no_refusal;
  }
  const std::string help = help_for(words[0]);
  if (help.empty()) {
    return fmt::format("there is no line or command \"{}\"{}", words[0],
                       did_you_mean(words[0], known_lines()));
  }
  print(help + "\n");
  return no_refusal;
}

constexpr EditLine table[] = {
    {"set", "KEY VALUE", "sets a setting", 2, 2, false, set_line},
    {"undo", "", "takes the last step back", 0, 0, true, undo_line},
    {"state", "", "prints the state as one line of JSON", 0, 0, false, state_line},
    {"help", "[WORD]", "lists the lines and commands, or tells of one", 0, 1, false, help_line},
};

}  // namespace

std::span<const EditLine> run_lines() { return table; }

}  // namespace corvelin

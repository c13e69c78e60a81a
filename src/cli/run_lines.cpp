// Edit lines about the run itself: settings, undo, the state.
#include "cli/edit_line.h"

#include "cli/edit_lines.h"
#include "cli/headless_host.h"
#include "cli/messages.h"
#include "cli/state_json.h"
#include "edit/undo.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

Refusal set_line(Arguments words, HeadlessHost&) {
  return set_refusal(set_setting(words[0], words[1]), words[0], words[1]);
}

Refusal undo_line(Arguments, HeadlessHost&) {
  if (undo_stack.empty()) return "there is nothing to undo";
  return undo_pop() ? no_refusal : "the step can't be taken back: a source file is gone";
}

Refusal state_line(Arguments, HeadlessHost& host) {
  print(state_as_json(host.take_messages()) + "\n");
  flush_output();  // a failure shows at the end of the run
  return no_refusal;
}

constexpr EditLine table[] = {
    {"set", "KEY VALUE", "sets a setting", 2, 2, false, set_line},
    {"undo", "", "takes the last step back", 0, 0, true, undo_line},
    {"state", "", "prints the state as one line of JSON", 0, 0, false, state_line},
};

}  // namespace

std::span<const EditLine> run_lines() { return table; }

}  // namespace corvelin

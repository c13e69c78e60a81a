// SPDX-License-Identifier: GPL-2.0-or-later
// The dispatcher.
#include "edit/commands.h"

#include <optional>
#include <utility>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "document/open_state.h"
#include "edit/document_commands.h"
#include "edit/places.h"
#include "edit/undo.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

constexpr Command part_command = {
    0, "go_to_part", unnamed, "", rule::on_document | rule::refreshes_places, nullptr};

std::optional<UndoEntry> undo_step(const Command& command) {
  if (!command.has(rule::undo_document | rule::undo_selection)) return std::nullopt;
  const bool has_own_label = command.undo_label.number != unnamed.number;
  const TextRow& label = has_own_label ? command.undo_label : command.text;
  return undo_entry(command.has(rule::undo_document), ui_text(label));
}

UndoRun run_of(const Command& command) {
  return {.command = command.id, .part = document.current_part, .revision = document.revision};
}

// Pressed many times in a row, a command of fine adjustment takes one step for all; and none where
// it finds nothing to do.
Outcome carry_out_in_run(const Command& command, const std::function<Outcome()>& operation) {
  const bool goes_on = !undo_stack.empty() && undo_stack.front().undo_run == run_of(command);
  std::optional<UndoEntry> step = goes_on ? std::nullopt : undo_step(command);
  Outcome outcome = operation();
  if (outcome.result == Result::done) undo_push(std::move(step));
  return outcome;
}

// Brings the records into line with what the operation did to the document.
void repair(const Command& command, bool is_refused, bool has_new_parts) {
  if (document.parts.empty()) return;
  if (command.has(rule::modifies) || (command.has(rule::modifies_by_cuts) && has_new_parts))
    open_state.document_modified = true;
  if (command.has(rule::names_parts) && !is_refused) name_parts_from_files(document);
  if (command.has(rule::recuts)) settle_places();
  if (command.has(rule::follows_cursor))
    document.current_part = part_at(document, selection.cursor);
  if (command.has(rule::relists | rule::modifies)) touch(document);
}

void show_changes(const Command& command) {
  if (command.has(rule::relists | rule::reopens)) host().rebuild_part_list();
  if (command.has(rule::reopens)) host().update_menu_state(all_states);
  const bool is_open = !document.parts.empty();
  if (command.has(rule::refreshes_all | rule::reopens)) {
    host().refresh_view(is_open ? Refresh::all : Refresh::no_document);
  } else if (command.has(rule::refreshes_places)) {
    host().refresh_view(Refresh::places);
  }
}

DispatchResult as_dispatched(Result result) {
  switch (result) {
    case Result::done:
      return DispatchResult::done;
    case Result::nothing:
      return DispatchResult::nothing;
    case Result::refused:
      break;
  }
  return DispatchResult::refused;
}

// Whether the command may run now.
DispatchResult admission(const Command& command) {
  if (is_busy()) return DispatchResult::busy;
  if (command.has(rule::on_document) && document.parts.empty()) return DispatchResult::no_document;
  if (command.has(rule::while_silent) && playback.is_playing) return DispatchResult::not_now;
  if (command.has(rule::while_unarmed) && recorder.is_armed) return DispatchResult::not_now;
  if (command.has(rule::while_stopped) && !ensure_stopped()) return DispatchResult::refused;
  return DispatchResult::done;
}

DispatchResult dispatch(const Command& command, const std::function<Outcome()>& operation) {
  const DispatchResult admitted = admission(command);
  if (admitted != DispatchResult::done) return admitted;
  const Busy busy;
  return as_dispatched(command.has(rule::by_dialog) ? operation().result
                                                    : carry_out(command, operation));
}

DispatchResult open_recent_entry(std::size_t index) {
  return dispatch(open_change, [index] {
    if (index >= settings.file_recent.size()) return Result::nothing;
    return open_recent(index) ? Result::done : Result::refused;
  });
}

DispatchResult go_to_part(std::size_t index) {
  return dispatch(part_command, [index] {
    if (index >= document.parts.size()) return Result::nothing;
    document.current_part = static_cast<PartIndex>(index);
    seek_to(playback, document.parts[index].part_beg);
    return Result::done;
  });
}

}  // namespace

DispatchResult dispatch_command(CommandId id) {
  if (id >= first_recent_command && id <= last_recent_command)
    return open_recent_entry(id - std::size_t{first_recent_command});
  if (id >= first_part_command && id <= last_part_command)
    return go_to_part(id - std::size_t{first_part_command});
  const Command* const command = command_of(id);
  return command == nullptr ? DispatchResult::unknown : dispatch(*command, command->run);
}

Result carry_out(const Command& command, const std::function<Outcome()>& operation) {
  Outcome outcome = command.check == nullptr ? Outcome(Result::done) : command.check();
  if (outcome.result == Result::done) {
    const bool is_in_run = command.has(rule::steps_by_run);
    std::optional<UndoEntry> step = is_in_run ? std::nullopt : undo_step(command);
    if (!command.has(rule::steps_if_done)) undo_push(std::exchange(step, std::nullopt));
    const std::uint64_t revision = document.revision;
    outcome = is_in_run ? carry_out_in_run(command, operation) : operation();
    const bool has_new_parts = document.revision != revision;
    if (outcome.result == Result::done) undo_push(std::move(step));
    if (outcome.result == Result::done || has_new_parts)
      repair(command, outcome.result == Result::refused, has_new_parts);
    if (is_in_run && outcome.result == Result::done && !undo_stack.empty())
      undo_stack.front().undo_run = run_of(command);
    show_changes(command);
  }
  if (outcome.box) host().show_message_box(*outcome.box);
  return outcome.result;
}

bool ensure_stopped() {
  if (!playback.is_playing && !recorder.is_armed) return true;
  show_refusal(ui_text(row::stop_first));
  return false;
}

}  // namespace corvelin

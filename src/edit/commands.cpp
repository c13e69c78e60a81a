// SPDX-License-Identifier: GPL-2.0-or-later
// The dispatcher.
#include "edit/commands.h"

#include <optional>
#include <utility>

#include "audio/playback.h"
#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/places.h"
#include "edit/undo.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

constexpr Command part_command = {
    0, "go_to_part", unnamed, "", rule::on_document | rule::refreshes_places, nullptr};

std::optional<UndoEntry> undo_step(const Editor& editor, const Command& command) {
  if (!command.has(rule::undo_document | rule::undo_selection)) return std::nullopt;
  const bool has_own_label = command.undo_label.number != unnamed.number;
  const TextRow& label = has_own_label ? command.undo_label : command.text;
  return undo_entry(editor, command.has(rule::undo_document), ui_text(label));
}

UndoRun run_of(const Document& document, const Command& command) {
  return {.command = command.id, .part = document.current_part, .revision = document.revision};
}

// Pressed many times in a row, a command of fine adjustment takes one step for all; and none where
// it finds nothing to do.
Outcome carry_out_in_run(Editor& editor, const Command& command,
                         const std::function<Outcome()>& operation) {
  const bool goes_on = !editor.undo_stack.empty() &&
                       editor.undo_stack.front().undo_run == run_of(editor.document, command);
  std::optional<UndoEntry> step = goes_on ? std::nullopt : undo_step(editor, command);
  Outcome outcome = operation();
  if (outcome.result == Result::done) undo_push(editor, std::move(step));
  return outcome;
}

// Brings the records into line with what the operation did to the document.
void repair(Editor& editor, const Command& command, bool is_refused, bool has_new_parts) {
  if (editor.document.parts.empty()) return;
  if (command.has(rule::modifies) || (command.has(rule::modifies_by_cuts) && has_new_parts))
    editor.open_state.document_modified = true;
  if (command.has(rule::names_parts) && !is_refused) name_parts_from_files(editor.document);
  if (command.has(rule::recuts)) settle_places(editor);
  if (command.has(rule::follows_cursor))
    editor.document.current_part = part_at(editor.document, editor.selection.cursor);
  if (command.has(rule::relists | rule::modifies)) touch(editor.document);
}

void show_changes(const Document& document, const Command& command) {
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
DispatchResult admission(const Editor& editor, const Command& command) {
  if (is_busy()) return DispatchResult::busy;
  if (command.has(rule::on_document) && editor.document.parts.empty())
    return DispatchResult::no_document;
  if (command.has(rule::while_silent) && editor.playback.is_playing) return DispatchResult::not_now;
  if (command.has(rule::while_unarmed) && editor.recorder.is_armed) return DispatchResult::not_now;
  if (command.has(rule::while_stopped) && !ensure_stopped(editor)) return DispatchResult::refused;
  return DispatchResult::done;
}

DispatchResult dispatch(Editor& editor, const Command& command,
                        const std::function<Outcome()>& operation) {
  const DispatchResult admitted = admission(editor, command);
  if (admitted != DispatchResult::done) return admitted;
  const Busy busy;
  return as_dispatched(command.has(rule::by_dialog) ? operation().result
                                                    : carry_out(editor, command, operation));
}

DispatchResult open_recent_entry(Editor& editor, std::size_t index) {
  return dispatch(editor, open_change, [index, &editor] {
    if (index >= settings.file_recent.size()) return Result::nothing;
    return open_recent(editor, index) ? Result::done : Result::refused;
  });
}

DispatchResult go_to_part(Editor& editor, std::size_t index) {
  return dispatch(editor, part_command, [index, &editor] {
    if (index >= editor.document.parts.size()) return Result::nothing;
    editor.document.current_part = static_cast<PartIndex>(index);
    seek_to(editor.playback, editor.document.parts[index].part_beg);
    return Result::done;
  });
}

}  // namespace

DispatchResult dispatch_command(Editor& editor, CommandId id) {
  if (id >= first_recent_command && id <= last_recent_command)
    return open_recent_entry(editor, id - std::size_t{first_recent_command});
  if (id >= first_part_command && id <= last_part_command)
    return go_to_part(editor, id - std::size_t{first_part_command});
  const Command* const command = command_of(editor, id);
  return command == nullptr ? DispatchResult::unknown
                            : dispatch(editor, *command, [&] { return command->run(editor); });
}

Result carry_out(Editor& editor, const Command& command,
                 const std::function<Outcome()>& operation) {
  Outcome outcome = command.check == nullptr ? Outcome(Result::done) : command.check(editor);
  if (outcome.result == Result::done) {
    const bool is_in_run = command.has(rule::steps_by_run);
    std::optional<UndoEntry> step = is_in_run ? std::nullopt : undo_step(editor, command);
    if (!command.has(rule::steps_if_done)) undo_push(editor, std::exchange(step, std::nullopt));
    const std::uint64_t revision = editor.document.revision;
    outcome = is_in_run ? carry_out_in_run(editor, command, operation) : operation();
    const bool has_new_parts = editor.document.revision != revision;
    if (outcome.result == Result::done) undo_push(editor, std::move(step));
    if (outcome.result == Result::done || has_new_parts)
      repair(editor, command, outcome.result == Result::refused, has_new_parts);
    if (is_in_run && outcome.result == Result::done && !editor.undo_stack.empty())
      editor.undo_stack.front().undo_run = run_of(editor.document, command);
    show_changes(editor.document, command);
  }
  if (outcome.box) host().show_message_box(*outcome.box);
  return outcome.result;
}

bool ensure_stopped(const Editor& editor) {
  if (!editor.playback.is_playing && !editor.recorder.is_armed) return true;
  show_refusal(ui_text(row::stop_first));
  return false;
}

}  // namespace corvelin

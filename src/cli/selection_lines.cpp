// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines that say where: cursor, selection, current part.
#include <fmt/format.h>

#include "audio/playback.h"
#include "cli/edit_line.h"
#include "cli/place.h"
#include "cli/words.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/selection_commands.h"
#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

namespace {

Refusal seek_line(Editor& editor, Arguments words, HeadlessHost&) {
  const Place place = read_place(editor.document, words[0]);
  if (!place.refusal.empty()) return place.refusal;
  if (place.pos == no_position) return "the cursor can't be nowhere";
  seek_to(editor.playback, place.pos);
  return no_refusal;
}

Refusal select_line(Editor& editor, Arguments words, HeadlessHost&) {
  const Place begin = read_position(editor, words[0]);
  if (!begin.refusal.empty()) return begin.refusal;
  const Place end = read_position(editor, words[1]);
  if (!end.refusal.empty()) return end.refusal;
  select(editor, begin.pos, end.pos);
  return no_refusal;
}

Refusal set_end_line(Editor& editor, Arguments words,
                     void (*set_end)(const Document&, Selection&, EditPosition)) {
  const Place place = read_position(editor, words[0]);
  if (!place.refusal.empty()) return place.refusal;
  carry_out(editor, selection_change, [set_end, pos = place.pos, &editor] {
    set_end(editor.document, editor.selection, pos);
    return Result::done;
  });
  return no_refusal;
}

Refusal set_sel_begin_line(Editor& editor, Arguments words, HeadlessHost&) {
  return set_end_line(editor, words, set_sel_begin);
}

Refusal set_sel_end_line(Editor& editor, Arguments words, HeadlessHost&) {
  return set_end_line(editor, words, set_sel_end);
}

Refusal clear_selection_line(Editor& editor, Arguments, HeadlessHost&) {
  const bool was_selected =
      dispatch_command(editor, command::remove_selection) == DispatchResult::done;
  return was_selected ? no_refusal : "nothing is selected";
}

Refusal part_line(Editor& editor, Arguments words, HeadlessHost&) {
  const auto index = parse_whole<PartIndex>(words[0]);
  if (!index || *index >= part_count(editor.document))
    return fmt::format("there is no part {}; the last is {}", words[0],
                       part_count(editor.document) - 1);
  editor.document.current_part = *index;
  return no_refusal;
}

constexpr EditLine table[] = {
    {"seek", "POS", "moves the cursor", 1, 1, true, seek_line},
    {"select", "POS POS", "selects a range", 2, 2, true, select_line},
    {"set_sel_begin", "POS", "moves the begin of the selection", 1, 1, true, set_sel_begin_line},
    {"set_sel_end", "POS", "moves its end", 1, 1, true, set_sel_end_line},
    {"clear_selection", "", "selects nothing", 0, 0, true, clear_selection_line},
    {"part", "N", "makes part N, from 0, the current one", 1, 1, true, part_line},
};

}  // namespace

std::span<const EditLine> selection_lines() { return table; }

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// From a handle that is dragged to the part table.
#include "edit/drags.h"

#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/level_point.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void take(Editor& editor, const Command& change) { undo_push(editor, true, ui_text(change.text)); }

}  // namespace

void point_at(Editor& editor, EditPosition pos) {
  if (!editor.playback.is_playing) editor.document.current_part = part_at(editor.document, pos);
}

bool take_level(Editor& editor) {
  if (editor.document.kind.layer != 3) return false;
  take(editor, level_change);
  return true;
}

void drag_level(Editor& editor, PartIndex index, std::int16_t gain) {
  Document& document = editor.document;
  (index < part_count(document) ? document.parts[index].part_gainbeg : document.end_gain) = gain;
  touch(document);
}

void drop_level(Editor& editor, PartIndex index) {
  carry_out(editor, level_change, [&] {
    clear_cues_round_level(editor, index);
    return Result::done;
  });
}

void take_border(Editor& editor) { take(editor, border_change); }

void drag_border(Editor& editor, PartIndex index, EditPosition pos) {
  move_border(editor.document, index, pos);
}

void drop_border(Editor& editor) {
  carry_out(editor, border_change, [] { return Result::done; });
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The checks in front of commands.
#include "edit/requirements.h"

#include "edit/editor.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/exact_time.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

Outcome need_selection(const Editor& editor) {
  return has_selection(editor.selection) ? Result::done : Result::nothing;
}

Outcome need_two_ends(const Editor& editor) {
  return editor.selection.sel_beg != editor.selection.sel_end ? Result::done : Result::nothing;
}

Outcome need_range(const Editor& editor) {
  return has_selected_range(editor.selection) ? Outcome(Result::done)
                                              : refuse(ui_text(row::selection_too_short));
}

Outcome need_mutable_cut(const Editor& editor) {
  const PartIndex part = editor.document.current_part;
  const bool is_mutable = editor.document.kind.layer == 3;
  return is_mutable && part != 0 && has_gap(editor.document, part) ? Result::done : Result::nothing;
}

Outcome need_undo_step(const Editor& editor) {
  if (!editor.undo_stack.empty()) return Result::done;
  if (settings.max_undo != 0) host().beep();
  return Result::nothing;
}

Outcome need_level_control(const Document& document) {
  if (document.kind.layer == 2) return refuse(ui_text(row::no_level_of_layer_2));
  return document.stream.is_aac != 0 ? refuse(ui_text(row::no_level_of_aac)) : Result::done;
}

Outcome need_room_for_parts(const Document& document, std::size_t count) {
  if (document.parts.size() + count <= most_parts) return Result::done;
  return refuse(ui_text(row::selection_invalid));
}

Outcome refuse_cues_from(const Document& document, EditPosition pos) {
  return refuse(format_row(ui_text(row::no_cue_from), most_parts,
                           format_seconds(exact_seconds(document, pos))));
}

bool require(const Outcome& need) {
  if (need.box) host().show_message_box(*need.box);
  return need.result == Result::done;
}

}  // namespace corvelin

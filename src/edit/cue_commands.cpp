// SPDX-License-Identifier: GPL-2.0-or-later
// Setting and clearing of cue flags.
#include "edit/cue_commands.h"

#include <cstdint>

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

namespace {

// Makes a border with the flag and returns its part; `no_part` at the stream's end and without
// room.
PartIndex make_cue(Editor& editor, EditPosition pos) {
  const PartIndex made = make_border(editor.document, pos);
  if (made >= part_count(editor.document)) return no_part;
  editor.document.parts[made].part_iscue = 1;
  return made;
}

Result put_cue_flags(Editor& editor, std::uint32_t flag) {
  const EditPosition beg = has_selection(editor.selection) ? editor.selection.sel_beg : 0;
  const EditPosition end =
      has_selection(editor.selection) ? editor.selection.sel_end : editor.document.total_size;
  Result result = Result::nothing;
  for (Part& part : editor.document.parts) {
    if (part.part_beg < beg || part.part_beg > end) continue;
    part.part_iscue = flag;
    result = Result::done;
  }
  return result;
}

}  // namespace

void cues_at_selection_ends(Editor& editor) {
  const PartIndex first = make_cue(editor, editor.selection.sel_beg);
  if (first != no_part) {
    editor.document.current_part = first;
    make_cue(editor, editor.selection.sel_end);
  }
  clear_selection(editor.selection);
}

Result set_cue_flags(Editor& editor) { return put_cue_flags(editor, 1); }
Result remove_cue_flags(Editor& editor) { return put_cue_flags(editor, 0); }

void cue_pure_splits(Editor& editor) {
  for (PartIndex i = 1; i < part_count(editor.document); ++i) {
    const auto before = static_cast<PartIndex>(i - 1);
    const bool is_pure = !has_gap(editor.document, i) && !part_has_gain(editor.document, before) &&
                         !part_has_gain(editor.document, i);
    editor.document.parts[i].part_iscue = is_pure ? 1 : 0;
  }
}

void toggle_cue(Editor& editor) {
  std::uint32_t& flag = editor.document.parts[editor.document.current_part].part_iscue;
  flag = flag == 0 ? 1 : 0;
}

}  // namespace corvelin

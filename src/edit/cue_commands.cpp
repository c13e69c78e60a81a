// SPDX-License-Identifier: GPL-2.0-or-later
// Setting and clearing of cue flags.
#include "edit/cue_commands.h"

#include <cstdint>

#include "model/cuts.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/the_document.h"

namespace corvelin {

namespace {

// Makes a border with the flag and returns its part; `no_part` at the stream's end and without
// room.
PartIndex make_cue(EditPosition pos) {
  const PartIndex made = make_border(document, pos);
  if (made >= part_count(document)) return no_part;
  document.parts[made].part_iscue = 1;
  return made;
}

Result put_cue_flags(std::uint32_t flag) {
  const EditPosition beg = has_selection(selection) ? selection.sel_beg : 0;
  const EditPosition end = has_selection(selection) ? selection.sel_end : document.total_size;
  Result result = Result::nothing;
  for (Part& part : document.parts) {
    if (part.part_beg < beg || part.part_beg > end) continue;
    part.part_iscue = flag;
    result = Result::done;
  }
  return result;
}

}  // namespace

void cues_at_selection_ends() {
  const PartIndex first = make_cue(selection.sel_beg);
  if (first != no_part) {
    document.current_part = first;
    make_cue(selection.sel_end);
  }
  clear_selection(selection);
}

Result set_cue_flags() { return put_cue_flags(1); }
Result remove_cue_flags() { return put_cue_flags(0); }

void cue_pure_splits() {
  for (PartIndex i = 1; i < part_count(document); ++i) {
    const auto before = static_cast<PartIndex>(i - 1);
    const bool is_pure =
        !has_gap(document, i) && !part_has_gain(document, before) && !part_has_gain(document, i);
    document.parts[i].part_iscue = is_pure ? 1 : 0;
  }
}

void toggle_cue() {
  std::uint32_t& flag = document.parts[document.current_part].part_iscue;
  flag = flag == 0 ? 1 : 0;
}

}  // namespace corvelin

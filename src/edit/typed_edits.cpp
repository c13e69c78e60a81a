// SPDX-License-Identifier: GPL-2.0-or-later
// Cuts and cues by places.
#include "edit/typed_edits.h"

#include <algorithm>

#include "edit/commands.h"
#include "edit/cut_commands.h"
#include "edit/editor.h"
#include "model/cuts.h"
#include "model/selection.h"

namespace corvelin {

namespace {

// Whether the table takes all borders that the cuts may need, at their ends and, where the level
// has to come back, a frame behind them. What the cuts take out of the table doesn't count.
bool has_room_for_cuts(const Document& document, std::span<const Range> ranges) {
  std::size_t borders = 0;
  for (const Range& range : ranges) {
    borders += is_border(document, range.begin) ? 0 : 1;
    borders += is_border(document, range.end) ? 0 : 1;
  }
  return document.parts.size() + borders < most_parts;
}

bool is_whole_stream(const Document& document, std::span<const Range> ranges) {
  return ranges.size() == 1 && ranges[0].begin == 0 && ranges[0].end >= document.total_size;
}

}  // namespace

std::vector<Range> merged(std::vector<Range> ranges) {
  std::ranges::sort(ranges, {}, &Range::begin);
  std::vector<Range> apart;
  for (const Range& range : ranges) {
    if (!apart.empty() && range.begin <= apart.back().end) {
      apart.back().end = std::max(apart.back().end, range.end);
    } else {
      apart.push_back(range);
    }
  }
  return apart;
}

std::vector<Range> outside_of(const Document& document, std::span<const Range> ranges) {
  std::vector<Range> rest;
  EditPosition begin = 0;
  for (const Range& range : ranges) {
    if (begin < range.begin) rest.push_back({begin, range.begin});
    begin = range.end;
  }
  if (begin < document.total_size) rest.push_back({begin, document.total_size});
  return rest;
}

CutResult cut_ranges(Editor& editor, std::span<const Range> ranges, const Command& change) {
  if (is_whole_stream(editor.document, ranges)) return CutResult::nothing_left;
  if (!has_room_for_cuts(editor.document, ranges)) return CutResult::no_room;
  carry_out(editor, change, [ranges, &editor] {
    for (std::size_t i = ranges.size(); i-- > 0;) {  // the last first: the others still hold then
      clear_selection(editor.selection);
      set_sel_begin(editor.document, editor.selection, ranges[i].begin);
      set_sel_end(editor.document, editor.selection, ranges[i].end);
      cut_or_cue(editor);
    }
    return Result::done;
  });
  return CutResult::done;
}

bool set_cue_at(Editor& editor, EditPosition pos, const std::optional<std::u16string>& title,
                const std::optional<std::u16string>& artist) {
  const bool is_new = !is_border(editor.document, pos);
  if (is_new && editor.document.parts.size() >= most_parts) return false;
  carry_out(editor, cue_change, [&] {
    const PartIndex index = split_at(editor.document, pos);
    Part& part = editor.document.parts[index];
    // The level in front goes on, as behind a cue that Cut/Cue sets.
    if (is_new) part.part_gainbeg = editor.document.parts[index - 1u].part_gainbeg;
    part.part_iscue = 1;
    if (title) part.part_title = *title;
    if (artist) part.part_artist = *artist;
    return Result::done;
  });
  return true;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines that cut and mark by places.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <vector>

#include "cli/place.h"
#include "cli/words.h"
#include "edit/editor.h"
#include "edit/names_dialog.h"
#include "edit/typed_edits.h"
#include "model/document.h"

namespace corvelin {

namespace {

// Reads pairs of places into ranges, which are in order and apart then.
Refusal read_ranges(Editor& editor, Arguments words, std::vector<Range>& ranges) {
  if (words.size() % 2 != 0) return "each range takes two places";
  for (std::size_t i = 0; i < words.size(); i += 2) {
    const Place begin = read_position(editor, words[i]);
    if (!begin.refusal.empty()) return begin.refusal;
    const Place end = read_position(editor, words[i + 1]);
    if (!end.refusal.empty()) return end.refusal;
    if (begin.pos == no_position || end.pos == no_position) return "a range has a begin and an end";
    if (begin.pos >= end.pos)
      return fmt::format("no frame begins from {} up to {}", words[i], words[i + 1]);
    ranges.push_back({begin.pos, end.pos});
  }
  ranges = merged(std::move(ranges));
  return no_refusal;
}

Refusal cut_out(Editor& editor, const std::vector<Range>& ranges, const Command& change) {
  switch (cut_ranges(editor, ranges, change)) {
    case CutResult::nothing_left:
      return "nothing would be left";
    case CutResult::no_room:
      return fmt::format("there is no room for so many parts; the most are {}", most_parts);
    case CutResult::done:
      break;
  }
  return no_refusal;
}

Refusal cut_line(Editor& editor, Arguments words, HeadlessHost&) {
  std::vector<Range> ranges;
  Refusal refusal = read_ranges(editor, words, ranges);
  return refusal.empty() ? cut_out(editor, ranges, cut_change) : refusal;
}

Refusal keep_line(Editor& editor, Arguments words, HeadlessHost&) {
  std::vector<Range> ranges;
  Refusal refusal = read_ranges(editor, words, ranges);
  if (!refusal.empty()) return refusal;
  const std::vector<Range> rest = outside_of(editor.document, ranges);
  return rest.empty() ? "that is all of the stream" : cut_out(editor, rest, keep_change);
}

Refusal cue_line(Editor& editor, Arguments words, HeadlessHost&) {
  const Place place = read_position(editor, words[0]);
  if (!place.refusal.empty()) return place.refusal;
  if (place.pos >= editor.document.total_size)
    return  // "-" too
        "no track begins there";
  const auto name = [words](std::size_t index, std::string_view what) {
    constexpr std::size_t limit = NamesDialog::text_limit;
    return index < words.size() ? std::optional(name_within(limit, words[index], what))
                                : std::nullopt;  // a border that is there keeps its own
  };
  if (!set_cue_at(editor, place.pos, name(1, "the title"), name(2, "the artist")))
    return fmt::format("there is no room for a part more; the most are {}", most_parts);
  return no_refusal;
}

constexpr EditLine table[] = {
    {"cut", "POS POS [POS POS …]", "cuts out the ranges", 2, any_count, true, cut_line},
    {"keep", "POS POS [POS POS …]", "keeps the ranges and cuts out the rest", 2, any_count, true,
     keep_line},
    {"cue", R"(POS ["TITLE" ["ARTIST"]])", "sets a cue: a track begins there", 1, 3, true,
     cue_line},
};

}  // namespace

std::span<const EditLine> cut_lines() { return table; }

}  // namespace corvelin

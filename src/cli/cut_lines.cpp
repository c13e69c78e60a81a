// Edit lines that cut and mark by places.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <vector>

#include "cli/place.h"
#include "edit/names_dialog.h"
#include "edit/typed_edits.h"
#include "model/document.h"
#include "platform/text.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Reads pairs of places into ranges, which are in order and apart then.
Refusal read_ranges(Arguments words, std::vector<Range>& ranges) {
  if (words.size() % 2 != 0) return "each range takes two places";
  for (std::size_t i = 0; i < words.size(); i += 2) {
    const Place begin = read_position(words[i]);
    if (!begin.refusal.empty()) return begin.refusal;
    const Place end = read_position(words[i + 1]);
    if (!end.refusal.empty()) return end.refusal;
    if (begin.pos == no_position || end.pos == no_position) return "a range has a begin and an end";
    if (begin.pos >= end.pos)
      return fmt::format("no frame begins from {} up to {}", words[i], words[i + 1]);
    ranges.push_back({begin.pos, end.pos});
  }
  ranges = merged(std::move(ranges));
  return no_refusal;
}

Refusal cut_out(const std::vector<Range>& ranges, std::string_view label) {
  switch (cut_ranges(ranges, label)) {
    case CutResult::nothing_left:
      return "nothing would be left";
    case CutResult::no_room:
      return fmt::format("there is no room for so many parts; the most are {}", most_parts);
    case CutResult::done:
      break;
  }
  return no_refusal;
}

Refusal cut_line(Arguments words, HeadlessHost&) {
  std::vector<Range> ranges;
  Refusal refusal = read_ranges(words, ranges);
  return refusal.empty() ? cut_out(ranges, ui_text(win, 5)) : refusal;
}

Refusal keep_line(Arguments words, HeadlessHost&) {
  std::vector<Range> ranges;
  Refusal refusal = read_ranges(words, ranges);
  if (!refusal.empty()) return refusal;
  const std::vector<Range> rest = outside_of(ranges);
  return rest.empty() ? "that is all of the stream" : cut_out(rest, ui_text(men, 28));
}

// The names that a cue is given; none leaves those of a border that is there already.
Refusal read_names(Arguments words, std::vector<std::optional<std::u16string>>& names) {
  names.resize(2);
  for (std::size_t i = 0; i < words.size(); ++i) {
    names[i] = bytes_to_wide(words[i], true);
    if (names[i]->size() > NamesDialog::text_limit)
      return fmt::format("a name has at most {} characters", NamesDialog::text_limit);
  }
  return no_refusal;
}

Refusal cue_line(Arguments words, HeadlessHost&) {
  const Place place = read_position(words[0]);
  if (!place.refusal.empty()) return place.refusal;
  if (place.pos >= document.total_size)
    return  // "-" too
        "no track begins there";
  std::vector<std::optional<std::u16string>> names;
  Refusal refusal = read_names(words.subspan(1), names);
  if (!refusal.empty()) return refusal;
  if (!set_cue_at(place.pos, names[0], names[1]))
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

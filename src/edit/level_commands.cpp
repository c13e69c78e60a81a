// SPDX-License-Identifier: GPL-2.0-or-later
// Gains at borders.
#include "edit/level_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "edit/level_point.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void add_gain(std::int16_t& gain, int change) {
  using Limits = std::numeric_limits<std::int16_t>;
  gain = static_cast<std::int16_t>(std::clamp<int>(gain + change, Limits::min(), Limits::max()));
}

std::int16_t& gain_of(PartIndex part) { return document.parts[part].part_gainbeg; }

Result level_step(int delta) {
  if (document.kind.layer != 3) return Result::nothing;
  const bool is_at_end = selection.cursor >= document.total_size;
  std::int16_t& gain = is_at_end ? document.end_gain : gain_of(document.current_part);
  const int changed = gain + delta;
  if (changed >= lowest_level && changed <= highest_level)
    gain = static_cast<std::int16_t>(changed);
  clear_cues_round_level(document.current_part);
  return Result::done;
}

enum class Stages { one, two };

// Makes the border of the second stage at the frame there, for a change of level of which a third
// is left to happen before it or behind it.
void make_stage(EditPosition pos, Stages stages, std::uint32_t length, int change) {
  constexpr double shortest = 8;  // average frames
  if (stages == Stages::one || length < shortest * document.stream.avg_frame_size) return;
  const EditPosition frame =
      locate_frame(document, part_at(document, pos), pos, selection.current_frame);
  if (frame == no_position) return;
  const PartIndex made = make_border(document, frame);
  if (made < part_count(document)) add_gain(gain_of(made), change / -3);
}

// Where a fade out begins and a fade in ends: at the selection, or the cursor without one.
EditPosition fade_begin() {
  return has_selection(selection) ? selection.sel_beg : selection.cursor;
}
EditPosition fade_end() { return has_selection(selection) ? selection.sel_end : selection.cursor; }

// A fade goes to the end of the stream from behind its middle, and from its start up to there.
bool fades_out() {
  return fade_begin() * std::uint64_t{2} > document.total_size &&
         fade_begin() < document.total_size;
}
bool fades_in() { return fade_end() * std::uint64_t{2} < document.total_size && fade_end() > 0; }

void fade_out(Stages stages) {
  const PartIndex behind = delete_range(document, selection.sel_beg, selection.sel_beg);
  gain_of(behind) = document.end_gain;
  document.end_gain = bottom_gain();
  const std::uint32_t length = document.total_size - selection.sel_beg;
  const auto two_thirds = static_cast<std::uint32_t>(std::uint64_t{length} * 2 / 3);
  make_stage(selection.sel_beg + two_thirds, stages, length, gain_of(behind) - document.end_gain);
}

void fade_in(Stages stages) {
  const PartIndex behind = delete_range(document, selection.sel_end, selection.sel_end);
  gain_of(behind) = gain_of(0);
  gain_of(0) = bottom_gain();
  make_stage(selection.sel_end / 3, stages, selection.sel_end, gain_of(behind) - gain_of(0));
}

void fade(Stages stages) {
  ensure_selection(selection, selection.cursor);
  if (fades_out()) {
    fade_out(stages);
  } else {
    fade_in(stages);
  }
  clear_selection(selection);
}

// The part that begins with the second frame of the selection: over the first one the level slides.
PartIndex begin_edge() {
  const PartIndex first = delete_range(document, selection.sel_beg, selection.sel_beg);
  const EditPosition second =
      next_frame_in(document, first, selection.sel_beg, selection.current_frame);
  if (second >= selection.sel_end) return first;  // also when there is none
  selection.sel_beg = second;
  return make_border(document, second);
}

// The part that begins with the last frame of the selection.
PartIndex end_edge() {
  delete_range(document, selection.sel_end, selection.sel_end);
  set_sel_end(document, selection,
              frame_before(document, selection.sel_end, selection.current_frame));
  return delete_range(document, selection.sel_end, selection.sel_end);
}

}  // namespace

std::int16_t bottom_gain() {
  constexpr std::int32_t lowest = 90;  // dB, whatever the settings file says
  return static_cast<std::int16_t>(-2 * std::min<std::int32_t>(settings.lowest_gain, lowest) / 3);
}

std::string gain_text(int gain) { return fmt::format("{:+2.1f} dB", gain * 15 / 10.0); }

Result part_level_up() { return level_step(1); }
Result part_level_down() { return level_step(-1); }

Outcome need_fade() {
  constexpr std::size_t new_parts = 2;
  if (Outcome level = need_level_control(); level.result != Result::done) return level;
  if (!fades_out() && !fades_in()) return refuse(ui_text(row::nothing_to_fade));
  const bool is_in_way = fades_out() ? part_at(document, fade_begin()) + 1 != part_count(document)
                                     : part_at(document, fade_end()) != 0;
  if (is_in_way) return refuse(ui_text(row::fade_over_edit_points));
  return need_room_for_parts(new_parts);
}

void simple_fade() { fade(Stages::one); }
void two_stage_fade() { fade(Stages::two); }

void shift_selection_level(int change) {
  const PartIndex first = selection.sel_beg == 0 ? PartIndex{0} : begin_edge();
  const bool reaches_end = selection.sel_end >= document.total_size;
  const PartIndex last = reaches_end ? part_at(document, document.total_size) : end_edge();
  for (std::size_t i = first; i <= last; ++i) add_gain(document.parts[i].part_gainbeg, change);
  if (reaches_end) add_gain(document.end_gain, change);
  forget_stashed_texts(selection);
  selection.sel_gain = selection.sel_gain_end = 0;
  selection.sel_iscue = 0;
}

}  // namespace corvelin

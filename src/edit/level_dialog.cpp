// SPDX-License-Identifier: GPL-2.0-or-later
// Levels of a selection.
#include "edit/level_dialog.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/commands.h"
#include "edit/level_commands.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "stream/frame_header.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::int16_t in_range(int gain) {
  return static_cast<std::int16_t>(std::clamp(gain, lowest_level, highest_level));
}

void set_both(int from, int to) {
  selection.sel_gain = in_range(from);
  selection.sel_gain_end = in_range(to);
}

bool is_part_start(EditPosition pos) {
  return document.parts[part_at(document, pos)].part_beg == pos;
}

bool has_room_for_an_edge() { return selection.sel_end - selection.sel_beg > frame_unit; }

// Makes `pos` the begin of a part with this level.
PartIndex make_level_border(EditPosition pos, std::int16_t gain) {
  const PartIndex made = make_border(document, pos);
  document.parts[made].part_gainbeg = gain;
  return made;
}

void set_begin(std::int16_t level_around) {
  if (!is_part_start(selection.sel_beg)) {
    const PartIndex first = make_level_border(selection.sel_beg, level_around);
    const EditPosition second =
        next_frame_in(document, first, selection.sel_beg, selection.current_frame);
    if (has_room_for_an_edge() && second < selection.sel_end) selection.sel_beg = second;
  }
  make_level_border(selection.sel_beg, selection.sel_gain);
}

void set_end(std::int16_t level_around) {
  if (selection.sel_end == document.total_size) {
    document.end_gain = selection.sel_gain_end;
    return;
  }
  if (!is_part_start(selection.sel_end)) {
    make_level_border(selection.sel_end, level_around);
    if (!has_room_for_an_edge()) return;
    set_sel_end(document, selection,
                frame_before(document, selection.sel_end, selection.current_frame));
  }
  make_level_border(selection.sel_end, selection.sel_gain_end);
}

}  // namespace

void LevelDialog::begin() {
  const Part& first = document.parts[part_at(document, selection.sel_beg)];
  const Part& behind = document.parts[part_at(document, selection.sel_end)];
  if (selection.sel_beg == first.part_beg) selection.sel_gain = first.part_gainbeg;
  if (selection.sel_end == behind.part_beg) selection.sel_gain_end = behind.part_gainbeg;
  if (selection.sel_end == document.total_size) selection.sel_gain_end = document.end_gain;
  host().refresh_view(Refresh::places);
}

void LevelDialog::set_from(int gain) const {
  set_both(gain, locks_sliders ? gain : selection.sel_gain_end);
}

void LevelDialog::set_to(int gain) const {
  set_both(locks_sliders ? gain : selection.sel_gain, gain);
}

void LevelDialog::fade_in() { set_both(bottom_gain(), 0); }
void LevelDialog::fade_out() { set_both(0, bottom_gain()); }
void LevelDialog::flat() { set_both(0, 0); }
void LevelDialog::silence() { set_both(lowest_level, lowest_level); }

std::uint16_t LevelDialog::set_bottom_level(std::uint32_t decibels) {
  constexpr std::uint32_t lowest = 90;
  settings.lowest_gain = static_cast<std::uint16_t>(std::min(decibels, lowest));
  return settings.lowest_gain;
}

void LevelDialog::restore_defaults() {
  if (!confirm_defaults()) return;
  flat();
  settings.lowest_gain = default_settings().lowest_gain;
}

std::string LevelDialog::from_text() {
  return fmt::format("{} {}", ui_text(row::from), gain_text(selection.sel_gain));
}

std::string LevelDialog::to_text() {
  return fmt::format("{} {}", ui_text(row::to), gain_text(selection.sel_gain_end));
}

Outcome LevelDialog::write() {
  const std::int16_t level_around =
      document.parts[part_at(document, selection.sel_beg)].part_gainbeg;
  set_begin(level_around);
  set_end(level_around);
  clear_selection(selection);
  return Result::done;
}

bool LevelDialog::accept() {
  constexpr std::size_t new_parts = 4;
  if (!has_selected_range(selection) || !require(need_room_for_parts(new_parts))) return false;
  return carry_out(*command_of(command::level_dialog), write) == Result::done;
}

bool level_dialog() {
  if (!require(need_range()) || !require(need_level_control())) return false;
  if (part_at(document, selection.sel_beg) != part_at(document, selection.sel_end)) {
    show_invalid_range();
    return false;
  }
  LevelDialog dialog;
  return show_dialog(dialog);
}

}  // namespace corvelin

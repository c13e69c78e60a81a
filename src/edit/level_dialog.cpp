// SPDX-License-Identifier: GPL-2.0-or-later
// Levels of a selection.
#include "edit/level_dialog.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/level_commands.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "frames/frame_header.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::int16_t in_range(int gain) {
  return static_cast<std::int16_t>(std::clamp(gain, lowest_level, highest_level));
}

void set_both(Editor& editor, int from, int to) {
  editor.selection.sel_gain = in_range(from);
  editor.selection.sel_gain_end = in_range(to);
}

bool is_part_start(const Document& document, EditPosition pos) {
  return document.parts[part_at(document, pos)].part_beg == pos;
}

bool has_room_for_an_edge(const Editor& editor) {
  return editor.selection.sel_end - editor.selection.sel_beg > frame_unit;
}

// Makes `pos` the begin of a part with this level.
PartIndex make_level_border(Editor& editor, EditPosition pos, std::int16_t gain) {
  const PartIndex made = make_border(editor.document, pos);
  editor.document.parts[made].part_gainbeg = gain;
  return made;
}

void set_begin(Editor& editor, std::int16_t level_around) {
  if (!is_part_start(editor.document, editor.selection.sel_beg)) {
    const PartIndex first = make_level_border(editor, editor.selection.sel_beg, level_around);
    const EditPosition second = next_frame_in(editor.document, first, editor.selection.sel_beg,
                                              editor.selection.current_frame);
    if (has_room_for_an_edge(editor) && second < editor.selection.sel_end)
      editor.selection.sel_beg = second;
  }
  make_level_border(editor, editor.selection.sel_beg, editor.selection.sel_gain);
}

void set_end(Editor& editor, std::int16_t level_around) {
  if (editor.selection.sel_end == editor.document.total_size) {
    editor.document.end_gain = editor.selection.sel_gain_end;
    return;
  }
  if (!is_part_start(editor.document, editor.selection.sel_end)) {
    make_level_border(editor, editor.selection.sel_end, level_around);
    if (!has_room_for_an_edge(editor)) return;
    set_sel_end(
        editor.document, editor.selection,
        frame_before(editor.document, editor.selection.sel_end, editor.selection.current_frame));
  }
  make_level_border(editor, editor.selection.sel_end, editor.selection.sel_gain_end);
}

}  // namespace

void LevelDialog::begin() {
  const Part& first = editor.document.parts[part_at(editor.document, editor.selection.sel_beg)];
  const Part& behind = editor.document.parts[part_at(editor.document, editor.selection.sel_end)];
  if (editor.selection.sel_beg == first.part_beg) editor.selection.sel_gain = first.part_gainbeg;
  if (editor.selection.sel_end == behind.part_beg)
    editor.selection.sel_gain_end = behind.part_gainbeg;
  if (editor.selection.sel_end == editor.document.total_size)
    editor.selection.sel_gain_end = editor.document.end_gain;
  host().refresh_view(Refresh::places);
}

void LevelDialog::set_from(int gain) const {
  set_both(editor, gain, locks_sliders ? gain : editor.selection.sel_gain_end);
}

void LevelDialog::set_to(int gain) const {
  set_both(editor, locks_sliders ? gain : editor.selection.sel_gain, gain);
}

void LevelDialog::fade_in() { set_both(editor, bottom_gain(), 0); }
void LevelDialog::fade_out() { set_both(editor, 0, bottom_gain()); }
void LevelDialog::flat() { set_both(editor, 0, 0); }
void LevelDialog::silence() { set_both(editor, lowest_level, lowest_level); }

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

std::string LevelDialog::from_text() const {
  return fmt::format("{} {}", ui_text(row::from), gain_text(editor.selection.sel_gain));
}

std::string LevelDialog::to_text() const {
  return fmt::format("{} {}", ui_text(row::to), gain_text(editor.selection.sel_gain_end));
}

Outcome LevelDialog::write() {
  const std::int16_t level_around =
      editor.document.parts[part_at(editor.document, editor.selection.sel_beg)].part_gainbeg;
  set_begin(editor, level_around);
  set_end(editor, level_around);
  clear_selection(editor.selection);
  return Result::done;
}

bool LevelDialog::accept() {
  constexpr std::size_t new_parts = 4;
  if (!has_selected_range(editor.selection) ||
      !require(need_room_for_parts(editor.document, new_parts)))
    return false;
  return carry_out(editor, *command_of(editor, command::level_dialog),
                   [this] { return write(); }) == Result::done;
}

bool level_dialog(Editor& editor) {
  if (!require(need_range(editor)) || !require(need_level_control(editor.document))) return false;
  if (part_at(editor.document, editor.selection.sel_beg) !=
      part_at(editor.document, editor.selection.sel_end)) {
    show_invalid_range();
    return false;
  }
  LevelDialog dialog(editor);
  return show_dialog(dialog);
}

}  // namespace corvelin

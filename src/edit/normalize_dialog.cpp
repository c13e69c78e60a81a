// SPDX-License-Identifier: GPL-2.0-or-later
// The scan for the peak, and the level that follows from it.
#include "edit/normalize_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "audio/sample_reader.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/level_commands.h"
#include "edit/requirements.h"
#include "model/selection.h"
#include "platform/text/numbers.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// A selection of so many frames is heard to its end before anything is said of it.
constexpr std::uint32_t shortest_to_leave = 500;

double decibels(int peak) { return 20 * std::log10(peak / 32767.0); }

void select_whole_stream(Editor& editor) {
  if (has_selected_range(editor.selection)) return;
  carry_out(editor, selection_change, [&editor] {
    editor.selection.sel_beg = 0;
    editor.selection.sel_end = editor.document.total_size;
    return Result::done;
  });
}

}  // namespace

void NormalizeDialog::begin() {
  norm_peak = norm_change = percent_ = 0;
  scan_end_ = editor.selection.sel_end;
  SampleReader decoder(editor.document);  // it tells what is missing
  if (!open_at_cursor(decoder, editor.document, editor.selection, scan_end_, 1)) return;
  if (peaks_.open(editor.selection.sel_beg, scan_end_, decoder.pcm_format().channels))
    state = State::scanning;
}

bool NormalizeDialog::step() {
  if (state != State::scanning) return false;
  const EditPosition before = peaks_.pos();
  norm_peak = std::max<int>(norm_peak, peaks_.read());
  take_peak();
  percent_ =
      percent_of(peaks_.pos() - editor.selection.sel_beg, scan_end_ - editor.selection.sel_beg);
  const bool goes_on = peaks_.pos() < scan_end_ && peaks_.pos() != before;
  const bool is_full = norm_peak != 0 && norm_change == 0 && batch_offset() == 0;
  if (goes_on && !is_full) return true;
  cancel();
  state = is_full && peaks_.frames() > shortest_to_leave ? State::full_scale : State::finished;
  percent_ = 100;
  return false;
}

void NormalizeDialog::cancel() {
  if (state != State::scanning) return;
  editor.document.current_part = part_at(editor.document, editor.selection.cursor);
  state = State::stopped;
}

// Silence has no level that could be brought to full scale.
void NormalizeDialog::take_peak() {
  constexpr double steps_a_decibel = 10.0001 / 15;
  const double found = norm_peak == 0 ? 0 : -decibels(norm_peak) * steps_a_decibel;
  set_change(static_cast<int>(found) + (norm_peak == 0 ? 0 : batch_offset()));
}

void NormalizeDialog::set_change(int steps) {
  norm_change = std::clamp(steps, lowest_change, highest_change);
}

std::string NormalizeDialog::progress_text() const {
  return fmt::format("{} {}  {} {}", label_text(row::peak_found), peak_text(),
                     label_text(row::level_change), change_text());
}

std::string NormalizeDialog::report() const {
  if (state != State::full_scale) return {};
  return fmt::format("{}\r\n", ui_text(row::peak_is_full));
}

std::string NormalizeDialog::peak_text() const {
  if (norm_peak == 0)
    return state == State::scanning ? std::string() : std::string(ui_text(row::silence));
  return fmt::format("{:2.2f} dB", decibels(norm_peak));
}

std::string NormalizeDialog::change_text() const { return gain_text(norm_change); }

bool NormalizeDialog::accept() {
  constexpr std::size_t new_parts = 4;
  cancel();
  if (norm_peak == 0 && norm_change == 0) {
    show_refusal(ui_text(row::only_silence));
    return false;
  }
  if (!require(need_room_for_parts(editor.document, new_parts))) return false;
  const auto shift = [this] {
    shift_selection_level(editor, norm_change);
    return Result::done;
  };
  return carry_out(editor, *command_of(editor, command::normalize_dialog), shift) == Result::done;
}

bool NormalizeDialog::close_unattended() {
  if (state != State::full_scale) return accept();
  cancel();
  return false;
}

bool normalize_dialog(Editor& editor) {
  if (!require(need_level_control(editor.document))) return false;
  select_whole_stream(editor);
  NormalizeDialog dialog(editor);
  dialog.begin();
  return dialog.state == NormalizeDialog::State::scanning && host().show(dialog);
}

}  // namespace corvelin

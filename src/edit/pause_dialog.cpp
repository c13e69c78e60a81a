// SPDX-License-Identifier: GPL-2.0-or-later
// The scan for quiet stretches.
#include "edit/pause_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "edit/editor.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "opening/open_state.h"
#include "platform/text/numbers.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr int frames_a_step = 1500;
constexpr int offset_of_loud_frame = 60;  // the value of `silence_offset`

std::uint32_t quiet_limit() {
  return std::uint32_t{settings.silence_level} * settings.silence_level;
}

std::uint32_t fewest_quiet_frames() { return std::uint32_t{settings.silence_duration} * 10; }

// The first frame at or behind `pos`, also behind bad data; the end of the stream without one.
EditPosition next_frame_from(const Document& document, EditPosition pos) {
  const EditPosition found = find_frame_forward(document, part_at(document, pos), pos).pos;
  return std::min(found, document.total_size);
}

}  // namespace

bool PauseDialog::accept() {
  if (pause_running) return false;
  undo_push(editor, true, ui_text(row::pause_detection));
  if (!has_selected_range(editor.selection)) {
    editor.selection.sel_beg = 0;
    editor.selection.sel_end = editor.document.total_size;
    host().refresh_view(Refresh::places);
  }
  if (!open_at_cursor(reader_, editor.document, editor.selection, editor.selection.sel_end, 1)) {
    host().beep();
    return false;
  }
  pause_scan_start_ = editor.selection.sel_beg;
  pause_scan_end_ = editor.selection.sel_end;
  // The first seconds of a whole stream are not searched.
  if (editor.selection.sel_beg == 0)
    pause_scan_start_ =
        next_frame_from(editor.document, time_to_position(editor.document, settings.silence_skip));
  pause_start_ = no_position;
  pause_frames_ = 0;
  pause_found = percent_ = 0;
  has_broken_off = false;
  reader_.move_to(pause_scan_start_);
  pause_gain_ = editor.document.parts[reader_.place().part].part_gainbeg;
  if (pause_scan_start_ == 0) editor.document.parts[0].part_iscue = 1;
  pause_running = true;
  return true;
}

bool PauseDialog::step() {
  if (!pause_running) return false;
  const EditPosition before = reader_.pos();
  for (int i = 0; i < frames_a_step && reader_.pos() < pause_scan_end_; ++i) {
    if (reader_.read_peak(1) < quiet_limit()) {
      ++pause_frames_;
      if (pause_start_ == no_position) pause_start_ = reader_.pos();
      continue;
    }
    const bool was_pause = pause_frames_ >= fewest_quiet_frames();
    if (was_pause && !end_pause()) {
      has_broken_off = true;
      cancel();
      return false;
    }
    pause_frames_ = 0;
    pause_start_ = no_position;
  }
  percent_ = percent_of(reader_.pos() - pause_scan_start_, pause_scan_end_ - pause_scan_start_);
  if (reader_.pos() < pause_scan_end_ && reader_.pos() != before) return true;
  cancel();
  percent_ = 100;
  clear_selection(editor.selection);
  return false;
}

// Where the cue goes: so many average frames from the frame that was loud, which has been read.
EditPosition PauseDialog::cue_place() const {
  const int frames = settings.silence_offset - (offset_of_loud_frame + 1);
  const double place = reader_.pos() + frames * double{editor.document.stream.avg_frame_size};
  return next_frame_from(editor.document, whole_part(place));
}

// A loud frame has ended a pause: sets the cue there, or cuts the pause out. False with a full part
// table.
bool PauseDialog::end_pause() {
  EditPosition end = cue_place();
  EditPosition begin = end;
  if (settings.silence_cut != 0 && pause_start_ < end) {
    constexpr EditPosition nearly_the_start = 1000;  // a pause there goes whole
    begin = pause_start_ < nearly_the_start
                ? 0
                : std::min(next_frame_from(editor.document, pause_start_), end);
  }
  forget_stashed_texts(editor.selection);
  const PartIndex made = delete_range(editor.document, begin, end);
  if (made == no_part) {
    const bool is_full = editor.document.parts.size() >= most_parts;
    is_full ? void(require(refuse_cues_from(editor.document, end))) : show_invalid_range();
    return false;
  }
  if (made < part_count(editor.document)) {
    editor.document.parts[made].part_iscue = 1;
    editor.document.parts[made].part_gainbeg = pause_gain_;
  }
  editor.open_state.document_modified = true;
  editor.selection.sel_beg = editor.selection.sel_end = no_position;
  pause_scan_end_ -= std::min(end - begin, pause_scan_end_);
  reader_.set_end(pause_scan_end_);
  ++pause_found;
  skip_on();
  return true;
}

// The place is not lowered by what was cut out.
void PauseDialog::skip_on() {
  const std::uint64_t behind =
      std::uint64_t{reader_.pos()} + time_to_position(editor.document, settings.silence_skip);
  reader_.move_to(behind < pause_scan_end_
                      ? next_frame_from(editor.document, static_cast<EditPosition>(behind))
                      : pause_scan_end_);
}

void PauseDialog::cancel() {
  if (!pause_running) return;
  reader_.close();
  pause_running = false;
  editor.selection.current_frame = reader_.place().frame;
  settle_places(editor);
  editor.document.current_part = part_at(editor.document, editor.selection.cursor);
}

void PauseDialog::restore_defaults() {
  if (!confirm_defaults()) return;
  const Settings defaults = default_settings();
  settings.silence_level = defaults.silence_level;
  settings.silence_duration = defaults.silence_duration;
  settings.silence_offset = defaults.silence_offset;
  settings.silence_cut = defaults.silence_cut;
  settings.silence_skip = defaults.silence_skip;
}

std::string PauseDialog::progress_text() const {
  return fmt::format("{}: {}", ui_text(row::found), pause_found);
}

std::string PauseDialog::report() const {
  if (pause_found != 0 || has_broken_off) return {};
  return fmt::format("{}\r\n", ui_text(row::no_pause));
}

std::string PauseDialog::level_text() {
  return fmt::format("{:2.1f} dB", 20 * std::log10(quiet_limit() / 32767.0));
}

std::string PauseDialog::duration_text() const {
  constexpr double bits_of_ten_frames = 80;  // in their bytes
  return fmt::format("> {:2.1f} sec", settings.silence_duration *
                                          editor.document.stream.avg_frame_size *
                                          bits_of_ten_frames / editor.document.stream.avg_bitrate);
}

std::string PauseDialog::offset_text() {
  return format_row(ui_text(row::number_of_frames),
                    std::to_string(settings.silence_offset - offset_of_loud_frame));
}

bool pause_dialog(Editor& editor) {
  PauseDialog dialog(editor);
  return show_dialog(dialog);
}

}  // namespace corvelin

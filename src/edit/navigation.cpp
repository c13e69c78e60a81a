// SPDX-License-Identifier: GPL-2.0-or-later
// Moving the cursor.
#include "edit/navigation.h"

#include <algorithm>
#include <cstdint>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/places.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

void step_back(Editor& editor, std::uint32_t bytes) {
  const EditPosition from = play_position(editor.playback);
  seek_to(editor.playback, bytes >= from ? 0 : from - bytes);
}

void step_forward(Editor& editor, std::uint32_t bytes) {
  const EditPosition from = play_position(editor.playback);
  const bool is_inside =
      bytes < editor.document.total_size && from < editor.document.total_size - bytes;
  seek_to(editor.playback, is_inside ? from + bytes : editor.document.total_size);
}

// The file of settings may hold any zoom.
void set_zoom(int zoom) {
  constexpr int lowest = 1;
  constexpr int highest = 32;
  change_setting(&Settings::zoom, static_cast<std::uint16_t>(std::clamp(zoom, lowest, highest)));
}

}  // namespace

// A step back goes one frame further than one forward: the seek then comes forward to the next
// frame.
void skip_back_small(Editor& editor) {
  step_back(editor, average_frames(editor.document, settings.frameskiplo + 1u));
}
void skip_back_large(Editor& editor) {
  step_back(editor, average_frames(editor.document, settings.frameskiphi + 1u));
}
void skip_forward_small(Editor& editor) {
  step_forward(editor, average_frames(editor.document, settings.frameskiplo));
}
void skip_forward_large(Editor& editor) {
  step_forward(editor, average_frames(editor.document, settings.frameskiphi));
}

void frame_back(Editor& editor) {
  seek_to(editor.playback,
          frame_before(editor.document, editor.selection.cursor, editor.selection.current_frame));
  if (editor.selection.cursor != editor.document.total_size) return;
  const std::uint32_t two_frames = average_frames(editor.document, 2);
  seek_to(editor.playback,
          two_frames < editor.document.total_size ? editor.document.total_size - two_frames : 0);
}

void frame_forward(Editor& editor) { step_forward(editor, frame_length_at_cursor(editor)); }

void rewind(Editor& editor) { seek_to(editor.playback, 0); }

void go_to_track_end(Editor& editor) { seek_to(editor.playback, editor.document.total_size); }

void go_to_selection_begin(Editor& editor) { seek_to(editor.playback, editor.selection.sel_beg); }

void go_to_selection_end(Editor& editor) { seek_to(editor.playback, editor.selection.sel_end); }

void go_to_previous_range(Editor& editor) {
  const bool is_at_start =
      editor.selection.cursor == editor.document.parts[editor.document.current_part].part_beg;
  if (is_at_start && editor.document.current_part > 0) --editor.document.current_part;
  seek_to(editor.playback, editor.document.parts[editor.document.current_part].part_beg);
}

void go_to_next_range(Editor& editor) {
  const bool is_at_end =
      editor.selection.cursor == part_end(editor.document, editor.document.current_part);
  if (is_at_end && editor.document.current_part + 1 < part_count(editor.document))
    ++editor.document.current_part;
  seek_to(editor.playback, part_end(editor.document, editor.document.current_part));
}

void zoom_in() { set_zoom(settings.zoom * 2); }
void zoom_out() { set_zoom(settings.zoom / 2); }

}  // namespace corvelin

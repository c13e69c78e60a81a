// SPDX-License-Identifier: GPL-2.0-or-later
// Moving the cursor.
#include "edit/navigation.h"

#include <algorithm>
#include <cstdint>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "edit/places.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

void step_back(std::uint32_t bytes) {
  const EditPosition from = play_position(playback);
  seek_to(playback, bytes >= from ? 0 : from - bytes);
}

void step_forward(std::uint32_t bytes) {
  const EditPosition from = play_position(playback);
  const bool is_inside = bytes < document.total_size && from < document.total_size - bytes;
  seek_to(playback, is_inside ? from + bytes : document.total_size);
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
void skip_back_small() { step_back(average_frames(settings.frameskiplo + 1u)); }
void skip_back_large() { step_back(average_frames(settings.frameskiphi + 1u)); }
void skip_forward_small() { step_forward(average_frames(settings.frameskiplo)); }
void skip_forward_large() { step_forward(average_frames(settings.frameskiphi)); }

void frame_back() {
  seek_to(playback, frame_before(document, selection.cursor, selection.current_frame));
  if (selection.cursor != document.total_size) return;
  const std::uint32_t two_frames = average_frames(2);
  seek_to(playback, two_frames < document.total_size ? document.total_size - two_frames : 0);
}

void frame_forward() { step_forward(frame_length_at_cursor()); }

void rewind() { seek_to(playback, 0); }

void go_to_track_end() { seek_to(playback, document.total_size); }

void go_to_selection_begin() { seek_to(playback, selection.sel_beg); }

void go_to_selection_end() { seek_to(playback, selection.sel_end); }

void go_to_previous_range() {
  const bool is_at_start = selection.cursor == document.parts[document.current_part].part_beg;
  if (is_at_start && document.current_part > 0) --document.current_part;
  seek_to(playback, document.parts[document.current_part].part_beg);
}

void go_to_next_range() {
  const bool is_at_end = selection.cursor == part_end(document, document.current_part);
  if (is_at_end && document.current_part + 1 < part_count(document)) ++document.current_part;
  seek_to(playback, part_end(document, document.current_part));
}

void zoom_in() { set_zoom(settings.zoom * 2); }
void zoom_out() { set_zoom(settings.zoom / 2); }

}  // namespace corvelin

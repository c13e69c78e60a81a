// SPDX-License-Identifier: GPL-2.0-or-later
// The order of a drawing, and the start screen.
#include "shell/editor_view.h"

#include <algorithm>
#include <string>

#include "audio/playback.h"
#include "edit/editor.h"
#include "model/document.h"
#include "platform/processes/program.h"
#include "settings/settings.h"
#include "shell/graph_drawing.h"
#include "shell/map_drawing.h"
#include "shell/meter_drawing.h"
#include "shell/record_panel.h"
#include "shell/view_texts.h"

namespace corvelin {

namespace {

// A dark ground is brightened, any other darkened.
Colour start_screen_colour(Colour ground) {
  constexpr Colour change = 0x28;
  constexpr Colour dark = 0x50;
  bool is_dark = true;
  for (const int shift : {0, 8, 16}) is_dark = is_dark && (ground >> shift & 0xFF) < dark;
  Colour colour = 0;
  for (const int shift : {0, 8, 16}) {
    const Colour channel = ground >> shift & 0xFF;
    const Colour darkened = channel > change ? channel - change : channel;
    colour |= (is_dark ? channel + change : darkened) << shift;
  }
  return colour;
}

void draw_start_screen(const ViewLayout& layout, Canvas& canvas) {
  const int centre = layout.width / 2;
  const int middle = layout.height / 2;
  const int height = std::min(3 * layout.height / 10, static_cast<int>(40 * layout.display_scale));
  TextStyle style = {.height = height,
                     .colour = start_screen_colour(settings.rgb_background),
                     .is_bold = true,
                     .align = TextAlign::centre};
  canvas.text(centre, middle - height, program_name, style);
  style.height = height / 2;
  canvas.text(centre, middle, std::string("Version ").append(program_version), style);
  canvas.text(centre, middle + height / 2, program_notice, style);
}

}  // namespace

void lay_out_view(EditorView& view, int width, int height, float display_scale) {
  view.layout = view_layout(width, height, display_scale, settings.zoom);
  view.handles.clear();
}

void view_redraw(const Editor& editor, EditorView& view, Canvas& canvas) {
  const ViewLayout& layout = view.layout;
  canvas.fill({0, 0, layout.width, layout.height}, settings.rgb_background);
  view.handles.clear();
  if (editor.recorder.is_armed) {
    draw_record_panel(editor, layout, canvas);
    return draw_meter(editor, layout, canvas);
  }
  if (editor.document.parts.empty()) return draw_start_screen(layout, canvas);

  view.samples.frames.look_at(editor.graph_gain_bit);
  sample_frames(view.samples, editor.document, editor.selection, play_position(editor.playback),
                layout.view_frames, layout.fold);
  draw_graph(editor, view, canvas);
  draw_big_timer(editor, layout, canvas);
  draw_name_lines(editor, view, canvas);
  draw_map(editor, view, canvas);
  draw_meter(editor, layout, canvas);
}

}  // namespace corvelin

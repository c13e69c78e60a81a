// SPDX-License-Identifier: GPL-2.0-or-later
// Parts, selection, cursor and the graph's range, drawn on the time scale.
#include "shell/map_drawing.h"

#include <algorithm>
#include <string>

#include "audio/playback.h"
#include "edit/editor.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "platform/text/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

int column_of(const Document& document, EditPosition pos, int width) {
  const double scaled = to_time_scale(document, pos);
  return static_cast<int>(scaled / document.total_size * width);
}

void draw_part(const Document& document, const ViewLayout& layout, PartIndex index,
               Canvas& canvas) {
  const Part& part = document.parts[index];
  const int width = layout.width;
  Rect area = {column_of(document, part.part_beg, width), layout.graph_h + 1,
               column_of(document, part_end(document, index), width), layout.height - 1};
  if (area.is_empty()) return;
  // At the view's sides the outline lies outside.
  if (area.left < 1) area.left = -1;
  if (area.right >= width) area.right = width + 1;
  const bool is_current = index == document.current_part;
  canvas.fill(area, is_current ? settings.rgb_actual : settings.rgb_cuts);
  outline(canvas, area, settings.rgb_background);

  const Rect box = {area.left + 4, layout.graph_h + 2, area.right - 3, layout.height - 2};
  if (settings.map_names == 0 || part.part_title.empty() || box.is_empty()) return;
  canvas.paragraph(box, wide_to_bytes(part.part_title, true),
                   {.height = layout.small_font_h, .colour = settings.rgb_background});
}

}  // namespace

void draw_map(const Editor& editor, const EditorView& view, Canvas& canvas) {
  const ViewLayout& layout = view.layout;
  if (editor.document.total_size == 0) return;
  const int width = layout.width;
  const int top = layout.graph_h + 1;
  const int bottom = layout.height - 1;
  for (PartIndex i = 0; i < part_count(editor.document); ++i)
    draw_part(editor.document, layout, i, canvas);

  if (has_selection(editor.selection)) {
    const int begin = std::max(column_of(editor.document, editor.selection.sel_beg, width) - 1, 0);
    const int end =
        std::min(column_of(editor.document, editor.selection.sel_end, width) + 1, width);
    canvas.fill({begin, top + 1, end, bottom - 1}, settings.rgb_selection, Pattern::hatch);
  }
  const int cursor = column_of(editor.document, play_position(editor.playback), width);
  canvas.fill({cursor - 1, top, cursor + 1, bottom}, settings.rgb_cursor);

  const int first = column_of(editor.document, view.samples.view_first_pos, width);
  const int last = column_of(editor.document, view.samples.view_last_pos, width);
  canvas.fill({first, top, last, top + 1}, settings.rgb_cursor);
  canvas.fill({first, bottom - 1, last, bottom}, settings.rgb_cursor);
}

}  // namespace corvelin

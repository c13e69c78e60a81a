// SPDX-License-Identifier: GPL-2.0-or-later
// The texts over the graph.
#include "shell/view_texts.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "audio/playback.h"
#include "edit/editor.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr int names_left = 10;  // pixels

std::string artist_and_title(const std::u16string& artist, const std::u16string& title) {
  const std::string artist_text = wide_to_bytes(artist, true);
  const std::string title_text = wide_to_bytes(title, true);
  std::string text(cut_to_units(artist_text, 40));
  if (!artist.empty() && !title.empty()) text += " - ";
  return text.append(cut_to_units(title_text, 80));
}

std::string selection_names(const Editor& editor) {
  const std::string_view cue = editor.selection.sel_iscue != 0 ? "[cue] " : "";
  return std::string(cue) +
         artist_and_title(editor.selection.sel_artist, editor.selection.sel_title);
}

std::string_view hint_for_stream(const Document& document) {
  if (document.stream.is_aac != 0) return ui_text(row::no_level_of_aac);
  return document.kind.layer == 2 ? ui_text(row::limited_graph_of_layer_2) : std::string_view{};
}

bool is_beyond_hint(const Document& document, EditPosition cursor) {
  constexpr double seconds = 30;
  return cursor > document.stream.avg_bitrate * seconds * 0.125;
}

std::string timer_text(const Editor& editor) {
  const Part& part = editor.document.parts[editor.document.current_part];
  std::uint32_t time = to_time_scale(editor.document, play_position(editor.playback));
  std::string text;
  if (settings.big_relative != 0) {
    text = fmt::format("{:02} > ", editor.document.current_part + 1);
    const std::uint32_t begin = to_time_scale(editor.document, part.part_beg);
    time = time > begin ? time - begin : 0;
  }
  text += format_time(time, editor.document.stream.avg_bitrate);
  if (settings.big_total != 0) {
    const std::uint32_t total =
        settings.big_relative != 0 ? part.part_size : editor.document.total_size;
    text += " / " + format_time(total, editor.document.stream.avg_bitrate);
    text.resize(std::min(text.rfind('.'), text.size()));
  }
  return text;
}

// Longer texts are smaller.
int timer_height(const ViewLayout& layout) {
  constexpr int highest = 200;
  constexpr int lowest = 40;
  int height = std::min(highest, layout.height / 2);
  if (settings.big_relative != 0) height = height * 3 / 4;
  if (settings.big_total != 0) height = height * 3 / 4;
  return std::max(std::min<int>(height, settings.timer_height), lowest);
}

}  // namespace

void draw_big_timer(const Editor& editor, const ViewLayout& layout, Canvas& canvas) {
  if (settings.big_timer == 0) return;
  canvas.text(8, layout.name_font_h + 6, timer_text(editor),
              {.height = timer_height(layout), .colour = settings.rgb_cursor});
}

void draw_name_lines(const Editor& editor, EditorView& view, Canvas& canvas) {
  const ViewLayout& layout = view.layout;
  const auto line = [&](int y, std::string_view text, Colour colour) {
    if (!text.empty())
      canvas.text(names_left, y, text, {.height = layout.name_font_h, .colour = colour});
  };
  const int above_marks = layout.graph_bottom - layout.small_font_h;
  const Part& part = editor.document.parts[editor.document.current_part];
  line(above_marks - layout.name_font_h, artist_and_title(part.part_artist, part.part_title),
       settings.rgb_actual);
  line(above_marks - 2 * layout.name_font_h,
       artist_and_title(editor.document.sheet_artist, editor.document.sheet_title),
       settings.rgb_actual);

  if (is_beyond_hint(editor.document, editor.selection.cursor)) view.hint_is_over = true;
  if (editor.playback.fast_play_level != 0) {
    line(6, fmt::format("{} ({})", ui_text(row::fast_play), editor.playback.fast_play_level),
         settings.rgb_cursor);
  } else if (has_selection(editor.selection)) {
    line(6, selection_names(editor), settings.rgb_selection);
  } else if (!view.hint_is_over) {
    line(10, hint_for_stream(editor.document), settings.rgb_mpeg);
  }
}

}  // namespace corvelin

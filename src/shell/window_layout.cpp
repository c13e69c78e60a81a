// SPDX-License-Identifier: GPL-2.0-or-later
// The grid of the window.
#include "shell/window_layout.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "settings/settings.h"
#include "shell/panel_buttons.h"

namespace corvelin {

namespace {

using namespace command;

// Buttons that belong together stand side by side; between the groups there is a gap.
using Group = std::vector<CommandId>;
using Groups = std::vector<Group>;

class Layouter {
 public:
  explicit Layouter(const WindowSpace& space) : space_(space), symbol_(symbol_size(scale())) {}

  WindowLayout lay_out() {
    const int view_top = lay_out_toolbar();
    const int panel_h = lay_out_panel();
    const int info_gap = scaled(6);
    const int info_h = std::max(scaled(26), line_height(0) + info_gap);
    const int bar_h = scaled(16);
    const int width = space_.width;
    const int panel_top = space_.height - panel_h - info_h;
    const int outside = settings.scrollbar_arrows != 0 ? 0 : space_.arrow_width;
    const auto bar_top = static_cast<int>(static_cast<float>(panel_top) - 20 * scale());

    layout_.toolbar = {0, 0, width, view_top};
    layout_.view = {0, view_top + 2, width, panel_top - bar_h - 6};
    layout_.view.bottom = std::max(layout_.view.bottom, layout_.view.top);
    layout_.scroll_bar = {-outside, bar_top, width + outside, bar_top + bar_h};
    layout_.panel = {0, panel_top, width, panel_top + panel_h};
    layout_.info_bar = {0, panel_top + panel_h + info_gap, width, panel_top + panel_h + info_h};
    layout_.least_width = scaled(480);
    layout_.least_height = view_top + 2 + scaled(140) + bar_h + 6 + panel_h + info_h;
    move_panel_to(panel_top);
    return layout_;
  }

 private:
  [[nodiscard]] float scale() const { return space_.display_scale; }
  [[nodiscard]] int scaled(int logical) const {
    return static_cast<int>(static_cast<float>(logical) * scale());
  }
  // Of what holds a line of text: no less than a font needs that is large for the display.
  [[nodiscard]] int line_height(int logical) const {
    return std::max(scaled(logical), space_.text_height + scaled(4));
  }
  [[nodiscard]] int gap() const { return scaled(8); }

  // What rows have between two sides of the window.
  [[nodiscard]] Rect space_for_rows(int left, int right) const {
    return {left + gap(), gap() / 2, std::max(right - gap(), left + gap()), 0};
  }

  int lay_out_toolbar() {
    RowFlow rows(space_for_rows(0, space_.width), gap(), gap() / 2, layout_.toolbar_buttons);
    add_symbols(rows, {{open_by_dialog, save_complete, save_project_or_sheet},
                       {cut_clipboard, copy, paste, undo, configuration_dialog},
                       {file_info_dialog, toggle_save_id3v1, toggle_keep_id3v2, names_dialog},
                       {select_all, select_current_part, remove_selection},
                       {move_begin_left, move_begin_right, move_end_left, move_end_right,
                        move_selection_left, move_selection_right},
                       {trim_left_out, trim_left_in, trim_right_in, trim_right_out, move_cue_left,
                        move_cue_right}});
    rows.end_row();
    return rows.bottom() + gap() / 2;
  }

  void add_symbols(RowFlow& rows, const Groups& groups) const {
    for (const Group& ids : groups) {
      std::vector<FlowItem> group;
      for (const CommandId id : ids)
        group.push_back({.id = id, .width = symbol_.button_w, .height = symbol_.button_h});
      rows.add_group(group);
    }
  }
  void add_navigation_symbols(RowFlow& rows) const {
    add_symbols(rows, {{skip_back_small, skip_forward_small, skip_back_large, skip_forward_large},
                       {go_to_selection_begin, go_to_selection_end, go_to_previous_range,
                        go_to_next_range, rewind, go_to_track_end},
                       {zoom_in, zoom_out, margin_reset}});
  }
  void add_editing_symbols(RowFlow& rows) const {
    add_symbols(rows, {{cut_or_cue, edit_restore, set_begin, set_end},
                       {loop_play, prelisten_as_cut, prelisten_to_begin, prelisten_from_begin,
                        prelisten_to_end, prelisten_from_end},
                       {play, stop, initialize_recording}});
  }

  void add_words(RowFlow& rows, const Groups& groups) {
    for (const Group& ids : groups) {
      std::vector<FlowItem> group;
      for (const CommandId id : ids)
        group.push_back({.id = id,
                         .area = id == margin_button ? &layout_.margin : nullptr,
                         .width = word_width(id),
                         .height = word_height()});
      rows.add_group(group);
    }
  }
  static bool is_slim() { return panel_form() == PanelForm::text_extra_slim; }
  [[nodiscard]] int word_height() const { return line_height(is_slim() ? 22 : 26); }

  // Wide enough for all that the button may say.
  [[nodiscard]] int word_width(CommandId id) const {
    int width = id == margin_button ? margin_width() : 0;
    for (const bool is_fast : {false, true}) {
      std::string label(panel_label(id, is_fast));
      std::erase(label, '&');
      width = std::max(width, text_width(label));
    }
    return std::max(width + (is_slim() ? 1 : 2) * gap(), scaled(is_slim() ? 26 : 34));
  }
  [[nodiscard]] int text_width(std::string_view text) const {
    return space_.text_width ? space_.text_width(text) : static_cast<int>(text.size()) * scaled(7);
  }
  [[nodiscard]] int margin_width() const { return text_width(" 00.0  /  00.0"); }

  [[nodiscard]] FlowItem field(Rect& area) const {
    return {.area = &area, .width = scaled(200), .height = line_height(24), .stretches = true};
  }
  // The margin and the slider are of one width, so that what stands in front of them ends alike.
  [[nodiscard]] int side_width() const { return std::max(margin_width() + gap(), scaled(120)); }
  FlowItem margin() {
    return {.area = &layout_.margin, .width = side_width(), .height = line_height(24)};
  }
  FlowItem lying_slider() {
    return {.area = &layout_.volume_slider, .width = side_width(), .height = scaled(24)};
  }

  // The panel's controls are placed from its own top on; the result is its height.
  int lay_out_panel() {
    const PanelForm form = panel_form();
    const int bottom = has_text_buttons(form) ? lay_out_words(form) : lay_out_symbols(form);
    return bottom + gap() / 2;
  }

  void add_fields(RowFlow& rows) {
    rows.add(field(layout_.position_field));
    rows.add(field(layout_.range_field));
  }

  // Whether there is room for them in the row that the last buttons are in.
  [[nodiscard]] bool has_sides_behind_symbols() const {
    std::vector<PlacedButton> tried;
    RowFlow rows(space_for_rows(0, space_.width), gap(), gap() / 2, tried);
    add_navigation_symbols(rows);
    add_editing_symbols(rows);
    return rows.has_room_for(2 * side_width());
  }

  int lay_out_symbols(PanelForm form) {
    RowFlow rows(space_for_rows(0, space_.width), gap(), gap() / 2, layout_.panel_buttons);
    if (form == PanelForm::symbols_2) {
      add_navigation_symbols(rows);
      rows.add(field(layout_.position_field));
      // In a narrow window both go below: the margin alone would mostly be an empty row.
      const bool fits_beside = rows.has_room_for(side_width());
      if (fits_beside) rows.add(margin());
      rows.end_row();
      add_editing_symbols(rows);
      rows.add(field(layout_.range_field));
      if (!fits_beside) rows.end_row();
      rows.add(lying_slider());
      if (!fits_beside) rows.add(margin());
      rows.end_row();
      return rows.bottom();
    }
    const bool is_behind_symbols = has_sides_behind_symbols();
    const auto add_field_row = [&] {
      add_fields(rows);
      if (!is_behind_symbols) rows.add_group({margin(), lying_slider()});
      rows.end_row();
    };
    if (form == PanelForm::symbols_1) add_field_row();
    add_navigation_symbols(rows);
    add_editing_symbols(rows);
    if (is_behind_symbols) rows.add_group({{.stretches = true}, margin(), lying_slider()});
    rows.end_row();
    if (form == PanelForm::classic_symbols) add_field_row();
    return rows.bottom();
  }

  int lay_out_words(PanelForm form) {
    const int slider_w = scaled(24);
    const int right = std::max(space_.width - slider_w - gap(), 0);
    int left = 0;
    int bottom = 0;
    if (form == PanelForm::text_navigation_left) {
      const Groups upper = {
          {skip_back_large, skip_back_small, skip_forward_small, skip_forward_large},
          {zoom_in, zoom_out}};
      const Groups lower = {
          {go_to_previous_range, go_to_next_range, go_to_selection_begin, go_to_selection_end},
          {rewind}};
      left = std::min(2 * gap() + std::max(words_width(upper), words_width(lower)), right / 2);
      RowFlow rows(space_for_rows(0, left), gap(), gap() / 2, layout_.panel_buttons);
      add_words(rows, upper);
      rows.end_row();
      add_words(rows, lower);
      rows.end_row();
      bottom = rows.bottom();
    }
    RowFlow rows(space_for_rows(left, right), gap(), gap() / 2, layout_.panel_buttons);
    add_fields(rows);
    rows.end_row();
    if (left == 0)
      add_words(rows, {{skip_back_large, skip_back_small, skip_forward_small, skip_forward_large},
                       {go_to_previous_range, go_to_next_range, go_to_selection_begin,
                        go_to_selection_end, rewind},
                       {zoom_in, zoom_out}});
    add_words(rows, {{cut_or_cue, edit_restore, set_begin, set_end}});
    if (form == PanelForm::text) rows.end_row();
    add_words(rows, {{prelisten_as_cut, prelisten_to_begin, prelisten_from_begin, prelisten_to_end,
                      prelisten_from_end},
                     {play, stop, initialize_recording},
                     {margin_button}});
    rows.end_row();
    bottom = std::max(bottom, rows.bottom());
    layout_.volume_slider = {right, gap() / 2, right + slider_w, bottom};
    return bottom;
  }
  [[nodiscard]] int words_width(const Groups& groups) const {
    int width = static_cast<int>(groups.size() - 1) * gap();
    for (const Group& ids : groups)
      for (const CommandId id : ids) width += word_width(id);
    return width;
  }

  void move_panel_to(int top) {
    const auto move = [top](Rect& area) {
      area.top += top;
      area.bottom += top;
    };
    for (PlacedButton& button : layout_.panel_buttons) move(button.area);
    for (Rect* const area :
         {&layout_.position_field, &layout_.range_field, &layout_.volume_slider, &layout_.margin})
      move(*area);
  }

  const WindowSpace& space_;
  SymbolSize symbol_;
  WindowLayout layout_;
};

}  // namespace

PanelForm panel_form() {
  switch (settings.layout) {
    case 0:
    case 3:
      return PanelForm::classic_symbols;
    case 4:
    case 5:
      return PanelForm::symbols_2;
    case 16:
      return PanelForm::text;
    case 17:
      return PanelForm::text_navigation_left;
    case 18:
      return PanelForm::text_extra_slim;
    default:
      return PanelForm::symbols_1;
  }
}

bool has_text_buttons(PanelForm form) { return form >= PanelForm::text; }

bool has_bright_symbols() {
  return settings.layout == 1 || settings.layout == 4 || settings.darkmode != 0;
}

SymbolSize symbol_size(float display_scale) {
  constexpr int least_padding = 6;
  const float scale = display_scale;
  const bool is_large = settings.large_symbols != 0 && settings.layout != 3;
  SymbolSize size = {.picture_w = is_large ? 40 : 20, .picture_h = is_large ? 32 : 16};
  const auto padding = [&](int picture, int large) {
    if (settings.no_padding != 0) return least_padding;
    if (settings.large_symbols != 0) return static_cast<int>(static_cast<float>(large) * scale);
    const int ten = static_cast<int>(scale * 10);
    return static_cast<int>(scale * static_cast<float>(picture)) + ten - picture;
  };
  size.button_w = size.picture_w + padding(size.picture_w, 7);
  size.button_h = size.picture_h + padding(size.picture_h, 5);
  const bool has_room = settings.no_padding == 0 && settings.large_symbols == 0;
  if (has_room) {  // for a picture that grows with the button
    size.picture_w = static_cast<int>(scale * 20);
    size.picture_h = static_cast<int>(scale * 16);
  }
  return size;
}

WindowLayout window_layout(const WindowSpace& space) { return Layouter(space).lay_out(); }

void move_window_onto(const Rect& desktop) {
  constexpr int hidden_left = 20;  // pixels of the window that may lie outside
  constexpr int hidden_top = 6;
  constexpr int least_visible = 200;
  constexpr int least_size = 100;
  std::int32_t& x = settings.window_x;
  std::int32_t& y = settings.window_y;
  if (settings.window_w > desktop.width()) x = desktop.left;
  if (settings.window_h > desktop.height()) y = desktop.top;
  settings.window_w = std::max(std::min(settings.window_w, desktop.width()), least_size);
  settings.window_h = std::max(std::min(settings.window_h, desktop.height()), least_size);
  if (x < desktop.left - hidden_left) x = desktop.left;
  if (y < desktop.top - hidden_top) y = desktop.top;
  if (x >= desktop.right - least_visible + 1) x = desktop.right - least_visible;
  if (y >= desktop.bottom - least_visible + 1) y = desktop.bottom - least_visible;
}

}  // namespace corvelin

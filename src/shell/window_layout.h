// SPDX-License-Identifier: GPL-2.0-or-later
// Where the parts of the main window stand: toolbar, view, position scroll bar, control panel and
// information bar, and the controls on toolbar and panel in each of the forms that the setting
// `layout` chooses. All in device pixels from the top left corner of the window's inside, below its
// menu bar.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "shell/canvas.h"
#include "shell/row_flow.h"

namespace corvelin {

/// The forms of the control panel. Those below have symbols on their buttons and a level slider
/// that lies, the text forms words and a slider that stands.
enum class PanelForm {
  symbols_1,             // the fields above one row of buttons
  symbols_2,             // two rows of buttons with a field beside each
  classic_symbols,       // small symbols, the fields below them
  text,                  // the fields above two rows of words
  text_navigation_left,  // the words of navigation beside all others
  text_extra_slim,       // the fields above one row of words
};

/// The form that the setting `layout` stands for. Any number that it doesn't have is the
/// standard's.
PanelForm panel_form();

bool has_text_buttons(PanelForm form);

/// Whether symbols are bright, for dark buttons.
bool has_bright_symbols();

/// The size of a button's picture and of the button round it.
struct SymbolSize {
  int picture_w = 0;
  int picture_h = 0;
  int button_w = 0;
  int button_h = 0;
};
SymbolSize symbol_size(float display_scale);

/// What the window gives its layout.
struct WindowSpace {
  int width = 0;
  int height = 0;
  float display_scale = 1;
  int arrow_width = 0;  // of the scroll bar's arrow buttons
  /// The width of a text in the font of buttons and fields, and the height of its lines.
  std::function<int(std::string_view)> text_width;
  int text_height = 0;
};

struct WindowLayout {
  // Of a window with room for all controls and something of the view, at the present width.
  int least_width = 0;
  int least_height = 0;
  Rect toolbar;
  Rect view;
  Rect scroll_bar;  // without arrows it reaches beyond both sides, where its arrows are
  Rect panel;
  Rect info_bar;
  std::vector<PlacedButton> toolbar_buttons;
  std::vector<PlacedButton> panel_buttons;
  Rect position_field;
  Rect range_field;
  Rect volume_slider;
  Rect margin;  // where the level margin is shown; a button in the text forms
};

WindowLayout window_layout(const WindowSpace& space);

/// Moves the main window's place in the settings onto the desktop, when hardly anything of it could
/// be seen or taken hold of. A larger one gets the desktop's size.
void move_window_onto(const Rect& desktop);

}  // namespace corvelin

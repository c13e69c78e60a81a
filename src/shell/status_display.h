// SPDX-License-Identifier: GPL-2.0-or-later
// What the user reads beside the view: the title of the window, the two time fields, the bar of the
// stream's parameters, the position scroll bar and the margin. Owns the texts and how much of them
// a refresh brings up to date; a window only shows them.
#pragma once

#include <string>

#include "platform/host.h"

namespace corvelin {

struct Editor;

/// All texts are UTF-8.
struct StatusDisplay {
  std::string title;
  std::string position_field;
  std::string range_field;
  std::string info_bar;
  std::string margin;
  int scroll_position = 0;  // 0 to `scroll_end`
  bool has_scroll_bar = false;
};

/// The scroll bar's range goes to 1099 with pages of 100, so that its thumb ends at 1000.
constexpr int scroll_end = 1000;
constexpr int scroll_page = 100;

/// Brings the texts into line with the document, as far as the level goes. Without a document every
/// level above `no_document` stands for that or, while a recording is armed, for
/// `recording_state`; the result is the level that was done. After every one the view is drawn
/// anew.
Refresh refresh_status(const Editor& editor, StatusDisplay& status, Refresh level);

// For those who can't see the view: what others read from graph and map (position, part and
// selection; nothing without a document), and from the meter.
std::string view_in_words(const Editor& editor);
std::string meter_in_words(const Editor& editor);

}  // namespace corvelin

// What the user reads beside the view: the title of the window, the two time fields, the bar of the
// stream's parameters, the position scroll bar and the margin. Owns the texts and how much of them
// a refresh brings up to date; a window only shows them.
#pragma once

#include <string>

namespace corvelin {

/// How much has changed. Played and recorded buffers refresh many times a second, so they do
/// little.
enum RefreshLevel : int {
  refresh_all = 3,        // the settings or the document: check marks, title, and what follows
  refresh_places = 2,     // the position or the selection: both other fields, and what follows
  refresh_played = 1,     // a played buffer came back: position, margin, view
  refresh_empty = 0,      // no document
  refresh_recorded = -1,  // a recorded buffer came back: margin, view
  refresh_recorder = -2,  // the state of the recording: its texts, view
};

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

/// Brings the texts into line with the document. Without one every level above `refresh_empty`
/// stands for that or, while a recording is armed, for `refresh_recorder`; the result is the level
/// that was done. The view is drawn anew after every one.
int refresh_status(StatusDisplay& status, int level);

}  // namespace corvelin

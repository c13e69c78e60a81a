// The boxes of errors and refusals.
#include "exchange/refusals.h"

#include "model/selection.h"
#include "platform/message_box.h"
#include "shell/ui_text.h"
#include "stream/frame_header.h"

namespace corvelin {

void show_error(const std::string& text) {
  show_message_box({.caption = std::string(ui_text(msg, 6)), .text = text, .icon = BoxIcon::error});
}

void show_refusal(std::string_view text) {
  show_message_box(
      {.caption = std::string(ui_text(msg, 8)), .text = std::string(text), .icon = BoxIcon::error});
}

void show_invalid_range() { show_refusal(ui_text(msg, 16)); }

bool require_selected_range() {
  if (has_selected_range()) return true;
  show_refusal(ui_text(msg, 20));
  return false;
}

bool require_level_control() {
  if (stream.current_frame.layer == 2) {
    show_refusal(ui_text(msg, 22));
    return false;
  }
  if (stream.is_aac != 0) {
    show_refusal(ui_text(win, 35));
    return false;
  }
  return true;
}

}  // namespace corvelin

// The boxes of errors and refusals.
#include "text/boxes.h"

#include "platform/host.h"
#include "text/ui_text.h"

namespace corvelin {

void show_error(const std::string& text) {
  host().show_message_box(
      {.caption = std::string(ui_text(msg, 6)), .text = text, .icon = BoxIcon::error});
}

void show_refusal(std::string_view text) {
  host().show_message_box(
      {.caption = std::string(ui_text(msg, 8)), .text = std::string(text), .icon = BoxIcon::error});
}

void show_invalid_range() { show_refusal(ui_text(msg, 16)); }

}  // namespace corvelin

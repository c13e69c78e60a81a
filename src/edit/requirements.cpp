// The checks in front of commands.
#include "edit/requirements.h"

#include "model/selection.h"
#include "model/stream_info.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

bool require_selected_range() {
  if (has_selected_range()) return true;
  show_refusal(ui_text(msg, 20));
  return false;
}

bool require_level_control() {
  if (stream_kind.layer == 2) {
    show_refusal(ui_text(msg, 22));
    return false;
  }
  if (stream.is_aac != 0) {
    show_refusal(ui_text(win, 35));
    return false;
  }
  return true;
}

bool require_room_for_parts(std::size_t count) {
  if (document.parts.size() + count <= most_parts) return true;
  show_invalid_range();
  return false;
}

}  // namespace corvelin

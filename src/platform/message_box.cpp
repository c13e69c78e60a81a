// The ways of boxes, notes and beeps to the host.
#include "platform/message_box.h"

namespace corvelin {

std::function<BoxAnswer(const MessageBox&)> message_box_handler;
std::function<bool(const MessageBox&)> note_handler;
std::function<void()> beep_handler;

BoxAnswer show_message_box(const MessageBox& box) {
  return message_box_handler ? message_box_handler(box) : box.default_answer;
}

bool show_note(const MessageBox& note) { return note_handler && note_handler(note); }

void beep() {
  if (beep_handler) beep_handler();
}

}  // namespace corvelin

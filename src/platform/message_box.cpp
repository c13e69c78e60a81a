// The way of a message box to the host.
#include "platform/message_box.h"

namespace corvelin {

std::function<BoxAnswer(const MessageBox&)> message_box_handler;

BoxAnswer show_message_box(const MessageBox& box) {
  return message_box_handler ? message_box_handler(box) : box.default_answer;
}

void show_error(const std::string& text) {
  show_message_box({.caption = "Error", .text = text, .icon = BoxIcon::error});
}

}  // namespace corvelin

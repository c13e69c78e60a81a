// Message boxes: what the core asks and tells the user. How a box looks, or whether there is a
// person to read it, is the business of the host, which fills in `message_box_handler`.
#pragma once

#include <functional>
#include <string>

namespace corvelin {

enum class BoxIcon { none, information, warning, error, question };
enum class BoxButtons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class BoxAnswer { ok, yes, no, cancel };

struct MessageBox {
  std::string caption;
  std::string text;  // lines parted by "\n"
  BoxIcon icon = BoxIcon::none;
  BoxButtons buttons = BoxButtons::ok;
  BoxAnswer default_answer = BoxAnswer::ok;
};

/// Shows the box and waits for the answer. Without a host each box is answered by its default.
BoxAnswer show_message_box(const MessageBox& box);

/// A box with one button under the caption "Error", as for a failed write.
void show_error(const std::string& text);

extern std::function<BoxAnswer(const MessageBox&)> message_box_handler;

}  // namespace corvelin

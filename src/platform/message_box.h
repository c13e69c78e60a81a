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

/// Shows a note with a box "Don't show this message again" in it. Returns whether the user has set
/// that. Without a host nobody has.
bool show_note(const MessageBox& note);

/// The sound for a command that found nothing to do.
void beep();

extern std::function<BoxAnswer(const MessageBox&)> message_box_handler;
extern std::function<bool(const MessageBox&)> note_handler;
extern std::function<void()> beep_handler;

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The boxes of errors and refusals.
#include "text/boxes.h"

#include <fmt/format.h>

#include "platform/host.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

void show_error(const std::string& text) {
  host().show_message_box(
      {.caption = std::string(ui_text(row::error)), .text = text, .icon = BoxIcon::error});
}

bool open_for_user(const std::string& path) {
  const std::error_code error = host().open_in_viewer(path);
  if (error) show_no_viewer(path, error.message());
  return !error;
}

void show_no_viewer(const std::string& path, const std::string& cause) {
  host().show_message_box({.caption = std::string(ui_text(row::error)),
                           .text = fmt::format("{}\n\n{}", ui_text(row::no_viewer), path),
                           .cause = fmt::format("{}: {}", viewer, cause),
                           .icon = BoxIcon::error});
}

void show_refusal(std::string_view text) {
  host().show_message_box({.caption = std::string(ui_text(row::not_possible)),
                           .text = std::string(text),
                           .icon = BoxIcon::error});
}

bool confirm_defaults() {
  const std::string_view row = ui_text(row::defaults);  // caption and question
  const std::size_t end = row.find('\n');
  const MessageBox box = {
      .caption = std::string(row.substr(0, end)),
      .text = std::string(end == std::string_view::npos ? row : row.substr(end + 1)),
      .icon = BoxIcon::question,
      .buttons = BoxButtons::ok_cancel};
  return host().show_message_box(box) == BoxAnswer::ok;
}

void show_invalid_range() { show_refusal(ui_text(row::selection_invalid)); }

}  // namespace corvelin

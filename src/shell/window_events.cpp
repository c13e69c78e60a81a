// Drops and the scroll bar's thumb.
#include "shell/window_events.h"

#include <algorithm>
#include <cstdint>

#include "audio/playback.h"
#include "document/append.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "edit/commands.h"
#include "edit/save_project.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "platform/host.h"
#include "shell/status_display.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

BoxAnswer ask_whether_to_append() {
  return host().show_message_box({.caption = std::string(ui_text(msg, 1)),
                                  .text = std::string(ui_text(msg, 44)),
                                  .icon = BoxIcon::question,
                                  .buttons = BoxButtons::yes_no_cancel,
                                  .default_answer = BoxAnswer::yes});
}

Outcome append_dropped(std::span<const std::string> names) {
  const bool is_appended = append_files(names) != 0;
  clear_selection();
  seek_to(document.total_size);
  return is_appended ? Result::done : Result::refused;
}

// Another document may be open then.
constexpr Command open_change = {0,      "drop", {msg, 1}, "", rule::names_parts | rule::reopens,
                                 nullptr};

Outcome open_dropped(std::span<const std::string> names) {
  if (!confirm_discard_changes()) return Result::refused;
  close_all();
  reset_state(ResetLevel::new_stream);
  open_state.audio_name = names.front();
  if (!open_document()) {
    close_all();
    return Result::refused;
  }
  if (append_files(names.subspan(1)) != 0) open_state.document_modified = true;
  clear_selection();
  seek_to(0);
  return Result::done;
}

}  // namespace

void drop_files(std::span<const std::string> names, bool in_graph) {
  if (names.empty() || is_busy()) return;
  const Busy busy;
  if (!ensure_stopped()) return;
  if (in_graph && document.total_size != 0) {
    const BoxAnswer answer = ask_whether_to_append();
    if (answer == BoxAnswer::cancel) return;
    if (answer == BoxAnswer::yes) {
      carry_out(append_change, [names] { return append_dropped(names); });
      return;
    }
  }
  carry_out(open_change, [names] { return open_dropped(names); });
}

void scroll_to(int position) {
  if (document.total_size == 0) return;
  const auto share = static_cast<std::uint64_t>(std::clamp(position, 0, scroll_end));
  seek_to(from_time_scale(static_cast<std::uint32_t>(document.total_size * share / scroll_end)));
  if (!playback.is_playing) host().refresh_view(Refresh::places);
}

}  // namespace corvelin

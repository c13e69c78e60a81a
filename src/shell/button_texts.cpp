// SPDX-License-Identifier: GPL-2.0-or-later
// Tooltips and names of buttons.
#include "shell/button_texts.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>

#include "edit/editor.h"
#include "edit/undo.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// The buttons of editing have a word of their own, and a tooltip that tells more.
std::optional<std::uint32_t> longer_text_of(CommandId id) {
  switch (id) {
    case command::cut_or_cue:
      return 10;
    case command::edit_restore:
      return 12;
    case command::set_begin:
      return 13;
    case command::set_end:
      return 14;
    default:
      return std::nullopt;
  }
}

std::string text_with_key(const Editor& editor, CommandId id) {
  const Command* const command = command_of(editor, id);
  if (command == nullptr) return {};
  const std::string_view text = text_of(*command);
  if (const auto row = longer_text_of(id))
    return fmt::format("{}: {}", menu_text_plain(text), ui_text(ttp, *row));
  return command->text.section == ttp ? std::string(text) : menu_text_plain(text, true);
}

}  // namespace

std::string button_tooltip(const Editor& editor, CommandId id) {
  return id == command::undo ? menu_text_plain(undo_menu_text(editor), true)
                             : text_with_key(editor, id);
}

std::string button_name(const Editor& editor, CommandId id) {
  const std::string text = text_with_key(editor, id);
  return text.substr(0, text.find("   ["));
}

}  // namespace corvelin

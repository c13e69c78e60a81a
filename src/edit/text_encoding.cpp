// SPDX-License-Identifier: GPL-2.0-or-later
// Texts read anew in another encoding.
#include "edit/text_encoding.h"

#include <algorithm>
#include <string>

#include "edit/commands.h"
#include "edit/editor.h"
#include "model/document.h"
#include "platform/host.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool has_texts(const Document& document) {
  const auto is_named = [](const Part& part) {
    return !part.part_title.empty() || !part.part_artist.empty();
  };
  return std::ranges::any_of(document.parts, is_named) || !document.sheet_title.empty() ||
         !document.sheet_artist.empty();
}

bool ask_to_convert() {
  std::string caption(ui_text(row::character_encoding));
  std::erase(caption, '&');
  return host().show_message_box({.caption = caption,
                                  .text = std::string(ui_text(row::convert_characters)),
                                  .icon = BoxIcon::question,
                                  .buttons = BoxButtons::yes_no,
                                  .default_answer = BoxAnswer::yes}) == BoxAnswer::yes;
}

// Reads all texts back to bytes in the encoding that they were taken for, and those bytes in the
// other.
void convert_texts(Editor& editor, bool to_utf8) {
  const auto convert = [to_utf8](std::u16string& text) {
    text = bytes_to_wide(wide_to_bytes(text, !to_utf8), to_utf8);
  };
  for (Part& part : editor.document.parts) {
    convert(part.part_title);
    convert(part.part_artist);
  }
  convert(editor.document.sheet_title);
  convert(editor.document.sheet_artist);
}

void set_encoding(Editor& editor, CommandId id, bool to_utf8) {
  if (settings.char_enc == (to_utf8 ? 1 : 0)) return;
  change_setting(&Settings::char_enc, to_utf8 ? 1 : 0);
  if (!has_texts(editor.document) || !ask_to_convert()) return;
  carry_out(editor, *command_of(editor, id), [to_utf8, &editor] {
    convert_texts(editor, to_utf8);
    return Result::done;
  });
}

}  // namespace

void text_is_ansi(Editor& editor) { set_encoding(editor, command::text_is_ansi, false); }
void text_is_utf8(Editor& editor) { set_encoding(editor, command::text_is_utf8, true); }

}  // namespace corvelin

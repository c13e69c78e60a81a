// SPDX-License-Identifier: GPL-2.0-or-later
// Names of a part and of the album.
#include "edit/names_dialog.h"

#include <fmt/format.h>

#include "edit/commands.h"
#include "edit/editor.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

void NamesDialog::begin() {
  part = editor.document.current_part;
  part_artist = editor.document.parts[part].part_artist;
  part_title = editor.document.parts[part].part_title;
  part_iscue = editor.document.parts[part].part_iscue != 0;
  sheet_artist = editor.document.sheet_artist;
  sheet_title = editor.document.sheet_title;
}

std::string NamesDialog::group_title() const {
  return fmt::format("{} #{}", ui_text(row::dialog_part), part + 1);
}

Outcome NamesDialog::write() const {
  if (part >= part_count(editor.document)) return Result::refused;
  editor.document.sheet_artist = cut_to_units(sheet_artist, text_limit);
  editor.document.sheet_title = cut_to_units(sheet_title, text_limit);
  Part& target = editor.document.parts[part];
  target.part_artist = cut_to_units(part_artist, text_limit);
  target.part_title = cut_to_units(part_title, text_limit);
  target.part_iscue = part_iscue ? 1 : 0;
  return Result::done;
}

bool NamesDialog::accept() {
  return carry_out(editor, *command_of(editor, command::names_dialog),
                   [this] { return write(); }) == Result::done;
}

}  // namespace corvelin

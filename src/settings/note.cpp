// SPDX-License-Identifier: GPL-2.0-or-later
// The way of a note to the user.
#include "settings/note.h"

#include <string>
#include <string_view>

#include "platform/host.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string_view text_of(Note note) {
  switch (note) {
    case Note::project_files:
      return ui_text(row::note_on_projects);
    case Note::reencoded_save:
      return ui_text(row::note_on_reencoding);
    case Note::audio_graph:
      return ui_text(row::note_on_graph);
    case Note::cue_sheets_and_vbr:
      return ui_text(row::note_on_vbr_sheets);
    case Note::batch:
      return ui_text(row::note_on_batch);
  }
  return {};
}

}  // namespace

void show_note_once(Note note) {
  const auto bit = static_cast<std::uint16_t>(note);
  if ((settings.msg_hide & bit) != 0) return;
  const bool hides = host().show_note({.caption = std::string(ui_text(row::please_note)),
                                       .text = std::string(text_of(note)),
                                       .icon = BoxIcon::information});
  if (hides) settings.msg_hide |= bit;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The long notes that a user may wish not to see again.
#pragma once

#include <cstdint>

namespace corvelin {

/// The values are the bits of the setting `msg_hide` that hide them.
enum class Note : std::uint16_t {
  project_files = 1,
  reencoded_save = 2,
  audio_graph = 4,
  cue_sheets_and_vbr = 16,
  batch = 32,
};

/// Shows the note unless it is hidden, and hides it from now on if the user wishes so.
void show_note_once(Note note);

}  // namespace corvelin

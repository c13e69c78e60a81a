// SPDX-License-Identifier: GPL-2.0-or-later
// Cut, copy and paste. No audio is moved: what goes to the clipboard is a text that lists the byte
// ranges of the selection, each with its file, level, cue flag and names. So a copy of an hour
// costs a few lines, and another run of the program can paste it as long as the files are where
// they were. The text refers to no document, and one from anywhere is taken with suspicion.
#pragma once

#include "edit/outcome.h"

namespace corvelin {

struct Editor;

/// Puts the ranges of the selection on the clipboard. False, with an empty clipboard, when their
/// text would need more than 50000 bytes or a path holds a tab, which parts the fields; false also
/// when the clipboard can't be written.
bool copy_to_clipboard(const Editor& editor);

enum class PasteResult {
  pasted = 1,
  failed = 0,  // a field or a file that is missing, or a range that is none
  other_parameters = -1,
  foreign_text = -2,
  no_text = -3,
  not_fetched = -4,
  no_first_line = -5,
  other_format = -6,  // MPEG to AAC or the other way round, by a file's name
};

/// Puts the ranges of the clipboard's text in the place of the selection, or at the cursor, and
/// selects them. A failure ends the paste at its line: the parts of the lines before stay, and what
/// was selected comes back only as far as the border there can be restored. So the caller takes an
/// undo step first.
PasteResult paste_from_clipboard(Editor& editor);

/// Copies the selection; without one everything, which is selected then.
Outcome copy(Editor& editor);

/// Copies the selection and cuts it out.
Outcome cut_clipboard(Editor& editor);

Outcome paste(Editor& editor);

}  // namespace corvelin

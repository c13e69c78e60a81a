// SPDX-License-Identifier: GPL-2.0-or-later
// Cue sheets: the track list of a document as a text that many programs read. A sheet names the
// album, one audio file, and a time, title and performer for each track. It holds no audio and no
// edits beyond the cues. Sheets are UTF-8 when they begin with the mark of three bytes, else in the
// ANSI code page; a sheet keeps its encoding through the setting `char_enc`.
#pragma once

#include <string>

#include "model/document.h"
#include "model/selection.h"
#include "opening/file_fault.h"
#include "opening/open_state.h"

namespace corvelin {

/// Reads the sheet `open_state.project_name`. Its audio is opened, or, with `over_current_audio`,
/// its cues are added to those of the document as it stands.
///
/// A fault when the sheet can't be read, when its audio doesn't open or it names none, when a line
/// that names the audio, a title, a performer or a time is malformed, and when the table of parts
/// is full. What was applied before that stays. Silent, but for the note about VBR. Either way the
/// selection is cleared and the document counts as saved, unless the sheet could not even be
/// opened.
OpenFault load_cue_sheet(Document& document, Selection& selection, OpenState& open_state,
                         bool over_current_audio);

/// The note about the times of VBR audio, once.
void show_cue_sheet_note(const Document& document);

/// Whether the times of a sheet would be those of another audio than the one that it names: the
/// document was edited, and nothing of it has been saved.
bool names_other_audio(const Document& document, const OpenState& open_state);

/// Writes the cues of the document to a file, where none stands or one of a sheet. False, and the
/// cause in `reason`, after a failure.
///
/// A sheet holds only a part of the edits, so the document stays modified.
bool save_cue_sheet(const Document& document, const OpenState& open_state, const std::string& name,
                    std::string& reason);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that save audio: they choose the name, ask for the target, run the save, and see to
// what follows from it for the document.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/document.h"

namespace corvelin {

struct Editor;

/// The name that a save of any kind proposes for the opened audio: itself, or in the working
/// folder.
std::string proposed_save_name(const Editor& editor);

enum class SaveOutcome {
  not_started,  // refused, or the user thought better of it
  failed,       // the user has been told why
  saved,
};

/// Whether a save may begin: no source has changed, or the user wants to save all the same.
/// `replaced` is the source whose place the save is to take.
bool may_save_from_sources(const Document& document,
                           std::optional<std::uint16_t> replaced = std::nullopt);

/// Whether the file of this name is a source of the document.
bool is_source(const Editor& editor, const std::string& name);

/// Saves the whole edited stream under a name that the user or a rule has chosen. Replacing a
/// source of the document is asked about first, and closes the document.
SaveOutcome save_under_name(Editor& editor, const std::string& name);

/// The same in the place of the audio file that was opened, without a question.
SaveOutcome save_over_source(Editor& editor);

/// The same under a name that the user is asked for.
SaveOutcome save_audio(Editor& editor);

/// The same for the selection, which must have a length.
SaveOutcome save_selection(Editor& editor);

/// The whole edited stream decoded and encoded anew, into an MP3 file with a name that the user is
/// asked for.
SaveOutcome save_reencoded(Editor& editor);

// The commands; whether all went well.
bool save_complete(Editor& editor);
bool save_selected(Editor& editor);
bool save_encoded_anew(Editor& editor);

}  // namespace corvelin

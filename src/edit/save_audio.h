// The commands that save audio: they choose the name, ask for the target, and run the save.
#pragma once

#include <string>

namespace corvelin {

/// The name that a save of any kind proposes for the opened audio: itself, or in the working
/// folder.
std::string proposed_save_name();

enum class SaveOutcome {
  not_started,  // refused, or the user thought better of it
  failed,       // the user has been told why
  saved,
};

/// Saves under the name `open_state.save_name`, which the user or a rule has chosen. Replacing a
/// source is asked about first, but not with `overwrite`.
SaveOutcome save_under_chosen_name(bool overwrite);

/// Saves the whole edited stream under a name that the user is asked for. Replacing a source of
/// the document is asked once more, and closes the document.
SaveOutcome save_audio();

/// The same for the selection, which must have a length.
SaveOutcome save_selection();

// The commands; whether all went well.
bool save_complete();
bool save_selected();

}  // namespace corvelin

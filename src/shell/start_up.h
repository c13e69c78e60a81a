// SPDX-License-Identifier: GPL-2.0-or-later
// The life of a run: its defaults and settings at the start, the file it is given, and its end.
#pragma once

#include <optional>
#include <string>

namespace corvelin {

struct Editor;

/// Ties the hooks of the lower levels to the modules above them: what follows from a change of the
/// settings happens to this editor.
void connect_levels(Editor& editor);

/// The state of a process that just started, with the settings read from `path` if one is
/// given. False when what stands there can't be read or is no settings file, which has been shown:
/// the defaults hold then, and no settings are stored.
bool start_up(Editor& editor, const std::optional<std::string>& path);

/// Loads the language that the settings name. Without its file the texts are English and the
/// setting is emptied.
void load_language();

/// Closes the document and lets go of the editor and the translation.
void shut_down(Editor& editor);

}  // namespace corvelin

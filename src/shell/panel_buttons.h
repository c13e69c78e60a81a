// SPDX-License-Identifier: GPL-2.0-or-later
// What the buttons of the control panel show of what plays or is recorded, and the words on those
// of the text forms.
#pragma once

#include <string_view>

#include "edit/commands.h"

namespace corvelin {

struct Editor;

/// Whether a button is shown as pressed: that of the command which plays or has armed a recording.
/// The text forms have no button for looped play, which presses two others there.
bool is_button_pressed(const Editor& editor, CommandId id);

/// Whether two buttons of prelistening stand for faster and slower, as they do while plain play
/// runs.
bool has_fast_labels(const Editor& editor);

/// The words on a button of the text forms, with "&" in front of the letter that is underlined.
std::string_view panel_label(CommandId id, bool has_fast_labels);

}  // namespace corvelin

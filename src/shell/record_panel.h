// SPDX-License-Identifier: GPL-2.0-or-later
// What stands in the place of graph and map while a recording is armed, and the texts of its
// status.
#pragma once

#include <string>

#include "shell/canvas.h"
#include "shell/view_layout.h"

namespace corvelin {

struct Editor;

void draw_record_panel(const Editor& editor, const ViewLayout& layout, Canvas& canvas);

/// What the panel says, for who doesn't see it.
std::string recording_in_words(const Editor& editor);

/// The encoder and its settings.
std::string encoder_text();

/// Where the recording is written to, or that it waits for its start.
std::string recording_place_text(const Editor& editor);

/// How many cues were set while it is written; empty before that.
std::string recording_cues_text(const Editor& editor);

}  // namespace corvelin

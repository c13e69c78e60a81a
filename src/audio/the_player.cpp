// SPDX-License-Identifier: GPL-2.0-or-later
// The player of the process.
#include "audio/the_player.h"

#include "model/the_document.h"

namespace corvelin {

LevelMeter level_meter;
Playback playback = {.document = document, .selection = selection, .level_meter = level_meter};
Recorder recorder;

}  // namespace corvelin

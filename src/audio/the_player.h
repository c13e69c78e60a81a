// SPDX-License-Identifier: GPL-2.0-or-later
// What plays and records the document that the process works on, for those who are not yet handed
// theirs as arguments.
#pragma once

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"

namespace corvelin {

extern LevelMeter level_meter;
extern Playback playback;
extern Recorder recorder;

}  // namespace corvelin

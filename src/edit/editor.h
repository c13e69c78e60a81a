// SPDX-License-Identifier: GPL-2.0-or-later
// What a user works on: a document, the places in it, the steps that can be taken back, and what
// plays and records it. Every command gets its editor; two of them know nothing of each other.
#pragma once

#include <vector>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "document/open_state.h"
#include "edit/undo.h"
#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

/// It stays where it is, since what plays keeps its document and places up to date.
struct Editor {
  Editor() = default;
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  Document document;
  Selection selection;
  OpenState open_state;
  std::vector<UndoEntry> undo_stack;  // newest first; at most `max_undo`, and never more than 50
  LevelMeter level_meter;
  Playback playback{.document = document, .selection = selection, .level_meter = level_meter};
  Recorder recorder;
  bool batch_active = false;  // a run without questions: nobody is there to answer
};

}  // namespace corvelin

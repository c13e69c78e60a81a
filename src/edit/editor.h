// SPDX-License-Identifier: GPL-2.0-or-later
// What a user works on: a document, the places in it, the steps that can be taken back, and what
// plays and records it. Every command gets its editor; two of them know nothing of each other.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/undo.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"

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

  /// The dialog for work on whole folders, which lies above the commands.
  std::function<bool(Editor& editor)> open_batch_dialog;

  /// Whether a text file in the folder of the recordings may give commands. For this run alone.
  bool remote_control_on = false;

  /// Where in a frame the graph takes its height from, in bits, in the place of the first
  /// `global_gain`. 0 for that itself.
  std::uint16_t graph_gain_bit = 0;

  /// A run without questions: nobody is there to answer.
  bool batch_active = false;
};

}  // namespace corvelin

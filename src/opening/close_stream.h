// SPDX-License-Identifier: GPL-2.0-or-later
// The way back from an open document to none.
#pragma once

#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"

namespace corvelin {

/// Closes the document, and with it the selection and the name of its project.
void close_stream(Document& document, Selection& selection, OpenState& open_state);

/// How far `reset_state` goes, each level with the one before it.
enum class ResetLevel {
  new_stream = 1,  // selection, cursor, stream, flags
  no_name = 2,     // also the name of the audio file
};

/// Forgets what an earlier document left, before another one is read.
void reset_state(Document& document, Selection& selection, OpenState& open_state, ResetLevel level);

}  // namespace corvelin

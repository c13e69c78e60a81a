// SPDX-License-Identifier: GPL-2.0-or-later
// From the name of an audio file to an open document: the bounds of the audio in the file, and what
// the probe finds out about the stream.
#pragma once

#include <string>

#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"

namespace corvelin {

/// Opens the file, which is `open_state.audio_name` from then on: takes the tags off its ends,
/// probes the stream, and makes all of its audio one part. Shows no message.
///
/// Returns why that can't be, in words for the user, and then leaves no document; empty when all
/// went well.
std::string open_audio_file(Document& document, Selection& selection, OpenState& open_state,
                            const std::string& name);

}  // namespace corvelin

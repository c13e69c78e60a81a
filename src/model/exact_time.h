// SPDX-License-Identifier: GPL-2.0-or-later
// Exact times of places in the edited stream, from a count of the frames in front of them. Unlike
// the scale of `time_mapping`, which goes by an average rate as the display does, they hold for any
// bitrate, for changes of the sample rate, and for damaged files. The price is one pass over the
// headers of a source file when it is first asked about.
#pragma once

#include "model/document.h"

namespace corvelin {

/// The seconds that the frames in front of `pos` take. A place within a frame counts as that
/// frame's start; one behind the end gives the time of the whole stream.
double exact_seconds(const Document& document, EditPosition pos);

/// The first frame that begins `seconds` or more behind the start, a microsecond less allowed, so
/// that a printed time leads back to its frame. `total_size` for a time behind the last one.
EditPosition exact_place(const Document& document, double seconds);

}  // namespace corvelin

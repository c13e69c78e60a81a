// SPDX-License-Identifier: GPL-2.0-or-later
// One fill: the next few frames of the edited stream as samples. All that plays or measures gets
// its samples here, so levels that were set are heard and measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "model/document.h"

namespace corvelin {

/// Reads up to `frames` frames from the cursor on, no further than to `playback.end_limit`, decodes
/// them to `out` and returns how many bytes of samples that is. The cursor and `current_part` move
/// on; of frames whose samples have no room in `out` fewer are read. `frame_counter`, if given,
/// grows by the frames. 0 where nothing is left to read, or nothing can be decoded.
///
/// A prelisten of the cut jumps over the selection here, and a loop goes back to its start.
std::size_t fill_from_stream(std::span<std::uint8_t> out, std::uint32_t frames,
                             std::uint32_t* frame_counter);

/// How often, since the program began, what was read ahead had no frame where one had to begin.
std::uint32_t fill_resyncs();

/// How many bytes of frames were given since then; it wraps.
std::uint32_t fill_bytes();

/// Where a decoder has to begin so that it gives the frame at `pos` as in a run from the start: at
/// a frame in front of it, as a frame leans on the two before it and takes up to 511 bytes of its
/// data from further ones.
EditPosition settling_place(EditPosition pos);

}  // namespace corvelin

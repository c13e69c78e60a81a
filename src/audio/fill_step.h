// SPDX-License-Identifier: GPL-2.0-or-later
// One fill: the next few frames of what is played as samples. Levels that were set are heard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "audio/playback.h"

namespace corvelin {

/// Reads up to `frames` frames from the cursor on, no further than to `playback.end_limit`, decodes
/// them to `out` and returns how many bytes of samples that is. The cursor and `current_part` move
/// on; of frames whose samples have no room in `out` fewer are read. 0 where nothing is left to
/// read, or nothing can be decoded.
///
/// A prelisten of the cut jumps over the selection here, and a loop goes back to its start.
std::size_t fill_from_stream(Playback& playback, std::span<std::uint8_t> out, std::uint32_t frames);

}  // namespace corvelin

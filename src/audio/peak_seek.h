// SPDX-License-Identifier: GPL-2.0-or-later
// Peaks of the samples at chosen places of the edited stream, measured without playing. What the
// stream's levels and cuts make of it is what is measured.
#pragma once

#include <cstdint>
#include <span>

namespace corvelin {

/// Starts a measuring whose reads take at most `frames_per_step` frames. It reaches to the end of
/// the selection if that has a length, else of the stream. False when nothing can be decoded, which
/// the user has been told. Nothing plays.
bool peak_seek_open(std::uint32_t frames_per_step);

/// The highest sample magnitude (0 to 32768) of the next `frames` frames from the cursor, which
/// moves behind them. 0 also when nothing was decoded. Between two reads the caller may move the
/// cursor and `current_part`, and then calls `decoder_reset`.
std::uint16_t peak_seek_read(std::uint32_t frames);

/// Ends the measuring and puts the cursor back to where it was at its start. Does nothing without
/// one.
void peak_seek_close();

/// The highest magnitude among samples.
std::uint16_t highest_magnitude(std::span<const std::int16_t> values);

}  // namespace corvelin

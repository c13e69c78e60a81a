// SPDX-License-Identifier: GPL-2.0-or-later
// Faster play that keeps the pitch: stretches of the sound are left out, and the rest is
// cross-faded together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace corvelin {

/// Forgets the sound that was faded out last: that of another play.
void fast_play_begin();

/// Shortens a block of samples in place by the level of fast play (1 to 4), and returns how many
/// samples of all channels are left. A block that is too short for that stays whole. Each block
/// goes on where the one before faded out.
std::size_t fast_play_compress(std::span<std::int16_t> samples, int level);

}  // namespace corvelin

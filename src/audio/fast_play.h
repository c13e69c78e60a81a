// SPDX-License-Identifier: GPL-2.0-or-later
// Faster play that keeps the pitch: stretches of the sound are left out, and the rest is
// cross-faded together.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "model/stream_info.h"

namespace corvelin {

/// One play of a stream.
class FastPlay {
 public:
  /// Shortens a block of samples of the stream in place by the level of fast play (1 to 4), and
  /// returns how many samples of all channels are left. A block that is too short for that stays
  /// whole. Each block goes on where the one before faded out.
  std::size_t compress(std::span<std::int16_t> samples, const StreamKind& kind, int level);

 private:
  // What faded out last, which the next fade in, in this block or the next, is added to.
  std::array<std::int16_t, 600> tail_ = {};
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Level changes inside the frame data. Layer III stores per granule and channel an 8-bit
// `global_gain` (ISO/IEC 11172-3, 2.4.1.7), a step of which is 1.5 dB, so a level change or a fade
// is an addition to these fields on a copy of the frame. Owns where the fields lie and the CRC that
// has to follow.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "frames/frame_header.h"

namespace corvelin {

/// Bit offsets of the `global_gain` fields from the first bit of a frame; 0 marks an unused entry.
using GainPositions = std::array<std::uint16_t, 4>;

/// Where the fields of this very frame lie; all 0 for a frame that has none (Layer II, AAC). Taken
/// from the frame and not from the stream, so that a frame of another kind in its midst is not
/// spoilt.
GainPositions gain_positions(const FrameInfo& info);

/// Adds `delta` steps to each `global_gain` of the frame. A field stays at 0 or 255 rather than
/// wrap, so a level beyond the format's range is the lowest or highest that it has.
void apply_gain(std::span<std::uint8_t> frame, const GainPositions& positions, int delta);

/// One byte more of the CRC of the MPEG audio standard: polynomial 0x8005, highest bit first.
std::uint16_t crc16_step(std::uint16_t crc, std::uint8_t byte);

/// The same over many bytes.
std::uint16_t crc16(std::uint16_t crc, std::span<const std::uint8_t> bytes);

/// Writes the CRC of a protected Layer III frame anew (ISO/IEC 11172-3, 2.4.3.1).
void recompute_frame_crc(std::span<std::uint8_t> frame, const FrameInfo& info);

}  // namespace corvelin

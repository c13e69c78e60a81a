// SPDX-License-Identifier: GPL-2.0-or-later
// The places that the editing commands work on: frames next to a border, and what becomes of the
// cursor and the selection when an edit moves the audio under them.
#pragma once

#include "model/document.h"

namespace corvelin {

struct Editor;

/// The last frame of the part that begins in front of `pos`; `no_position` if it has none there.
EditPosition frame_before_in(const Document& document, PartIndex part, EditPosition pos,
                             FrameInfo& last_found);

/// The length of the frame at the cursor, in bytes: so far behind it the next one begins.
std::uint32_t frame_length_at_cursor(const Editor& editor);

/// Whole bytes of a number of average frames.
std::uint32_t average_frames(const Document& document, std::uint32_t count);

/// Puts the cursor and the ends of the selection on frame starts after an edit that moved the
/// frames under them: each goes up to the next one, or back to the end of the stream.
void settle_places(Editor& editor);

}  // namespace corvelin

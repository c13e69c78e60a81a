// The places that the editing commands work on: frames next to a border, and what becomes of the
// cursor and the selection when an edit moves the audio under them.
#pragma once

#include "model/document.h"

namespace corvelin {

/// The frame behind the one that begins at `frame`, searched in the file of `part` also behind the
/// part's end. Fails as `locate_frame` does.
EditPosition next_frame_in(PartIndex part, EditPosition frame);

/// The last frame of the part that begins in front of `pos`; `no_position` if it has none there.
EditPosition frame_before_in(PartIndex part, EditPosition pos);

/// The bytes from a frame's start from where a seek lands on the next frame, by the length of the
/// frame that was found last.
std::uint32_t seek_step_to_next_frame();

/// Whole bytes of a number of average frames.
std::uint32_t average_frames(std::uint32_t count);

/// Moves the cursor and the ends of the selection up to the next frame start, or back to the end of
/// the stream, where an edit has left them inside a frame or behind the end. What stands on a
/// frame start stays.
void settle_places();

}  // namespace corvelin

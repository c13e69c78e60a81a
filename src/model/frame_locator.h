// Finds frame borders. Every position that the editor stores has come out of this module; nobody
// else decides where a frame begins. Reads the source files, changes nothing but
// `stream.current_frame`.
#pragma once

#include "model/document.h"

namespace corvelin {

/// How many bytes one search looks at.
constexpr std::uint32_t search_block_size = 10000;

/// The first frame at or after `pos`, searched in the file of `part` within one block of 10000
/// bytes.
///
/// A frame is believed when another of its kind follows it; after a change of the sample rate
/// against `stream.current_frame` it takes two. Leaves the frame found in `stream.current_frame`. A
/// `pos` above `highest_position` counts as 0. Returns `total_size` for a position at or behind the
/// end, the end of the part when the search reached it in vain, `no_position` when the block holds
/// no frame.
EditPosition locate_frame(PartIndex part, EditPosition pos);

/// From a frame's start a search from so many bytes behind it finds the next one.
constexpr std::uint32_t next_frame_step = 10;

/// The first frame at or after `pos`, searched in the part that holds it.
EditPosition frame_at(EditPosition pos);

/// The last frame that starts before `pos`, or 0.
EditPosition frame_before(EditPosition pos);

/// `locate_frame` over up to 10,000,000 bytes: the next frame behind garbage. `no_position` if
/// none.
EditPosition scan_forward(PartIndex part, EditPosition pos);

}  // namespace corvelin

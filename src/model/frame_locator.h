// SPDX-License-Identifier: GPL-2.0-or-later
// Finds frame borders. Every position that the editor stores has come out of this module; nobody
// else decides where a frame begins. Reads the source files and keeps nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "frames/frame_header.h"
#include "model/document.h"

namespace corvelin {

/// How many bytes one search looks at, and how many it reads: a header may begin at the last one.
constexpr std::uint32_t search_block_size = 10000;
constexpr std::uint32_t search_read_size = search_block_size + header_size - 1;

constexpr std::uint32_t any_sample_rate = 0;

/// Where a search ended, and the frame that begins there. `frame.version` is 0 where none does: at
/// the end of the stream, at the end of a part that was reached in vain, and at `no_position`.
struct FramePlace {
  EditPosition pos = no_position;
  FrameInfo frame;
};

/// The first frame at or after `pos`, searched in the file of `part` within one block of 10000
/// bytes. Changes nothing.
///
/// A frame is believed when another of its kind follows it. One of another sample rate than the
/// frame before it may be garbage: when `rate_before` (hertz) is given, the first frame of a new
/// rate is passed over, and the second of that rate is taken. A `pos` above `highest_position`
/// counts as 0. The place is `total_size` for a position at or behind the end, the end of the part
/// when the search reached it in vain, `no_position` when the block holds no frame.
FramePlace find_frame(const Document& document, PartIndex part, EditPosition pos,
                      std::uint32_t rate_before = any_sample_rate);

/// The same, with `last_found` as the frame before, which becomes the frame found. A search in vain
/// leaves it as it is.
EditPosition locate_frame(const Document& document, PartIndex part, EditPosition pos,
                          FrameInfo& last_found);

/// `locate_frame` in the part that holds `pos`.
EditPosition frame_at(const Document& document, EditPosition pos, FrameInfo& last_found);

/// The frame that follows the one at `frame` in the file of `part`. It may lie behind the part's
/// end, in what was cut out there. Fails as `locate_frame` does.
EditPosition next_frame_in(const Document& document, PartIndex part, EditPosition frame,
                           FrameInfo& last_found);

/// The last frame that starts before `pos`, or 0.
EditPosition frame_before(const Document& document, EditPosition pos, FrameInfo& last_found);

/// `locate_frame` over up to 10,000,000 bytes: the next frame behind garbage. `no_position` if
/// none.
EditPosition scan_forward(const Document& document, PartIndex part, EditPosition pos,
                          FrameInfo& last_found);

/// The search of `find_frame` in bytes at hand, of which the first `usable` are audio; the header
/// that follows a frame may lie behind them, in the first `search_block_size` bytes. The place is
/// counted from the block's start.
std::optional<FramePlace> find_frame_in_block(std::span<const std::uint8_t> block,
                                              std::size_t usable, FrameFormat format,
                                              std::uint32_t rate_before = any_sample_rate);

/// `find_frame` over up to 10,000,000 bytes.
FramePlace find_frame_forward(const Document& document, PartIndex part, EditPosition pos,
                              std::uint32_t rate_before = any_sample_rate);

}  // namespace corvelin

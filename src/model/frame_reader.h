// SPDX-License-Identifier: GPL-2.0-or-later
// Turns the part table into a stream of frames, in edited order across part borders and files, with
// all that an edit means inside a frame already applied. Saving, playback, measuring and
// verification read through it, so what is heard is what is saved.
#pragma once

#include <cstdint>
#include <span>

#include "frames/frame_header.h"
#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

/// The room for the frames of one read: at most so many bytes are read at a time.
constexpr std::size_t frame_block_limit = 62000;

/// Where a reader stands in the edited stream.
struct FrameCursor {
  EditPosition pos = 0;
  PartIndex part = 0;
  /// The frame looked at last: the last one delivered, or, where one was searched for, the one at
  /// `pos`. None (`version` 0) before the first.
  FrameInfo frame;
};

FrameCursor frame_cursor_at(const Document& document, EditPosition pos);

/// At the user's cursor, in the part that was chosen.
FrameCursor edit_cursor(const Document& document, const Selection& selection);

/// Moves the user's cursor there, and with it `current_part` and the frame shown.
void put_edit_cursor(Document& document, Selection& selection, const FrameCursor& place);

/// What one call of `read_frames` came to.
struct FramesRead {
  std::size_t size = 0;            // bytes, all of whole frames, from the block's start on
  std::uint32_t frames = 0;        // how many
  std::uint32_t resync_count = 0;  // 1 where no frame stood at a place where one had to begin
};

constexpr std::uint32_t any_frame_count = 0xFFFFFFFF;  // no limit but that of the bytes

/// Reads whole frames into `block`, at most `max_frames`, from the cursor up to `end`, and moves
/// the cursor on.
///
/// A short result or none is normal: the call ends at a part's border, at bad data and at a frame
/// that didn't fit. The caller calls again until the cursor has reached its end. A frame that would
/// run over the end of its part is left out. Behind bad data the cursor stands at the next true
/// frame, or at the end of the stream when there is none in reach.
FramesRead read_frames(const Document& document, std::span<std::uint8_t> block, FrameCursor& cursor,
                       EditPosition end, std::uint32_t max_frames = any_frame_count);

}  // namespace corvelin

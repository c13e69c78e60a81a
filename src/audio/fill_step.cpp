// SPDX-License-Identifier: GPL-2.0-or-later
// Reading and decoding of the next frames.
#include "audio/fill_step.h"

#include <algorithm>

#include "audio/decoder_bridge.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/selection.h"

namespace corvelin {

namespace {

void go_to(const Document& document, FrameCursor& at, EditPosition pos) {
  at.pos = pos;
  at.part = part_at(document, pos);
}

// The second leg of a prelisten of the cut. The decoder goes on with the frames in front of the
// selection, or with none, as it will when the cut is made: what that does to the first frames
// behind is part of what is judged here.
void jump_over_selection(Playback& playback, FrameCursor& at) {
  playback.has_jumped = true;
  const Selection& selection = playback.selection;
  if (!has_selection(selection)) return;
  playback.decoder.is_settled = true;
  go_to(playback.document, at, selection.sel_end);
  const std::uint64_t end =
      std::uint64_t{selection.sel_end} + prelisten_bytes(playback.document.stream);
  playback.end_limit =
      static_cast<EditPosition>(std::min<std::uint64_t>(end, playback.document.total_size));
}

// The selection may have been changed meanwhile.
void loop_back(Playback& playback, FrameCursor& at) {
  const Selection& selection = playback.selection;
  if (!has_selected_range(selection)) return;
  if (at.pos >= selection.sel_end) {
    go_to(playback.document, at, selection.sel_beg);
    playback.decoder.is_settled = false;  // it still holds the frames of the old place
  }
  playback.end_limit = selection.sel_end;
}

// What plays follows an edit at once, so nothing is read ahead.
FramesRead read_next(Playback& playback, FrameCursor& at, std::span<std::uint8_t> out,
                     std::uint32_t frames) {
  DecoderSession& session = playback.decoder;
  const Document& document = playback.document;
  frames = std::min(frames, frames_in_room(session, out));
  FramesRead input;
  // A read ends at a part's border and at bad data, and a jump takes a round of its own.
  constexpr int most_rounds = 3;
  for (int round = 0; round < most_rounds && input.frames == 0; ++round) {
    if (at.pos < playback.end_limit) {
      if (!session.is_settled) settle_decoder(session, document, at, out);
      input = read_frames(document, session.block, at, playback.end_limit, frames);
    } else if (playback.prelisten_mode == prelisten_as_cut && !playback.has_jumped) {
      jump_over_selection(playback, at);
    }
    if (playback.prelisten_mode == loop_selection) loop_back(playback, at);
  }
  return input;
}

}  // namespace

std::size_t fill_from_stream(Playback& playback, std::span<std::uint8_t> out,
                             std::uint32_t frames) {
  if (!playback.decoder.decoder_ready) return 0;
  FrameCursor at = edit_cursor(playback.document, playback.selection);
  const FramesRead input = read_next(playback, at, out, frames);
  const std::size_t size = decode_frames(playback.decoder, playback.document, at,
                                         std::span(playback.decoder.block).first(input.size), out);
  put_edit_cursor(playback.document, playback.selection, at);
  return size;
}

}  // namespace corvelin

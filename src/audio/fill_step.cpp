// SPDX-License-Identifier: GPL-2.0-or-later
// Reading and decoding of the next frames.
#include "audio/fill_step.h"

#include <algorithm>

#include "audio/decoder_bridge.h"
#include "audio/frame_feed.h"
#include "audio/playback.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/the_document.h"

namespace corvelin {

namespace {

FrameFeed feed;

std::span<std::uint8_t> input_block() { return std::span(frame_block).first(frame_block_limit); }

// What plays follows an edit at once, so nothing is read ahead.
Frames frames_to_play(std::uint32_t most) {
  const FramesRead read =
      read_frames_at_edit_cursor(document, selection, input_block(), playback.end_limit, most);
  return {.bytes = input_block().first(read.size), .count = read.frames};
}

void go_to(EditPosition pos) {
  selection.cursor = pos;
  document.current_part = part_at(document, pos);
}

// The second leg of a prelisten of the cut. The decoder goes on with the frames in front of the
// selection, or with none, as it will when the cut is made: what that does to the first frames
// behind is part of what is judged here.
void jump_over_selection() {
  playback.has_jumped = true;
  if (!has_selection(selection)) return;
  decoder_session.is_settled = true;
  go_to(selection.sel_end);
  const std::uint64_t end = std::uint64_t{selection.sel_end} + prelisten_bytes();
  playback.end_limit = static_cast<EditPosition>(std::min<std::uint64_t>(end, document.total_size));
}

// The selection may have been changed meanwhile.
void loop_back() {
  if (!has_selected_range(selection)) return;
  if (selection.cursor >= selection.sel_end) {
    go_to(selection.sel_beg);
    decoder_session.is_settled = false;  // it still holds the frames of the old place
  }
  playback.end_limit = selection.sel_end;
}

// How many frames the block holds whose samples have room in `out`.
std::uint32_t frames_in_room(std::span<const std::uint8_t> out) {
  return std::max(1u, static_cast<std::uint32_t>(out.size() / decoder_session.pcm_frame_bytes));
}

// Decodes what lies in front of the cursor and throws it away.
void settle_decoder(std::span<std::uint8_t> out) {
  decoder_reset();
  decoder_session.is_settled = true;
  FrameCursor reader = frame_cursor_at(document, settling_place(selection.cursor));
  while (reader.pos < selection.cursor) {
    const EditPosition before = reader.pos;
    const FramesRead read =
        read_frames(document, input_block(), reader, selection.cursor, frames_in_room(out));
    decode_frames(input_block().first(read.size), out);
    if (reader.pos == before) break;
  }
}

}  // namespace

std::size_t fill_from_stream(std::span<std::uint8_t> out, std::uint32_t frames,
                             std::uint32_t* frame_counter) {
  if (!decoder_session.decoder_ready) return 0;
  frames = std::min(frames, frames_in_room(out));
  Frames input;
  // A read ends at a part's border and at bad data, and a jump takes a round of its own.
  constexpr int most_rounds = 3;
  for (int round = 0; round < most_rounds && input.count == 0; ++round) {
    if (selection.cursor < playback.end_limit) {
      if (!decoder_session.is_settled) settle_decoder(out);
      input = playback.is_playing ? frames_to_play(frames) : feed.take(frames, playback.end_limit);
    } else if (playback.prelisten_mode == prelisten_as_cut && !playback.has_jumped) {
      jump_over_selection();
    }
    if (playback.prelisten_mode == loop_selection) loop_back();
  }
  if (frame_counter != nullptr) *frame_counter += input.count;
  return decode_frames(input.bytes, out);
}

std::uint32_t fill_resyncs() { return feed.resyncs(); }

std::uint32_t fill_bytes() { return feed.bytes(); }

EditPosition settling_place(EditPosition pos) {
  constexpr std::uint32_t reach = 3584;  // bytes: more than that takes at any bitrate
  const EditPosition back = pos < reach ? 0 : pos - reach;
  return find_frame(document, part_at(document, back), back).pos;
}

}  // namespace corvelin

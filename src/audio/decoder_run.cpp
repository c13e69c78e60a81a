// SPDX-License-Identifier: GPL-2.0-or-later
// Sessions that nobody hears.
#include "audio/decoder_run.h"

#include "audio/decoder_bridge.h"
#include "audio/fill_step.h"
#include "audio/playback.h"
#include "model/selection.h"
#include "model/the_document.h"

namespace corvelin {

std::optional<std::vector<std::uint8_t>> open_decoder_run(std::uint32_t frames_per_step) {
  if (!open_private_session(frames_per_step, document.total_size)) return std::nullopt;
  document.current_part = 0;
  selection.cursor = 0;
  return std::vector<std::uint8_t>(decoder_session.pcm_buffer_bytes);
}

std::size_t decode_block(std::span<std::uint8_t> block, std::uint32_t frames,
                         std::uint32_t& frame_counter) {
  return fill_from_stream(block, frames, &frame_counter);
}

void close_decoder_run() {
  if (!decoder_session.decoder_ready) return;
  decoder_close();
  playback.prelisten_mode = plain_play;
  selection.cursor = playback.saved_cursor;
}

bool open_private_session(std::uint32_t frames_per_step, EditPosition end) {
  constexpr std::uint32_t frame_room = 5200;  // bytes of samples that a frame may take
  playback.prelisten_mode = plain_play;
  playback.end_limit = end;
  decoder_session.pcm_buffer_bytes = frames_per_step * frame_room;
  if (!decoder_open()) return false;
  playback.saved_cursor = selection.cursor;
  return true;
}

}  // namespace corvelin

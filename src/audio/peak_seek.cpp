// The highest samples of frames.
#include "audio/peak_seek.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "audio/decoder_bridge.h"
#include "audio/fill_step.h"
#include "audio/playback.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/selection.h"

namespace corvelin {

namespace {

std::vector<std::int16_t> samples;  // the room of the measuring under way

}  // namespace

bool peak_seek_open(std::uint32_t frames_per_step) {
  constexpr std::uint32_t frame_room = 5200;  // bytes of samples that a frame may take
  peak_seek_close();
  playback.prelisten_mode = plain_play;
  playback.end_limit = has_selected_range() ? selection.sel_end : document.total_size;
  decoder_session.pcm_buffer_bytes = frames_per_step * frame_room;
  if (!decoder_open()) return false;
  samples.resize(decoder_session.pcm_buffer_bytes / sizeof(std::int16_t));
  playback.saved_cursor = selection.cursor;
  return true;
}

std::uint16_t peak_seek_read(std::uint32_t frames) {
  const std::span<std::uint8_t> room(reinterpret_cast<std::uint8_t*>(samples.data()),
                                     samples.size() * sizeof(std::int16_t));
  const std::size_t filled = fill_from_stream(room, frames, nullptr);
  return highest_magnitude(std::span(samples).first(filled / sizeof(std::int16_t)));
}

void peak_seek_close() {
  if (samples.empty()) return;
  samples = {};
  decoder_close();
  playback.prelisten_mode = plain_play;
  selection.cursor = playback.saved_cursor;
}

std::uint16_t highest_magnitude(std::span<const std::int16_t> values) {
  std::int16_t lowest = 0;
  std::int16_t highest = 0;
  for (const std::int16_t value : values) {
    lowest = std::min(lowest, value);
    highest = std::max(highest, value);
  }
  return static_cast<std::uint16_t>(std::max<int>(highest, -lowest));
}

}  // namespace corvelin

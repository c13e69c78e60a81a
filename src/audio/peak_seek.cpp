// SPDX-License-Identifier: GPL-2.0-or-later
// The highest samples of frames.
#include "audio/peak_seek.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "audio/decoder_bridge.h"
#include "audio/decoder_run.h"
#include "audio/fill_step.h"
#include "audio/playback.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/the_document.h"

namespace corvelin {

namespace {

std::vector<std::int16_t> samples;  // the room of the measuring under way

}  // namespace

bool peak_seek_open(std::uint32_t frames_per_step) {
  peak_seek_close();
  const EditPosition end = has_selected_range(selection) ? selection.sel_end : document.total_size;
  if (!open_private_session(frames_per_step, end)) return false;
  samples.resize(decoder_session.pcm_buffer_bytes / sizeof(std::int16_t));
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
  close_decoder_run();
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

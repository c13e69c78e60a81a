// SPDX-License-Identifier: GPL-2.0-or-later
// Frames to samples, step by step.
#include "audio/sample_reader.h"

#include <algorithm>

namespace corvelin {

SampleReader::SampleReader(const Document& document) : document_(document) {}

bool SampleReader::open(const FrameCursor& place, EditPosition end, std::uint32_t frames_per_step) {
  constexpr std::uint32_t frame_room = 5200;  // bytes of samples that a frame may take
  session_.pcm_buffer_bytes = frames_per_step * frame_room;
  place_ = place;
  end_ = end;
  feed_ = {};
  frames_ = 0;
  if (!decoder_open(session_, document_, place_)) return false;
  samples_.resize(session_.pcm_buffer_bytes / sizeof(std::int16_t));
  return true;
}

std::span<const std::int16_t> SampleReader::read(std::uint32_t frames) {
  if (!is_open()) return {};
  frames = std::min(frames, frames_in_room(session_, room()));
  Frames input;
  constexpr int most_rounds = 3;  // a read ends at a part's border and at bad data
  for (int round = 0; round < most_rounds && input.count == 0 && place_.pos < end_; ++round) {
    if (!session_.is_settled) settle_decoder(session_, document_, place_, room());
    input = feed_.take(document_, place_, frames, end_);
  }
  frames_ += input.count;
  const std::size_t size = decode_frames(session_, document_, place_, input.bytes, room());
  return std::span(samples_).first(size / sizeof(std::int16_t));
}

std::uint16_t SampleReader::read_peak(std::uint32_t frames) {
  return highest_magnitude(read(frames));
}

void SampleReader::move_to(EditPosition pos) {
  place_.pos = pos;
  place_.part = part_at(document_, pos);
  decoder_reset(session_);
}

std::span<std::uint8_t> SampleReader::room() {
  return {reinterpret_cast<std::uint8_t*>(samples_.data()), samples_.size() * sizeof(samples_[0])};
}

bool open_at_cursor(SampleReader& reader, Document& document, Selection& selection,
                    EditPosition end, std::uint32_t frames_per_step) {
  const bool is_open = reader.open(edit_cursor(document, selection), end, frames_per_step);
  put_edit_cursor(document, selection, reader.place());
  return is_open;
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

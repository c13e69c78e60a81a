// SPDX-License-Identifier: GPL-2.0-or-later
// Reads a stretch in two halves, and decodes them on two threads.
#include "audio/stretch_peaks.h"

#include <algorithm>
#include <array>
#include <future>
#include <span>
#include <system_error>

#include "audio/decoder_bridge.h"
#include "audio/sample_reader.h"
#include "model/frame_locator.h"

namespace corvelin {

namespace {

// At the lowest bitrates a frame takes data from 24 frames before it. How samples are rounded
// depends on how many frames, modulo 8, a decoder was given before: multiples of that keep two
// decoders in step with one.
constexpr std::uint32_t lead_in_frames = 32;
constexpr std::uint32_t frames_a_half = 2000;

std::uint16_t decode_peak(FrameDecoder& decoder, std::span<const std::uint8_t> frames) {
  using Step = FrameDecoder::Step;
  constexpr std::size_t piece = 65536;          // bytes, of which the decoder keeps a copy
  std::array<std::int16_t, 2304> samples = {};  // of one frame
  const std::span<std::uint8_t> room(reinterpret_cast<std::uint8_t*>(samples.data()),
                                     sizeof samples);
  std::uint16_t peak = 0;
  while (!frames.empty()) {
    const std::size_t size = std::min(frames.size(), piece);
    Step step = decoder.feed(frames.first(size)) ? Step::produced : Step::failed;
    while (step == Step::produced) {
      std::size_t done = 0;
      step = decoder.take(room, done);
      peak = std::max(peak, highest_magnitude(std::span(samples).first(done / sizeof samples[0])));
    }
    frames = frames.subspan(size);
  }
  return peak;
}

}  // namespace

bool stretch_peaks_on_two_cores = true;

StretchPeaks::StretchPeaks(const Document& document) : document_(document) {}

bool StretchPeaks::open(EditPosition begin, EditPosition end, int channels) {
  reader_ = frame_cursor_at(document_, settling_place(document_, begin));
  end_ = begin;
  for (Half& half : halves_) {
    if (half.decoder.open(channels).fault != DecoderFault::none) return false;
    half.lead_in.clear();
    half.frames.clear();
    half.tail = 0;
  }
  append_frames(halves_[1].frames, any_frame_count);
  end_ = end;
  frames_ = 0;
  return true;
}

std::uint16_t StretchPeaks::read() {
  fill(halves_[0], halves_[1]);
  fill(halves_[1], halves_[0]);
  const auto measure = [](Half& half) {
    decode_peak(half.decoder, half.lead_in);
    return decode_peak(half.decoder, half.frames);
  };
  std::future<std::uint16_t> second;
  try {
    second = std::async(stretch_peaks_on_two_cores ? std::launch::async : std::launch::deferred,
                        measure, std::ref(halves_[1]));
  } catch (const std::system_error&) {  // the system has no thread left: one half after the other
    second = std::async(std::launch::deferred, measure, std::ref(halves_[1]));
  }
  const std::uint16_t first = measure(halves_[0]);
  return std::max(first, second.get());
}

// Appends so many frames, or what is left of the stretch.
void StretchPeaks::append_frames(std::vector<std::uint8_t>& bytes, std::uint32_t count) {
  while (count > 0 && reader_.pos < end_) {
    const EditPosition before = reader_.pos;
    const std::size_t size = bytes.size();
    bytes.resize(size + frame_block_limit);
    const FramesRead read =
        read_frames(document_, std::span(bytes).subspan(size), reader_, end_, count);
    bytes.resize(size + read.size);
    count -= read.frames;
    frames_ += read.frames;
    if (reader_.pos == before) break;
  }
}

void StretchPeaks::fill(Half& half, const Half& before) {
  half.lead_in.assign(before.frames.begin() + static_cast<std::ptrdiff_t>(before.tail),
                      before.frames.end());
  half.frames.clear();
  append_frames(half.frames, frames_a_half - lead_in_frames);
  half.tail = half.frames.size();
  append_frames(half.frames, lead_in_frames);
}

}  // namespace corvelin

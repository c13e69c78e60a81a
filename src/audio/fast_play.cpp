// SPDX-License-Identifier: GPL-2.0-or-later
// The block in cycles: fade in, keep, fade out, leave out.
#include "audio/fast_play.h"

#include <algorithm>

namespace corvelin {

namespace {

// Lengths in samples of all channels. Each cycle fades in, keeps a stretch, fades out, and leaves a
// stretch out.
struct Cycle {
  std::size_t channels = 0;
  std::size_t count = 0;  // of cycles in the block
  std::size_t fade = 0;
  std::size_t kept = 0;
  std::size_t left_out = 0;

  [[nodiscard]] std::size_t taken() const { return left_out + 2 * fade + kept; }
  [[nodiscard]] std::size_t given() const { return fade + kept; }
};

// No cycles in a block that is too short.
Cycle cycle_of(std::size_t size, const StreamKind& kind, int level) {
  constexpr std::uint32_t low_rate = 32000;
  const std::size_t channels = kind.channel_mode == mono ? 1 : 2;
  const std::size_t rates = kind.sample_rate < low_rate ? 1 : 2;
  const std::size_t unit = channels * rates;
  Cycle cycle = {.channels = channels, .fade = 150 * unit, .kept = 400 * unit};
  cycle.count = size / (2 * cycle.fade + cycle.kept);
  if (cycle.count == 0) return cycle;
  const std::size_t extra = size / cycle.count - 2 * cycle.fade - cycle.kept;
  switch (level) {
    case 1:
      cycle.kept += extra / channels / rates;
      break;
    case 2:
      cycle.kept -= 50 * unit;
      cycle.left_out = 50 * unit + extra;
      break;
    case 3:
      cycle.kept -= cycle.fade;
      cycle.left_out = cycle.fade + extra;
      break;
    case 4:
      cycle.kept -= 250 * unit;
      cycle.left_out = 250 * unit + extra;
      break;
    default:
      cycle.count = 0;
      break;
  }
  cycle.kept -= cycle.kept % 2;  // or the channels would change places
  cycle.left_out -= cycle.left_out % 2;
  return cycle;
}

// The samples of one time, of all channels, have the same weight in a fade.
int weight_at(const Cycle& cycle, std::size_t at) {
  return static_cast<int>(at - at % cycle.channels);
}

void fade_in(const Cycle& cycle, std::span<const std::int16_t> from,
             std::span<const std::int16_t> tail, std::span<std::int16_t> to) {
  constexpr int loudest = 32767;
  const int fade = static_cast<int>(cycle.fade);
  for (std::size_t i = 0; i < cycle.fade; ++i) {
    const int value = from[i] * weight_at(cycle, i) / fade + tail[i];
    to[i] = static_cast<std::int16_t>(std::clamp(value, -loudest, loudest));
  }
}

void fade_out(const Cycle& cycle, std::span<const std::int16_t> from,
              std::span<std::int16_t> tail) {
  const int fade = static_cast<int>(cycle.fade);
  for (std::size_t i = 0; i < cycle.fade; ++i)
    tail[i] = static_cast<std::int16_t>(from[i] * (fade - weight_at(cycle, i)) / fade);
}

}  // namespace

std::size_t FastPlay::compress(std::span<std::int16_t> samples, const StreamKind& kind, int level) {
  const Cycle cycle = cycle_of(samples.size(), kind, level);
  if (cycle.count == 0) return samples.size();
  std::size_t written = 0;
  for (std::size_t number = 0; number < cycle.count; ++number) {
    const std::span<std::int16_t> in = samples.subspan(number * cycle.taken());
    const std::span<std::int16_t> out = samples.subspan(number * cycle.given());
    fade_in(cycle, in, tail_, out);
    written += cycle.fade;
    if (cycle.fade + cycle.kept >= in.size()) break;
    std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(cycle.fade), cycle.kept,
                out.begin() + static_cast<std::ptrdiff_t>(cycle.fade));
    written += cycle.kept;
    if (2 * cycle.fade + cycle.kept >= in.size()) break;
    fade_out(cycle, in.subspan(cycle.fade + cycle.kept), tail_);
    if (cycle.taken() + cycle.fade >= in.size()) break;
  }
  return written;
}

}  // namespace corvelin

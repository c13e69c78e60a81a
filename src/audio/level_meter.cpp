// SPDX-License-Identifier: GPL-2.0-or-later
// Levels of buffers on the scale of the meter.
#include "audio/level_meter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "platform/host.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t unmeasured_end = 104;  // bytes at the end of a buffer
constexpr std::size_t shortest_buffer = 1100;

// The highest raw level of a slot: 128 for a sample at the negative end of the scale.
int raw_level(std::span<const std::uint8_t> pcm, std::size_t slot) {
  constexpr std::size_t step = 4;  // bytes: one sample of each of two channels
  int highest = 0;
  for (std::size_t i = 0; i + unmeasured_end + 1 < pcm.size(); i += step) {
    std::int16_t sample = 0;
    std::memcpy(&sample, pcm.data() + i + 2 * slot, sizeof sample);
    highest = std::max(highest, std::abs(sample >> 8));
  }
  return highest;
}

// Buffers that clip one after the other sound one beep, and another when the clip mark has stood
// for a quarter of its time.
bool is_new_clip(const LevelMeter& meter, std::size_t slot, int hold_time) {
  const auto is_clipping = [](std::uint8_t hold) { return hold == highest_meter; };
  if (std::ranges::none_of(meter.meter_hold, is_clipping)) return true;
  return meter.meter_hold_count[slot] < 3 * hold_time / 4;
}

// Moves the bar and the mark of a slot. Returns whether the bar falls slower than the level.
bool show_level(LevelMeter& meter, std::size_t slot, std::uint8_t raw, std::uint8_t hold_time) {
  int level = meter_curve(raw);
  const int lowest = meter.meter_last[slot] - meter.meter_decay / 10;
  const bool is_falling = level < lowest;
  if (is_falling) level = lowest;
  const auto shown = static_cast<std::uint8_t>(level & highest_meter);
  meter.meter_level[slot] = meter.meter_last[slot] = shown;

  std::uint8_t& hold = meter.meter_hold[slot];
  std::uint8_t& count = meter.meter_hold_count[slot];
  if (hold < highest_meter && hold < shown) {
    hold = shown;
    count = hold_time;
  }
  if (count == 0) {
    hold = 0;
    count = hold_time;
  } else {
    --count;
  }
  return is_falling;
}

void adapt_decay(LevelMeter& meter, bool is_falling) {
  constexpr std::int32_t fastest = 99;
  const std::int32_t step = 3 * settings.buffer_frm;
  if (!is_falling) {
    meter.meter_decay = step;
  } else if (meter.meter_decay <= fastest) {
    meter.meter_decay += step;
  }
}

}  // namespace

std::uint8_t meter_curve(std::uint8_t raw) {
  return static_cast<std::uint8_t>((1 - std::exp(raw / -60.0)) * 144);
}

void level_meter_feed(LevelMeter& meter, std::span<const std::uint8_t> pcm, int channels,
                      MeterUse use) {
  if (pcm.size() < shortest_buffer) return;
  std::uint8_t hold_time = 14;
  if (use == MeterUse::playing) {
    hold_time = static_cast<std::uint8_t>(80 / std::max<int>(settings.buffer_frm, 1));
  } else {
    meter.meter_decay = 80;
  }
  meter.meter_overall = 0;
  bool is_falling = false;
  bool beeps = false;
  for (std::size_t slot = channels == 1 ? 1 : 0; slot < 2; ++slot) {
    const int level = raw_level(pcm, slot);
    const auto raw = static_cast<std::uint8_t>(std::min<int>(level, highest_meter));
    if (raw == highest_meter) {
      if (settings.peakbeep != 0 && is_new_clip(meter, slot, hold_time)) beeps = true;
      meter.meter_hold[slot] = highest_meter;
      meter.meter_hold_count[slot] = hold_time;
    }
    meter.meter_margin[slot] = std::max(meter.meter_margin[slot], raw);
    meter.meter_overall = std::max(meter.meter_overall, raw);
    if (show_level(meter, slot, raw, hold_time)) is_falling = true;
  }
  adapt_decay(meter, is_falling);
  if (beeps && use == MeterUse::recording) host().beep();
}

void level_meter_clear(LevelMeter& meter) {
  meter.meter_level = meter.meter_last = meter.meter_hold = {};
  meter.meter_overall = 0;
}

void margin_reset(LevelMeter& meter) {
  meter.meter_margin = {1, 1};
}  // 1: the text takes its logarithm

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The form of audio data: what a codec turns into what, and what a device is opened with.
#pragma once

#include <cstdint>

namespace corvelin {

/// `format_tag` of samples and of MPEG Layer III frames.
constexpr std::uint16_t wave_format_pcm = 1;
constexpr std::uint16_t wave_format_mpeg_layer3 = 0x55;

struct WaveFormat {
  std::uint16_t format_tag = wave_format_pcm;
  std::uint16_t channels = 0;
  std::uint32_t samples_per_sec = 0;
  std::uint32_t avg_bytes_per_sec = 0;
  std::uint16_t block_align = 0;      // bytes of one sample of all channels; 0 for frames
  std::uint16_t bits_per_sample = 0;  // 0 for frames

  bool operator==(const WaveFormat&) const = default;
};

/// Samples of 16 bits.
constexpr WaveFormat pcm_16_bit(std::uint16_t channels, std::uint32_t samples_per_sec) {
  const auto block_align = static_cast<std::uint16_t>(2 * channels);
  return {.channels = channels,
          .samples_per_sec = samples_per_sec,
          .avg_bytes_per_sec = block_align * samples_per_sec,
          .block_align = block_align,
          .bits_per_sample = 16};
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Shortened blocks, against what an independent program makes of the same noise.
#include "audio/fast_play.h"

#include <gtest/gtest.h>

#include <vector>

#include "edit/editor.h"
#include "model/stream_info.h"

namespace corvelin::test {
namespace {

struct Row {
  std::uint8_t channel_mode;
  std::uint32_t sample_rate;
  int level;
  std::vector<std::size_t> sizes;  // of three blocks, shortened
  std::uint64_t hash;              // FNV-1a of their samples
};

// Block follows block, and row follows row: each fades in over what the one before left.
const Row table[] = {
    {1, 44100, 1, {9456, 2750, 700}, 0xA9B9C3A2DA14F229ULL},
    {1, 44100, 2, {8000, 2000, 700}, 0xF09D5E7F681969FCULL},
    {1, 44100, 3, {6400, 1600, 700}, 0xF826A8765D165889ULL},
    {1, 44100, 4, {4800, 1200, 700}, 0x65F59DFBF066D9BDULL},
    {4, 44100, 1, {5056, 3696, 700}, 0x8CF0B0CC589CDAB8ULL},
    {1, 22050, 2, {9000, 3000, 700}, 0xDF62B4E8680819B8ULL},
    {4, 22050, 4, {2700, 2100, 300}, 0xBF9A56DE06EFCE63ULL},
};

TEST(FastPlay, ShortensAsTheIndependentProgramDoes) {
  FastPlay play;
  std::uint32_t state = 1;
  for (const Row& row : table) {
    const StreamKind kind = {.sample_rate = row.sample_rate, .channel_mode = row.channel_mode};
    std::vector<std::size_t> sizes;
    std::uint64_t hash = 0xCBF29CE484222325;
    const std::size_t whole = row.channel_mode == 4 ? 6912 : 13824;
    for (const std::size_t size : {whole, std::size_t{5000}, std::size_t{700}}) {
      std::vector<std::int16_t> samples(size);
      for (std::int16_t& sample : samples) {
        state = state * 1664525 + 1013904223;
        sample = static_cast<std::int16_t>(state >> 16);
      }
      sizes.push_back(play.compress(samples, kind, row.level));
      samples.resize(sizes.back());
      for (const std::int16_t sample : samples) {
        hash = (hash ^ static_cast<std::uint8_t>(sample)) * 0x100000001B3;
        hash = (hash ^ static_cast<std::uint8_t>(sample >> 8)) * 0x100000001B3;
      }
    }
    EXPECT_EQ(sizes, row.sizes);
    EXPECT_EQ(hash, row.hash) << row.channel_mode << ' ' << row.sample_rate << ' ' << row.level;
  }
}

}  // namespace
}  // namespace corvelin::test

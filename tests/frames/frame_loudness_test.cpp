// SPDX-License-Identifier: GPL-2.0-or-later
// Heights of the graph from frames of each kind.
#include "frames/frame_loudness.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/mp3_builder.h"

namespace corvelin::test {
namespace {

Bytes bytes_of(std::string_view bits) {
  Bytes bytes;
  std::size_t count = 0;
  for (const char bit : bits) {
    if (bit == ' ') continue;
    if (count % 8 == 0) bytes.push_back(0);
    if (bit == '1') bytes.back() = static_cast<std::uint8_t>(bytes.back() | 0x80 >> count % 8);
    ++count;
  }
  return bytes;
}

TEST(FrameLoudness, AacGainStandsBehindWhatAChannelBeginsWith) {
  const std::string gain = " 10100011";
  const std::string forty(40, '0');
  struct {
    std::string bits;
    std::uint32_t sample_rate = 44100;
  } const rows[] = {
      {"000 1111" + gain},
      {"001 1111 0" + gain},
      {"001 1111 1 0 00 0 000011 0 00" + gain},
      {"001 1111 1 0 00 0 000011 0 01 111" + gain},              // a mask for 3 bands
      {"001 1111 1 0 10 0 0010 1110111 01 1111" + gain},         // for 2 groups of 2
      {"001 1111 1 0 00 0 110010 1 0 " + forty + " 10" + gain},  // prediction of the most bands
      {"001 1111 1 0 00 0 110010 1 1 11111 0" + forty + " 10" + gain, 24000},
      {"010" + gain}};  // no channel
  for (const auto& row : rows)
    EXPECT_EQ(aac_global_gain(bytes_of(row.bits), 0, row.sample_rate), 0xA3) << row.bits;
  EXPECT_EQ(aac_global_gain(bytes_of("000 1111 1010"), 0, 44100), 0xA0);  // a frame that is cut off
  EXPECT_EQ(aac_global_gain({}, 0, 44100), 0);
}

TEST(FrameLoudness, HeightsFollowTheGainAndTheGraphLevel) {
  const auto layer3 = [](GraphHeights& heights, const FrameShape& shape, int gain, unsigned level) {
    const Bytes frame = mpeg_frame(shape);
    FrameInfo info;
    EXPECT_TRUE(decode_frame_header(info, frame, FrameFormat::mpeg));
    return heights.layer3(measure_loudness(frame, info, 3), gain, level);
  };
  struct {
    FrameShape shape;
    int gain;
    unsigned level;
    int height;
  } const rows[] = {
      {{.global_gain = 180}, 0, 100, 205},
      {{.global_gain = 150}, 0, 200, 118},
      {{.global_gain = 180}, -30, 100, 18},
      {{.global_gain = 208}, 0, 100, 255},
      {{.global_gain = 209}, 0, 100, 255},  // 208, of the frame before
      {{.global_gain = 100}, 0, 100, 0},
      {{.global_gain = 250}, 0, 160, 0},
      {{.version = 2, .sample_rate = 24000, .is_mono = true, .global_gain = 150}, 0, 100, 18},
      {{.is_mono = true, .has_crc = true, .global_gain = 150}, 0, 100, 18}};
  GraphHeights heights;
  for (const auto& row : rows)
    EXPECT_EQ(layer3(heights, row.shape, row.gain, row.level), row.height)
        << row.shape.global_gain << " " << row.gain << " " << row.level;
  EXPECT_EQ(heights.layer3({4, {150, 255, 160, 160}}, 0, 100), 40);  // a mean of 155

  EXPECT_EQ(GraphHeights::aac({1, {160}}, 100), 119);
  EXPECT_EQ(GraphHeights::aac({1, {160}}, 6), 56);  // whole sevenths
  EXPECT_EQ(GraphHeights::aac({1, {90}}, 100), 0);
}

TEST(FrameLoudness, Layer2IsSmoothedAndWrapsBelowZero) {
  Bytes frame(96, 0);
  for (std::size_t i = 28; i < 38; ++i) frame[i] = 109;  // the mean of 109 and a fraction
  frame[37] = 118;
  const FrameLoudness loudness =
      measure_loudness(frame, {.layer = 3}, 2);  // whatever the frame says
  GraphHeights heights;
  EXPECT_EQ(heights.layer2(loudness, 100), 71);   // half of 100 + 2 x 51 - 60
  EXPECT_EQ(heights.layer2(loudness, 100), 106);  // half of 142 and 71
  EXPECT_EQ(heights.layer2({1, {10}}, 0), 180);   // 255 and 106
  EXPECT_EQ(measure_loudness(Bytes(96, 200), {.layer = 2}, 2).values[0], 0);
  EXPECT_EQ(measure_loudness(Bytes(37, 0), {.layer = 2}, 2).count, 0);
  EXPECT_EQ(measure_loudness(frame, {.layer = 2}, 3).count, 0);
}

}  // namespace
}  // namespace corvelin::test

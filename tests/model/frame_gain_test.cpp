// SPDX-License-Identifier: GPL-2.0-or-later
// Levels in frames: fields, fades, CRCs.
#include "frames/frame_gain.h"
#include "model/fade.h"

#include "edit/editor.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

using FrameGain = CoreTest;

// Every way in which the fields can lie: a frame with all fields at 150, changed by `delta`, must
// be the frame that the generator makes with that gain, its CRC included.
TEST_F(FrameGain, ReachesEveryFieldAndNothingElse) {
  for (const auto& [version, rate] : {std::pair{1, 44100}, {2, 22050}, {25, 11025}}) {
    for (const bool is_mono : {false, true}) {
      for (const bool has_crc : {false, true}) {
        FrameShape shape = {.version = version,
                            .bitrate = 64,
                            .sample_rate = rate,
                            .is_mono = is_mono,
                            .has_crc = has_crc,
                            .noisy = true};
        Bytes bytes = mpeg_frame(shape, 7);
        FrameInfo info;
        ASSERT_TRUE(decode_frame_header(info, bytes, FrameFormat::mpeg));
        apply_gain(bytes, gain_positions(info), -23);
        if (has_crc) recompute_frame_crc(bytes, info);
        shape.global_gain = 127;
        EXPECT_EQ(bytes, mpeg_frame(shape, 7)) << version << is_mono << has_crc;
      }
    }
  }
}

TEST_F(FrameGain, StaysInTheField) {
  struct {
    int gain, delta, expected;
  } const rows[] = {{10, -60, 0}, {250, 32, 255}};
  for (const auto& row : rows) {
    Bytes bytes = mpeg_frame({.global_gain = row.gain});
    FrameInfo info;
    decode_frame_header(info, bytes, FrameFormat::mpeg);
    apply_gain(bytes, gain_positions(info), row.delta);
    EXPECT_EQ(bytes, mpeg_frame({.global_gain = row.expected}));
  }
}

TEST_F(FrameGain, CrcIsTheStandardOne) {
  // CRC-16 with polynomial 0x8005, set to ones, not reflected: the published check value of
  // "123456789".
  const Bytes digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
  EXPECT_EQ(crc16(0xFFFF, digits), 0xAEE7);
}

TEST_F(FrameGain, CurvesBetweenTheBorders) {
  ASSERT_TRUE(open("a.mp3", frames(100)));
  struct {
    std::int16_t begin, end;
    EditPosition pos;
    int gain;
  } const rows[] = {{-4, -4, 0, -4},
                    {-4, -4, 99 * length, -4},
                    {0, -40, 0, 0},
                    {0, -40, 99 * length, -40},
                    {0, 10, 0, 0},
                    {0, 10, 50 * length, 6},  // 10 + (cos(0.75 - 1.6) - 1) * 10 = 6.6
                    {0, 10, 99 * length, 9},
                    // A fall ends a little below its target.
                    {0, -40, 100 * length - 1, -41},
                    // Worked out by hand: t = 0.75, 0 - (cos(0.85) - 1) * -40 = -13.6, cut to -13.
                    {0, -40, 50 * length, -13}};
  for (const auto& row : rows) {
    document.parts[0].part_gainbeg = row.begin;
    document.end_gain = row.end;
    EXPECT_EQ(gain_at(document, row.pos, 0), row.gain) << row.end << " " << row.pos;
  }
}

}  // namespace
}  // namespace corvelin::test

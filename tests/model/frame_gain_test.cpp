// Levels in frames: fields, fades, CRCs.
#include "model/frame_gain.h"

#include "support/core_test.h"

namespace corvelin::test {
namespace {

using FrameGain = CoreTest;

// Every way in which the fields can lie: a frame with all fields at 150, changed by `delta`, must
// be the frame that the generator makes with that gain, its CRC included.
TEST_F(FrameGain, ReachesEveryFieldAndNothingElse) {
  for (const int version : {1, 2, 25}) {
    for (const bool is_mono : {false, true}) {
      for (const bool has_crc : {false, true}) {
        FrameShape shape = {.version = version,
                            .bitrate = 64,
                            .sample_rate = version == 1   ? 44100
                                           : version == 2 ? 22050
                                                          : 11025,
                            .is_mono = is_mono,
                            .has_crc = has_crc,
                            .noisy = true};
        Bytes frame = mpeg_frame(shape, 7);
        FrameInfo info;
        ASSERT_TRUE(decode_frame_header(info, frame));
        apply_gain(frame, gain_positions(info), -23);
        if (has_crc) recompute_frame_crc(frame, info);
        shape.global_gain = 127;
        EXPECT_EQ(frame, mpeg_frame(shape, 7)) << version << is_mono << has_crc;
      }
    }
  }
}

TEST_F(FrameGain, StaysInTheField) {
  const auto changed = [](int gain, int delta) {
    Bytes frame = mpeg_frame({.global_gain = gain});
    FrameInfo info;
    decode_frame_header(info, frame);
    apply_gain(frame, gain_positions(info), delta);
    return frame;
  };
  EXPECT_EQ(changed(10, -60), mpeg_frame({.global_gain = 0}));
  EXPECT_EQ(changed(250, 32), mpeg_frame({.global_gain = 255}));
}

TEST_F(FrameGain, HasNoFieldsOutsideLayer3) {
  FrameInfo info;
  decode_frame_header(info, mpeg_frame({.layer = 2}));
  EXPECT_EQ(gain_positions(info), GainPositions{});
  EXPECT_EQ(gain_positions({.version = 4, .layer = 0}), GainPositions{});
}

TEST_F(FrameGain, CrcIsTheStandardOne) {
  // CRC-16 with polynomial 0x8005, set to ones, not reflected: the published check value of
  // "123456789".
  std::uint16_t crc = 0xFFFF;
  for (const char c : std::string("123456789")) crc = crc16_step(crc, static_cast<std::uint8_t>(c));
  EXPECT_EQ(crc, 0xAEE7);
}

TEST_F(FrameGain, CurvesBetweenTheBorders) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  const EditPosition last = 99 * 417;
  const auto gains = [&](std::int16_t begin, std::int16_t end) {
    document.parts[0].part_gainbeg = begin;
    document.end_gain = end;
    return std::pair(gain_at(0, 0), gain_at(last, 0));
  };
  EXPECT_EQ(gains(-4, -4), std::pair(-4, -4));
  EXPECT_EQ(gains(0, -40), std::pair(0, -40));
  EXPECT_EQ(gains(0, 10), std::pair(0, 9));
  document.parts[0].part_gainbeg = 0;
  document.end_gain = -40;
  EXPECT_EQ(gain_at(document.total_size - 1, 0), -41);  // a fall ends a little below its target
  // Worked out by hand: t = 0.75, 0 - (cos(0.85) - 1) * -40 = -13.6, cut to -13.
  EXPECT_EQ(gain_at(document.total_size / 2, 0), -13);
}

}  // namespace
}  // namespace corvelin::test

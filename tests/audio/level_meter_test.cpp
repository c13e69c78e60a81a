// SPDX-License-Identifier: GPL-2.0-or-later
// The level meter over buffers of one level.
#include "audio/level_meter.h"

#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Meter : public CoreTest {
 protected:
  Meter() { settings.buffer_frm = 2; }

  // Samples of these high bytes on the left and the right.
  static Bytes buffer(int left, int right, std::size_t size = 4000) {
    Bytes pcm(size);
    for (std::size_t i = 0; i + 3 < size; i += 4) {
      pcm[i + 1] = static_cast<std::uint8_t>(left);
      pcm[i + 3] = static_cast<std::uint8_t>(right);
    }
    return pcm;
  }

  void feed(int left, int right, int count = 1) {
    for (; count > 0; --count) level_meter_feed(level_meter, buffer(left, right), 2, use);
  }

  LevelMeter level_meter;
  MeterUse use = MeterUse::playing;
};

TEST_F(Meter, MeasuresBuffersThatTellSomething) {
  level_meter_feed(level_meter, buffer(60, 60, 1099), 2, use);
  EXPECT_EQ(level_meter.meter_overall, 0);
  level_meter_feed(level_meter, buffer(60, -70, 1100), 2, use);
  EXPECT_EQ(level_meter.meter_overall, 70);
  EXPECT_EQ(level_meter.meter_level[0], 91);  // 144 x (1 - 1/e)
  EXPECT_EQ(level_meter.meter_level[1], 99);
  EXPECT_EQ(level_meter.meter_margin[1], 70);

  // The end of a buffer doesn't count, and of mono data there is one slot.
  level_meter = {};
  Bytes pcm = buffer(0, 0);
  pcm[pcm.size() - 101] = 100;
  pcm[3] = 50;
  level_meter_feed(level_meter, pcm, 1, use);
  EXPECT_EQ(level_meter.meter_overall, 50);
  EXPECT_EQ(level_meter.meter_level[0], 0);

  feed(90, 20);
  margin_reset(level_meter);
  level_meter_clear(level_meter);
  EXPECT_EQ(level_meter.meter_hold[0] + level_meter.meter_level[0], 0);
  EXPECT_EQ(level_meter.meter_margin[0], 1);
}

TEST_F(Meter, FallsSlowlyAtFirst) {
  feed(127, 0);
  EXPECT_EQ(level_meter.meter_level[0], 126);
  std::vector<int> levels;
  for (int i = 0; i < 6; ++i) {
    feed(0, 0);
    levels.push_back(level_meter.meter_level[0]);
  }
  EXPECT_EQ(levels, (std::vector{126, 125, 124, 122, 119, 116}));  // by 0.6, 1.2, 1.8 ...
}

TEST_F(Meter, HoldsAPeakAndTheMarkOfClipping) {
  feed(60, 60);
  EXPECT_EQ(level_meter.meter_hold[0], 91);
  feed(0, 0, 39);  // 80 / 2 buffers in all
  EXPECT_EQ(level_meter.meter_hold[0], 91);
  feed(0, 0);
  EXPECT_EQ(level_meter.meter_hold[0], 0);
  feed(-128, 127);
  EXPECT_EQ(level_meter.meter_hold[0], highest_meter);
  EXPECT_EQ(level_meter.meter_margin[0], 127);
  feed(126, 126, 39);
  EXPECT_EQ(level_meter.meter_hold[0], highest_meter);
}

TEST_F(Meter, BeepsOnceForClippingOfARecording) {
  use = MeterUse::recording;
  settings.peakbeep = 1;
  feed(127, 127, 20);
  EXPECT_EQ(host.beeps, 1);
  feed(0, 0, 20);
  feed(127, 0);
  EXPECT_EQ(host.beeps, 2);
  feed(0, 0, 3);  // a mark stands for 14 buffers, and its first quarter is over behind the fourth
  feed(127, 0);
  EXPECT_EQ(host.beeps, 2);
  feed(0, 0, 4);
  feed(127, 0);
  EXPECT_EQ(host.beeps, 3);
  use = MeterUse::playing;
  feed(0, 0, 80);
  feed(127, 127);
  EXPECT_EQ(host.beeps, 3);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// What a tone becomes at another speed.
#include "audio/speed_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace corvelin::test {
namespace {

// The power of a tone of `frequency` in the left channel over that of all else there, in dB. The
// first and last samples are left out: the tone begins and ends there.
double signal_to_noise(const std::vector<std::int16_t>& samples, double frequency) {
  const std::size_t begin = 2000;
  const std::size_t end = samples.size() / 2 - 2000;
  double ss = 0, cc = 0, sc = 0, xs = 0, xc = 0, xx = 0;  // sums of products, for the best fit
  for (std::size_t i = begin; i < end; ++i) {
    const double angle = 2 * std::numbers::pi * frequency * static_cast<double>(i) / 44100;
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    const double x = samples[2 * i];
    ss += s * s;
    cc += c * c;
    sc += s * c;
    xs += x * s;
    xc += x * c;
    xx += x * x;
  }
  const double tone = (xs * xs * cc - 2 * xs * xc * sc + xc * xc * ss) / (ss * cc - sc * sc);
  return 10 * std::log10(tone / (xx - tone));
}

TEST(SpeedConversion, KeepsAToneCleanAcrossBlocks) {
  EXPECT_FLOAT_EQ(rec_speed_of(33.3333, 45), 1.3500013F);
  EXPECT_EQ(rec_speed_of(10, 45), 0);
  EXPECT_EQ(rec_speed_of(0, 45), 0);
  constexpr std::size_t block_frames = 1000;
  for (const float speed : {0.5F, 33.3333F / 45, 1.0F, 1.35F, 78.0F / 45, 2.0F}) {
    SpeedConversion conversion;
    ASSERT_TRUE(conversion.begin(speed, 2));
    std::vector<std::int16_t> all;
    for (std::size_t block = 0; block < 88; ++block) {
      std::vector<std::int16_t> samples(2 * block_frames);
      for (std::size_t i = 0; i < block_frames; ++i) {
        const auto at = static_cast<double>(block * block_frames + i);
        samples[2 * i] =
            static_cast<std::int16_t>(20000 * std::sin(2 * std::numbers::pi * 1000 * at / 44100));
      }
      const std::vector<std::int16_t> made = conversion.stretch(samples);
      all.insert(all.end(), made.begin(), made.end());
    }
    const std::vector<std::int16_t> rest = conversion.rest();
    all.insert(all.end(), rest.begin(), rest.end());
    EXPECT_NEAR(static_cast<double>(all.size()) / 2, 88000.0 * double{speed}, 2);
    EXPECT_GT(signal_to_noise(all, 1000 / double{speed}), 60) << speed;
    EXPECT_EQ(all[all.size() / 2 / 2 * 2 + 1], 0);  // the channels keep apart
  }
}

}  // namespace
}  // namespace corvelin::test

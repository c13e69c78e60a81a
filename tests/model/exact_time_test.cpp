// SPDX-License-Identifier: GPL-2.0-or-later
// Exact times, against sums made by hand.
#include "model/exact_time.h"

#include "edit/editor.h"
#include "model/cuts.h"
#include "opening/append.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

constexpr double mpeg1 = 1152.0 / 44100;  // seconds a frame

class ExactTime : public CoreTest {
 protected:
  // Each place in the middle has its time, and the time leads back to the place.
  void expect(EditPosition pos, double seconds) {
    EXPECT_NEAR(exact_seconds(document, pos), seconds, 1e-9) << pos;
    EXPECT_EQ(exact_place(document, exact_seconds(document, pos)), pos) << pos;
  }
};

TEST_F(ExactTime, CountsTheFramesOfAVariableStream) {
  Mp3Builder audio;
  for (int i = 0; i < 500; ++i) audio.frame({.bitrate = 320}).frame({.bitrate = 32});
  constexpr std::uint32_t pair = 1044 + 104;
  ASSERT_TRUE(open("a.mp3", audio.id3v1("x").bytes()));
  for (const std::uint32_t i : {0U, 1U, 63U, 64U, 65U, 300U, 499U}) {
    expect(i * pair, 2 * i * mpeg1);
    expect(i * pair + 1044, (2 * i + 1) * mpeg1);
  }
  expect(500 * pair, 1000 * mpeg1);
  EXPECT_NEAR(exact_seconds(document, 10 * pair + 500), 20 * mpeg1, 1e-9);  // within a frame
  EXPECT_EQ(exact_place(document, 20 * mpeg1 + 0.001), 10 * pair + 1044);
  EXPECT_EQ(exact_place(document, -1), 0U);
  EXPECT_EQ(exact_place(document, 1e300), document.total_size);

  // What is cut out takes no time, whatever the order of what is left.
  delete_range(document, 100 * pair, 400 * pair);
  add_part(document, document.total_size, 0, 200 * pair, 10 * pair);
  expect(150 * pair, 300 * mpeg1);
  expect(205 * pair, 410 * mpeg1);
  expect(document.total_size, 420 * mpeg1);
}

TEST_F(ExactTime, HoldsForEveryKindOfFrame) {
  struct {
    FrameShape shape;
    double frame;  // seconds
  } const rows[] = {{{.layer = 2, .bitrate = 192}, mpeg1},
                    {{.version = 2, .bitrate = 64, .sample_rate = 22050}, 576.0 / 22050},
                    {{.version = 2, .layer = 2, .bitrate = 64, .sample_rate = 24000}, 0.048},
                    {{.version = 25, .bitrate = 32, .sample_rate = 8000}, 0.072}};
  for (const auto& row : rows) {
    ASSERT_TRUE(open("a.mp3", frames(300, row.shape)));
    expect(document.total_size / 300 * 200, 200 * row.frame);
  }
  ASSERT_TRUE(open("a.aac", Mp3Builder{}.adts(300, 200, 1).bytes()));
  expect(document.total_size, 300 * 1024 / 44100.0);
}

TEST_F(ExactTime, CountsOnlyFramesThatAreThere) {
  constexpr std::uint32_t other = 384;  // bytes of a frame at 48 kHz, which lasts 24 ms
  for (const std::uint32_t junk : {20U, 9000U, 300000U}) {
    Mp3Builder audio = Mp3Builder{}.frames(200).zeros(junk).frames(200);
    audio.shape({.sample_rate = 48000}).frames(200);
    ASSERT_TRUE(open("a.mp3", audio.bytes()));
    ASSERT_EQ(document.parts[0].part_filepos, 0U);
    expect(150 * length, 150 * mpeg1);
    EXPECT_NEAR(exact_seconds(document, 200 * length + junk / 2), 200 * mpeg1, 1e-9) << junk;
    EXPECT_EQ(exact_place(document, 200 * mpeg1), 200 * length + junk);
    expect(300 * length + junk, 300 * mpeg1);
    expect(400 * length + junk + 100 * other, 400 * mpeg1 + 2.4);
    EXPECT_NEAR(exact_seconds(document, document.total_size), 400 * mpeg1 + 4.8, 1e-9);
  }
}

TEST_F(ExactTime, GoesOnInTheNextFile) {
  ASSERT_TRUE(open("a.mp3", frames(100)));
  ASSERT_EQ(append_file(document, folder.file("b.mp3", frames(300, {.bitrate = 64}))),
            AppendResult::appended);
  EXPECT_NEAR(exact_seconds(document, 100 * length), 100 * mpeg1, 1e-9);
  EXPECT_NEAR(exact_seconds(document, 100 * length + 50 * 208), 150 * mpeg1, 1e-9);
  EXPECT_EQ(exact_place(document, 150 * mpeg1), 100 * length + 50 * 208);
  ASSERT_EQ(append_file(document, document.files[0].file_name), AppendResult::appended);
  EXPECT_NEAR(exact_seconds(document, document.total_size), 500 * mpeg1, 1e-9);
  close_all(editor);
  EXPECT_EQ(exact_seconds(document, 5), 0);
}

}  // namespace
}  // namespace corvelin::test

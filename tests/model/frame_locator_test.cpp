// SPDX-License-Identifier: GPL-2.0-or-later
// The search for frames in real files.
#include "model/frame_locator.h"

#include "edit/editor.h"
#include "model/stream_info.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

using FrameLocator = CoreTest;

TEST_F(FrameLocator, FindsTheNextFrameAndTheOneBefore) {
  ASSERT_TRUE(open("a.mp3", frames(20, {.noisy = true})));
  const std::pair<EditPosition, EditPosition> next[] = {
      {0, 0},
      {1, length},
      {length, length},
      {20 * length, 20 * length},
      {0xFFFF0001, 0},  // a position that wrapped around
      // A last frame is taken only when the search begins at it.
      {19 * length, 19 * length},
      {19 * length - 1, no_position}};
  for (const auto& [pos, found] : next)
    EXPECT_EQ(frame_at(document, pos, selection.current_frame), found) << pos;
  const std::pair<EditPosition, EditPosition> before[] = {
      {0, 0}, {200, 0}, {length, 0}, {15 * length, 14 * length}, {15 * length + 1, 15 * length}};
  for (const auto& [pos, found] : before)
    EXPECT_EQ(frame_before(document, pos, selection.current_frame), found) << pos;
  add_part(document, 20 * length, 0, 0, 5 * length);
  EXPECT_EQ(frame_at(document, 19 * length - 1, selection.current_frame),
            20 * length);  // the part ends there

  // The following header may have another CRC flag.
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(1).frame({.has_crc = true}).frames(3).bytes()));
  EXPECT_EQ(frame_at(document, 0, selection.current_frame), 0U);
  EXPECT_EQ(frame_at(document, 1, selection.current_frame), length);

  Mp3Builder long_frames;
  for (int i = 0; i < 4; ++i) long_frames.raw(adts_frame(8000, 3000));
  ASSERT_TRUE(open("a.aac", long_frames.bytes()));
  EXPECT_EQ(frame_before(document, 6000, selection.current_frame), 3000U);
}

TEST_F(FrameLocator, WantsTwoFramesOfANewSampleRate) {
  const FrameShape other = {.sample_rate = 48000};
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(10).shape(other).frames(10).bytes()));
  // The probe ended in the other rate, so that it passed over the first frame too.
  ASSERT_EQ(document.files[0].first_audio, length);
  const std::uint32_t change = 9 * length;
  ASSERT_EQ(frame_at(document, change - length - 5, selection.current_frame), change - length);
  ASSERT_EQ(selection.current_frame.sample_rate, 44100U);
  EXPECT_EQ(frame_at(document, change - 5, selection.current_frame), change + 384);
  EXPECT_EQ(selection.current_frame.sample_rate, 48000U);
  EXPECT_EQ(frame_at(document, change - 5, selection.current_frame), change);
}

TEST_F(FrameLocator, LooksAtOneBlockOnly) {
  const Bytes bytes = Mp3Builder{}.frames(3).zeros(25000).frames(10).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  const std::uint32_t junk = 3 * length;
  const FrameInfo shown = selection.current_frame;
  EXPECT_EQ(frame_at(document, junk, selection.current_frame), no_position);
  EXPECT_EQ(selection.current_frame, shown);
  EXPECT_EQ(scan_forward(document, 0, junk, selection.current_frame), junk + 25000);
}

TEST_F(FrameLocator, SeesNothingInAFileThatWasCutOff) {
  ASSERT_TRUE(open("a.mp3", frames(50)));
  std::filesystem::resize_file(document.files[0].file_name, 1000);
  EXPECT_EQ(frame_at(document, 20 * length, selection.current_frame), no_position);
  EXPECT_EQ(scan_forward(document, 0, 20 * length, selection.current_frame), 50 * length);
}

}  // namespace
}  // namespace corvelin::test

// The setters of the selection and the cursor.
#include "model/selection.h"

#include "model/frame_locator.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SelectionTest : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).bytes())); }
};

TEST_F(SelectionTest, PointIsACueAndRangeACut) {
  set_sel_begin(834);
  EXPECT_EQ(selection.sel_end, 834U);
  EXPECT_EQ(selection.sel_iscue, 1U);
  set_sel_end(1251);
  EXPECT_EQ(selection.sel_beg, 834U);
  EXPECT_EQ(selection.sel_iscue, 0U);
  set_sel_end(834);
  EXPECT_EQ(selection.sel_iscue, 1U);
}

TEST_F(SelectionTest, EndsPushEachOtherAlong) {
  set_sel_begin(417);
  set_sel_end(834);
  set_sel_begin(2085);
  EXPECT_EQ(selection.sel_end, 2085U);
  set_sel_end(417);
  EXPECT_EQ(selection.sel_beg, 417U);
  set_sel_end(no_position);
  EXPECT_EQ(selection.sel_end, 417U);
}

TEST_F(SelectionTest, RestoredCueStaysACue) {
  selection.sel_cue_locked = 1;
  set_sel_begin(417);
  set_sel_end(834);
  EXPECT_EQ(selection.sel_iscue, 1U);
  selection.cursor = 417;
  clear_selection();
  EXPECT_EQ(selection.sel_cue_locked, 0U);
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_EQ(selection.cursor, 417U);
}

TEST_F(SelectionTest, SeekLandsOnAFrameOrTheEnd) {
  add_part(document.total_size, 0, 0, 834);
  seek_to(500);
  EXPECT_EQ(selection.cursor, 834U);
  seek_to(0xFFFFFFF0);
  EXPECT_EQ(selection.cursor, 834U);
  seek_to(20 * 417);
  EXPECT_EQ(document.current_part, 1);
  EXPECT_EQ(selection.cursor, 20U * 417);
  seek_to(document.total_size + 5000);
  EXPECT_EQ(selection.cursor, document.total_size);
  EXPECT_EQ(document.current_part, 1);
}

// Behind the last part its file goes on at another sample rate, and so does the search.
TEST_F(SelectionTest, NoPlaceLiesBehindTheEnd) {
  ASSERT_TRUE(
      open("x.mp3", Mp3Builder{}.frames(40).shape({.sample_rate = 48000}).frames(40).bytes()));
  document.parts[0].part_size = 60 * 417;
  recompute_total();
  const EditPosition place = document.total_size - 1;
  stream.current_frame = {};
  frame_at(0);
  ASSERT_GT(frame_at(place), document.total_size);
  set_sel_begin(frame_at(place));
  EXPECT_EQ(selection.sel_end, document.total_size);
  set_sel_end(frame_at(place));
  EXPECT_EQ(selection.sel_end, document.total_size);
  seek_to(place);
  EXPECT_EQ(selection.cursor, document.total_size);
}

}  // namespace
}  // namespace corvelin::test

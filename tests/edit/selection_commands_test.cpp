// Selecting, moving, and the fields that take typed times.
#include "edit/selection_commands.h"

#include "edit/navigation.h"
#include "edit/time_fields.h"
#include "edit/undo.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

constexpr std::uint32_t length = 417;

class SelectionCommands : public CoreTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.shape({.noisy = true}).frames(1000).bytes()));
  }

  static void expect_selection(EditPosition begin, EditPosition end) {
    EXPECT_EQ(selection.sel_beg, begin);
    EXPECT_EQ(selection.sel_end, end);
  }
};

TEST_F(SelectionCommands, SetEndsAtTheCursor) {
  seek_to(10 * length);
  set_begin();
  expect_selection(10 * length, 10 * length);
  seek_to(20 * length);
  set_end();
  expect_selection(10 * length, 20 * length);
  EXPECT_EQ(undo_stack[0].undo_label, "Set end");
  EXPECT_EQ(undo_stack[1].undo_label, "Set begin");
}

TEST_F(SelectionCommands, SelectRanges) {
  delete_range(10 * length, 10 * length);
  seek_to(30 * length);
  selection.sel_iscue = 1;
  select_all();
  expect_selection(0, document.total_size);
  select_current_part();
  expect_selection(10 * length, document.total_size);
  select_to_start();
  expect_selection(0, 30 * length);
  select_to_end();
  expect_selection(30 * length, document.total_size);
  EXPECT_EQ(selection.sel_iscue, 1U);
  remove_selection();
  expect_selection(no_position, no_position);
  EXPECT_EQ(selection.sel_iscue, 0U);
  EXPECT_EQ(undo_stack.size(), 5U);
  EXPECT_EQ(undo_stack[4].undo_label, "Select all");
}

TEST_F(SelectionCommands, MoveByOneFrame) {
  seek_to(10 * length);
  move_begin_left();  // from nothing: a point at the cursor
  expect_selection(9 * length, 10 * length);
  move_begin_right();
  expect_selection(10 * length, 10 * length);
  EXPECT_EQ(selection.sel_iscue, 1U);
  move_end_right();
  expect_selection(10 * length, 11 * length);
  move_selection_right();
  expect_selection(11 * length, 12 * length);
  move_selection_left();
  expect_selection(10 * length, 11 * length);
  move_end_left();
  move_end_left();
  expect_selection(9 * length, 9 * length);
}

TEST_F(SelectionCommands, MouseMovesTheNearerEndOrTheOneOfItsButton) {
  constexpr MouseButtons left = {.left = true};
  mouse_select(100 * length, left, true);
  expect_selection(100 * length, 100 * length);
  mouse_select(200 * length, left, false);
  expect_selection(100 * length, 200 * length);
  mouse_select(140 * length, {.right = true}, true);
  expect_selection(140 * length, 200 * length);
  mouse_select(170 * length, {.left = true, .shift = true}, true);
  expect_selection(140 * length, 170 * length);
  mouse_select(50 * length, {.left = true, .ctrl = true}, true);
  expect_selection(140 * length, 170 * length);
  EXPECT_EQ(selection.cursor, 50 * length);
  EXPECT_EQ(undo_stack.size(), 3U);
  settings.mouse_method = 0;
  mouse_select(300 * length, left, true);
  mouse_select(400 * length, {.right = true}, true);
  expect_selection(300 * length, 400 * length);
}

TEST_F(SelectionCommands, SkipsCountAverageFrames) {
  skip_forward_small();
  EXPECT_EQ(selection.cursor, 38 * length);
  skip_forward_large();
  EXPECT_EQ(selection.cursor, 421 * length);
  skip_back_small();  // one frame more than forward
  EXPECT_EQ(selection.cursor, 382 * length);
  skip_back_large();
  EXPECT_EQ(selection.cursor, 0U);
  go_to_track_end();
  skip_forward_small();
  EXPECT_EQ(selection.cursor, document.total_size);
  // The very last frame has no other behind it, so no search from before it finds it.
  frame_back();
  EXPECT_EQ(selection.cursor, 998 * length);
  frame_forward();
  EXPECT_EQ(selection.cursor, document.total_size);
  rewind();
  frame_back();
  EXPECT_EQ(selection.cursor, 0U);
  frame_forward();
  EXPECT_EQ(selection.cursor, length);
}

TEST_F(SelectionCommands, RangesAreWalkedByTheirBorders) {
  delete_range(10 * length, 20 * length);
  delete_range(30 * length, 30 * length);
  seek_to(0);
  for (const EditPosition expected : {10 * length, 30 * length, 990 * length, 990 * length}) {
    go_to_next_range();
    EXPECT_EQ(selection.cursor, expected);
  }
  for (const EditPosition expected : {30 * length, 10 * length, 0U, 0U}) {
    go_to_previous_range();
    EXPECT_EQ(selection.cursor, expected);
  }
  go_to_selection_end();
  EXPECT_EQ(selection.cursor, 0U);
}

TEST_F(SelectionCommands, ZoomStopsAtItsEnds) {
  for (int i = 0; i < 4; ++i) zoom_in();
  EXPECT_EQ(settings.zoom, 32);
  for (int i = 0; i < 9; ++i) zoom_out();
  EXPECT_EQ(settings.zoom, 1);
}

// One second is 15963 bytes at 417 bytes a frame and 44100 Hz; 10 seconds lie in frame 383.
TEST_F(SelectionCommands, NowFieldSeeksToTimeOrPercentage) {
  apply_now_field("Total 0'26.12 Now 0'10.00 (0.0%)");
  EXPECT_EQ(selection.cursor, 383 * length);
  apply_now_field("Total 0'26.12 Now 0'10.00 (50.0%)");  // the time as it was
  EXPECT_EQ(selection.cursor, 500 * length);
  apply_now_field("Now 9'00 (50%)");
  EXPECT_EQ(selection.cursor, document.total_size);
  for (const char* const text : {"", "Now", "0'10.00 (1%)", "Total 0'26.12 Now 0'26.12 (1"}) {
    apply_now_field(text);
    EXPECT_EQ(selection.cursor, document.total_size) << text;
  }
}

TEST_F(SelectionCommands, SelectionFieldSetsWhatWasChanged) {
  set_sel_begin(100 * length);  // 2.612 s
  set_sel_end(200 * length);    // 5.225 s
  apply_selection_field("Selection 0'02.61 - 0'05.22 (0'02.61)");
  expect_selection(100 * length, 200 * length);
  apply_selection_field("Selection 0'02.61 - 0'10.00 (0'02.61)");
  expect_selection(100 * length, 383 * length);
  apply_selection_field("Selection 0'02.61 - 0'10.00 (0'05.22)");  // a length wins over an end
  expect_selection(100 * length, 300 * length);
  apply_selection_field("Selection 0'10.00 - 0'05.22 (0'05.22)");
  expect_selection(200 * length, 200 * length);  // the end, set last, pulls the begin along
  const auto steps = undo_stack.size();
  for (const char* const text :
       {"Part 1'00 - 2'00 (1'00)", "Selection 1'00", "Selection 1'00 - 2'00"})
    apply_selection_field(text);
  EXPECT_EQ(undo_stack.size(), steps);
  expect_selection(200 * length, 200 * length);
}

}  // namespace
}  // namespace corvelin::test

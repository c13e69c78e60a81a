// Trimming of cuts and moving of cues.
#include "edit/trim_commands.h"

#include "model/cuts.h"
#include "model/frame_locator.h"
#include "stream/frame_header.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class TrimCommands : public EditTest {};

void move_left() { move_cue(CueMove::left); }
void move_right() { move_cue(CueMove::right); }

struct TrimCase {
  const char* name;
  void (*command)();
  const char* before;
  int current;
  std::uint32_t cursor;
  const char* after;
  std::uint32_t cursor_after;
};

constexpr TrimCase trims[] = {
    {"LeftOut", trim_left_out, "0-5 8-20", 1, 5, "0-6 8-20", 6},
    {"LeftOutWithoutGap", trim_left_out, "0-8 8-20", 1, 8, "0-8 8-20*", 8},
    {"LeftOutAtTheFilesLastFrame", trim_left_out, "0-19 0-5", 1, 19, "0-19 0-5", 19},
    {"LeftOutOfTheFirstPart", trim_left_out, "4-20", 0, 0, "4-20", 0},
    {"LeftIn", trim_left_in, "0-5 5-20*", 1, 5, "0-4 5-20", 4},
    {"LeftInWithCursorAtTheStart", trim_left_in, "0-5 8-20", 1, 0, "0-4 8-20", 0},
    {"LeftInKeepsTheLastFrame", trim_left_in, "4-5 8-20*", 1, 1, "4-5 8-20*", 1},
    {"RightIn", trim_right_in, "0-5 5-20*", 1, 5, "0-5 6-20", 5},
    {"RightInOfTheFirstPart", trim_right_in, "0-20*", 0, 3, "1-20", 3},
    {"RightInKeepsTheLastFrame", trim_right_in, "0-5 8-9* 12-20", 1, 5, "0-5 8-9* 12-20", 5},
    {"RightInWithCursorAtTheEnd", trim_right_in, "0-5 8-20", 1, 17, "0-5 9-20", 16},
    {"RightOut", trim_right_out, "0-5 8-20", 1, 5, "0-5 7-20", 5},
    {"RightOutOfAShortPart", trim_right_out, "0-5 8-9 15-20", 1, 5, "0-5 7-9 15-20", 5},
    {"RightOutOfAShortLastPart", trim_right_out, "0-5 19-20", 1, 5, "0-5 18-20", 5},
    {"RightOutToTheFilesStart", trim_right_out, "5-10 1-5", 1, 5, "5-10 0-5", 5},
    {"RightOutAtTheFilesStart", trim_right_out, "5-10 0-5", 1, 5, "5-10 0-5", 5},
    {"RightOutOfTheFirstPart", trim_right_out, "4-20", 0, 0, "3-20", 0},
    {"RightOutOfTheWholeFile", trim_right_out, "0-20", 0, 0, "0-20*", 0},
    {"MoveLeft", move_left, "0-5 5-20*g2:B", 1, 9, "0-4 4-20*g2:B", 9},
    {"MoveRight", move_right, "0-5 5-20*g2:B", 1, 9, "0-6 6-20*g2:B", 9},
    {"MoveNoCut", move_right, "0-5 8-20", 1, 0, "0-5 8-20", 0},
    {"MoveNotOverTheCueBefore", move_left, "0-4 4-5 5-20", 2, 0, "0-4 4-5 5-20", 0},
    {"MoveNotOverTheCueBehind", move_right, "0-5 5-6 6-20", 1, 0, "0-5 5-6 6-20", 0},
    {"MoveNotTheStart", move_right, "0-20", 0, 0, "0-20", 0},
};

TEST_F(TrimCommands, EachMovesItsSideByOneFrame) {
  for (const TrimCase& trim : trims) {
    SCOPED_TRACE(trim.name);
    make(trim.before);
    document.current_part = static_cast<PartIndex>(trim.current);
    selection.cursor = trim.cursor * frame;
    trim.command();
    EXPECT_EQ(parts(), trim.after);
    EXPECT_EQ(selection.cursor, trim.cursor_after * frame);
    EXPECT_FALSE(open_state.document_modified);
    EXPECT_TRUE(undo_stack.empty());
    expect_sound_document();
  }
}

// Lengths 417, 1044, 417, 1044, ...: the stream behind a trimmed border has its frames elsewhere.
TEST_F(TrimCommands, PlacesStayOnFrameStarts) {
  Mp3Builder builder;
  for (int i = 0; i < 10; ++i) builder.frame({.bitrate = 128}).frame({.bitrate = 320});
  ASSERT_TRUE(open("v.mp3", builder.bytes()));
  delete_range(1461, 1461 * 3);  // two frames, then from the seventh on: 417 at 1461, 1044 at 1878
  document.current_part = 1;
  selection.cursor = 2922;  // the third frame behind the border
  set_sel_begin(1461);
  set_sel_end(1878);
  trim_right_in();  // the first of 417 bytes goes; 1044 at 1461, 417 at 2505, 1044 at 2922
  EXPECT_EQ(selection.cursor, 2922U);
  EXPECT_EQ(selection.sel_beg, 1461U);
  EXPECT_EQ(selection.sel_end, 2505U);
}

TEST_F(TrimCommands, NothingIsTakenFromAGapOfJunk) {
  const Bytes junk(3000, 0x55);
  ASSERT_TRUE(open("j.mp3", Mp3Builder{}.frames(5).raw(junk).frames(10).bytes()));
  delete_range(5 * frame, 5 * frame + 3000);
  document.current_part = 1;
  trim_right_out();
  EXPECT_EQ(document.parts[1].part_filepos, 5 * frame + 3000);
  EXPECT_EQ(document.total_size, 15 * frame);
}

// The frames on the two sides of the border differ in their rate; whichever was seen last, the one
// in front is found, and what was seen last stays so for the command that goes by it.
TEST_F(TrimCommands, StepsBackOverAChangeOfTheSampleRate) {
  ASSERT_TRUE(
      open("x.mp3", Mp3Builder{}.frames(40).shape({.sample_rate = 48000}).frames(40).bytes()));
  // The probe ends at the second rate, and then the first frame passes unnoticed.
  ASSERT_EQ(document.parts[0].part_filepos, frame);
  split_at(39 * frame);
  document.current_part = 1;
  stream.current_frame = {};
  frame_at(39 * frame);
  move_cue(CueMove::left);
  EXPECT_EQ(document.parts[1].part_beg, 38 * frame);
  move_cue(CueMove::right);
  EXPECT_EQ(document.parts[1].part_beg, 39 * frame);
  trim_left_in();
  EXPECT_EQ(document.parts[1].part_beg, 38 * frame);
}

}  // namespace
}  // namespace corvelin::test

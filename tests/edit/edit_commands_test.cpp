// SPDX-License-Identifier: GPL-2.0-or-later
// Each editing command on small part tables, and what is odd about them on other streams.
#include "edit/editor.h"
#include "edit/requirements.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "support/edit_test.h"
#include "text/boxes.h"

namespace corvelin::test {
namespace {

class EditCommands : public EditTest {
 protected:
  /// Part tables as full as they get but for one part, with the last 20 frames
  /// in the last one.
  void fill_table() {
    make("0-20:A");
    while (document.parts.size() < most_parts - 1) add_part(document, 0, 0, 0, length);
  }
};

struct Row {
  const char* name;
  const char* commands;
  const char* before;
  const char* after;
};

constexpr Row rows[] = {
    {"CueInAPart", "cut_or_cue", "0-20:A =5-5 @7", "0-5:A 5-20* @7 #1 !^"},
    {"CueInLevel", "cut_or_cue", "0-20g3 =5-5 @5", "0-5g3 5-20*g3 @5 #1 !^"},
    {"CueTakesNames", "cut_or_cue", "0-5:A 5-20:B =5-5 @5", "0-5:A 5-20* @5 #1 !^"},
    {"CueAtTheStart", "cut_or_cue", "0-20:A =0-0 @9", "0-20*:A @9 !^"},
    {"CueAtTheEndIsNone", "cut_or_cue", "0-20:A =20-20 @20", "0-20:A @20 !^"},
    {"InsideAPart", "cut_or_cue", "0-20:A =5-8 @10", "0-5:A 8-20 @7 #1 !^"},
    {"OverABorder", "cut_or_cue", "0-5:A 5-10*:B 10-20:C =3-7 @4",
     "0-3:A 7-10*:B 10-20:C @3 #1 !^"},
    {"UpToABorder", "cut_or_cue", "0-5:A 5-10:B =3-5 @1", "0-3:A 5-10:B @1 !^"},
    {"AWholePart", "cut_or_cue", "0-5 5-10* 10-20:C =5-10", "0-5 10-20:C !^"},
    {"HeadOfAPart", "cut_or_cue", "0-20:A =0-4 @4", "4-20*:A !^"},
    {"HeadOverABorder", "cut_or_cue", "0-5:A 5-20:B =0-7 @6", "7-20*:B !^"},
    {"Tail", "cut_or_cue", "0-5:A 5-20:B =3-20 @20", "0-3:A @3 !^"},
    {"LevelReturnsLater", "cut_or_cue", "0-5g-4 5-20g6 =3-7 @7", "0-3g-4 7-8g-4 8-20g6 @4 #2 !^"},
    {"LevelReturnsAtBorder", "cut_or_cue", "0-5g-4 5-8g6 8-20g1 =3-7 @9",
     "0-3g-4 7-8g-4 8-20g6 @5 #2 !^"},
    {"LevelEnds", "cut_or_cue", "0-5g-4 5-8g6 =3-7", "0-3g-4 7-8g-4 !^"},
    {"Gap", "edit_restore", "0-5 8-20:B @5 #1", "0-20 =5-8 @5 !^"},
    {"GapClickedFromAfar", "edit_restore", "0-5 8-20:B @1 #1", "0-20 =5-8 @1 !^"},
    {"Cue", "edit_restore", "0-5 5-20* @5 #1", "0-20 =5-5 @5 !^"},
    {"Head", "edit_restore", "4-20*:A", "0-20* =0-4 !^"},
    {"Tail", "edit_restore", "0-5 8-15:A @12 #1", "0-5 8-20:A =12-17 @12 #1 !^"},
    {"TailFromAfar", "edit_restore", "0-5 8-15:A @12", "0-5 8-20:A =12-17 @12 #1 !^"},
    {"Reversed", "edit_restore", "5-10 0-5 @5 #1", "5-10 0-5 @5 #1 ^ {Not possible}"},
    {"CursorInside", "crop", "0-20:A =5-8 @6", "5-8 @1 !^"},
    {"CursorBehind", "crop", "0-20:A =5-8 @10", "5-8 @3 !^"},
    {"Borders", "crop", "0-5:A 5-10*:B 10-20 =5-10", "5-10*:B !^"},
    {"Everything", "crop", "0-5:A 5-20:B =0-20 @9", "0-5:A 5-20:B @9 #1 !^"},
    {"CutAndCue", "remove_edit_points", "0-5 8-12* 12-20 =3-10", "0-20 =3-13 ^"},
    {"FromTheStart", "remove_edit_points", "0-5 5-20* =0-8", "0-20 =1-8 ^"},
    {"NoSecondFrame", "remove_edit_points", "19-20 =0-1", "19-20 =0-1 ^ {Not possible}"},
    {"NotOneStretch", "remove_edit_points", "10-15 0-8 =3-8 @12",
     "10-13 3-8 =3-8 @8 ^ {Not possible}"},
    {"UpToTheEnd", "remove_edit_points", "0-5 8-20 =3-17 @17", "0-3 =3-3 @3 ^ {Not possible}"},
    {"SetAll", "set_cue_flags", "0-5 5-10 10-20*", "0-5* 5-10* 10-20* ^"},
    {"SetToBothEnds", "set_cue_flags", "0-5 5-10 10-15 15-20 =5-10",
     "0-5 5-10* 10-15* 15-20 =5-10 ^"},
    {"RemoveAll", "remove_cue_flags", "0-5 5-10 10-20*", "0-5 5-10 10-20 ^"},
    {"RemoveBeside", "remove_cue_flags", "0-5 5-10 10-20* =1-9", "0-5 5-10 10-20* =1-9 ^"},
    {"PureSplits", "cue_pure_splits", "0-5* 5-10 12-14* 14-20", "0-5* 5-10* 12-14 14-20* ^"},
    {"Levels", "cue_pure_splits", "0-5 5-7* 7-10*g2 10-12* 12-20*",
     "0-5 5-7 7-10g2 10-12 12-20* ^"},
    {"EndsInAPart", "cues_at_selection_ends", "0-20 =5-10", "0-5 5-10* 10-20* #1 !^"},
    {"EndsAtBorders", "cues_at_selection_ends", "0-5:A 5-20:B =5-20", "0-5:A 5-20*:B #1 !^"},
    {"EndsFromTheStart", "cues_at_selection_ends", "0-20:A =0-5", "0-5*:A 5-20* !^"},
    {"LeftOut", "trim_left_out", "0-5 8-20 @5 #1", "0-6 8-20 @6 #1 !^"},
    {"LeftOutWithoutGap", "trim_left_out", "0-8 8-20 @8 #1", "0-8 8-20* @8 #1 !^"},
    {"LeftOutAtLastFrame", "trim_left_out", "0-19 0-5 @19 #1", "0-19 0-5 @19 #1"},
    {"LeftOutOfTheFirstPart", "trim_left_out", "4-20", "4-20"},
    {"LeftIn", "trim_left_in", "0-5 5-20* @5 #1", "0-4 5-20 @4 #1 !^"},
    {"LeftInWithCursorAtTheStart", "trim_left_in", "0-5 8-20 #1", "0-4 8-20 #1 !^"},
    {"LeftInKeepsTheLastFrame", "trim_left_in", "4-5 8-20* @1 #1", "4-5 8-20* @1 #1"},
    {"RightIn", "trim_right_in", "0-5 5-20* @5 #1", "0-5 6-20 @5 #1 !^"},
    {"RightInOfTheFirstPart", "trim_right_in", "0-20* @3", "1-20 @3 !^"},
    {"RightInKeepsTheLastFrame", "trim_right_in", "0-5 8-9* 12-20 @5 #1", "0-5 8-9* 12-20 @5 #1"},
    {"RightInCursorAtEnd", "trim_right_in", "0-5 8-20 @17 #1", "0-5 9-20 @16 #1 !^"},
    {"RightOut", "trim_right_out", "0-5 8-20 @5 #1", "0-5 7-20 @5 #1 !^"},
    {"RightOutOfAShortPart", "trim_right_out", "0-5 8-9 15-20 @5 #1", "0-5 7-9 15-20 @5 #1 !^"},
    {"RightOutOfShortLast", "trim_right_out", "0-5 19-20 @5 #1", "0-5 18-20 @5 #1 !^"},
    {"RightOutToTheFilesStart", "trim_right_out", "5-10 1-5 @5 #1", "5-10 0-5 @5 #1 !^"},
    {"RightOutAtTheFilesStart", "trim_right_out", "5-10 0-5 @5 #1", "5-10 0-5 @5 #1"},
    {"RightOutOfTheFirstPart", "trim_right_out", "4-20", "3-20 !^"},
    {"RightOutOfTheWholeFile", "trim_right_out", "0-20", "0-20* !^"},
    {"MoveLeft", "move_cue_left", "0-5 5-20*g2:B @9 #1", "0-4 4-20*g2:B @9 #1 !^"},
    {"MoveRight", "move_cue_right", "0-5 5-20*g2:B @9 #1", "0-6 6-20*g2:B @9 #1 !^"},
    {"MoveNoCut", "move_cue_right", "0-5 8-20 #1", "0-5 8-20 #1"},
    {"MoveNotOverCueBefore", "move_cue_left", "0-4 4-5 5-20 #2", "0-4 4-5 5-20 #2"},
    {"MoveNotOverCueBehind", "move_cue_right", "0-5 5-6 6-20 #1", "0-5 5-6 6-20 #1"},
    {"MoveNotTheStart", "move_cue_right", "0-20", "0-20"},
    {"CutOfAll", "cut_or_cue", "0-20*:A =0-20",
     "0-20*:A =0-20 ^ {Selection range seems to be invalid.}"},
    {"CutOfNothing", "cut_or_cue", "0-20 @3", "0-20 @3"},
    {"CropOfNothing", "crop", "0-20 =5-5", "0-20 =5-5 {No selection or selection too short.}"},
    {"CutAndEdit", "cut_or_cue @5 edit_restore", "0-8:A 8-20*:B =5-12", "0-20:A =5-12 @5 !^"},
    {"TakeTurns", "cut_or_cue @5 edit_restore cut_or_cue", "0-8:A 8-20*:B =5-12",
     "0-5:A 12-20*:B @5 #1 !^"},
    {"RestoredCueIsMoved", "cut_or_cue @5 edit_restore @6 set_begin cut_or_cue",
     "0-8:A 8-20*:B =5-12", "0-6:A 12-20*:B @6 #1 !^"},
    {"Toggle", "toggle_cue", "0-5 5-20 #1", "0-5 5-20* #1 !"},
    {"ToggleBack", "toggle_cue", "0-5 5-20* #1", "0-5 5-20 #1 !"},
    {"MuteMakesADip", "mute_cut", "0-5 8-20:B @5 #1", "0-4 4-5:\\/ 8-10g-32:B 10-20:/\\ @5 #3 !^"},
    {"MuteNoGap", "mute_cut", "0-5 5-20 @5 #1", "0-5 5-20 @5 #1"},
    {"MuteNoEditPoint", "mute_cut", "8-20 @5", "8-20 @5"},
    {"CleanStream", "check_resyncs", "0-5 8-20", "0-5 8-20 ^ {0 Re-sync(s)}"},
    {"SelectAll", "select_all", "0-10 10-20 @15 #1", "0-10 10-20 =0-20 @15 #1 ^"},
    {"SelectPart", "select_current_part", "0-10 10-20 @15 #1", "0-10 10-20 =10-20 @15 #1 ^"},
    {"SelectToStart", "select_to_start", "0-20 @15", "0-20 =0-15 @15 ^"},
    {"SelectToEnd", "select_to_end", "0-20 =3-5 @15", "0-20 =15-20 @15 ^"},
    {"SelectNothing", "remove_selection", "0-20 =3-5 @9", "0-20 @9 ^"},
    {"SetEnds", "set_begin @9 set_end", "0-20 @5", "0-20 =5-9 @9 ^"},
    {"BeginLeft", "move_begin_left", "0-20 @10", "0-20 =9-10 @10 ^"},
    {"BeginRight", "move_begin_right", "0-20 =9-10", "0-20 =10-10 ^"},
    {"EndRight", "move_end_right", "0-20 =9-10", "0-20 =9-11 ^"},
    {"EndLeft", "move_end_left move_end_left", "0-20 =9-10", "0-20 =8-8 ^"},
    {"BothRight", "move_selection_right", "0-20 =9-10", "0-20 =10-11 ^"},
    {"BothLeft", "move_selection_left", "0-20 =9-10", "0-20 =8-9 ^"},
};

TEST_F(EditCommands, ChangePartsAndPlaces) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    make(row.before);
    const std::string before = parts();
    const EditPosition begin = selection.sel_beg;
    run(row.commands);
    EXPECT_EQ(state(), row.after);
    expect_sound_document();
    if (undo_stack.empty()) continue;
    while (!undo_stack.empty()) EXPECT_TRUE(undo_pop(editor));
    EXPECT_EQ(parts(), before);
    EXPECT_EQ(selection.sel_beg, begin);
  }
}

TEST_F(EditCommands, FullTableRefusesACutWhole) {
  fill_table();
  const std::uint32_t size = document.total_size;
  selection.sel_beg = size - 5 * length;
  selection.sel_end = size - length;
  const std::string before = state();
  run("cut_or_cue");
  EXPECT_TRUE(state() == before + " ^ {Selection range seems to be invalid.}");
  run("cues_at_selection_ends");  // one of the two
  EXPECT_EQ(document.parts.back().part_size, 5 * length);
  EXPECT_EQ(take_box(), "");
  ASSERT_TRUE(undo_pop(editor));
  add_part(document, 0, 0, 0, length);
  run("crop");
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
  remove_part(document, 0);
  recompute_total(document);
  selection.sel_end = size;
  run("cut_or_cue");
  EXPECT_EQ(document.total_size, size - 5 * length);
}

// A file that is appended to itself may get new bounds; a gap between its parts
// is one all the same. Of two files each keeps its part.
TEST_F(EditCommands, EditGoesByTheFilesOfBothSides) {
  make("0-5 8-20 #1");
  document.files[0].first_audio = 10 * length;
  run("edit_restore");
  EXPECT_EQ(state(), "0-20 =5-8 !^");

  ASSERT_TRUE(open("a.mp3", frames(20)));
  make("0-15");
  const auto file = add_source_file(document, folder.file("b.mp3", frames(20)));
  document.files[*file].audio_end = 20 * length;
  add_part(document, 15 * length, *file, 4 * length, 16 * length);
  run("@15 edit_restore");
  EXPECT_EQ(parts(), "0-20:a.mp3 0-20:b.mp3");
}

// Lengths 417, 1044, 417, 1044, ...: the stream behind a trimmed border has its frames elsewhere.
TEST_F(EditCommands, PlacesStayOnFrameStartsBehindATrim) {
  Mp3Builder builder;
  for (int i = 0; i < 10; ++i) builder.frame({.bitrate = 128}).frame({.bitrate = 320});
  ASSERT_TRUE(open("v.mp3", builder.bytes()));
  delete_range(document, 1461,
               1461 * 3);  // two frames, then from the seventh on: 417 at 1461, 1044 at 1878
  document.current_part = 1;
  selection.cursor = 2922;  // the third frame behind the border
  set_sel_begin(document, selection, 1461);
  set_sel_end(document, selection, 1878);
  run("trim_right_in");  // the first of 417 bytes goes; 1044 at 1461, 417 at
                         // 2505, 1044 at 2922
  EXPECT_EQ(selection.cursor, 2922U);
  EXPECT_EQ(selection.sel_beg, 1461U);
  EXPECT_EQ(selection.sel_end, 2505U);
  EXPECT_TRUE(undo_pop(editor));
  EXPECT_EQ(selection.sel_end, 1878U);
}

TEST_F(EditCommands, ARunOfOneTrimIsOneStep) {
  make("0-8 12-20* @8 #1");
  run("trim_left_in trim_left_in trim_right_in @6");
  EXPECT_EQ(undo_stack.size(), 2U);
  document.current_part = 1;
  run("trim_right_in");
  document.current_part = 0;
  host.calls.clear();
  run("trim_right_in trim_right_in");
  EXPECT_NE(host.calls.find("parts "), std::string::npos);  // the list
  EXPECT_EQ(undo_stack.size(), 3U);
  for (const char* const before : {"0-6 14-20", "0-6 12-20", "0-8 12-20*"}) {
    EXPECT_TRUE(undo_pop(editor));
    EXPECT_EQ(parts(), before);
  }
}

TEST_F(EditCommands, NothingIsTakenFromAGapOfJunk) {
  ASSERT_TRUE(open("j.mp3", Mp3Builder{}.frames(5).raw(Bytes(3000, 0x55)).frames(10).bytes()));
  delete_range(document, 5 * length, 5 * length + 3000);
  document.current_part = 1;
  run("trim_right_out");
  EXPECT_EQ(document.parts[1].part_filepos, 5 * length + 3000);
  EXPECT_EQ(document.total_size, 15 * length);
}

// The frames on the two sides of the border differ in their rate; whichever was seen last, the one
// in front is found, and what was seen last stays so for the command that goes by it.
TEST_F(EditCommands, StepsBackOverAChangeOfTheSampleRate) {
  ASSERT_TRUE(
      open("x.mp3", Mp3Builder{}.frames(40).shape({.sample_rate = 48000}).frames(40).bytes()));
  // The probe ends at the second rate, and then the first frame passes unnoticed.
  ASSERT_EQ(document.parts[0].part_filepos, length);
  split_at(document, 39 * length);
  document.current_part = 1;
  selection.current_frame = {};
  frame_at(document, 39 * length, selection.current_frame);
  run("move_cue_left");
  EXPECT_EQ(document.parts[1].part_beg, 38 * length);
  run("move_cue_right");
  EXPECT_EQ(document.parts[1].part_beg, 39 * length);
  run("trim_left_in");
  EXPECT_EQ(document.parts[1].part_beg, 38 * length);
}

TEST_F(EditCommands, ReSyncsAreMarkedBehindTheFrameFoundAgain) {
  const Bytes junk(20, 0x55);
  const Bytes bytes = Mp3Builder{}.frames(10).raw(junk).frames(10).raw(junk).frames(10).bytes();
  struct {
    std::uint32_t begin, end;
    std::string marks;
  } const ranges[] = {{none, none, "11+20=Re-sync 1 21+40=Re-sync 2 2 Re-sync(s)"},
                      {12 * length + 20, 30 * length + 40, "21+40=Re-sync 1 1 Re-sync(s)"},
                      // Where the range ends before the next frame there is nothing to mark.
                      {0, 11 * length + 20, "0 Re-sync(s)"}};
  for (const auto& range : ranges) {
    ASSERT_TRUE(open("j.mp3", bytes));
    selection.sel_beg = range.begin;
    selection.sel_end = range.end;
    document.current_part = 0;
    selection.cursor = document.total_size;
    selection.sel_artist = u"of a restored cut";
    run("check_resyncs");
    EXPECT_EQ(document.current_part, part_count(document) - 1);
    std::string marks;
    for (const Part& part : document.parts)
      if (!part.part_title.empty())
        marks += in_frames(part.part_filepos) + "=" +
                 wide_to_bytes(part.part_title + part.part_artist, true) + " ";
    EXPECT_EQ(marks + host.boxes.back().text, range.marks);
  }
}

TEST_F(EditCommands, LevelsAreForLayerIII) {
  EXPECT_TRUE(require(need_level_control(editor.document)));
  ASSERT_TRUE(open("a.mp2", frames(20, {.layer = 2})));
  make("0-5 8-20 @5 #1");
  run("mute_cut");
  EXPECT_FALSE(require(need_level_control(editor.document)));
  EXPECT_EQ(state(), "0-5 8-20 @5 #1 {Can't change the level of Layer II.}");
  ASSERT_TRUE(open("a.aac", Mp3Builder{}.adts(20, 417).bytes()));
  EXPECT_FALSE(require(need_level_control(editor.document)));
  EXPECT_EQ(state(), "0-20* {Note: No level adjustment on AAC}");
}

}  // namespace
}  // namespace corvelin::test

// Cut/Cue, Edit, Crop, Mute cut and the removal of edit points.
#include "edit/cut_commands.h"

#include "edit/mute_cut.h"
#include "model/cuts.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class CutCommands : public EditTest {};

struct CutCase {
  const char* name;
  const char* before;
  std::uint32_t begin, end, cursor;
  const char* after;
  std::uint32_t cursor_after;
  int current_after;
};

constexpr CutCase cuts[] = {
    {"CueInAPart", "0-20:A", 5, 5, 7, "0-5:A 5-20*", 7, 1},
    {"CueInALevelledPart", "0-20g3", 5, 5, 5, "0-5g3 5-20*g3", 5, 1},
    {"CueAtABorderTakesItsNames", "0-5:A 5-20:B", 5, 5, 5, "0-5:A 5-20*", 5, 1},
    {"CueAtTheStartKeepsNames", "0-20:A", 0, 0, 9, "0-20*:A", 9, 0},
    {"CueAtTheEndIsNone", "0-20:A", 20, 20, 20, "0-20:A", 20, 0},
    {"InsideAPart", "0-20:A", 5, 8, 10, "0-5:A 8-20", 7, 1},
    {"OverABorder", "0-5:A 5-10*:B 10-20:C", 3, 7, 4, "0-3:A 7-10*:B 10-20:C", 3, 1},
    {"UpToABorder", "0-5:A 5-10:B", 3, 5, 1, "0-3:A 5-10:B", 1, 0},
    {"AWholePart", "0-5 5-10* 10-20:C", 5, 10, 0, "0-5 10-20:C", 0, 0},
    {"HeadOfAPart", "0-20:A", 0, 4, 4, "4-20*:A", 0, 0},
    {"HeadOverABorder", "0-5:A 5-20:B", 0, 7, 6, "7-20*:B", 0, 0},
    {"Tail", "0-5:A 5-20:B", 3, 20, 20, "0-3:A", 3, 0},
    {"LevelReturnsAFrameLater", "0-5g-4 5-20g6", 3, 7, 5, "0-3g-4 7-8g-4 8-20g6", 4, 2},
    {"LevelReturnsAtABorder", "0-5g-4 5-8g6 8-20g1", 3, 7, 9, "0-3g-4 7-8g-4 8-20g6", 5, 2},
    {"LevelCannotReturnBehindTheEnd", "0-5g-4 5-8g6", 3, 7, 0, "0-3g-4 7-8g-4", 0, 0},
};

TEST_F(CutCommands, CutRepairsBorderCursorAndCurrentPart) {
  for (const CutCase& cut : cuts) {
    SCOPED_TRACE(cut.name);
    make(cut.before);
    select(cut.begin, cut.end);
    selection.cursor = cut.cursor * frame;
    cut_or_cue();
    EXPECT_EQ(parts(), cut.after);
    EXPECT_EQ(selection.cursor, cut.cursor_after * frame);
    EXPECT_EQ(document.current_part, cut.current_after);
    EXPECT_TRUE(open_state.document_modified);
    EXPECT_EQ(undo_stack.at(0).undo_label, "Cut/Cue");
    expect_selection(none, none);
    expect_sound_document();
  }
}

TEST_F(CutCommands, RefusedCutChangesNothing) {
  make("0-20*:A");
  select(0, 20);
  cut_or_cue();
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
  EXPECT_EQ(parts(), "0-20*:A");
  expect_selection(0, 20);

  make("0-20:A");  // room for one of two borders
  while (document.parts.size() < 999) add_part(0, 0, 0, frame);
  const std::uint32_t size = document.total_size;
  selection.sel_beg = size - 5 * frame;
  selection.sel_end = size - frame;
  const std::string table = parts();
  cut_or_cue(true);
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
  EXPECT_EQ(parts(), table);
  EXPECT_EQ(selection.sel_end, size - frame);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(undo_stack.empty());

  selection.sel_end = size;
  cut_or_cue();
  EXPECT_EQ(document.total_size, size - 5 * frame);

  make("0-20");
  cut_or_cue();
  EXPECT_EQ(take_box(), "");
  EXPECT_TRUE(undo_stack.empty());
}

TEST_F(CutCommands, CutAndEditTakeTurns) {
  make("0-8:A 8-20*:B");
  select(5, 12);
  for (int i = 0; i < 3; ++i) {
    cut_or_cue();
    EXPECT_EQ(parts(), "0-5:A 12-20*:B");
    seek_to(5 * frame);
    edit_restore();
    EXPECT_EQ(parts(), "0-20:A");
    expect_selection(5, 12);
  }
  set_sel_begin(6 * frame);  // a restored cue can be moved and stays one
  cut_or_cue();
  EXPECT_EQ(parts(), "0-6:A 12-20*:B");
}

struct EditCase {
  const char* name;
  const char* before;
  std::uint32_t cursor;
  int current;
  const char* after;
  std::uint32_t begin, end;
};

constexpr EditCase edits[] = {
    {"Gap", "0-5 8-20:B", 5, 1, "0-20", 5, 8},
    {"GapClickedFromAfar", "0-5 8-20:B", 1, 1, "0-20", 5, 8},
    {"Cue", "0-5 5-20*", 5, 1, "0-20", 5, 5},
    {"Head", "4-20*:A", 0, 0, "0-20*", 0, 4},
    {"Tail", "0-5 8-15:A", 12, 1, "0-5 8-20:A", 12, 17},
    {"TailWithAnotherPartClicked", "0-5 8-15:A", 12, 0, "0-5 8-20:A", 12, 17},
    {"OrderOfTheFileReversed", "5-10 0-5", 5, 1, "5-10 0-5", none, none},
};

TEST_F(CutCommands, EditBringsBackWhatTheCursorTells) {
  for (const EditCase& edit : edits) {
    SCOPED_TRACE(edit.name);
    make(edit.before);
    selection.cursor = edit.cursor * frame;
    document.current_part = static_cast<PartIndex>(edit.current);
    edit_restore();
    EXPECT_EQ(parts(), edit.after);
    expect_selection(edit.begin, edit.end);
    EXPECT_EQ(undo_stack.at(0).undo_label, "Edit");
    const bool is_refused = edit.begin == none;
    EXPECT_EQ(take_box(), is_refused ? "Error: Not possible" : "");
    EXPECT_EQ(open_state.document_modified, !is_refused);
    expect_sound_document();
  }
}

TEST_F(CutCommands, EditOnTwoFilesKeepsTwoParts) {
  make("0-15");
  const auto file = add_source_file(folder.file("b.mp3", Mp3Builder{}.frames(20).bytes()));
  document.files[*file].audio_end = 20 * frame;
  add_part(15 * frame, *file, 4 * frame, 16 * frame);
  seek_to(15 * frame);
  edit_restore();
  EXPECT_EQ(parts(), "0-20:a.mp3 0-20:b.mp3");
}

struct RangeCase {
  const char* name;
  const char* before;
  std::uint32_t begin, end, cursor;
  const char* after;
  std::uint32_t cursor_after;
  std::uint32_t begin_after, end_after;
};

// A file that is appended to itself may get new bounds; a gap between its parts is one all the
// same.
TEST_F(CutCommands, EditClosesAGapWhateverTheBoundsOfItsFile) {
  make("0-5 8-20");
  document.files[0].first_audio = 10 * frame;
  document.current_part = 1;
  EXPECT_TRUE(edit_restore());
  EXPECT_EQ(parts(), "0-20");
  expect_selection(5, 8);
}

TEST_F(CutCommands, CropKeepsTheSelection) {
  constexpr RangeCase crops[] = {
      {"CursorInside", "0-20:A", 5, 8, 6, "5-8", 1, none, none},
      {"CursorBehind", "0-20:A", 5, 8, 10, "5-8", 3, none, none},
      {"CursorInFront", "0-20:A", 5, 8, 2, "5-8", 2, none, none},
      {"Borders", "0-5:A 5-10*:B 10-20", 5, 10, 0, "5-10*:B", 0, none, none},
      {"Everything", "0-5:A 5-20:B", 0, 20, 9, "0-5:A 5-20:B", 9, none, none},
  };
  for (const RangeCase& crop_case : crops) {
    SCOPED_TRACE(crop_case.name);
    make(crop_case.before);
    select(crop_case.begin, crop_case.end);
    selection.cursor = crop_case.cursor * frame;
    crop();
    EXPECT_EQ(parts(), crop_case.after);
    EXPECT_EQ(selection.cursor, crop_case.cursor_after * frame);
    expect_selection(crop_case.begin_after, crop_case.end_after);
    EXPECT_TRUE(open_state.document_modified);
  }
  select(5, 5);
  crop();
  EXPECT_EQ(take_box(), "Not possible: No selection or selection too short.");
  EXPECT_EQ(undo_stack.size(), 1U);
}

TEST_F(CutCommands, RemovalOfEditPointsMakesOneStretch) {
  constexpr RangeCase removals[] = {
      {"CutAndCue", "0-5 8-12* 12-20", 3, 10, 0, "0-20", 0, 3, 13},
      {"FromTheStart", "0-5 5-20*", 0, 8, 0, "0-20", 0, 1, 8},
      {"NotOneStretch", "10-15 0-8", 3, 8, 12, "10-13 3-8", 8, 3, 8},
      {"UpToTheEnd", "0-5 8-20", 3, 17, 17, "0-3", 3, 3, 3},
  };
  for (const RangeCase& removal : removals) {
    SCOPED_TRACE(removal.name);
    make(removal.before);
    select(removal.begin, removal.end);
    selection.cursor = removal.cursor * frame;
    remove_edit_points();
    EXPECT_EQ(parts(), removal.after);
    EXPECT_EQ(selection.cursor, removal.cursor_after * frame);
    expect_selection(removal.begin_after, removal.end_after);
    EXPECT_EQ(take_box(), parts() == "0-20" ? "" : "Error: Not possible");
    EXPECT_FALSE(open_state.document_modified);
    expect_sound_document();
  }
}

TEST_F(CutCommands, MuteCutMakesADip) {
  make("0-5 8-20:B");
  seek_to(5 * frame);
  mute_cut();
  EXPECT_EQ(parts(), "0-4 4-5:\\/ 8-10g-32:B 10-20:/\\");
  EXPECT_EQ(selection.cursor, 5 * frame);
  EXPECT_EQ(document.current_part, 3);
  EXPECT_EQ(undo_stack.at(0).undo_label, "Mute cut");

  for (const char* const table : {"8-20", "0-5 5-20"}) {  // no edit point, and one without a gap
    make(table);
    seek_to(5 * frame);
    mute_cut();
    EXPECT_EQ(parts(), table);
    EXPECT_TRUE(undo_stack.empty());
  }
  ASSERT_TRUE(open("b.mp2", Mp3Builder{}.shape({.layer = 2}).frames(20).bytes()));
  delete_range(5 * frame, 8 * frame);
  seek_to(5 * frame);
  mute_cut();
  EXPECT_EQ(parts(), "0-5* 8-20");
}

}  // namespace
}  // namespace corvelin::test

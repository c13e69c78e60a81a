// SPDX-License-Identifier: GPL-2.0-or-later
// Level commands and the level dialog on parts written down as in edit_test.h, with "|" and the
// gain at the end of the stream.
#include "edit/level_commands.h"

#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/level_dialog.h"
#include "edit/normalize_dialog.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class Levels : public EditTest {
 protected:
  std::string levels() { return parts() + '|' + std::to_string(document.end_gain); }

  void begin_with(const std::string& state) {
    make(state);
    document.end_gain = 0;
  }
};

TEST_F(Levels, FadeToAndFromTheBottom) {
  struct Row {
    const char* before;
    const char* simple;
    const char* two_stage;
  };
  const Row table[] = {
      {"0-20 @15", "0-15 15-20|-40", "0-15 15-20|-40"},  // too short for a second stage
      {"0-20 @11", "0-11 11-20|-40", "0-11 11-17 17-20g-13|-40"},
      {"0-20 @9", "0-9g-40 9-20|0", "0-3g-40 3-9g-13 9-20|0"},
      {"0-20 =3-5 @15", "0-5g-40 5-20|0", "0-5g-40 5-20|0"},
      {"0-8g2 8-20 =12-20", "0-8g2 8-12 12-20|-40", "0-8g2 8-12 12-18 18-20g-13|-40"},
      {"0-8g2 8-20 @4", "0-4g-40 4-8g2 8-20|0", "0-4g-40 4-8g2 8-20|0"},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.before);
    begin_with(row.before);
    dispatch_command(editor, 1019);
    EXPECT_EQ(levels(), row.simple);
    begin_with(row.before);
    dispatch_command(editor, 1047);
    EXPECT_EQ(levels(), row.two_stage);
  }
  settings.lowest_gain = 10;  // 6 steps, and two of them in the last third
  begin_with("0-20 @11");
  dispatch_command(editor, 1047);
  EXPECT_EQ(levels(), "0-11 11-17 17-20g-2|-6");
}

TEST_F(Levels, FadeThatCanNotBeIsToldAndChangesNothing) {
  for (const char* const before : {"0-20", "0-20 @20", "0-20 =5-15", "0-20 =0-20", "0-16 16-20 @12",
                                   "0-3 3-20 @5"}) {  // another part lies between
    for (const CommandId fade : {CommandId{1019}, CommandId{1047}}) {
      make(before);
      EXPECT_EQ(dispatch_command(editor, fade), DispatchResult::refused);
      EXPECT_TRUE(take_box().starts_with("Not possible: "));
      EXPECT_EQ(state(), before);
    }
  }
}

TEST_F(Levels, StepPartByPart) {
  begin_with("0-5* 5-10*g31 10-15* 15-20* #1 @6");
  dispatch_command(editor, 202);
  EXPECT_EQ(levels(), "0-5 5-10g32 10-15 15-20*|0");
  dispatch_command(editor, 202);
  EXPECT_EQ(levels(), "0-5 5-10g32 10-15 15-20*|0");
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_TRUE(undo_stack.empty());
  begin_with("0-5 5-20* #1 @20");
  dispatch_command(editor, 203);
  EXPECT_EQ(levels(), "0-5 5-20*|-1");
  ASSERT_TRUE(open("a.mp2", frames(20, {.layer = 2})));
  EXPECT_EQ(dispatch_command(editor, 202), DispatchResult::nothing);
  EXPECT_EQ(document.parts[0].part_gainbeg, 0);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Levels, TheDialogSetsTheSelection) {
  struct Row {
    const char* before;
    const char* after;  // from -4 to -8
  };
  const Row table[] = {
      {"0-20 =5-15", "0-5 5-6 6-14g-4 14-15g-8 15-20|0"},
      {"0-20g3 =5-15", "0-5g3 5-6g3 6-14g-4 14-15g-8 15-20g3|0"},
      {"0-20 =5-8", "0-5 5-8g-4 8-20|0"},  // too short for edges
      {"0-20 =0-15", "0-14g-4 14-15g-8 15-20|0"},
      {"0-20 =5-20", "0-5 5-6 6-20g-4|-8"},
      {"0-5 5-20g3 =5-10", "0-5 5-9g-4 9-10g-8 10-20g3|0"},
      {"0-20 =0-20", "0-20g-4|-8"},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.before);
    begin_with(row.before);
    LevelDialog dialog(editor);
    dialog.begin();
    dialog.set_from(-4);
    dialog.set_to(-8);
    ASSERT_TRUE(dialog.accept());
    EXPECT_EQ(levels(), row.after);
    EXPECT_FALSE(has_selection(selection));
    EXPECT_TRUE(open_state.document_modified);
    undo_pop(editor);
    EXPECT_EQ(document.end_gain, 0);
  }
}

TEST_F(Levels, TheDialogShowsWhatIsThere) {
  begin_with("0-5g-2 5-20g3 =0-20");
  document.end_gain = 7;
  LevelDialog dialog(editor);
  dialog.begin();
  EXPECT_EQ(dialog.from_text() + ", " + dialog.to_text(), "from -3.0 dB, to +10.5 dB");
  dialog.fade_out();
  EXPECT_EQ(selection.sel_gain * 1000 + selection.sel_gain_end, -40);
  dialog.silence();
  dialog.locks_sliders = true;
  dialog.set_to(40);
  EXPECT_EQ(selection.sel_gain * 1000 + selection.sel_gain_end, 32032);
  EXPECT_EQ(LevelDialog::set_bottom_level(91), 90);
  host.answers = {BoxAnswer::cancel, BoxAnswer::ok};
  dialog.restore_defaults();
  EXPECT_EQ(settings.lowest_gain, 90);
  dialog.restore_defaults();
  EXPECT_EQ(settings.lowest_gain, 60);
  EXPECT_EQ(selection.sel_gain, 0);
}

TEST_F(Levels, ShiftAddsToWhatIsThere) {
  const struct {
    const char* before;
    const char* after;
  } table[] = {
      {"0-20 =0-20", "0-20g3|3"},
      {"0-5g-2 5-20 =0-20", "0-5g1 5-20g3|3"},
      {"0-20 =5-15", "0-5 5-6 6-14g3 14-15g3 15-20|0"},
      {"0-8 8-12g-5 12-20 =5-15", "0-5 5-6 6-8g3 8-12g-2 12-14g3 14-15g3 15-20|0"},
      {"0-20 =5-6", "0-5 5-6g3 6-20|0"},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.before);
    begin_with(row.before);
    shift_selection_level(editor, 3);
    EXPECT_EQ(levels(), row.after);
  }
}

TEST_F(Levels, AreRefusedInWords) {
  struct Row {
    const char* name;
    Bytes bytes;
    CommandId id;
    const char* box;
  };
  const Row table[] = {
      {"a.mp2", frames(20, {.layer = 2}), 1019, "Can't change the level of Layer II."},
      {"a.aac", Mp3Builder{}.adts(20, 200).bytes(), 1047, "Note: No level adjustment on AAC"},
      {"a.mp2", frames(20, {.layer = 2}), 1025, "Can't change the level of Layer II."},
      {"a.mp3", frames(20), 1021, "No selection or selection too short."},
  };
  for (const Row& row : table) {
    ASSERT_TRUE(open(row.name, row.bytes));
    EXPECT_EQ(dispatch_command(editor, row.id), DispatchResult::refused);
    EXPECT_EQ(take_box(), std::string("Not possible: ") + row.box);
  }
  ASSERT_TRUE(open("a.mp3", frames(20)));
  make("0-10 10-20 =5-10");
  EXPECT_EQ(dispatch_command(editor, 1021), DispatchResult::refused);
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
}

TEST_F(Levels, AFullTableStaysAsItIs) {
  ASSERT_TRUE(open("a.mp3", frames(2000)));
  make("0-2000");
  for (std::uint32_t i = 1; i < 998; ++i) add_part(document, document.total_size, 0, 0, length);
  select(5, 15);
  const std::string before = parts();
  EXPECT_FALSE(LevelDialog(editor).accept());
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
  EXPECT_EQ(parts(), before);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The undo stack.
#include "edit/undo.h"

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/exact_time.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

using Undo = EditTest;

TEST_F(Undo, TakesBackASelectionAlone) {
  undo_push(editor, false, "Selection");
  select(1, 2);
  move_cursor(document, selection, 2 * length);
  delete_range(document, 10 * length, 12 * length);
  ASSERT_TRUE(undo_pop(editor));
  EXPECT_EQ(state(), "0-10* 12-20 @2");
  EXPECT_FALSE(run("undo"));
  EXPECT_EQ(host.beeps, 1);
}

TEST_F(Undo, LosesTheOldestStepsFromAFullStack) {
  const auto labels = [this](std::uint16_t most, int pushes) {
    settings.max_undo = most;
    for (int i = 1; i <= pushes; ++i) undo_push(editor, false, std::to_string(i));
    return std::to_string(undo_stack.size()) + ": " + undo_stack.front().undo_label + " to " +
           undo_stack.back().undo_label;
  };
  EXPECT_EQ(labels(3, 5), "3: 5 to 3");
  EXPECT_EQ(labels(200, 60), "50: 60 to 11");
  EXPECT_EQ(labels(0, 1), "50: 60 to 11");
  EXPECT_FALSE(undo_pop(editor));
  close_all(editor);
  EXPECT_TRUE(undo_stack.empty());
}

TEST_F(Undo, LabelsAreShortAndPlain) {
  struct {
    const char* menu_text;
    const char* label;
  } const rows[] = {{"Nor&malize...\tCtrl+M", "Normalize"},
                    {"Set Cue flag for all p&ure split points", "Set Cue flag for all pur..."},
                    {"Cues at &ends of selection\tShift+Ctrl+E", "Cues at ends of selectio..."},
                    {"123456789012345678901234", "123456789012345678901234"},
                    {"&Cut/Cue", "Cut/Cue"}};
  for (const auto& row : rows) {
    undo_push(editor, false, row.menu_text);
    EXPECT_EQ(undo_stack.front().undo_label, row.label);
  }
  EXPECT_EQ(undo_menu_text(editor), "&Undo: Cut/Cue\tCtrl+Z");
  undo_clear(editor);
  EXPECT_EQ(undo_menu_text(editor), "&Undo\tCtrl+Z");
}

// The sources stay open, so that it doesn't matter what became of their names.
TEST_F(Undo, KeepsWhatAFileWouldNotTell) {
  document.parts[0].part_title = std::u16string(400, u'x');
  open_state.project_name = folder.path("p.cvp");
  undo_push(editor, true, "1");
  open_state.project_name = "/elsewhere/p.cvp";
  std::filesystem::remove(folder.path("a.mp3"));
  document.stream.id3v1[3] = 'T';
  open_state.save_name = "/elsewhere/saved.mp3";
  delete_range(document, 0, length);
  EXPECT_TRUE(undo_pop(editor));
  EXPECT_EQ(document.parts[0].part_title.size(), 400U);
  EXPECT_EQ(document.total_size, 20 * length);
  EXPECT_EQ(document.stream.id3v1[3], 'T');
  EXPECT_EQ(open_state.save_name, "/elsewhere/saved.mp3");
  EXPECT_TRUE(open_state.document_modified);
}

TEST_F(Undo, BringsBackTheTimesOfASource) {
  undo_push(editor, true, "before");
  document.files[0].audio_end = document.parts[0].part_size = 10 * length;
  document.files[0].index = {};
  recompute_total(document);
  EXPECT_NEAR(exact_seconds(document, 10 * length), 10 * 1152 / 44100., 1e-9);
  ASSERT_TRUE(undo_pop(editor));
  EXPECT_NEAR(exact_seconds(document, 20 * length), 20 * 1152 / 44100., 1e-9);
}

TEST_F(Undo, BringsBackASourceThatWasClosedAndRemoved) {
  const std::string b = folder.file("b.mp3", frames(20));
  document.files[*add_source_file(document, b)].audio_end = 20 * length;
  add_part(document, 20 * length, 1, 0, 5 * length);
  undo_push(editor, true, "with b");
  remove_part(document, 1);
  recompute_total(document);
  remove_last_source_file(document);
  std::filesystem::remove(b);
  ASSERT_TRUE(undo_pop(editor));
  EXPECT_EQ(file_count(document), 2);
  FrameInfo last_found;
  EXPECT_EQ(frame_at(document, 22 * length - 5, last_found), 22 * length);
}

TEST_F(Undo, AnEndThatComesBackMeansWhatItMeant) {
  make("0-20 =5-8");
  run("move_end_left move_end_left move_end_left");
  EXPECT_EQ(selection.sel_iscue, 1U);
  run("undo");
  EXPECT_EQ(selection.sel_iscue, 0U);
}

}  // namespace
}  // namespace corvelin::test

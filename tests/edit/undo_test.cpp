// The undo stack.
#include "edit/undo.h"

#include "exchange/project_file.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Undo : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes())); }
};

TEST_F(Undo, TakesBackACut) {
  set_sel_begin(417);
  set_sel_end(834);
  const std::string before = project_text();
  undo_push(true, "&Cut/Cue");
  delete_range(417, 834);
  clear_selection();
  ASSERT_TRUE(undo_pop());
  EXPECT_EQ(project_text(), before);
  EXPECT_EQ(selection.sel_end, 834U);
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_EQ(host.beeps, 0);
  EXPECT_FALSE(undo_pop());
  EXPECT_EQ(host.beeps, 1);
}

TEST_F(Undo, TakesBackASelectionAlone) {
  undo_push(false, "Selection");
  set_sel_begin(417);
  seek_to(834);
  delete_range(4170, 8340);
  ASSERT_TRUE(undo_pop());
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_EQ(selection.cursor, 834U);
  EXPECT_EQ(part_count(), 2);
}

TEST_F(Undo, LosesTheOldestStepsFromAFullStack) {
  settings.max_undo = 3;
  for (const char* const label : {"1", "2", "3", "4", "5"}) undo_push(false, label);
  ASSERT_EQ(undo_stack.size(), 3U);
  EXPECT_EQ(undo_stack.front().undo_label, "5");
  EXPECT_EQ(undo_stack.back().undo_label, "3");
  settings.max_undo = 200;
  for (int i = 0; i < 60; ++i) undo_push(false, "x");
  EXPECT_EQ(undo_stack.size(), 50U);
  settings.max_undo = 0;
  undo_push(false, "y");
  EXPECT_EQ(undo_stack.front().undo_label, "x");
  EXPECT_FALSE(undo_pop());
}

TEST_F(Undo, DoesNotMindWhereTheProjectIsSaved) {
  open_state.project_name = folder.path("p.cvp");
  undo_push(true, "x");
  open_state.project_name = "/elsewhere/p.cvp";
  EXPECT_TRUE(undo_pop());
  EXPECT_EQ(document.files[0].file_name, folder.path("a.mp3"));
}

TEST_F(Undo, EndsWithTheDocument) {
  undo_push(true, "x");
  close_all();
  EXPECT_TRUE(undo_stack.empty());
}

TEST_F(Undo, LabelsAreShortAndPlain) {
  const auto label = [](std::string_view menu_text) {
    undo_push(false, menu_text);
    return undo_stack.front().undo_label;
  };
  EXPECT_EQ(label("&Cut/Cue"), "Cut/Cue");
  EXPECT_EQ(label("Nor&malize...\tCtrl+M"), "Normalize");
  EXPECT_EQ(label("&Pause detection...\tShift+Ctrl+P"), "Pause detection");
  EXPECT_EQ(label("Set Cue flag for all p&ure split points"), "Set Cue flag for all pur...");
  EXPECT_EQ(label("Cues at &ends of selection\tShift+Ctrl+E"), "Cues at ends of selectio...");
  EXPECT_EQ(label("123456789012345678901234"), "123456789012345678901234");
  label("&Cut/Cue");
  EXPECT_EQ(undo_menu_text(), "&Undo: Cut/Cue\tCtrl+Z");
  undo_clear();
  EXPECT_EQ(undo_menu_text(), "&Undo\tCtrl+Z");
}

TEST_F(Undo, SurvivesASourceThatIsGone) {
  undo_push(true, "x");
  open_state.document_modified = true;
  std::filesystem::remove(folder.path("a.mp3"));
  EXPECT_FALSE(undo_pop());
  EXPECT_EQ(part_count(), 0);
  EXPECT_EQ(file_count(), 0);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(undo_stack.empty());
}

}  // namespace
}  // namespace corvelin::test

// The undo stack.
#include "edit/undo.h"

#include "model/cuts.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

using Undo = EditTest;

TEST_F(Undo, TakesBackASelectionAlone) {
  undo_push(false, "Selection");
  select(1, 2);
  move_cursor(2 * length);
  delete_range(10 * length, 12 * length);
  ASSERT_TRUE(undo_pop());
  EXPECT_EQ(state(), "0-10* 12-20 @2");
  EXPECT_FALSE(run("undo"));
  EXPECT_EQ(host.beeps, 1);
}

TEST_F(Undo, LosesTheOldestStepsFromAFullStack) {
  const auto labels = [](std::uint16_t most, int pushes) {
    settings.max_undo = most;
    for (int i = 1; i <= pushes; ++i) undo_push(false, std::to_string(i));
    return std::to_string(undo_stack.size()) + ": " + undo_stack.front().undo_label + " to " +
           undo_stack.back().undo_label;
  };
  EXPECT_EQ(labels(3, 5), "3: 5 to 3");
  EXPECT_EQ(labels(200, 60), "50: 60 to 11");
  EXPECT_EQ(labels(0, 1), "50: 60 to 11");
  EXPECT_FALSE(undo_pop());
  close_all();
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
    undo_push(false, row.menu_text);
    EXPECT_EQ(undo_stack.front().undo_label, row.label);
  }
  EXPECT_EQ(undo_menu_text(), "&Undo: Cut/Cue\tCtrl+Z");
  undo_clear();
  EXPECT_EQ(undo_menu_text(), "&Undo\tCtrl+Z");
}

TEST_F(Undo, DoesNotMindAMovedProjectButASourceThatIsGone) {
  open_state.project_name = folder.path("p.cvp");
  undo_push(true, "1");
  undo_push(true, "2");
  open_state.project_name = "/elsewhere/p.cvp";
  EXPECT_TRUE(undo_pop());
  EXPECT_EQ(document.files[0].file_name, folder.path("a.mp3"));
  std::filesystem::remove(folder.path("a.mp3"));
  EXPECT_FALSE(undo_pop());
  EXPECT_EQ(part_count() + file_count(), 0);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(undo_stack.empty());
}

}  // namespace
}  // namespace corvelin::test

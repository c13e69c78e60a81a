// Cue flags.
#include "edit/cue_commands.h"

#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class CueCommands : public EditTest {};

struct FlagCase {
  const char* name;
  void (*command)();
  const char* before;
  std::uint32_t begin, end;
  const char* after;
};

constexpr const char* three = "0-5 5-10 10-20*";

constexpr FlagCase flags[] = {
    {"SetAll", set_cue_flags, three, none, none, "0-5* 5-10* 10-20*"},
    {"SetWithBothEndsOfTheRange", set_cue_flags, "0-5 5-10 10-15 15-20", 5, 10,
     "0-5 5-10* 10-15* 15-20"},
    {"SetAtAPoint", set_cue_flags, three, 5, 5, "0-5 5-10* 10-20*"},
    {"RemoveAll", remove_cue_flags, three, none, none, "0-5 5-10 10-20"},
    {"RemoveBesideTheRange", remove_cue_flags, three, 1, 9, three},
    {"PureSplits", cue_pure_splits, "0-5* 5-10 12-14* 14-20", none, none,
     "0-5* 5-10* 12-14 14-20*"},
    {"LevelsAreNoPureSplits", cue_pure_splits, "0-5 5-7* 7-10*g2 10-12* 12-20*", none, none,
     "0-5 5-7 7-10g2 10-12 12-20*"},
    {"EndsInAPart", cues_at_selection_ends, "0-20", 5, 10, "0-5 5-10* 10-20*"},
    {"EndsAtBorders", cues_at_selection_ends, "0-5:A 5-20:B", 5, 20, "0-5:A 5-20*:B"},
    {"EndsFromTheStart", cues_at_selection_ends, "0-20:A", 0, 5, "0-5*:A 5-20*"},
};

TEST_F(CueCommands, FlagsOfPartsInTheRange) {
  for (const FlagCase& flag : flags) {
    SCOPED_TRACE(flag.name);
    make(flag.before);
    select(flag.begin, flag.end);
    flag.command();
    EXPECT_EQ(parts(), flag.after);
    const bool makes_cues = flag.command == cues_at_selection_ends;
    EXPECT_EQ(open_state.document_modified, makes_cues);
    EXPECT_EQ(undo_stack.at(0).undo_label,
              makes_cues ? "Cues at ends of selectio..." : "Set Cue flag for all pur...");
  }
}

TEST_F(CueCommands, ToggleTakesNoUndoStep) {
  make("0-5 5-20");
  document.current_part = 1;
  toggle_cue();
  EXPECT_EQ(parts(), "0-5 5-20*");
  EXPECT_TRUE(open_state.document_modified);
  toggle_cue();
  EXPECT_EQ(parts(), "0-5 5-20");
  EXPECT_TRUE(undo_stack.empty());
}

TEST_F(CueCommands, CuesAtEndsAreLeftOutWithoutRoom) {
  make("0-20");
  while (document.parts.size() < 999) add_part(0, 0, 0, frame);
  selection.sel_beg = document.total_size - 9 * frame;
  selection.sel_end = document.total_size - 4 * frame;
  cues_at_selection_ends();
  EXPECT_EQ(part_count(), 1000);
  EXPECT_EQ(document.current_part, 999);
  EXPECT_EQ(document.parts[999].part_size, 9 * frame);
  expect_selection(none, none);
  EXPECT_EQ(take_box(), "");
}

}  // namespace
}  // namespace corvelin::test

// Check for re-syncs.
#include "edit/resync_check.h"

#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class ResyncCheck : public EditTest {
 protected:
  // Junk behind 10 frames and behind 20.
  void open_with_junk() {
    const Bytes junk(20, 0x55);
    ASSERT_TRUE(
        open("j.mp3", Mp3Builder{}.frames(10).raw(junk).frames(10).raw(junk).frames(10).bytes()));
  }

  // The file offset of each part with its title.
  static std::string marks() {
    std::string text;
    for (const Part& part : document.parts)
      if (!part.part_title.empty())
        text +=
            std::to_string(part.part_filepos) + "=" + wide_to_bytes(part.part_title, true) + " ";
    return text;
  }
};

TEST_F(ResyncCheck, MarksTheFrameBehindTheOneFoundAgain) {
  open_with_junk();
  check_resyncs();
  EXPECT_EQ(take_box(), "Check for re-syncs: 2 Re-sync(s)");
  EXPECT_EQ(marks(), "4607=Re-sync 1 8797=Re-sync 2 ");  // 11 * 417 + 20, 21 * 417 + 40
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_EQ(undo_stack.at(0).undo_label, "Check for re-syncs");
}

TEST_F(ResyncCheck, LooksAtTheSelectionOnly) {
  open_with_junk();
  set_sel_begin(12 * frame + 20);
  set_sel_end(document.total_size);
  check_resyncs();
  EXPECT_EQ(marks(), "8797=Re-sync 1 ");
  // Where the range ends before the next frame there is nothing to mark.
  open_with_junk();
  set_sel_begin(0);
  set_sel_end(10 * frame + 20 + frame);
  check_resyncs();
  EXPECT_EQ(marks(), "");
  EXPECT_EQ(take_box(), "Check for re-syncs: 0 Re-sync(s)");
}

TEST_F(ResyncCheck, CleanStreamStaysAsItIs) {
  make("0-5 8-20");
  check_resyncs();
  EXPECT_EQ(take_box(), "Check for re-syncs: 0 Re-sync(s)");
  EXPECT_EQ(parts(), "0-5 8-20");
  EXPECT_FALSE(open_state.document_modified);
}

}  // namespace
}  // namespace corvelin::test

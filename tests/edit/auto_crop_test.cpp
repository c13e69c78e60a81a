// Auto crop over an ear that knows how loud each frame is.
#include "edit/auto_crop.h"

#include <algorithm>

#include "support/edit_test.h"

namespace corvelin::test {
namespace {

constexpr std::uint16_t loud = 33;  // of 32767: just above -60 dB
constexpr std::uint16_t quiet = 31;

class AutoCrop : public EditTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(60).bytes())); }
  ~AutoCrop() override {
    peak_seek = without_engine_;
    batch_bottom = 0;
  }

  // The frames of the file from `first` up to `last` are loud.
  void hear(std::uint32_t first, std::uint32_t last) {
    peak_seek.open = [this](std::uint32_t) {
      saved_cursor_ = selection.cursor;
      return true;
    };
    peak_seek.close = [this] { selection.cursor = saved_cursor_; };
    peak_seek.read = [=](std::uint32_t frames) {
      std::uint16_t peak = quiet;
      for (; frames > 0 && selection.cursor < document.total_size; --frames) {
        const std::uint32_t at = file_pos_of(part_at(selection.cursor), selection.cursor) / frame;
        if (at >= first && at < last) peak = loud;
        selection.cursor += frame;
      }
      return peak;
    };
  }

 private:
  PeakSeek without_engine_ = peak_seek;
  EditPosition saved_cursor_ = 0;
};

TEST_F(AutoCrop, TakesSilenceOffBothEnds) {
  hear(15, 41);
  seek_to(50 * frame);
  select(3, 9);
  auto_crop();
  // Blocks of 6 frames: 12-18 is the first loud one; of the search from the middle of what is left
  // (36) the block 42-48 is the first silent one, and stays.
  EXPECT_EQ(parts(), "12-48");
  EXPECT_EQ(selection.cursor, 36 * frame);
  expect_selection(none, none);
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_EQ(undo_stack.at(0).undo_label, "Auto crop");
}

TEST_F(AutoCrop, KeepsWhatIsLoudOrSilentThroughout) {
  hear(0, 60);
  auto_crop();
  EXPECT_EQ(parts(), "0-60*");
  hear(0, 0);
  auto_crop();
  EXPECT_EQ(parts(), "0-60*");
  hear(15, 41);
  batch_active = true;
  batch_bottom = 20;  // -20 dB: nothing here is as loud
  auto_crop();
  EXPECT_EQ(parts(), "0-60*");
}

TEST_F(AutoCrop, TellsThatNothingCanBeMeasured) {
  seek_to(7 * frame);
  auto_crop();
  EXPECT_EQ(take_box(), "Not possible: There is no decoder to measure the audio with.");
  EXPECT_EQ(parts(), "0-60*");
  EXPECT_EQ(selection.cursor, 7 * frame);
}

}  // namespace
}  // namespace corvelin::test

// Auto crop over an ear that knows how loud each frame is.
#include "edit/auto_crop.h"
#include "audio/peak_seek.h"

#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class AutoCrop : public EditTest {
 protected:
  ~AutoCrop() override {
    peak_seek = without_engine_;
    batch_bottom = 0;
  }

  // Crops 60 frames of which those from `first` up to `last` are just above -60 dB.
  std::string cropped(std::uint32_t first, std::uint32_t last) {
    EXPECT_TRUE(open("a.mp3", frames(60)));
    seek_to(50 * length);
    select(3, 9);
    peak_seek.open = [this](std::uint32_t) {
      saved_cursor_ = selection.cursor;
      return true;
    };
    peak_seek.close = [this] { selection.cursor = saved_cursor_; };
    peak_seek.read = [=](std::uint32_t count) {
      std::uint16_t peak = 31;  // of 32767
      for (; count > 0 && selection.cursor < document.total_size; --count) {
        const std::uint32_t at = file_pos_of(part_at(selection.cursor), selection.cursor) / length;
        if (at >= first && at < last) peak = 33;
        selection.cursor += length;
      }
      return peak;
    };
    auto_crop();
    return state();
  }

 private:
  PeakSeek without_engine_ = peak_seek;
  EditPosition saved_cursor_ = 0;
};

TEST_F(AutoCrop, TakesSilenceOffBothEnds) {
  // Blocks of 6 frames: 12-18 is the first loud one; of the search from the middle of what is left
  // (36) the block 42-48 is the first silent one, and stays.
  EXPECT_EQ(cropped(15, 41), "12-48 @36 !^");
  EXPECT_TRUE(cropped(0, 60).starts_with("0-60*"));
  EXPECT_TRUE(cropped(0, 0).starts_with("0-60*"));
  batch_active = true;
  batch_bottom = 20;  // -20 dB: nothing here is as loud
  EXPECT_TRUE(cropped(15, 41).starts_with("0-60*"));
}

TEST_F(AutoCrop, TellsThatNothingCanBeMeasured) {
  make("0-20 @7");
  auto_crop();
  EXPECT_TRUE(state().ends_with("{There is no decoder to measure the audio with.}"));
  EXPECT_EQ(parts() + places(), "0-20 @7");
}

}  // namespace
}  // namespace corvelin::test

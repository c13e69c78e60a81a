// SPDX-License-Identifier: GPL-2.0-or-later
// Auto crop of a tone between two silences.
#include "edit/auto_crop.h"

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "platform/codecs/dynamic_library.h"
#include "settings/settings.h"
#include "support/edit_test.h"
#include "support/sample_audio.h"

namespace corvelin::test {
namespace {

class AutoCrop : public EditTest {
 protected:
  ~AutoCrop() override { library_folder.clear(); }

  // 30 frames of a tone with silent ones in front of it and behind it. The places are then counted
  // from the tone's begin, in bytes.
  void open_tone(int in_front, int behind) {
    const Bytes tone = tone_frames(30);
    tone_size_ = static_cast<std::uint32_t>(tone.size());
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(in_front).raw(tone).frames(behind).bytes()));
    tone_begin_ = static_cast<std::uint32_t>(in_front) * length;
    move_cursor(document, selection, tone_begin_ + tone_size_);
    select(3, 9);
  }

  // What is left, in silent frames on either side of the tone.
  std::string cropped() {
    EXPECT_TRUE(run("auto_crop"));
    return what_is_left();
  }

  std::string what_is_left() const {
    EXPECT_EQ(document.parts.size(), 1U);
    EXPECT_FALSE(has_selection(selection));
    const Part& part = document.parts[0];
    const std::uint32_t end = part.part_filepos + part.part_size;
    return in_frames(tone_begin_ - part.part_filepos) + "+tone+" +
           in_frames(end - tone_begin_ - tone_size_);
  }

 private:
  std::uint32_t tone_begin_ = 0;
  std::uint32_t tone_size_ = 0;
};

TEST_F(AutoCrop, TakesSilenceOffBothEnds) {
  // The head goes by blocks of 6 frames. The tail is looked for from the middle of what is left,
  // and the first silent block behind the tone stays.
  open_tone(60, 15);
  EXPECT_EQ(cropped(), "0+tone+11");
  EXPECT_TRUE(open_state.document_modified);
  open_tone(63, 15);
  EXPECT_EQ(cropped(), "3+tone+9");
  // Behind the middle there is silence alone, so the search goes back to the start.
  open_tone(60, 61);
  EXPECT_EQ(cropped(), "0+tone+12");
  // More than a minute of it at either end.
  open_tone(3603, 5000);
  EXPECT_EQ(cropped(), "3+tone+9");
}

TEST_F(AutoCrop, LeavesWhatNothingInItIsLouderThan) {
  open_tone(60, 15);
  settings.lowest_gain = 60;
  EXPECT_TRUE(auto_crop_below(editor, 2));  // -2 dB: the tone is not as loud
  EXPECT_EQ(what_is_left(), "60+tone+15");
}

// Its decoder takes a frame to begin with, at the cursor, which has to be of the part there.
TEST_F(AutoCrop, HearsAacOfSeveralPartsToItsEnd) {
  ASSERT_TRUE(open(std::string(CORVELIN_SAMPLES "/speech.aac")));
  const EditPosition middle = frame_at(document, document.total_size / 2, selection.current_frame);
  ASSERT_NE(split_at(document, middle), no_part);
  move_cursor(document, selection, middle);
  EXPECT_TRUE(run("auto_crop"));
  EXPECT_EQ(take_box(), "");
}

TEST_F(AutoCrop, LeavesThePlacesWithoutADecoder) {
  make("0-20 @7");
  library_folder = folder.path("none");
  EXPECT_FALSE(run("auto_crop"));
  EXPECT_EQ(parts() + places(), "0-20 @7");
  EXPECT_TRUE(take_box().starts_with("Could not open ACM Codec: "));
}

}  // namespace
}  // namespace corvelin::test

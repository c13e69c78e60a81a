// SPDX-License-Identifier: GPL-2.0-or-later
// Cuts: what the editing commands on top don't reach.
#include "model/cuts.h"

#include "edit/editor.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

constexpr std::uint32_t total = 20 * length;

class Cuts : public EditTest {
 protected:
  // Puts a second file behind the first, with `front` bytes of its audio left out.
  void append_second_file(std::uint32_t front) {
    const auto index = add_source_file(document, folder.file("b.mp3", frames(20)));
    ASSERT_TRUE(index);
    document.files[*index].audio_end = total;
    ASSERT_NE(add_part(document, document.total_size, *index, front, total - front), no_part);
  }
};

TEST_F(Cuts, SplitMakesAPlainBorderOnce) {
  make("0-20g3:First");
  EXPECT_EQ(split_at(document, 5 * length), 1);
  EXPECT_EQ(split_at(document, 5 * length), 1);
  EXPECT_EQ(split_at(document, 0), 0);
  EXPECT_EQ(split_at(document, total), 2);
  EXPECT_EQ(parts(), "0-5g3:First 5-20");
}

TEST_F(Cuts, DeleteLeavesSomethingOfTheStream) {
  EXPECT_EQ(delete_range(document, 0, total), no_part);
  EXPECT_EQ(delete_range(document, 0, total + 1), no_part);
  EXPECT_EQ(parts(), "0-20*");
  EXPECT_EQ(delete_range(document, 5 * length, 5 * length), 1);  // only a border
  EXPECT_EQ(delete_range(document, length, total), 1);
  EXPECT_EQ(parts(), "0-1*");
}

TEST_F(Cuts, FullTableStaysWhole) {
  while (document.parts.size() < 999) ASSERT_NE(add_part(document, 0, 0, 0, length), no_part);
  const std::uint32_t size = document.total_size;
  EXPECT_EQ(delete_range(document, size - 5 * length, size - length),
            no_part);  // room for one border, which stays
  EXPECT_EQ(delete_range(document, 0, length), no_part);
  EXPECT_EQ(split_at(document, size - 2 * length), no_part);
  EXPECT_EQ(document.total_size, size);
}

TEST_F(Cuts, RestoreKeepsWhatTheBorderHad) {
  make("0-5 8-20*g-4");
  document.parts[1].part_title = std::u16string(600, u'x');
  selection.sel_artist = u"left from before";
  EXPECT_EQ(restore_border(document, selection, 1, 5 * length), 0);
  EXPECT_EQ(parts() + places(), "0-20 =5-8");
  EXPECT_EQ(selection.sel_iscue + selection.sel_cue_locked, 2U);
  EXPECT_EQ(selection.sel_gain, -4);
  EXPECT_EQ(selection.sel_artist, u"left from before");
  take_stashed_part_texts(document, selection, 0);
  EXPECT_EQ(document.parts[0].part_title, std::u16string(500, u'x'));
  take_stashed_part_texts(document, selection, 0);  // they were there once
  EXPECT_EQ(document.parts[0].part_title, u"");
}

TEST_F(Cuts, RestoreStretchesFilesToWhereTheyMeet) {
  make("0-18");
  append_second_file(4 * length);
  document.parts[1].part_title = u"Second";
  EXPECT_EQ(restore_border(document, selection, 1, 18 * length),
            0);  // the place is now the first file's
  EXPECT_EQ(parts() + places(), "0-20 0-20:Second =18-22");
}

TEST_F(Cuts, RestoreRefusesWhereNothingIsMissing) {
  make("0-20 2-5");  // a copy of something that stands earlier
  EXPECT_EQ(restore_border(document, selection, 1, total), no_part);
  EXPECT_EQ(restore_border(document, selection, 1, document.total_size), no_part);
  EXPECT_EQ(state(), "0-20 2-5");
}

TEST_F(Cuts, RestoreRefusesPartsOutsideTheirFile) {
  append_second_file(0);
  document.files[0].first_audio = document.files[1].first_audio = length;
  struct {
    std::uint32_t file_pos;
    std::uint32_t size;
    std::uint16_t file;
  } const hostile[] = {{0x90000000, length, 0},
                       {0x90000000, length, 1},
                       {0, total, 1},  // in front of the audio
                       {0xFFFFFFF0, length, 0}};
  for (const auto& part : hostile) {
    for (const bool is_alone : {false, true}) {
      document.parts.clear();
      if (!is_alone) add_part(document, 0, 0, length, length);
      const PartIndex index = add_part(document, length, part.file, part.file_pos, part.size);
      const std::string before = parts();
      EXPECT_EQ(restore_border(document, selection, index, document.parts[index].part_beg), no_part)
          << before;
      if (part.file_pos != 0) {
        EXPECT_EQ(restore_border(document, selection, index, document.total_size), no_part)
            << before;
      }
      EXPECT_EQ(parts(), before);
    }
  }
}

}  // namespace
}  // namespace corvelin::test

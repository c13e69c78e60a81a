// Cuts in streams of 20 frames of 417 bytes.
#include "model/cuts.h"

#include "model/selection.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

constexpr std::uint32_t total = 20 * length;

class Cuts : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).bytes())); }

  // Puts a second file behind the first, with `front` and `back` bytes of its audio left out.
  void append_second_file(std::uint32_t front, std::uint32_t back) {
    const auto index = add_source_file(folder.file("b.mp3", Mp3Builder{}.frames(20).bytes()));
    ASSERT_TRUE(index);
    document.files[*index].audio_end = total;
    ASSERT_NE(add_part(document.total_size, *index, front, total - front - back), no_part);
  }

  static std::vector<std::uint32_t> sizes() {
    std::vector<std::uint32_t> sizes;
    for (const Part& part : document.parts) sizes.push_back(part.part_size);
    return sizes;
  }
};

using Sizes = std::vector<std::uint32_t>;

TEST_F(Cuts, SplitMakesAPlainBorderOnce) {
  document.parts[0].part_gainbeg = 3;
  document.parts[0].part_title = u"First";
  EXPECT_EQ(split_at(5 * length), 1);
  EXPECT_EQ(split_at(5 * length), 1);
  EXPECT_EQ(split_at(0), 0);
  EXPECT_EQ(split_at(total), 2);
  EXPECT_EQ(sizes(), (Sizes{5 * length, 15 * length}));
  EXPECT_EQ(document.parts[1].part_filepos, 5 * length);
  EXPECT_EQ(document.parts[1].part_gainbeg, 0);
  EXPECT_EQ(document.parts[1].part_iscue, 0U);
  EXPECT_EQ(document.parts[1].part_title, u"");
  EXPECT_EQ(document.parts[0].part_title, u"First");
}

TEST_F(Cuts, DeleteTakesTheRangeOut) {
  EXPECT_EQ(delete_range(5 * length, 8 * length), 1);
  EXPECT_EQ(sizes(), (Sizes{5 * length, 12 * length}));
  EXPECT_EQ(document.parts[1].part_filepos, 8 * length);
  EXPECT_EQ(delete_range(length, length), 1);  // only a border
  EXPECT_EQ(sizes(), (Sizes{length, 4 * length, 12 * length}));
  EXPECT_EQ(delete_range(4 * length, total), 2);  // over a border and the end
  EXPECT_EQ(sizes(), (Sizes{length, 3 * length}));
}

TEST_F(Cuts, DeleteLeavesSomethingOfTheStream) {
  EXPECT_EQ(delete_range(0, total), no_part);
  EXPECT_EQ(delete_range(0, total + 1), no_part);
  EXPECT_EQ(sizes(), (Sizes{total}));
  EXPECT_EQ(delete_range(length, total), 1);
  EXPECT_EQ(sizes(), (Sizes{length}));
}

TEST_F(Cuts, FullTableStaysWhole) {
  while (document.parts.size() < 998) ASSERT_NE(add_part(0, 0, 0, length), no_part);
  ASSERT_NE(add_part(document.total_size, 0, 0, total), no_part);
  const std::uint32_t size = document.total_size;
  EXPECT_EQ(delete_range(size - 5 * length, size - length), no_part);  // room for one border
  EXPECT_EQ(document.parts.size(), 1000U);
  EXPECT_EQ(document.total_size, size);
  EXPECT_EQ(delete_range(0, length), no_part);
  EXPECT_EQ(split_at(size - 2 * length), no_part);
  EXPECT_EQ(document.total_size, size);
}

TEST_F(Cuts, RestoreClosesAGapAndKeepsItsBorder) {
  delete_range(5 * length, 8 * length);
  Part& part = document.parts[1];
  part.part_iscue = 1;
  part.part_gainbeg = -4;
  part.part_title = std::u16string(600, u'x');
  selection.sel_artist = u"left from before";
  EXPECT_EQ(restore_border(1, 5 * length), 0);
  EXPECT_EQ(sizes(), (Sizes{total}));
  EXPECT_EQ(selection.sel_beg, 5 * length);
  EXPECT_EQ(selection.sel_end, 8 * length);
  EXPECT_EQ(selection.sel_iscue, 1U);
  EXPECT_EQ(selection.sel_cue_locked, 1U);
  EXPECT_EQ(selection.sel_gain, -4);
  EXPECT_EQ(selection.sel_title, std::u16string(500, u'x'));
  EXPECT_EQ(selection.sel_artist, u"left from before");

  take_stashed_part_texts(0);
  EXPECT_EQ(document.parts[0].part_title.size(), 500U);
  EXPECT_EQ(selection.sel_title, u"");
  take_stashed_part_texts(0);
  EXPECT_EQ(document.parts[0].part_title, u"");
}

TEST_F(Cuts, RestoreBringsHeadAndTailBack) {
  delete_range(0, 3 * length);
  delete_range(15 * length, 17 * length);
  EXPECT_EQ(restore_border(0, 0), 0);
  EXPECT_EQ(selection.sel_beg, 0U);
  EXPECT_EQ(selection.sel_end, 3 * length);
  EXPECT_EQ(restore_border(0, 18 * length), 0);
  EXPECT_EQ(selection.sel_beg, 18 * length);
  EXPECT_EQ(selection.sel_end, total);
  EXPECT_EQ(sizes(), (Sizes{total}));
}

TEST_F(Cuts, RestoreStretchesFilesToWhereTheyMeet) {
  delete_range(18 * length, total);
  append_second_file(4 * length, 0);
  document.parts[1].part_title = u"Second";
  EXPECT_EQ(restore_border(1, 18 * length), 0);  // the place is now the first file's
  EXPECT_EQ(sizes(), (Sizes{total, total}));
  EXPECT_EQ(document.parts[1].part_filepos, 0U);
  EXPECT_EQ(document.parts[1].part_title, u"Second");
  EXPECT_EQ(selection.sel_beg, 18 * length);
  EXPECT_EQ(selection.sel_end, 22 * length);
}

TEST_F(Cuts, RestoreRefusesWhereNothingIsMissing) {
  EXPECT_EQ(restore_border(1, 0), no_part);
  add_part(total, 0, 2 * length, 3 * length);  // a copy of something that stands earlier
  EXPECT_EQ(restore_border(1, total), no_part);
  EXPECT_EQ(restore_border(1, document.total_size), no_part);
  EXPECT_EQ(sizes(), (Sizes{total, 3 * length}));
  EXPECT_EQ(selection.sel_beg, no_position);
}

struct Hostile {
  const char* name;
  std::uint32_t file_pos;
  std::uint32_t size;
  std::uint16_t file;
};

TEST_F(Cuts, RestoreRefusesPartsOutsideTheirFile) {
  append_second_file(0, 0);
  document.files[0].first_audio = document.files[1].first_audio = length;
  const Hostile parts[] = {{"BeyondTheAudio", 0x90000000, length, 0},
                           {"OtherFileBeyondTheAudio", 0x90000000, length, 1},
                           {"BeforeTheAudio", 0, 20 * length, 1},
                           {"EndBeyond4GiB", 0xFFFFFFF0, length, 0}};
  for (const Hostile& part : parts) {
    for (const bool is_alone : {false, true}) {
      document.parts.clear();
      if (!is_alone) add_part(0, 0, length, length);
      const PartIndex index = add_part(length, part.file, part.file_pos, part.size);
      const Sizes before = sizes();
      EXPECT_EQ(restore_border(index, document.parts[index].part_beg), no_part) << part.name;
      if (part.file_pos != 0) {
        EXPECT_EQ(restore_border(index, document.total_size), no_part) << part.name;
      }
      EXPECT_EQ(sizes(), before) << part.name;
    }
  }
}

}  // namespace
}  // namespace corvelin::test

// Names of the pieces of a split.
#include "exchange/split_name.h"

#include "exchange/settings.h"
#include "model/cuts.h"
#include "platform/text.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SplitNameTest : public CoreTest {
 protected:
  SplitNameTest() {
    document.parts.push_back({.part_size = 4000000});
    document.parts[0].part_title = u"Title";
    document.parts[0].part_artist = u"Artist";
    document.total_size = 4000000;
    document.sheet_title = u"Album";
    document.sheet_artist = u"Various";
    open_state.audio_name = "/x.y/a.b/So.ng.mp3";
    stream.avg_bitrate = 128000;
  }
  ~SplitNameTest() override { document = {}; }

  // The name behind the folder "/out.dir/", for the first of ten pieces from 1 on.
  static std::string name(std::string_view pattern, std::uint16_t done = 1, std::uint16_t first = 1,
                          std::uint16_t total = 10) {
    settings.split_pattern = bytes_to_wide(pattern, true);
    std::string path = "/out.dir/left.mp3";
    make_split_name(path, done, first, total, 0);
    EXPECT_EQ(path.substr(0, 9), "/out.dir/");
    return path.substr(9);
  }
};

TEST_F(SplitNameTest, ExpandsThePattern) {
  struct Row {
    std::string pattern;
    std::string expected;
  };
  for (const Row& row :
       {Row{"%F Track %N", "So.ng Track 01.mp3"},
        Row{"%A (%C) %N %T", "Artist (Album) 01 Title.mp3"}, Row{"%D %M", "Various 10.mp3"},
        Row{"%S", "0'00.00.mp3"}, Row{"100%", "100%.mp3"}, Row{"%%N %n%x", "%01 %n%x.mp3"},
        Row{"No. %F", "No. So.ng.mp3"}, Row{"%F-%F.", "So.ng-So.ng..mp3"}, Row{"", ".mp3"},
        Row{"..", "...mp3"}, Row{"../../%N", ".._.._01.mp3"},
        Row{"a\\b/c:d*e?f\"g<h>i|j\tk", "a_b_c_d_e_f_g_h_i_j_k.mp3"}}) {
    EXPECT_EQ(name(row.pattern), row.expected) << row.pattern;
  }
}

TEST_F(SplitNameTest, TextsStayInTheFolder) {
  struct Row {
    std::u16string title;
    std::string expected;
  };
  for (const Row& row : {Row{u"AC/DC: Live?", "AC_DC_ Live_.mp3"}, Row{u"..", "...mp3"},
                         Row{u"../up", ".._up.mp3"}, Row{std::u16string(u"a\0b\n", 4), "a_b\n.mp3"},
                         Row{u"\xD800", "\xEF\xBF\xBD.mp3"}, Row{u"", ".mp3"}}) {
    document.parts[0].part_title = row.title;
    EXPECT_EQ(name("%T"), row.expected);
  }
  document.parts[0].part_artist.clear();
  EXPECT_EQ(name("%A"), ".mp3");  // the album's is another variable
}

TEST_F(SplitNameTest, NumbersHaveThreeDigitsFromOneHundredOn) {
  EXPECT_EQ(name("%N", 120, 1, 120), "120.mp3");
  EXPECT_EQ(name("%N", 1, 1, 120), "001.mp3");
  EXPECT_EQ(name("%N", 1, 1, 99), "01.mp3");
  EXPECT_EQ(name("%N %M", 99, 3, 99), "101 101.mp3");
  EXPECT_EQ(name("%N", 1, 3, 99), "003.mp3");
  EXPECT_EQ(name("%N %M", 1, 0, 100), "00 99.mp3");
  EXPECT_EQ(name("%N", 1000, 65535, 1000), "66534.mp3");
}

TEST_F(SplitNameTest, StartTimeHasNoColon) {
  Part& part = document.parts[0];
  part.part_beg = 2964000;  // 185.25 s at 16000 bytes a second
  EXPECT_EQ(name("%S"), "3'05.25.mp3");
  part.part_beg = 59608000;
  EXPECT_EQ(name("%S"), "1'02'05.50.mp3");
  settings.show_milisec = 1;
  EXPECT_EQ(name("%S"), "1'02'05.500.mp3");
  part.part_beg = 0;
}

TEST_F(SplitNameTest, EndsWithTheStepThatIsTooMuch) {
  // The folder counts: 9 characters of it, then 241 and one more step.
  EXPECT_EQ(name(std::string(240, 'x') + "abc"), std::string(240, 'x') + "ab.mp3");
  EXPECT_EQ(name(std::string(241, 'x') + "%T%N"), std::string(241, 'x') + "Title.mp3");
  EXPECT_EQ(name(std::string(242, 'x') + "%T"), std::string(242, 'x') + ".mp3");
}

TEST_F(SplitNameTest, FitsInAFileSystem) {
  std::u16string emoji;
  for (int i = 0; i < 300; ++i) emoji += u"\U0001F3B5";
  document.parts[0].part_title = emoji;
  const std::string made = name("a%T%N");
  EXPECT_EQ(made.size(), 253U);  // a, 62 characters of 4 bytes, .mp3
  EXPECT_EQ(made.substr(made.size() - 8), "\xF0\x9F\x8E\xB5.mp3");
  folder.file(made, "");
  std::filesystem::remove(folder.path(made));
}

}  // namespace
}  // namespace corvelin::test

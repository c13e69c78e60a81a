// SPDX-License-Identifier: GPL-2.0-or-later
// Names of the pieces of a split.
#include "exchange/split_name.h"

#include "edit/editor.h"
#include "model/stream_info.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SplitNameTest : public CoreTest {
 protected:
  SplitNameTest() {
    document.parts.push_back(
        {.part_size = 4000000, .part_title = u"Title", .part_artist = u"Artist"});
    document.total_size = 4000000;
    document.sheet_title = u"Album";
    document.sheet_artist = u"Various";
    document.stream.avg_bitrate = 128000;
  }
  ~SplitNameTest() override { document = {}; }

  // The name behind the folder "/out.dir/", for the first of ten pieces from 1 on.
  std::string name(std::string_view pattern, std::uint16_t done = 1, std::uint16_t first = 1,
                   std::uint16_t total = 10) {
    settings.split_pattern = bytes_to_wide(pattern, true);
    std::string path = "/out.dir/left.mp3";
    make_split_name(document, path, done, first, total, 0, "/x.y/a.b/So.ng.mp3");
    EXPECT_EQ(path.substr(0, 9), "/out.dir/");
    return path.substr(9);
  }
};

TEST_F(SplitNameTest, ExpandsThePattern) {
  const std::pair<std::string, std::string> rows[] = {
      {"%F Track %N", "So.ng Track 01.mp3"},
      {"%A (%C) %N %T", "Artist (Album) 01 Title.mp3"},
      {"%D %M", "Various 10.mp3"},
      {"%S 100%", "0'00.00 100%.mp3"},
      {"%%N %n%x", "%01 %n%x.mp3"},
      {"", ".mp3"},
      {"../../%N", ".._.._01.mp3"},
      {"a\\b/c:d*e?f\"g<h>i|j\tk\033l\u009Bm", "a_b_c_d_e_f_g_h_i_j_k_l_m.mp3"},
      // The folder counts: 9 characters of it, then 241 and one more step.
      {std::string(240, 'x') + "abc", std::string(240, 'x') + "ab.mp3"},
      {std::string(241, 'x') + "%T%N", std::string(241, 'x') + "Title.mp3"},
      {std::string(242, 'x') + "%T", std::string(242, 'x') + ".mp3"}};
  for (const auto& [pattern, expected] : rows) EXPECT_EQ(name(pattern), expected);
}

TEST_F(SplitNameTest, TextsStayInTheFolder) {
  const std::pair<std::u16string, std::string> rows[] = {{u"AC/DC: Live?", "AC_DC_ Live_.mp3"},
                                                         {u"../up", ".._up.mp3"},
                                                         {std::u16string(u"a\0b\n", 4), "a_b_.mp3"},
                                                         {u"\xD800", "\xEF\xBF\xBD.mp3"}};
  for (const auto& [title, expected] : rows) {
    document.parts[0].part_title = title;
    EXPECT_EQ(name("%T"), expected);
  }
  document.parts[0].part_artist.clear();
  EXPECT_EQ(name("%A"), ".mp3");  // the album's is another variable

  // A file system takes 255 bytes. The texts share what the numbers leave.
  document.parts[0].part_title.assign(100, u'\u266B');  // of 3 bytes
  document.parts[0].part_artist = u"Artist";
  std::string notes;
  for (int i = 0; i < 80; ++i) notes += "\xE2\x99\xAB";
  EXPECT_EQ(name("%A %T %N"), "Artist " + notes + " 01.mp3");  // 255 bytes

  document.parts[0].part_title.clear();
  for (int i = 0; i < 300; ++i) document.parts[0].part_title += u"\U0001F3B5";
  const std::string made = name("a%T%N");
  EXPECT_EQ(made.size(), 253U);  // a, 62 characters of 4 bytes, .mp3: a file system takes 255
  EXPECT_EQ(made.substr(made.size() - 8), "\xF0\x9F\x8E\xB5.mp3");
}

TEST_F(SplitNameTest, NumbersHaveThreeDigitsFromOneHundredOn) {
  EXPECT_EQ(name("%N", 120, 1, 120), "120.mp3");
  EXPECT_EQ(name("%N", 1, 1, 120), "001.mp3");
  EXPECT_EQ(name("%N", 1, 1, 99), "01.mp3");
  EXPECT_EQ(name("%N %M", 99, 3, 99), "101 101.mp3");
  EXPECT_EQ(name("%N %M", 1, 0, 100), "00 99.mp3");
  EXPECT_EQ(name("%N %M", 1, 1, 100), "001 100.mp3");
  EXPECT_EQ(name("%N", 1000, 65535, 1000), "66534.mp3");
}

TEST_F(SplitNameTest, StartTimeHasNoColon) {
  document.parts[0].part_beg = 59608000;  // 3725.5 s at 16000 bytes a second
  EXPECT_EQ(name("%S"), "1'02'05.50.mp3");
  settings.show_milisec = 1;
  EXPECT_EQ(name("%S"), "1'02'05.500.mp3");
  document.parts[0].part_beg = 0;
}

}  // namespace
}  // namespace corvelin::test

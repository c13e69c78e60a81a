// SPDX-License-Identifier: GPL-2.0-or-later
// Playlists: which lines are names, where the names lead, and lists that lead nowhere.
#include "exchange/playlist.h"

#include <filesystem>

#include "edit/editor.h"
#include "model/selection.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Playlist : public CoreTest {
 protected:
  Playlist() {
    const Bytes audio = Mp3Builder{}.frames(30).bytes();
    std::filesystem::create_directories(folder.path("sub/lists"));
    for (const std::string_view name : {"1.mp3", "2.mp3", "sub/3.mp3", "sub/lists/4.mp3"})
      folder.file(name, audio);
    folder.file("\xC3\xA4.mp3", audio);
  }

  bool open_list(std::string_view name, std::string_view text) {
    return open(folder.file(name, text));
  }

  // The names of the source files, without the test's folder.
  [[nodiscard]] std::vector<std::string> sources() const {
    std::vector<std::string> names;
    for (const SourceFile& file : document.files)
      names.push_back(std::filesystem::relative(file.file_name, folder.path("")).string());
    return names;
  }
};

using Names = std::vector<std::string>;

TEST_F(Playlist, ReadsTheNamesOfItsLines) {
  struct Case {
    std::string_view list;
    std::string text;
    Names sources;
    std::size_t boxes = 0;
  };
  const std::string skipped = std::string(396, 'x') + ".mp3\n";  // 400 bytes
  std::string remarks;
  for (int i = 0; i < 100000; ++i) remarks += "#EXTINF:1,a\n";
  folder.file("inner.m3u", "1.mp3\n2.mp3\n");
  folder.file("empty.m3u", "#EXTINF:1,a\n");
  const Case cases[] = {
      {"crlf.m3u", "#EXTINF:12,One\r\n1.mp3\r\n#EXTINF:7,Two\r\n2.mp3\r\n", {"1.mp3", "2.mp3"}},
      {"no_line_end.m3u", "1.mp3\n2.mp3", {"1.mp3", "2.mp3"}},
      {"long_line.m3u", skipped + "1.mp3\n" + skipped + "2.mp3\n", {"1.mp3", "2.mp3"}},
      {"separators.m3u", "sub\\3.mp3\nsub/lists\\..\\3.mp3\n2.mp3\n", {"sub/3.mp3", "2.mp3"}},
      {"sub/lists/up.M3U8",
       "../../1.mp3\n4.mp3\n..\\3.mp3\n",
       {"1.mp3", "sub/lists/4.mp3", "sub/3.mp3"}},
      {"absolute.m3u", folder.path("2.mp3") + "\n1.mp3\n", {"2.mp3", "1.mp3"}},
      {"utf8.m3u8", "\xC3\xA4.mp3\n", {"\xC3\xA4.mp3"}},
      {"ansi.m3u", "\xE4.mp3\n", {"\xC3\xA4.mp3"}},
      {"twice.m3u", "1.mp3\n1.mp3\n", {"1.mp3"}},
      {"list.m3u", "inner.m3u\nsub\\3.mp3\n", {"1.mp3", "2.mp3", "sub/3.mp3"}},
      {"after_empty.m3u", "empty.m3u\n2.mp3\n", {"2.mp3"}},
      {"long.m3u", remarks + "1.mp3\n", {"1.mp3"}},
      {"zero.m3u", std::string("1.mp3\n2.mp3\0.mp3\n", 17), {"1.mp3"}},
      {"blank.m3u", "\r\n1.mp3\n \n2.mp3\n", {"1.mp3", "2.mp3"}},
      {"comment.m3u", "#EXTM3U\n1.mp3\n#3.mp3\n2.mp3\n", {"1.mp3", "2.mp3"}},
      {"folder.m3u", "1.mp3\nsub\n2.mp3\n", {"1.mp3"}, 1},
      {"address.m3u", "1.mp3\nhttp://host/2.mp3\n2.mp3\n", {"1.mp3"}, 1},
      {"drive.m3u", "1.mp3\nC:\\2.mp3\n2.mp3\n", {"1.mp3"}, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.list);
    host.boxes.clear();
    EXPECT_TRUE(open_list(c.list, c.text));
    EXPECT_EQ(sources(), c.sources);
    EXPECT_EQ(host.boxes.size(), c.boxes);
    EXPECT_EQ(settings.file_recent.front(), folder.path(c.list));
    EXPECT_EQ(selection.sel_beg + 1 + selection.cursor, 0U);
    settings.file_recent.clear();
  }
  ASSERT_TRUE(open_list("a.m3u", "1.mp3\nsub/3.mp3\n"));
  EXPECT_EQ(document.parts[1].part_title, u"3.mp3");
  EXPECT_EQ(open_state.audio_name, folder.path("1.mp3"));
}

TEST_F(Playlist, EndsAtAFirstNameThatLeadsNowhere) {
  using Case = struct {
    std::string_view text;
    std::string_view told;  // the name in the box, in the test's folder
  };
  for (const Case& c : {Case{"sub\n", "sub"}, Case{"1.mp3\nabsent.m3u\n", "absent.m3u"},
                        Case{"http://host/1.mp3\n1.mp3\n", "http://host/1.mp3"},
                        Case{"\xEF\xBB\xBF#EXTINF:1,a\n", "a.m3u8"}, Case{"", "a.m3u8"},
                        Case{"#EXTINF:1,a\n", "a.m3u8"}}) {
    SCOPED_TRACE(c.told);
    EXPECT_FALSE(open_list("a.m3u8", c.text));
    EXPECT_TRUE(document.files.empty());
    EXPECT_TRUE(
        take_box().starts_with("File open failed: Audio file: " + folder.path(c.told) + "\n"));
  }
}

TEST_F(Playlist, EndsWhereListsNameEachOther) {
  EXPECT_FALSE(open_list("self.m3u", "self.m3u\n1.mp3\n"));
  EXPECT_EQ(host.boxes.size(), 1U);

  folder.file("b.m3u", "a.m3u\n");
  EXPECT_FALSE(open_list("a.m3u", "b.m3u\n"));
  EXPECT_EQ(host.boxes.size(), 2U);  // one each
  EXPECT_TRUE(document.files.empty());
  EXPECT_TRUE(open_list("fine.m3u", "1.mp3\n"));
}

}  // namespace
}  // namespace corvelin::test

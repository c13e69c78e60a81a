// Files on the real file system, paths, and text conversions against tables made by hand.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>

#include "platform/file.h"
#include "platform/path.h"
#include "platform/text.h"
#include "support/test_folder.h"

namespace corvelin::test {
namespace {

TEST(File, OpensRegularFilesOnly) {
  const TestFolder folder;
  InputFile file;
  EXPECT_EQ(file.open(folder.path("")), std::errc::is_a_directory);
  ::mkfifo(folder.path("pipe").c_str(), 0666);
  EXPECT_TRUE(file.open(folder.path("pipe")));  // at once, without waiting for a writer
  EXPECT_TRUE(file.open("/dev/null"));
  EXPECT_EQ(file.open(folder.path("absent")), std::errc::no_such_file_or_directory);
  ASSERT_FALSE(file.open(folder.file("x", "abcdef")));
  std::array<std::uint8_t, 4> bytes = {};
  EXPECT_EQ(file.read_at(4, bytes), 2U);
  EXPECT_EQ(bytes[1], 'f');
  EXPECT_EQ(file.read_at(1ULL << 40, bytes), 0U);
  EXPECT_FALSE(file.read_error());
}

TEST(File, ReplacementKeepsLinksAndPermissions) {
  const TestFolder folder;
  const std::string target = folder.file("x", "old");
  ::chmod(target.c_str(), 0600);
  std::filesystem::create_symlink("x", folder.path("link"));
  ASSERT_FALSE(replace_file(folder.path("link"), "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
  EXPECT_EQ(read_text(target), "new");
  EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms{0600});
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"link", "x"}));
}

TEST(Path, TakesPathsApart) {
  EXPECT_EQ(folder_of("/a/b.mp3"), "/a/");
  EXPECT_EQ(folder_of("b.mp3"), "");
  EXPECT_EQ(extension_of("/a.b/song"), ".b/song");  // a point in a folder counts
  EXPECT_TRUE(has_extension("x.MP3", ".mp3"));
  EXPECT_FALSE(has_extension("xmp3", ".mp3"));
  EXPECT_EQ(with_extension("/a.b/song.mp3", ".ini"), "/a.b/song.ini");
  EXPECT_EQ(with_extension("/a.b/song", ".ini"), "/a.b/song.ini");
}

TEST(Path, TakesTextsFromOtherPlatforms) {
  const TestFolder folder;
  const std::string here = folder.path("");
  std::filesystem::create_directory(folder.path("sub"));
  for (const char* const name : {"sub/a.mp3", "b\\c.mp3", "d:e.mp3"}) folder.file(name, "x");
  const std::pair<std::string, std::string> texts[] = {
      {"sub\\a.mp3", here + "sub/a.mp3"},
      {here + "sub\\a.mp3", here + "sub/a.mp3"},
      {"b\\c.mp3", here + "b\\c.mp3"},  // it is there
      {"d:e.mp3", here + "d:e.mp3"},
      {"d:x.mp3", "d:x.mp3"},
      {"D:\\a.mp3", "D:\\a.mp3"},
      {"\\\\srv\\a.mp3", "//srv/a.mp3"},
      {".\\sub\\\\a.mp3", here + "sub/a.mp3"}};
  for (const auto& [text, path] : texts) EXPECT_EQ(path_from_outside(text, here), path);
}

TEST(Path, IsWholeFromTheRootOnAndRelativeInItsFolder) {
  const TestFolder folder;
  const std::string here = folder.path("");
  const std::string current = std::filesystem::current_path().string() + "/";
  std::filesystem::create_directories(folder.path("deep/er"));
  std::filesystem::create_directory_symlink("deep/er", folder.path("link"));
  const std::pair<std::string, std::string> whole[] = {
      {here + "./a//b/../c.mp3", here + "a/c.mp3"},
      {here + "link/../a.mp3", here + "deep/a.mp3"},
      {here + "sub/./", here + "sub/"},
      {"/../../a.mp3", "/a.mp3"},
      {"/..", "/"},
      {"x\xFF/../y\xFE", current + "y\xFE"},
      {"", ""}};
  for (const auto& [path, expected] : whole) EXPECT_EQ(in_current_folder(path), expected);
  const std::array<std::string, 3> relative[] = {
      {"/m/x/a.mp3", "/m/", "x/a.mp3"},          {"/m2/a.mp3", "/m/", "/m2/a.mp3"},
      {"/m/a.mp3", "/M/", "/m/a.mp3"},           {"sub/a.mp3", "/m/", current + "sub/a.mp3"},
      {current + "sub/a.mp3", "sub/", "a.mp3"},  {"/m/x/a.mp3", "/m/y/../", "x/a.mp3"},
      {"/m/y/../x/a.mp3", "/m/y/", "/m/x/a.mp3"}};
  for (const auto& [path, base, expected] : relative)
    EXPECT_EQ(relative_to_folder(path, base), expected);
}

TEST(Text, DecodesAndEncodes) {
  const std::pair<std::string_view, std::u16string_view> utf8[] = {
      {"a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xB5", u"aü€🎵"},
      {"\xC0\xAF", u"\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // a surrogate
      {"\xE2\x82", u"\uFFFD\uFFFD"},            // cut off
      {"\xF4\x90\x80\x80x", u"\uFFFD\uFFFD\uFFFD\uFFFDx"}};
  for (const auto& [bytes, text] : utf8) EXPECT_EQ(bytes_to_wide(bytes, true), text);
  EXPECT_EQ(wide_to_bytes(u"aü€🎵", true), "aü€🎵");
  EXPECT_EQ(wide_to_bytes(std::u16string(1, 0xD800) + u"x", true), "\xEF\xBF\xBDx");
  EXPECT_EQ(bytes_to_wide("\x80\x81\x9F\xA0\xFF", false), u"€\uFFFDŸ\u00A0ÿ");  // Windows-1252
  EXPECT_EQ(wide_to_bytes(u"€Ÿÿ日🎵", false), "\x80\x9F\xFF??");
  EXPECT_EQ(hex_to_wide("43003A005C00"), u"C:\\");
  EXPECT_EQ(hex_to_wide("43003A"), u"C");  // an incomplete character
  EXPECT_EQ(hex_to_wide("4300zz00"), u"C");
  EXPECT_EQ(cut_to_units("aü🎵b", 3), "aü");  // whole characters
  EXPECT_EQ(printable("a\x1B[31m\r\nb\x7F\u009B\u00A0\xC2"), "a?[31m?\nb??\u00A0\xC2");
}

TEST(Text, NumbersAtTheFront) {
  const std::pair<std::string_view, int> whole[] = {{" \t-12x", -12},
                                                    {"+7", 7},
                                                    {"x7", 0},
                                                    {"- 7", 0},
                                                    {"99999999999999999999999", 2147483647},
                                                    {"-99999999999999999999999", -2147483648}};
  for (const auto& [text, number] : whole) EXPECT_EQ(leading_number(text), number);
  const std::pair<std::string_view, double> decimal[] = {
      {" 07.5:3", 7.5}, {"-.25", -0.25}, {"+1e3", 1}, {"inf", 0}, {"-+1", 0}, {"  ", 0}};
  for (const auto& [text, number] : decimal) EXPECT_EQ(leading_decimal(text), number);
  EXPECT_GT(leading_decimal(std::string(5000, '9')), 1e299);
}

}  // namespace
}  // namespace corvelin::test

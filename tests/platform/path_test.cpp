// SPDX-License-Identifier: GPL-2.0-or-later
// Path arithmetic.
#include "platform/text/path.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "support/test_folder.h"

namespace corvelin::test {
namespace {

TEST(Path, TakesPathsApart) {
  EXPECT_EQ(folder_of("/a/b.mp3"), "/a/");
  EXPECT_EQ(folder_of("b.mp3"), "");
  EXPECT_EQ(in_folder("", "b.mp3"), "b.mp3");  // in the current one, not at the root
  EXPECT_EQ(in_folder("/a", "b.mp3"), "/a/b.mp3");
  EXPECT_EQ(in_folder("/a/", "b.mp3"), "/a/b.mp3");
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

}  // namespace
}  // namespace corvelin::test

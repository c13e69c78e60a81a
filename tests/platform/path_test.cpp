// Path arithmetic.
#include "platform/path.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/test_folder.h"

namespace corvelin::test {
namespace {

TEST(Path, TakesPathsApart) {
  EXPECT_EQ(folder_of("/a/b.mp3"), "/a/");
  EXPECT_EQ(folder_of("b.mp3"), "");
  EXPECT_EQ(name_of("/a/b.mp3"), "b.mp3");
  EXPECT_EQ(extension_of("/a/b.c.mp3"), ".mp3");
  EXPECT_EQ(extension_of("/a.b/song"), ".b/song");  // a point in a folder counts
  EXPECT_EQ(extension_of("/a/song"), "");
  EXPECT_TRUE(has_extension("x.MP3", ".mp3"));
  EXPECT_FALSE(has_extension("xmp3", ".mp3"));
}

TEST(Path, ChangesTheExtensionOfTheNameAlone) {
  EXPECT_EQ(with_extension("/a.b/song.mp3", ".ini"), "/a.b/song.ini");
  EXPECT_EQ(with_extension("/a.b/song", ".ini"), "/a.b/song.ini");
}

TEST(Path, TakesTextsFromOtherPlatforms) {
  const TestFolder folder;
  const std::string here = folder.path("");
  std::filesystem::create_directory(folder.path("sub"));
  folder.file("sub/a.mp3", "x");
  folder.file("b\\c.mp3", "x");
  folder.file("d:e.mp3", "x");
  EXPECT_EQ(path_from_outside("sub/a.mp3", here), here + "sub/a.mp3");
  EXPECT_EQ(path_from_outside("sub\\a.mp3", here), here + "sub/a.mp3");
  EXPECT_EQ(path_from_outside(here + "sub\\a.mp3", "/elsewhere/"), here + "sub/a.mp3");
  EXPECT_EQ(path_from_outside("b\\c.mp3", here), here + "b\\c.mp3");  // it is there
  EXPECT_EQ(path_from_outside("d:e.mp3", here), here + "d:e.mp3");
  EXPECT_EQ(path_from_outside("d:x.mp3", here), "d:x.mp3");
  EXPECT_EQ(path_from_outside("D:\\a.mp3", here), "D:\\a.mp3");
  EXPECT_EQ(path_from_outside("\\\\srv\\a.mp3", here), "//srv/a.mp3");
  EXPECT_EQ(path_from_outside(".\\sub\\\\a.mp3", here), here + "sub/a.mp3");
}

TEST(Path, IsWholeFromTheRootOn) {
  const TestFolder folder;
  const std::string here = folder.path("");
  std::filesystem::create_directories(folder.path("deep/er"));
  std::filesystem::create_directory_symlink("deep/er", folder.path("link"));
  EXPECT_EQ(in_current_folder(here + "./a//b/../c.mp3"), here + "a/c.mp3");
  EXPECT_EQ(in_current_folder(here + "link/../a.mp3"), here + "deep/a.mp3");
  EXPECT_EQ(in_current_folder(here + "link/a.mp3"), here + "link/a.mp3");
  EXPECT_EQ(in_current_folder(here + "sub/./"), here + "sub/");
  EXPECT_EQ(in_current_folder("/../../a.mp3"), "/a.mp3");
  EXPECT_EQ(in_current_folder("/.."), "/");
  EXPECT_EQ(in_current_folder("x\xFF/../y\xFE"),
            std::filesystem::current_path().string() + "/y\xFE");
  EXPECT_EQ(in_current_folder(""), "");
}

TEST(Path, IsRelativeInTheFolderAndBelow) {
  EXPECT_EQ(relative_to_folder("/m/x/a.mp3", "/m/"), "x/a.mp3");
  EXPECT_EQ(relative_to_folder("/m2/a.mp3", "/m/"), "/m2/a.mp3");
  EXPECT_EQ(relative_to_folder("/m/a.mp3", "/M/"), "/m/a.mp3");
  const std::string current = std::filesystem::current_path().string() + "/";
  EXPECT_EQ(relative_to_folder("sub/a.mp3", "/m/"), current + "sub/a.mp3");
  EXPECT_EQ(relative_to_folder(current + "sub/a.mp3", "sub/"), "a.mp3");
  EXPECT_EQ(relative_to_folder("a.mp3", ""), "a.mp3");
  EXPECT_EQ(relative_to_folder("/m/x/a.mp3", "/m/y/../"), "x/a.mp3");
  EXPECT_EQ(relative_to_folder("/m/y/../x/a.mp3", "/m/y/"), "/m/x/a.mp3");
}

}  // namespace
}  // namespace corvelin::test

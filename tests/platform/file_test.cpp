// Files on the real file system.
#include "platform/file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>

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

}  // namespace
}  // namespace corvelin::test

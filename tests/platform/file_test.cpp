// SPDX-License-Identifier: GPL-2.0-or-later
// Files on the real file system.
#include "platform/files/replacing_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>

#include "platform/files/standard_descriptors.h"
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

bool is_text(std::string_view head) { return head.starts_with("text"); }

TEST(File, ReplacementKeepsLinksAndPermissions) {
  const TestFolder folder;
  const std::string target = folder.file("x", "text old");
  ::chmod(target.c_str(), 0600);
  std::filesystem::create_symlink("x", folder.path("link"));
  std::filesystem::create_symlink("link", folder.path("far"));
  std::filesystem::create_symlink("new", folder.path("to come"));
  ASSERT_FALSE(replace_text(folder.path("far"), "text new", is_text));
  ASSERT_FALSE(replace_text(folder.path("to come"), "text new", is_text));
  EXPECT_EQ(read_text(target), "text new");
  EXPECT_EQ(read_text(folder.path("new")), "text new");
  EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms{0600});
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("far")));
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"far", "link", "new", "to come", "x"}));
}

// Whatever the name leads to: what is of another kind was named by mistake.
TEST(File, TextReplacesItsOwnKindAlone) {
  const TestFolder folder;
  folder.file("audio", "ID3");
  folder.file("empty", "");
  folder.file("text", "text");
  std::filesystem::create_symlink("audio", folder.path("link"));
  std::filesystem::create_hard_link(folder.path("audio"), folder.path("hard"));
  std::filesystem::create_directory(folder.path("folder"));
  for (const char* const name : {"audio", "link", "hard"})
    EXPECT_EQ(replace_text(folder.path(name), "text", is_text), FileError::other_kind) << name;
  EXPECT_EQ(replace_text(folder.path("folder"), "text", is_text), std::errc::is_a_directory);
  for (const char* const name : {"empty", "text", "new"})
    EXPECT_FALSE(replace_text(folder.path(name), "text 2", is_text)) << name;
  EXPECT_EQ(read_text(folder.path("hard")), "ID3");
}

TEST(File, WhatAnotherProgramWroteMeanwhileStays) {
  const TestFolder folder;
  const std::string name = folder.file("x", "old");
  const std::function<void()> changes[] = {[&] { folder.file("x", "older"); },
                                           [&] {
                                             folder.file("y", "new");
                                             std::filesystem::rename(folder.path("y"), name);
                                           }};
  for (const auto& change : changes) {
    ReplacingFile replacing;
    ASSERT_FALSE(replacing.begin(name));
    change();
    EXPECT_EQ(replacing.commit(), FileError::changed);
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"x"});
}

// In a child, since the test's own output goes through them.
TEST(File, ClosedStandardStreamsAreNoFiles) {
  const TestFolder folder;
  const pid_t child = ::fork();
  if (child == 0) {
    for (const int descriptor : {0, 1, 2}) ::close(descriptor);
    fill_standard_descriptors();
    OutputFile file;
    const bool is_created = !file.create_new(folder.path("x"));
    const bool is_lost = ::write(1, "message", 7) < 0 && ::write(2, "message", 7) < 0;
    ::_exit(is_created && is_lost ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(read_text(folder.path("x")), "");
}

}  // namespace
}  // namespace corvelin::test

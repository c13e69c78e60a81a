// The command line and the words of edit lines.
#include "cli/options.h"

#include <gtest/gtest.h>

#include "cli/words.h"

namespace corvelin::test {
namespace {

ParsedOptions parse(std::vector<const char*> words) {
  words.insert(words.begin(), "corvelin-cli");
  return parse_options(static_cast<int>(words.size()), words.data());
}

TEST(Options, SwitchesHaveTwoFormsAndOtherWordsWithASlashArePaths) {
  for (const char* const form : {"/save", "--save"}) {
    const ParsedOptions parsed = parse({"/home/save/a.mp3", form, "/overwrite"});
    ASSERT_FALSE(parsed.exit_status);
    EXPECT_EQ(parsed.options.file, "/home/save/a.mp3");
    EXPECT_TRUE(parsed.options.work.save && parsed.options.work.overwrite);
  }
  EXPECT_EQ(parse({"/Save", "--info"}).options.file, "/Save");
  EXPECT_EQ(parse({"--info", "--", "/save"}).options.file, "/save");
}

TEST(Options, WhatMayBeRepeatedKeepsItsOrder) {
  const Options options = parse({"--set", "volume=1", "a.mp3", "--set", "ffmpeg=a=b", "-e", "one",
                                 "--script", "two", "--edit", "-e"})
                              .options;
  EXPECT_EQ(options.file, "a.mp3");
  EXPECT_EQ(options.settings.back(), (std::pair<std::string, std::string>("ffmpeg", "a=b")));
  std::string edits;
  for (const auto& edit : options.edits) edits += edit.text + (edit.is_script ? " (script) " : " ");
  EXPECT_EQ(edits, "one two (script) -e ");
}

TEST(Options, WrongUsageIsTold) {
  const std::vector<const char*> wrong[] = {{},
                                            {"--info"},
                                            {"a.mp3", "b.mp3"},
                                            {"a.mp3", "--unknown"},
                                            {"a.mp3", "--yes", "--no"},
                                            {"a.mp3", "--set", "volume"}};
  for (const auto& words : wrong) EXPECT_EQ(parse(words).exit_status, 2);
  EXPECT_EQ(parse({"--help"}).exit_status, 0);
  EXPECT_EQ(parse({"--version"}).exit_status, 0);
}

TEST(Words, AreSplitWithQuotesAndComments) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(split_words(R"( save  "a \"b\" \\ \n c.mp3" # comment)"),
            (Words{"save", R"(a "b" \ \n c.mp3)"}));
  EXPECT_EQ(split_words(R"(names part_title="A B"x y#z)"),
            (Words{"names", "part_title=A Bx", "y#z"}));
  EXPECT_EQ(split_words("open \"\"\r"), (Words{"open", ""}));
  EXPECT_EQ(split_words("# all"), Words{});
  EXPECT_EQ(split_words("open \"a"), std::nullopt);
}

}  // namespace
}  // namespace corvelin::test

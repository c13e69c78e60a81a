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

TEST(Options, SwitchesHaveTwoForms) {
  for (const char* const form : {"/save", "--save"}) {
    const ParsedOptions parsed = parse({"/home/save/a.mp3", form, "/overwrite"});
    ASSERT_FALSE(parsed.exit_status);
    EXPECT_EQ(parsed.options.file, "/home/save/a.mp3");
    EXPECT_TRUE(parsed.options.work.save);
    EXPECT_TRUE(parsed.options.work.overwrite);
  }
}

TEST(Options, OtherWordsWithASlashArePaths) {
  EXPECT_EQ(parse({"/Save", "--info"}).options.file, "/Save");
  EXPECT_EQ(parse({"--info", "--", "/save"}).options.file, "/save");
}

TEST(Options, EditsKeepTheirOrder) {
  const auto edits = parse({"a.mp3", "-e", "one", "--script", "two", "--edit", "-e"}).options.edits;
  ASSERT_EQ(edits.size(), 3U);
  EXPECT_EQ(edits[0].text, "one");
  EXPECT_TRUE(edits[1].is_script);
  EXPECT_EQ(edits[1].text, "two");
  EXPECT_EQ(edits[2].text, "-e");
}

TEST(Options, WrongUsageIsTold) {
  EXPECT_EQ(parse({}).exit_status, 2);
  EXPECT_EQ(parse({"--info"}).exit_status, 2);
  EXPECT_EQ(parse({"a.mp3", "b.mp3"}).exit_status, 2);
  EXPECT_EQ(parse({"a.mp3", "--unknown"}).exit_status, 2);
  EXPECT_EQ(parse({"a.mp3", "--yes", "--no"}).exit_status, 2);
  EXPECT_EQ(parse({"a.mp3", "--set", "volume"}).exit_status, 2);
  EXPECT_EQ(parse({"--help"}).exit_status, 0);
  EXPECT_EQ(parse({"--version"}).exit_status, 0);
}

TEST(Options, SetMayBeRepeated) {
  const ParsedOptions parsed = parse({"--set", "volume=1", "a.mp3", "--set", "ffmpeg=a=b"});
  EXPECT_EQ(parsed.options.file, "a.mp3");
  EXPECT_EQ(parsed.options.settings.back(), (std::pair<std::string, std::string>("ffmpeg", "a=b")));
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

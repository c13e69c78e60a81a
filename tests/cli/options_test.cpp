// SPDX-License-Identifier: GPL-2.0-or-later
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
    EXPECT_EQ(parsed.options.files, std::vector<std::string>{"/home/save/a.mp3"});
    EXPECT_EQ(parsed.options.work->name, "save");
    EXPECT_TRUE(parsed.options.request.overwrite);
  }
  EXPECT_TRUE(parse({"/rec", "/split"}).options.records);
  EXPECT_EQ(parse({"--rec", "a.mp3"}).options.files[0], "a.mp3");
  EXPECT_EQ(parse({"/Save", "--info"}).options.files[0], "/Save");
  EXPECT_EQ(parse({"--info", "--", "/save"}).options.files[0], "/save");
  // The word behind a switch that takes a folder is one, unless it is a switch itself.
  EXPECT_EQ(parse({"a.mp3", "/split", "/tmp/save"}).options.request.folder, "/tmp/save");
  const Options options = parse({"a.mp3", "/split", "/localini"}).options;
  EXPECT_EQ(options.request.folder, "");
  EXPECT_TRUE(options.localini);
}

TEST(Options, WhatMayBeRepeatedKeepsItsOrder) {
  const Options options = parse({"--set", "volume=1", "a.mp3", "--set", "ffmpeg=a=b", "-e", "one",
                                 "--script", "two", "b.mp3", "--edit", "-e"})
                              .options;
  EXPECT_EQ(options.files, (std::vector<std::string>{"a.mp3", "b.mp3"}));
  EXPECT_EQ(options.settings.back(), (std::pair<std::string, std::string>("ffmpeg", "a=b")));
  std::string edits;
  for (const auto& edit : options.edits) edits += edit.text + (edit.is_script ? " (script) " : " ");
  EXPECT_EQ(edits, "one two (script) -e ");
}

TEST(Options, WrongUsageIsTold) {
  const std::vector<const char*> wrong[] = {
      {},
      {"--info"},
      {"/save"},
      {"a.mp3", "--unknown"},
      {"a.mp3", "--yes", "--no"},
      {"a.mp3", "--set", "volume"},
      {"a.mp3", "/overwrite"},
      {"a.mp3", "/split", "/overwrite"},
      {"a.mp3", "/save", "--split", "x"},
      {"a.mp3", "-o", "x.mp3", "/normalize"},
      {"a.mp3", "--settings", "x", "/localini"},
      {"/rec", "a.mp3", "b.mp3"},
      {"--batch", "x"},
      {"a.mp3", "--do", "save"},
      {"--batch", "x", "--do", "save", "a.mp3"},
      {"--batch", "x", "--do", "save,level=1"},
      {"--batch", "x", "--do", "autocrop,limit=3"},
      {"--batch", "x", "--do", "cut=1"},
      {"--batch", "x", "--do", "cut=1:1,bottom=3"},
      {"--batch", "x", "--do", "level=40"},
      {"--batch", "x", "--do", "save", "-j", "0"},
      {"--batch", "x", "--do", "save", "--to", ""},
      {"--batch", "x", "--do", "save", "--settings", "y", "--localini"},
      {"a.mp3", "--mask", "*.aac"},
      {"--batch", "--do", "save"},
      {"--batch", "x", "--do", "save", "--files", "y"},
      {"--batch", "x", "--do", "save", "-0"},
      {"--batch", "x", "--do", "save", "--json", "--json-lines"},
      {"--batch", "x", "--do", "join=y", "--skip-done", "z"},
      {"--batch", "x", "--do", "save", "--to", "y", "--overwrite"}};
  for (const auto& words : wrong) EXPECT_EQ(parse(words).exit_status, 2);
  EXPECT_EQ(parse({"--help"}).exit_status, 0);
  EXPECT_EQ(parse({"--version"}).exit_status, 0);
}

TEST(Options, TheWordsOfABatchMakeItsJob) {
  const auto batch = parse({"--batch", "x", "--do", "cut=1:2.5,normalize=-3", "--do",
                            "fade=3:4,bottom=40", "--mask", "*.*", "--overwrite"})
                         .options.batch;
  ASSERT_TRUE(batch);
  const BatchJob* const job = &batch->job;
  EXPECT_EQ(job->options, 2 + 4 + 8 + 8192);
  EXPECT_EQ(job->cut_end + " " + job->fade_begin + " " + job->mask, "2.5 3 *.*");
  EXPECT_EQ(job->batch_level, 13);
  EXPECT_EQ(job->batch_bottom, 40);
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

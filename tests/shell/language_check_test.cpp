// SPDX-License-Identifier: GPL-2.0-or-later
// What translators are told, and the languages that come with the program.
#include "shell/language_check.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/files/file.h"
#include "text/language_file.h"
#include "text/language_list.h"

namespace corvelin::test {
namespace {

TEST(LanguageCheck, TheLanguagesOfTheProgramLackNothing) {
  const std::vector<Language> languages = language_list(language_home());
  ASSERT_EQ(languages.size(), 4U);  // with English
  for (const Language& language : languages) {
    const bool is_english = language.name.empty();  // its file has but a few rows
    std::string text;
    ASSERT_FALSE(read_whole_file(
        fmt::format("{}Languages/lan{}.ini", language_home(),
                    is_english ? english_language : std::string_view(language.name)),
        100000, text));
    for (const std::string& fault : check_language(text))
      if (!is_english || fault.find(" is missing: ") == fault.npos)
        ADD_FAILURE() << language.name << fault;
    EXPECT_EQ(text.find(".dll"), text.npos) << language.name;  // words of another platform
  }
}

TEST(LanguageCheck, TellsEachFaultByItsRow) {
  std::vector<std::string> faults = check_language(
      "x\r\nNative: X\r\nUTF-8=1\r\nmen010=&Open...\r\nmen011=&over\tCtrl+F4\r\n"
      "msg015=%s of %d\r\ndlg016=begins with\r\ndlg012=%T %A%C%D %N %N 100 %\r\n"
      "men006=x\r\nmsg999=x\r\nhello\r\n");
  const std::size_t missing = std::erase_if(
      faults, [](const std::string& fault) { return fault.find(" is missing: ") != fault.npos; });
  EXPECT_EQ(missing, 437U);  // of 407
  EXPECT_EQ(faults, (std::vector<std::string>{
                        "\"msg999=x\" means nothing",
                        "\"hello\" means nothing",
                        "men006 is no row of this version",
                        "men010 needs the key behind a tab as in: &Open...\tCtrl+O",
                        "msg015 needs %d %d",
                        "dlg016 needs %N",
                        "File: one letter for \"&Open...\" and \"&over\"",
                    }));
  EXPECT_EQ(check_language("msg001=one line\r\n").size(), 1U);
}

}  // namespace
}  // namespace corvelin::test

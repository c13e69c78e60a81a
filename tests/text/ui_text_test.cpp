// SPDX-License-Identifier: GPL-2.0-or-later
// The text table: English rows, language files laid over them, plain menu texts and filled-in rows.
#include "text/ui_text.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/test_folder.h"
#include "text/language_file.h"
#include "text/language_list.h"

namespace corvelin::test {
namespace {

// The English table before each test, and no translation left behind.
class UiText : public testing::Test {
 protected:
  UiText() { ui_text_free(); }
  ~UiText() override { ui_text_free(); }
};

TEST_F(UiText, TellsRowsLabelsAndGapsApart) {
  EXPECT_EQ(ui_text(dlg, 95), "APE Tag (not keeping):");
  // The text of a control, which is no row before it is translated.
  EXPECT_EQ(ui_text(cfg, 12), "");
  EXPECT_EQ(label_text({cfg, 12}), "Output device");
  EXPECT_TRUE(has_ui_text(msg, 8));
  EXPECT_FALSE(has_ui_text(cfg, 12) || has_ui_text(men, 6) || has_ui_text(dlg, 102) ||
               has_ui_text(dlg, 103) || has_ui_text(dlg, 0xFFFFFFFF));
  EXPECT_EQ(label_text({dlg, 103}), "");
}

TEST_F(UiText, LaysALanguageFileOverTheEnglishRows) {
  ASSERT_TRUE(
      parse_language_file("; German\r\n"
                          "msg001=\xE4hnlich\r\n"  // ANSI still
                          "  UTF-8=1\r\n"
                          "  Language:  Deutsch\r\n"
                          "Composer: J\xC3\xBCrgen\r\n"
                          " Version: 1\r\n"
                          "Version: 2.40\r\n"
                          "msg002=\xC3\xA4 = # b\tc\r\n"
                          "cfg012=Ausgabe\r\n"
                          "win020=\r\n"
                          "msg003=without a line end"));
  EXPECT_EQ(ui_text(msg, 1), "\xC3\xA4hnlich");
  EXPECT_EQ(ui_text(msg, 2), "\xC3\xA4 = \n b\tc");
  EXPECT_EQ(ui_text(msg, 3), "Please Confirm");
  EXPECT_EQ(label_text({cfg, 12}), "Ausgabe");
  EXPECT_EQ(ui_text(win, 20), "");
  EXPECT_TRUE(has_ui_text(win, 20));
  EXPECT_EQ(ui_text(dlg, translation_language), "Deutsch");
  EXPECT_EQ(ui_text(dlg, translation_composer), "J\xC3\xBCrgen");
  EXPECT_EQ(ui_text(dlg, translation_version), "2.40");
}

TEST_F(UiText, PassesOverLinesThatMeanNothing) {
  ASSERT_TRUE(
      parse_language_file("msg001=the first line\r\n"
                          "msg999=x\r\nmsg99999999999999999999=x\r\nmsg-1=x\r\nmsg=x\r\n"
                          "xyz001=x\r\nMSG001=x\r\n msg001=x\r\nms=x\r\n=\r\n\r\nmsg001\r\n"
                          "dlg103=x\r\n"));
  EXPECT_EQ(ui_text(msg, 1), "Open file");
  for (std::uint32_t row = 0; row < ui_text_rows; ++row) EXPECT_NE(ui_text(men, row), "x") << row;
  for (const char* const text : {"", "msg001=x", "msg001=x\r\n", "a\nmsg001=x\n"})
    EXPECT_FALSE(parse_language_file(text)) << text;
}

TEST_F(UiText, CutsWhatATranslatorWroteTooLong) {
  // 7 bytes "msg001=" leave 992 characters; each of these takes two UTF-16 units.
  std::string text = "\xEF\xBB\xBF\r\nmsg001=";
  for (int i = 0; i < 600; ++i) text += "\xF0\x9F\x8E\xB5";
  text += "\r\nmsg002=bad \xC3(\r\n" + std::string(40000, ' ') + "\r\nmsg003=x\r\n";
  ASSERT_TRUE(parse_language_file(text));
  EXPECT_EQ(ui_text(msg, 1).size(), 992 / 2 * 4);
  EXPECT_EQ(ui_text(msg, 2), "bad \xEF\xBF\xBD(");
  EXPECT_EQ(ui_text(msg, 3), "Please Confirm");

  using namespace std::string_literals;
  ASSERT_TRUE(parse_language_file("a\r\nmsg004=x\r\n\0\r\nmsg003=x\r\n"s));
  EXPECT_EQ(ui_text(msg, 4), "x");
  EXPECT_EQ(ui_text(msg, 3), "Please Confirm");
}

TEST_F(UiText, FindsTheLanguageFileBesideTheProgram) {
  const TestFolder folder;
  const auto write = [&](const char* name, const std::string& row) {
    folder.file(name, "header\r\n" + row + "\r\n");
  };
  const std::string program_folder = folder.path("");
  EXPECT_FALSE(ui_text_load(program_folder, ""));
  EXPECT_FALSE(ui_text_load(program_folder + "nowhere/", ""));

  std::filesystem::create_directories(folder.path("lan0.ini"));
  std::filesystem::create_directories(folder.path("Languages/lanFolder.ini"));
  ASSERT_EQ(mkfifo(folder.path("Languages/lanPipe.ini").c_str(), 0600), 0);
  write("lanB.ini", "msg001=B");
  write("lanA.ini", "msg001=A");
  write("lan.txt", "msg001=no");
  write("Languages/lanDutch.ini", "msg002=Dutch");

  EXPECT_TRUE(ui_text_load(program_folder, ""));
  EXPECT_EQ(ui_text(msg, 1), "A");
  EXPECT_TRUE(ui_text_load(program_folder, "Dutch"));
  EXPECT_EQ(ui_text(msg, 1), "Open file");  // of the language before nothing is left
  EXPECT_EQ(ui_text(msg, 2), "Dutch");
  for (const char* const language : {"Folder", "Pipe", "Missing"})
    EXPECT_FALSE(ui_text_load(program_folder, language)) << language;
  EXPECT_EQ(ui_text(msg, 2), "Create audio file");
}

TEST_F(UiText, ListsTheLanguagesThatAreUtf8) {
  const TestFolder folder;
  std::filesystem::create_directories(folder.path("Languages"));
  folder.file("Languages/lanGerman.ini", "x\r\nUTF-8=1\r\nNative: Deutsch\r\n");
  folder.file("Languages/lanDutch.ini", "\xEF\xBB\xBFNative: Nederlands\r\n");
  folder.file("Languages/lanAnsi.ini", "x\r\nmsg001=x\r\n");
  folder.file("Languages/lanLate.ini", std::string(500, 'x') + "UTF-8=1\r\n");
  std::string entries;
  for (const Language& language : language_list(folder.path("")))
    entries += language.entry() + "=" + language_of_entry(language.entry()) + "\n";
  EXPECT_EQ(entries,
            "English (default, no language file)=\nDutch  /  Nederlands=Dutch\nGerman  /  "
            "Deutsch=German\n");
  const std::pair<const char*, const char*> locales[] = {{"de_AT.UTF-8", "German"},
                                                         {"zh_CN", "ChineseSimp"},
                                                         {"zh_TW.UTF-8", "ChineseTrad"},
                                                         {"sr@latin", "Serbian"},
                                                         {"en_GB.UTF-8", ""},
                                                         {"C", ""},
                                                         {"csb_PL", ""},
                                                         {"pt", "PortugueseBr"}};
  for (const auto& [locale, name] : locales) EXPECT_EQ(language_of_locale(locale), name) << locale;
}

TEST_F(UiText, PutsMenuTextsInPlainWords) {
  EXPECT_EQ(menu_text_plain(ui_text(men, 14)), "Save re-encoded");
  EXPECT_EQ(menu_text_plain(ui_text(men, 10), true), "Open   [Ctrl+O]");
  EXPECT_EQ(menu_text_plain("a\tb\tc", true), "a   [c]");
  EXPECT_EQ(menu_text_plain(ui_text(cfg, 12)), " ");  // not set
  EXPECT_EQ(menu_text_plain(std::string(300, 'a')), std::string(198, 'a'));
}

TEST_F(UiText, FillsInRows) {
  const std::pair<std::string, std::string> rows[] = {
      {format_row(ui_text(msg, 15), 3, 0), "While saving 3 file(s) 0 re-sync(s) occured."},
      {format_row("%ls: %hs, %s", "a", std::string("b"), std::string_view("c")), "a: b, c"},
      {format_row("%.2d|%.3d|%i|%ld", -7, 1234, std::uint8_t{200}, 5000000000),
       "-07|1234|200|5000000000"},
      {format_row("[%5d][%-5d][%05d][%+d]", 42, 42, -42, 42), "[   42][42   ][-0042][+42]"},
      {format_row("[%-05d]", 42), "[42   ]"},
      {format_row("%x %X %04x %u", 0xBEEF, 0xBEEF, 0xA, 4294967295U), "beef BEEF 000a 4294967295"},
      {format_row("%f %.1f %06.2f %.0f", 1.5, -0.25F, 3.14159, 99.9), "1.500000 -0.2 003.14 100"},
      {format_row("[%4s][%-4s][%.2s]", "ä", "ä", "äää"), "[   ä][ä   ][ää]"},
      {format_row("%c%c 100%%", 'a', 0xE4), "aä 100%"},
      {format_row("%d", INT64_MIN), "-9223372036854775808"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(text, expected);
}

TEST_F(UiText, LeavesARowAsItStandsWhereItDoesNotFit) {
  for (const char* const row :
       {"no number", "%d %d", "%s", "%f", "%n", "%", "%5", "%-", "%.", "%l", "%*d", "%1$d", "%p",
        "%999999999d", "%.99999999999999999999d", "%501d", "50 % done", "%d %", "%#x"})
    EXPECT_EQ(format_row(row, 1), row);
  EXPECT_EQ(format_row("%d", "text"), "%d");
  EXPECT_EQ(format_row("%d", 1.0), "%d");
  EXPECT_EQ(format_row("%s"), "%s");
  EXPECT_EQ(format_row(ui_text(dlg, 11)), ui_text(dlg, 11));  // "%N  = Track ..." is no format
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The configuration: its table of controls against the table of settings, and what changes pull
// along.
#include "edit/config_dialog.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/language_dialog.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

using ConfigDialogTest = CoreTest;

TEST_F(ConfigDialogTest, EachSettingOfAPageHasItsControlThere) {
  std::set<std::pair<SettingPage, std::string_view>> names;
  std::set<std::string_view> keys = {"enc_acm_samplerate", "enc_acm_channels",
                                     "enc_acm_blocksize"};  // of the format
  for (const ConfigControl& control : config_controls()) {
    EXPECT_TRUE(names.emplace(control.page, control.name).second) << control.name;
    if (control.key.empty()) continue;
    const SettingKey* const row = find_setting(control.key);
    ASSERT_NE(row, nullptr) << control.key;
    EXPECT_EQ(row->page, control.page) << control.key;
    keys.insert(control.key);
  }
  for (const SettingKey& row : setting_keys())
    EXPECT_EQ(row.page != SettingPage::elsewhere, keys.contains(row.key)) << row.key;
}

TEST_F(ConfigDialogTest, APageThatIsOpenedBringsTheNumbersOfTheFileIntoTheirLimits) {
  settings.buffer_max = 999;
  settings.rec_threshold = 0xFFFF;
  settings.max_undo = 0;
  ConfigDialog dialog(editor);
  dialog.open_page(SettingPage::devices);
  EXPECT_EQ(settings.buffer_max, 64);
  EXPECT_EQ(settings.rec_threshold, 30 << 8 | 64);
  EXPECT_EQ(settings.max_undo, 0);
  dialog.open_page(SettingPage::misc);
  EXPECT_EQ(settings.max_undo, 1);
}

TEST_F(ConfigDialogTest, DefaultsAreOfThePageInSightAndOnlyWhenAgreed) {
  ConfigDialog dialog(editor);
  dialog.open_page(SettingPage::misc);
  settings.max_undo = 3;
  settings.frameskiplo = 3;
  host.answers = {BoxAnswer::cancel, BoxAnswer::ok};
  dialog.restore_defaults();
  EXPECT_EQ(settings.max_undo, 3);
  dialog.restore_defaults();
  EXPECT_EQ(settings.max_undo, 20);
  EXPECT_EQ(settings.frameskiplo, 3);

  playback.is_playing = true;
  dialog.open_page(SettingPage::devices);
  settings.peakbeep = 1;
  dialog.restore_defaults();
  EXPECT_EQ(settings.peakbeep, 1U);
  EXPECT_EQ(host.beeps, 1);
  playback.is_playing = false;
}

TEST_F(ConfigDialogTest, TheFirstStartSpeaksTheLanguageThatIsChosenAndKeepsItOnlyOnOk) {
  setenv("LC_ALL", "de_AT.UTF-8", 1);
  LanguageDialog dialog(editor);
  dialog.begin();
  unsetenv("LC_ALL");
  EXPECT_EQ(dialog.languages[dialog.chosen].entry(), "German  /  Deutsch");
  EXPECT_EQ(ui_text(dlg, 1), "&Abbrechen");
  dialog.choose(0);
  EXPECT_EQ(ui_text(dlg, 1), "&Cancel");
  dialog.choose(2);
  dialog.cancel();
  EXPECT_EQ(ui_text(dlg, 1), "&Cancel");
  EXPECT_TRUE(settings.language.empty());
  dialog.choose(2);
  EXPECT_TRUE(dialog.accept());
  EXPECT_EQ(settings.language, u"German");
  ui_text_free();
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// Settings: defaults, the file's form, storage.
#include "settings/setting_table.h"

#include <sys/stat.h>

#include "edit/commands.h"
#include "platform/files/system_calls.h"
#include "platform/processes/program.h"
#include "platform/processes/system.h"
#include "settings/settings_file.h"
#include "settings/settings_storage.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SettingsTest : public CoreTest {
 protected:
  SettingsTest() { ::setenv("XDG_CONFIG_HOME", folder.path("config").c_str(), 1); }
  ~SettingsTest() override {
    display = {};
    ::unsetenv("XDG_CONFIG_HOME");
  }
};

TEST_F(SettingsTest, DefaultsFollowTheDisplay) {
  display = {.scale = 1.5F, .width = 900, .height = 10000};
  settings = default_settings();
  EXPECT_EQ(settings.window_x, 50);   // the screen has room for the scale 1 only
  EXPECT_EQ(settings.window_h, 840);  // 560 x 1.5
  EXPECT_EQ(settings.timer_height, 150);
  EXPECT_EQ(settings.large_symbols, 1U);
}

// Order and form to the letter, as another reader of the file would expect them.
TEST_F(SettingsTest, AreWrittenInTheirOrder) {
  settings.file_recent = {"/a.mp3", "", "/b.mp3"};
  settings.version = u"1.0";
  settings.window_x = -7;
  settings.enc_lam_preset = {"44100,1,032,320,002,002,04,100,00000000,Mine"};
  const std::string text = format_settings();
  EXPECT_TRUE(text.starts_with(
      "[Corvelin]\r\nutf8=1\r\nfile_recent=/a.mp3\r\nfile_recent=/b.mp3\r\nfile_savepath=\r\n"
      "working_dir=\r\nsplit_pattern=\r\nffmpeg=\r\nlanguage=\r\nversion=" +
      std::string(program_version) +
      "\r\nwindow_x=-7\r\n"
      "window_y=50\r\nwindow_w=1150\r\nwindow_h=560\r\ndevice_out=0\r\nbuffer_max=32\r\n"));
  EXPECT_TRUE(
      text.ends_with("enc_lam_vbr_method=2\r\nenc_lam_vbr_quality=4\r\nenc_lam_abr_bitrate=100\r\n"
                     "enc_lam_preset=44100,1,032,320,002,002,04,100,00000000,Mine\r\n"));
}

TEST_F(SettingsTest, SurviveARoundTripByteForByte) {
  settings.file_recent = {"/not\xFFutf8.mp3", "/ümläut.mp3"};
  settings.working_dir = "/a=b/";
  settings.file_savepath = "2024/a";  // a first digit alone would be taken for hexadecimal digits
  settings.split_pattern = u"%N \u266B \U0001F3B5";
  settings.rgb_win = 0xFFFFFFFF;
  settings.enc_lam_vbr_method = -1;
  settings.enc_lam_preset = {"two", "one", "\xFF raw"};
  const std::string written = format_settings();
  ASSERT_FALSE(write_settings(folder.path("c.ini")));
  EXPECT_EQ(read_text(folder.path("c.ini")), written);
  settings = default_settings();
  ASSERT_FALSE(read_settings(folder.path("c.ini")));
  EXPECT_EQ(settings.file_savepath, "2024/a");
  EXPECT_EQ(format_settings(), written);
}

TEST_F(SettingsTest, ReaderTakesOddFilesInItsStride) {
  ASSERT_TRUE(
      parse_settings("volume=1\nutf8=0\r\nnonsense\r\nunknown=1\r\nvolume = 5\r\n"
                     "volume=  42 per cent\nlanguage=M\xFCller\nzoom=-1\nworking_dir=43003A00\n"
                     "window_x=99999999999\nwarn=1"));
  EXPECT_EQ(settings.volume, 42);           // the first line is the header, whatever it says
  EXPECT_EQ(settings.language, u"Müller");  // ANSI
  EXPECT_EQ(settings.zoom, 65535);          // taken in the width of the field
  EXPECT_EQ(settings.working_dir, "C:");    // a path in hexadecimal digits
  EXPECT_EQ(settings.window_x, 2147483647);
  EXPECT_EQ(settings.warn, 3);  // a last line without its end doesn't count
  EXPECT_FALSE(parse_settings("[Corvelin]"));
  EXPECT_FALSE(read_settings(folder.path("absent.ini")));  // nothing to tell
  settings.volume = 7;
  using namespace std::string_literals;
  for (const std::string& other : {"ID3\0\nvolume=1\n"s, "volume=1"s, "Dear\nreader\n"s})
    EXPECT_EQ(read_settings(folder.file("a.mp3", other)), FileError::other_kind);
  EXPECT_EQ(settings.volume, 7);
  EXPECT_FALSE(read_settings(folder.file("by_hand.ini", "; mine\nvolume=8\n")));
  EXPECT_EQ(settings.volume, 8);
  EXPECT_FALSE(write_settings(folder.path("by_hand.ini")));

  std::string text = "[Corvelin]\nvolume=1\n" + std::string(20000, 'x');
  text.resize(19992);  // keys behind 20000 bytes are not seen
  ASSERT_TRUE(parse_settings(text + "\nwarn=1\nzoom=4\n"));
  EXPECT_EQ(settings.volume, 1);
  EXPECT_EQ(settings.warn, 1);
  EXPECT_EQ(settings.zoom, 65535);
}

TEST_F(SettingsTest, OfTwoThatAreWrittenAtOnceTheLastOneStays) {
  static std::string path;
  path = folder.file("s.ini", "[Corvelin]\r\n");
  system_calls.fsync = [](int file) {  // another instance comes in between
    system_calls = original_system_calls;
    settings.volume = 1;
    EXPECT_FALSE(write_settings(path));
    return original_system_calls.fsync(file);
  };
  settings.volume = 2;
  EXPECT_FALSE(write_settings(path));
  EXPECT_EQ(settings.volume, 1);
  ASSERT_FALSE(read_settings(path));
  EXPECT_EQ(settings.volume, 2);
}

TEST_F(SettingsTest, ListsHaveTheirLimits) {
  std::string text = "[Corvelin]\n";
  for (int i = 0; i < 12; ++i) text += "file_recent=/" + std::to_string(i) + "\n";
  text += "max_recent=3\n";
  for (int i = 0; i < 25; ++i) text += "enc_lam_preset=" + std::to_string(i) + "\n";
  ASSERT_TRUE(parse_settings(text));
  EXPECT_EQ(settings.file_recent.size(), 9U);  // `max_recent` comes too late to count
  EXPECT_EQ(settings.enc_lam_preset.size(), 19U);
  EXPECT_EQ(settings.enc_lam_preset.back(), "18");
  const std::string written = format_settings();
  EXPECT_NE(written.find("file_recent=/2\r\n"), std::string::npos);
  EXPECT_EQ(written.find("file_recent=/3\r\n"), std::string::npos);

  settings.file_recent.clear();
  for (const char* const name : {"/1", "/2", "/3", "/1"}) add_recent(name);
  EXPECT_EQ(settings.file_recent, (std::vector<std::string>{"/3", "/2", "/1"}));
  add_recent("/4");
  settings.max_recent = 0;
  add_recent("/5");
  EXPECT_EQ(settings.file_recent, (std::vector<std::string>{"/4", "/3", "/2"}));
}

// What stands in the user's configuration may be anything.
TEST_F(SettingsTest, RecordingsGoToTheUsersDocuments) {
  std::filesystem::create_directory(folder.path("config"));
  ::setenv("HOME", "/home/me", 1);
  ::mkfifo(folder.path("config/user-dirs.dirs").c_str(), 0666);
  EXPECT_EQ(documents_folder(), "/home/me/Documents");
  std::filesystem::remove(folder.path("config/user-dirs.dirs"));
  folder.file("config/user-dirs.dirs", "# x\nXDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
  complete_settings();
  EXPECT_EQ(settings.file_savepath, "/home/me/Papers/Recording");
}

TEST_F(SettingsTest, AreSetFromText) {
  struct {
    std::string key, value;
    SetResult result;
  } const rows[] = {{"volume", "100", SetResult::done},
                    {"volume", "101", SetResult::not_allowed},
                    {"zoom", "3", SetResult::not_allowed},
                    {"zoom", "16", SetResult::done},
                    {"layout", "9", SetResult::not_allowed},
                    {"graph_level", "50", SetResult::not_allowed},
                    {"rec_threshold", "1024", SetResult::not_allowed},  // a threshold of 0
                    {"enc_lam_vbr_method", "-2", SetResult::not_allowed},
                    {"volume", "1x", SetResult::not_a_number},
                    {"volume", "", SetResult::not_a_number},
                    {"rgb_win", "0x102030", SetResult::done},
                    {"split_pattern", "%N", SetResult::done},
                    {"ffmpeg", std::string(401, 'x'), SetResult::too_long},
                    {"enc_lam_preset", "x", SetResult::not_settable},
                    {"version", "x", SetResult::not_settable},
                    {"Volume", "1", SetResult::unknown_key}};
  for (const auto& row : rows)
    EXPECT_EQ(set_setting(row.key, row.value), row.result) << row.key << "=" << row.value;
  EXPECT_EQ(settings.volume, 100);
  EXPECT_EQ(settings.rgb_win, 0x102030U);
  EXPECT_EQ(settings.split_pattern, u"%N");

  EXPECT_EQ(get_setting("rgb_win"), "0x102030");
  EXPECT_EQ(get_setting("split_pattern"), "%N");
  EXPECT_EQ(get_setting("file_recent"), std::nullopt);
  EXPECT_EQ(allowed_text(*find_setting("zoom")), "1, 2, 4, 8, 16 or 32");
  EXPECT_EQ(allowed_text(*find_setting("graph_level")), "0 to 200 in steps of 20");
  const Settings defaults = default_settings();
  for (const SettingKey& row : setting_keys()) {
    const auto standard = get_setting(row.key, defaults);
    if (!standard || row.key == "version") continue;
    EXPECT_EQ(set_setting(row.key, *standard), SetResult::done) << row.key;
  }
}

// Whoever changes a setting, the same follows from it.
TEST_F(SettingsTest, ChangesHaveTheirEffects) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).id3v1("x").bytes()));
  host.refreshes.clear();
  EXPECT_EQ(set_setting("save_id3v1", "0"), SetResult::done);
  EXPECT_FALSE(open_state.keep_id3v1);
  dispatch_command(editor, 213);
  EXPECT_TRUE(open_state.keep_id3v1);
  set_setting("save_id3v1", "1");  // which it is
  set_setting("rec_time", "1");
  set_setting("scrollbar_arrows", "1");
  EXPECT_EQ(host.layouts, 1);
  EXPECT_EQ(host.restarts_offered, 0);
  set_setting("darkmode", "1");
  EXPECT_EQ(host.restarts_offered, 1);
  EXPECT_EQ(host.refreshes, std::vector(4, Refresh::all));
}

// Of one test alone, since the files beside the program are there once.
class SettingsStorageTest : public SettingsTest {
 protected:
  ~SettingsStorageTest() override {
    local_marker(MarkerOperation::remove);
    std::filesystem::remove(local_settings_path());
  }
};

TEST_F(SettingsStorageTest, ChoosesAndKeepsToItsPlace) {
  const std::string profile = folder.path("config/Corvelin/Corvelin.ini");
  const auto chosen = [](bool local_run, SettingsStorage storage) {
    const std::string path = choose_settings_file(local_run);
    EXPECT_EQ(settings_storage, storage);
    return path;
  };
  EXPECT_EQ(chosen(false, SettingsStorage::beside_program), local_settings_path());
  EXPECT_EQ(user_settings_path(true), profile);
  EXPECT_EQ(chosen(false, SettingsStorage::user_profile), profile);
  EXPECT_EQ(chosen(true, SettingsStorage::portable), local_settings_path());
  EXPECT_FALSE(
      local_marker(MarkerOperation::test));  // asking for portable settings makes no marker
  EXPECT_TRUE(local_marker(MarkerOperation::create));
  EXPECT_EQ(chosen(false, SettingsStorage::portable), local_settings_path());
  EXPECT_FALSE(local_marker(MarkerOperation::remove));
  std::filesystem::remove_all(folder.path("config"));

  settings_storage = SettingsStorage::beside_program;
  ASSERT_FALSE(store_settings());
  EXPECT_EQ(read_text(local_settings_path()), format_settings());
  // With the program's folder read-only they move to the profile.
  system_calls.rename = [](const char* from, const char* to) {
    const bool is_local = std::string_view(to) == local_settings_path();
    return is_local ? (errno = EROFS, -1) : original_system_calls.rename(from, to);
  };
  EXPECT_FALSE(store_settings());
  system_calls = original_system_calls;
  EXPECT_EQ(settings_storage, SettingsStorage::user_profile);
  EXPECT_EQ(read_text(profile), format_settings());
  std::filesystem::create_directory(folder.path("config/Corvelin/mine"));
  EXPECT_EQ(remove_user_settings(), std::errc::directory_not_empty);
  std::filesystem::remove(folder.path("config/Corvelin/mine"));
  EXPECT_FALSE(store_settings());
  ASSERT_FALSE(remove_user_settings());
  EXPECT_EQ(settings_storage, SettingsStorage::removed);
  EXPECT_FALSE(store_settings());
  EXPECT_EQ(user_settings_path(false), std::nullopt);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The command table and its dispatcher.
#include "edit/commands.h"
#include "audio/playback.h"
#include "audio/recorder.h"

#include <chrono>
#include <cstdlib>
#include <set>
#include <thread>

#include "edit/editor.h"
#include "edit/menu_state.h"
#include "model/cuts.h"
#include "platform/files/clipboard.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class Commands : public EditTest {
 protected:
  void SetUp() override {}
};

TEST_F(Commands, IdsNamesAndKeysStandOnce) {
  std::set<CommandId> ids;
  std::set<std::string> words;
  for (const Command& command : command_table()) {
    // Set begin means another thing while a recording writes.
    EXPECT_TRUE(ids.insert(command.id).second || command.id == 154) << command.id;
    EXPECT_TRUE(words.insert(std::string(command.name)).second) << command.name;
    EXPECT_TRUE(command.text.number == unnamed.number || !label_text(command.text).empty())
        << command.id;
    std::string_view rest = command.keys;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(", ", 1), rest.size());
      EXPECT_TRUE(words.insert(std::string(rest.substr(0, end))).second) << rest;
      rest.remove_prefix(std::min(end + 2, rest.size()));
    }
  }
}

TEST_F(Commands, ChecksStandInFront) {
  EXPECT_EQ(dispatch_command(editor, 152), DispatchResult::no_document);
  EXPECT_EQ(dispatch_command(editor, 1051), DispatchResult::done);
  EXPECT_EQ(settings.big_timer, 0U);
  EXPECT_EQ(dispatch_command(editor, 999), DispatchResult::unknown);
  ASSERT_TRUE(open("a.mp3", frames(50)));
  playback.is_playing = true;
  EXPECT_EQ(dispatch_command(editor, 168), DispatchResult::not_now);
  EXPECT_EQ(dispatch_command(editor, 1011), DispatchResult::refused);
  EXPECT_EQ(host.boxes.back().text, "Please stop play/rec first.");
  playback.is_playing = false;
  open_state.document_modified = true;
  EXPECT_EQ(dispatch_command(editor, 1011), DispatchResult::refused);  // the question: Cancel
  EXPECT_EQ(file_count(document), 1);
  host.answers = {BoxAnswer::no};
  dispatch_command(editor, 1011);
  EXPECT_EQ(file_count(document), 0);
}

TEST_F(Commands, WhatIsShownIsUpToDateBehindEachBox) {
  struct {
    const char* before;
    const char* command;
    const char* calls;
  } const rows[] = {{"0-50 =5-8", "cut_or_cue", "menus1 parts view2 "},
                    {"10-15 0-8 =3-8", "remove_edit_points", "menus1 parts view2 box "},
                    {"0-50", "check_resyncs", "menus1 parts view2 box "},
                    {"0-50", "crop", "box "},
                    {"0-50", "select_all", "menus1 view2 "},
                    {"0-50", "toggle_big_timer", "view3 "},
                    {"0-50", "toggle_use_toc", "parts view3 "},
                    {"0-50", "close", "menus1 parts menus255 view0 "}};
  for (const auto& row : rows) {
    ASSERT_TRUE(open("a.mp3", frames(50)));
    make(row.before);
    host.calls.clear();
    run(row.command);
    EXPECT_EQ(host.calls, row.calls) << row.command;
  }
}

TEST_F(Commands, NothingBeginsAndNothingClosesInsideACommand) {
  ASSERT_TRUE(open("a.mp3", frames(50)));
  document.parts[0].part_title = u"T";
  host.while_answering = [this] {
    EXPECT_EQ(dispatch_command(editor, 1024), DispatchResult::busy);
    request_close();
    EXPECT_FALSE(host.close_requested);
  };
  dispatch_command(editor, 1075);
  EXPECT_EQ(host.boxes.size(), 1U);
  EXPECT_TRUE(host.close_requested);
  EXPECT_FALSE(has_selection(selection));
}

TEST_F(Commands, ARecordingChangesWhatSomeMean) {
  recorder.is_armed = true;
  for (const CommandId id : std::initializer_list<CommandId>{137, 1043, 1077})
    EXPECT_EQ(dispatch_command(editor, id), DispatchResult::not_now) << id;
  EXPECT_EQ(dispatch_command(editor, 154), DispatchResult::no_document);
  recorder.rec_writing = true;
  EXPECT_EQ(command_of(editor, 154)->name, "set_recording_cue");
  recorder.rec_writing = false;
}

TEST_F(Commands, MarksShowTheirSettings) {
  const auto marks = [] {
    std::string ids;
    for (const Command& command : command_table())
      if (is_checked(command)) ids += std::to_string(command.id) + " ";
    return ids;
  };
  EXPECT_EQ(marks(), "212 213 1051 1053 1055 1059 1060 1076 ");
  settings.keep_date = keep_date_on_new;
  settings.char_enc = 0;
  settings.use_toc = 2;  // as a file may say
  run("toggle_margin");
  EXPECT_EQ(marks(), "212 213 1051 1053 1058 1059 1060 1064 1075 ");
}

TEST_F(Commands, NothingIsAskedWithoutADocument) {
  ASSERT_TRUE(open("a.mp3", frames(50)));
  open_state.project_name = folder.path("p.cvp");
  open_state.document_modified = true;
  close_all(editor);
  EXPECT_EQ(open_state.project_name, "");
  open_state.document_modified = true;
  run("open_by_dialog");
  EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Commands, ARefusalIsTheOutcome) {
  clipboard_file = folder.path("absent");
  ASSERT_TRUE(open("a.mp3", frames(50)));
  for (const CommandId id : std::initializer_list<CommandId>{1033, 1029, 1013, 1012}) {
    host.boxes.clear();
    EXPECT_EQ(dispatch_command(editor, id), DispatchResult::refused) << id;
  }
  undo_clear(editor);
  EXPECT_EQ(dispatch_command(editor, 1022), DispatchResult::nothing);
  clipboard_file.clear();
}

TEST_F(Commands, SmallStepsKeepTheirLimits) {
  struct {
    CommandId id;
    std::uint16_t Settings::*setting;
    int limit;
  } const rows[] = {{1061, &Settings::graph_level, 200},
                    {1062, &Settings::graph_level, 0},
                    {214, &Settings::volume, 100},
                    {215, &Settings::volume, 0}};
  for (const auto& row : rows) {
    for (int i = 0; i < 30; ++i) dispatch_command(editor, row.id);
    EXPECT_EQ(settings.*row.setting, row.limit) << row.id;
  }
}

TEST_F(Commands, TextsChangeTheirEncodingOnWish) {
  ASSERT_TRUE(open("a.mp3", frames(50)));
  document.parts[0].part_title = u"M\u00FCller";
  dispatch_command(editor, 1075);
  EXPECT_EQ(document.parts[0].part_title, u"M\u00C3\u00BCller");
  dispatch_command(editor, 1076);
  EXPECT_EQ(document.parts[0].part_title, u"M\u00FCller");
}

TEST_F(Commands, PartListTellsTimeKindAndTitle) {
  ASSERT_TRUE(open("a.mp3", frames(1000)));
  make("0-400* 500-700* 700-1000g3");
  document.parts[1].part_title = std::u16string(70, 'A');
  EXPECT_EQ(part_list(editor.document),
            (std::vector<std::string>{"01  (0'00)  Cue\t",
                                      "02  (0'10)  Cue Cut\t " + std::string(50, 'A'),
                                      "03  (0'15)  Level\t"}));
  dispatch_command(editor, 1202);
  EXPECT_EQ(places(), " @600");
  dispatch_command(editor, 1203);
  EXPECT_EQ(document.current_part, 2);
}

TEST_F(Commands, GreyAreThoseThatFindNothing) {
  settings.file_recent = {"/m/a.mp3"};
  const auto enabled = [this] {
    std::string ids;
    for (const CommandId id : std::initializer_list<CommandId>{134, 1010, 1012, 1021, 1022, 1051,
                                                               1100, 1101, 1200, 1201})
      if (is_command_enabled(editor, id)) ids += std::to_string(id) + " ";
    return ids;
  };
  EXPECT_EQ(enabled(), "1010 1051 1100 ");
  recorder.is_armed = true;
  EXPECT_EQ(enabled(), "134 1051 1100 ");
  recorder.is_armed = false;
  ASSERT_TRUE(open("a.mp3", frames(50)));
  EXPECT_EQ(enabled(), "134 1010 1012 1021 1051 1100 1101 1200 ");
  dispatch_command(editor, 1024);
  EXPECT_EQ(enabled(), "134 1010 1012 1021 1022 1051 1100 1101 1200 ");
  ASSERT_TRUE(open("a.mp2", frames(50, {.layer = 2})));
  EXPECT_EQ(enabled(), "134 1010 1012 1051 1100 1101 1200 ");
}

TEST_F(Commands, DeadRecentFilesGoWhenOneFails) {
  const std::string good = folder.file("a.mp3", frames(50));
  settings.file_recent = {folder.path("x.mp3"), good, folder.path("y.mp3")};
  EXPECT_EQ(dispatch_command(editor, 1100), DispatchResult::refused);
  EXPECT_EQ(settings.file_recent, std::vector<std::string>{good});
  dispatch_command(editor, 1100);
  EXPECT_EQ(file_count(document), 1);
}

TEST_F(Commands, RecentFilesShowTheirNames) {
  settings.file_recent = {"/m/a.mp3", "bare.mp3", "/m/" + std::string(59, 'x'),
                          "/m/" + std::string(60, 'x'), "/m/last.mp3"};
  settings.max_recent = 4;
  std::string menu;
  for (const MenuEntry& entry : recent_entries())
    menu += std::to_string(entry.id) + entry.text + "\n";
  EXPECT_EQ(menu, "1100&1 a.mp3\n1102&3 " + std::string(59, 'x') + "\n1103&4 " +
                      std::string(59, 'x') + " ...\n");
  settings.file_recent.assign(40, "/m/a.mp3");
  settings.max_recent = 300;                // as a file may say
  EXPECT_EQ(recent_entries().size(), 10U);  // one a command
}

// The editor changes a title of the sheet; its program is a stand-in that does so at once.
TEST_F(Commands, AnEditedCueSheetIsReadBack) {
  ASSERT_TRUE(open("a.mp3", frames(50)));
  settings.msg_hide = 0xFFFF;
  const std::string sheet_editor = folder.file(
      "xdg-open", "#!/bin/sh\nsed 's/Before/After/' \"$1\" >\"$1.new\" && mv \"$1.new\" \"$1\"\n");
  std::filesystem::permissions(sheet_editor, std::filesystem::perms::owner_all);
  document.parts[0].part_title = u"Before";
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (folder.path("") + ":" + path).c_str(), 1);
  host.new_files = {folder.path("s.cue"), folder.path("s.cue")};
  host.while_answering = [this] {
    for (int i = 0; i < 500 && read_text(folder.path("s.cue")).find("After") == std::string::npos;
         ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  };
  dispatch_command(editor, 1030);
  EXPECT_EQ(host.boxes.back().text, "Reload Cue sheet?");
  EXPECT_EQ(document.parts[0].part_title, u"After");
  ::setenv("PATH", "/nowhere", 1);
  dispatch_command(editor, 1030);
  EXPECT_EQ(host.boxes.back().text,
            "There is no program here that opens this:\n\n" + folder.path("s.cue"));
  EXPECT_EQ(document.parts[0].part_title, u"After");
  ::setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace corvelin::test

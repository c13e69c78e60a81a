// SPDX-License-Identifier: GPL-2.0-or-later
// The records behind the dialogs: names, file info, split save.
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/file_info_dialog.h"
#include "edit/names_dialog.h"
#include "edit/split_dialog.h"
#include "model/frame_reader.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

using DialogsTest = EditTest;

TEST_F(DialogsTest, NamesAreWrittenInOneUndoStep) {
  make("0-10 10-20:old #1");
  document.sheet_artist = u"Various";
  NamesDialog dialog(editor);
  dialog.begin();
  EXPECT_EQ(dialog.group_title(), "Part #2");
  EXPECT_EQ(dialog.part_title, u"old");
  dialog.part_title.clear();
  dialog.part_artist = std::u16string(500, u'x');
  dialog.part_iscue = true;
  dialog.sheet_title = u"Album";
  document.current_part = 0;  // the dialog stays with its part
  dialog.accept();
  EXPECT_EQ(state(), "0-10 10-20* !^");
  EXPECT_EQ(document.parts[1].part_artist.size(), 400U);
  EXPECT_EQ(document.sheet_artist + document.sheet_title, u"VariousAlbum");
  ASSERT_TRUE(undo_pop(editor));
  EXPECT_EQ(parts(), "0-10 10-20:old");
}

TEST_F(DialogsTest, FileInfoShowsTheStream) {
  const Bytes bytes = Mp3Builder{}
                          .id3v2("0123456789")
                          .vbr_header({.marker = "Info", .frames = 3000, .encoder = "LAME3.100xyz"})
                          .frames(3000)
                          .ape(1000, true)
                          .bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  std::string text;
  for (const InfoLine& line : file_info_lines(editor, 1000))
    text += line.label + " " + line.value + "\n";
  EXPECT_EQ(text,
            "Total audio size: 1 251 000 bytes\nFirst audio frame: 437 bytes\n"
            "Current position: 1 437 bytes\nCurrent bitrate: 128.0 kbit/s\n"
            "Average bitrate: 127.7 kbit/s\nSize of current frame: 417 bytes\n"
            "Average frame size:  417 bytes\nVBR/Info header: Info (3 000 frames)\n"
            "Encoder ID: LAME3.100\nID3v2 header: Yes (20 bytes)\nCurrent file: 1 / 1\n"
            "APE Tag (not keeping): 1 064 bytes\n");
  close_all(editor);
  EXPECT_TRUE(file_info_lines(editor, 0).empty());
}

TEST_F(DialogsTest, FileInfoWritesTagBitsAndOptions) {
  FileInfoDialog dialog(editor);
  dialog.begin();
  dialog.rewrite_copyright = true;
  dialog.keep_info = false;
  dialog.tag = {.create_tag = true, .title = u"T"};
  dialog.accept();
  EXPECT_EQ(document.header_rewrite.rewrite_copyright, 0U);  // the box of the bits was off
  EXPECT_EQ(settings.keep_info, 0U);
  EXPECT_EQ(settings.keep_id3v2, 1U);
  EXPECT_TRUE(open_state.keep_id3v1 && open_state.document_modified);
  dialog.rewrite_header = true;
  dialog.accept();
  EXPECT_TRUE(document.header_rewrite.rewrite_header);
  EXPECT_EQ(document.header_rewrite.rewrite_copyright, 1U);
}

TEST_F(DialogsTest, SplitKeepsItsFields) {
  make("0-10* 10-20*");
  settings.split_pattern = u"%N";
  settings.working_dir = "/elsewhere/";
  settings.workdir_onsave = 1;
  SplitDialog dialog(editor);
  dialog.begin();
  EXPECT_EQ(dialog.folder, "/elsewhere/");
  settings.workdir_onsave = 0;
  dialog.begin();
  EXPECT_EQ(dialog.folder + dialog.cues_text, folder.path("") + "Cues: 2");
  dialog.folder = "nowhere";
  dialog.overlaps = true;
  dialog.overlap_seconds = 130;
  EXPECT_FALSE(dialog.accept());
  EXPECT_EQ(settings.split_overlap, 128 + 2);
  dialog.folder = folder.path("new/pieces");
  EXPECT_TRUE(dialog.accept());  // the folder is made, as the default answer says
  EXPECT_TRUE(std::filesystem::is_directory(folder.path("new/pieces")));
  std::filesystem::remove_all(folder.path("new"));
  dialog.folder = folder.path("").substr(0, folder.path("").size() - 1);
  dialog.first_number = 5;
  ASSERT_TRUE(dialog.accept());
  while (dialog.run->progress_text() != "1 / 2") ASSERT_TRUE(dialog.run->step());
  ASSERT_TRUE(dialog.accept());  // ends the first run and begins anew
  EXPECT_FALSE(dialog.run->step());
  EXPECT_EQ(dialog.run->status(), "Create error!");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"05.mp3", "a.mp3"}));
  dialog.begin();
  dialog.restore_defaults();  // and the answer is the default
  EXPECT_EQ(take_box(), "Defaults: Restore default values on this page?");
  EXPECT_EQ(dialog.pattern, u"%F Track %N");
  EXPECT_FALSE(dialog.overlaps);
}

TEST_F(DialogsTest, CommandsRunThemThroughTheHost) {
  EXPECT_EQ(dispatch_command(editor, 1028), DispatchResult::refused);  // cancelled
  EXPECT_TRUE(undo_stack.empty());
  host.edit<NamesDialog>([](NamesDialog& dialog) { return dialog.part_title = u"New", true; });
  EXPECT_EQ(dispatch_command(editor, 1028), DispatchResult::done);
  EXPECT_EQ(document.parts[0].part_title, u"New");
  host.edit<FileInfoDialog>([](FileInfoDialog& dialog) { return dialog.rewrite_header = true; });
  EXPECT_EQ(dispatch_command(editor, 1027), DispatchResult::done);
  EXPECT_TRUE(document.header_rewrite.rewrite_header);
  host.edit<SplitDialog>([](SplitDialog& dialog) { return dialog.cues_text == "Cues: 1"; });
  EXPECT_EQ(dispatch_command(editor, 1014), DispatchResult::done);
}

}  // namespace
}  // namespace corvelin::test

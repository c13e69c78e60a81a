// SPDX-License-Identifier: GPL-2.0-or-later
// Projects: the text to the letter, the way back, and texts that lie.
#include "exchange/project_file.h"

#include "edit/editor.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class ProjectFile : public EditTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(open("a.mp3", frames(100)));
    open_state.project_name = folder.path("p.cvp");
  }

  // A document of two files and three parts, with everything set that a project holds.
  void make_document() {
    const auto file = add_source_file(document, folder.file("sub ümlaut.mp3", frames(50)));
    document.files[*file].first_audio = length;
    document.files[*file].audio_end = 50 * length;
    make("0-10* 20-100g-12 =1-3 @2");
    add_part(document, document.total_size, *file, length, 5 * length);
    document.parts[1].part_title = u"Tïtle";
    document.parts[2].part_artist = u"Artist";
    document.parts[2].part_iscue = 1;
    document.end_gain = -40;
    document.sheet_title = u"Album";
    document.sheet_artist = u"Band";
    document.stream.vbr = 1;
  }

  bool open_text(const std::string& text) { return open(folder.file("p.cvp", text)); }

  // Opens a project whose first source is a file of 100 frames, followed by these lines.
  bool open_with(const std::string& lines) {
    return open_text("x\nutf8=1\nfile_beg=0\nfile_end=1\nfile=a.mp3\n" + lines);
  }
};

TEST_F(ProjectFile, IsWrittenInItsOrderAndComesBackFromAMovedFolder) {
  make_document();
  const std::string text = project_text(document, selection, selection.cursor, folder.path(""));
  EXPECT_EQ(text,
            "[Corvelin project file]\r\nutf8=1\r\n"
            "file_beg=0\r\nfile_end=41700\r\nfile=a.mp3\r\n"
            "file_beg=417\r\nfile_end=20850\r\nfile=sub ümlaut.mp3\r\n"
            "part_file=0\r\npart_filepos=0\r\npart_iscue=1\r\npart_size=4170\r\npart_beg=0\r\n"
            "part_file=0\r\npart_filepos=8340\r\npart_gainbeg=-12\r\npart_title=Tïtle\r\n"
            "part_size=33360\r\npart_beg=4170\r\n"
            "part_file=1\r\npart_filepos=417\r\npart_artist=Artist\r\npart_iscue=1\r\n"
            "part_size=2085\r\npart_beg=37530\r\n"
            "gainend=-40\r\nposition=834\r\nvbr=1\r\nsel_beg=417\r\nsel_end=1251\r\n"
            "sheet_artist=Band\r\nsheet_title=Album\r\n");
  EXPECT_NE(project_text(document, selection, selection.cursor, folder.path("deeper/"))
                .find("file=" + folder.path("a.mp3") + "\r\n"),
            std::string::npos);
  ASSERT_FALSE(
      write_project(document, selection, open_state, open_state.project_name, selection.cursor));
  const TestFolder other;
  for (const char* const name : {"p.cvp", "a.mp3", "sub ümlaut.mp3"})
    std::filesystem::copy(folder.path(name), other.path(name));
  ASSERT_TRUE(open(other.path("p.cvp")));
  EXPECT_EQ(document.files[1].file_name, other.path("sub ümlaut.mp3"));
  EXPECT_EQ(project_text(document, selection, selection.cursor, other.path("")), text);
  EXPECT_EQ(settings.file_recent.front(), other.path("p.cvp"));
  EXPECT_FALSE(open_state.document_modified);

  std::filesystem::remove(other.path("sub ümlaut.mp3"));
  EXPECT_FALSE(open(other.path("p.cvp")));
  EXPECT_TRUE(document.files.empty());
  EXPECT_EQ(host.boxes.back().text, "Project file: " + other.path("p.cvp") +
                                        "\n\nAudio file: " + other.path("sub ümlaut.mp3") + "\n");
  EXPECT_EQ(host.boxes.back().cause, "No such file or directory");
}

TEST_F(ProjectFile, OddFileNamesSurvive) {
  for (const char* const name : {"line\nend\r.mp3", "1 digit.mp3", "not\xFFutf8.mp3",
                                 "back\\slash.mp3", "a=b.mp3", "/double.mp3"}) {
    ASSERT_TRUE(open(name, frames(10)));
    open_state.project_name = folder.path("p.cvp");
    document.parts[0].part_title = u"Tïtle";
    ASSERT_FALSE(
        write_project(document, selection, open_state, open_state.project_name, selection.cursor));
    ASSERT_TRUE(open(folder.path("p.cvp"))) << name;
    EXPECT_EQ(document.parts[0].part_title, u"Tïtle");
    EXPECT_TRUE(std::filesystem::equivalent(document.files[0].file_name, folder.path(name)));
  }
}

TEST_F(ProjectFile, ReadsTheOlderForm) {
  const std::string name = folder.file("ä.mp3", frames(10));
  const std::string part = "part_title=M\xFCller\npart_size=417\npart_beg=0\n";
  ASSERT_TRUE(open_text("x\nfile=" + wide_to_hex(bytes_to_wide(name, true)) + "\n" + part));
  EXPECT_EQ(parts(), "0-1:Müller");
  ASSERT_TRUE(open_text("x\nfile=\xE4.mp3\n" + part));
  EXPECT_EQ(document.files[0].file_name, name);
  EXPECT_FALSE(open_text("x\nfile=430\n" + part));  // half a character
}

TEST_F(ProjectFile, BringsOddTextsIntoOrder) {
  const std::string part = "part_size=4170\npart_beg=0\n";
  const std::pair<std::string, std::string> texts[] = {
      // Parts are sorted and names are cut.
      {"part_filepos=417\npart_size=417\npart_beg=900\npart_filepos=834\npart_size=834\n"
       "part_beg=5\npart_title=" +
           std::string(350, 'x') + "\npart_size=417\npart_beg=100000\n",
       "2-4 1-2 0-1:" + std::string(300, 'x')},
      // Of two that claim one place the later comes first.
      {"part_filepos=417\npart_size=417\npart_beg=5\npart_filepos=834\npart_size=834\npart_beg=5\n",
       "2-4 1-2"},
      // Places are taken within the stream only.
      {part + "position=99999\nsel_beg=5000\nsel_end=417\n", "0-10 @10"},
      {part + "position=-5\nsel_beg=0\n", "0-10 @10"}};
  for (const auto& [text, expected] : texts) {
    ASSERT_TRUE(open_with(text));
    EXPECT_EQ(parts() + places(), expected);
  }
}

// The first source was probed; a second line about it must not move its bounds.
TEST_F(ProjectFile, ASourceNamedTwiceIsOneSource) {
  folder.file("b.mp3", frames(10));
  ASSERT_TRUE(
      open_with("file_beg=5\nfile_end=10\nfile=a.mp3\nfile=./b.mp3\nfile=.//b.mp3\n"
                "part_file=1\npart_size=417\npart_beg=0\n"));
  EXPECT_EQ(file_count(document), 2);
  EXPECT_EQ(document.files[0].first_audio, 0U);
  EXPECT_EQ(document.files[0].audio_end, 100 * length);
}

TEST_F(ProjectFile, RefusesWhatNoDocumentCanBe) {
  folder.file("b.mp3", frames(10));
  const std::string part = "part_size=417\npart_beg=0\n";
  std::string many;
  for (int i = 0; i < 1001; ++i) many += part;
  const std::string texts[] = {"part_file=1\n" + part,
                               "part_beg=0\n",
                               "part_filepos=-417\npart_size=834\npart_beg=0\n",
                               "part_size=-1000\npart_beg=0\npart_size=2000\npart_beg=0\n",
                               many,
                               "",
                               "file_beg=10\nfile_end=10\nfile=b.mp3\n" + part,
                               "file_end=0\nfile=b.mp3\n" + part,
                               "file_end=99\nfile=" + std::string(401, 'x') + "\n" + part,
                               "file_end=99\nfile=C:\\b.mp3\n" + part};
  for (const std::string& text : texts) {
    EXPECT_FALSE(open_with(text)) << text.substr(0, 60);
    EXPECT_TRUE(document.files.empty());
    EXPECT_NE(take_box(), "");
  }
}

// Cut off anywhere, it opens whole up to the cut or tells the failure.
TEST_F(ProjectFile, CutOffAtEveryByteItIsStillSound) {
  make_document();
  const std::string text = project_text(document, selection, selection.cursor);
  std::size_t opened = 0;
  for (std::size_t size = 0; size < text.size(); ++size) {
    if (open_text(text.substr(0, size))) ++opened;
    expect_sound_document();
  }
  EXPECT_GT(opened, 100U);
}

TEST_F(ProjectFile, MovesBordersAlongWithATagInFront) {
  ASSERT_TRUE(append_file(document, folder.file("b.mp3", frames(50))) == AppendResult::appended);
  ASSERT_FALSE(
      write_project(document, selection, open_state, open_state.project_name, selection.cursor));
  const auto with_tag = [](int count) {
    return Mp3Builder{}.id3v2(std::string(4000, ' ')).frames(count).bytes();
  };
  const auto open_with_changed = [&](const char* name, const Bytes& bytes) {
    folder.file(name, bytes);
    EXPECT_TRUE(open(folder.path("p.cvp"))) << name;
    return std::pair{document.parts[0].part_filepos, document.parts[1].part_filepos};
  };
  EXPECT_EQ(open_with_changed("a.mp3", with_tag(100)), (std::pair{4010U, 0U}));
  EXPECT_EQ(open_with_changed("b.mp3", with_tag(50)), (std::pair{4010U, 4010U}));
  EXPECT_NE(take_box().find("moved along"), std::string::npos);
  EXPECT_TRUE(may_save_from_sources(document));
  // Other audio leaves them where they are, which is told and asked about.
  EXPECT_EQ(open_with_changed("b.mp3", with_tag(49)), (std::pair{4010U, 0U}));
  EXPECT_NE(take_box().find("not the one"), std::string::npos);
  EXPECT_FALSE(may_save_from_sources(document));
}

TEST_F(ProjectFile, SaveCommandGoesByTheExtension) {
  open_state.project_name.clear();
  settings.msg_hide = 0xFFFF;
  open_state.document_modified = true;
  EXPECT_FALSE(save_project(editor, false, false));  // cancelled
  EXPECT_EQ(host.dialogs.back().path, folder.path("a.cvp"));
  host.new_files = {folder.path("x.txt")};
  EXPECT_FALSE(save_project(editor, false, false));
  EXPECT_EQ(host.boxes.back().text, "Could not create/write to file.\n" + folder.path("x.txt") +
                                        "\nThe name must end in .cvp or .cue.");
  host.new_files = {folder.path("x.cvp")};
  EXPECT_TRUE(save_project(editor, true, false));
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(save_project(editor, false, false));  // without asking again
  host.new_files = {folder.path("x.cvp")};
  EXPECT_TRUE(save_project(editor, true, true));
  EXPECT_EQ(open_state.project_name, folder.path("x.cue"));
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "x.cue", "x.cvp"}));
}

TEST_F(ProjectFile, UnsavedChangesAreAskedAbout) {
  EXPECT_TRUE(confirm_discard_changes(editor));
  open_state.document_modified = true;
  EXPECT_FALSE(confirm_discard_changes(editor));  // Cancel is the default
  EXPECT_EQ(host.boxes.back().text, "Changes unsaved. Save modified Project?");
  host.answers = {BoxAnswer::no};
  EXPECT_TRUE(confirm_discard_changes(editor));
  EXPECT_FALSE(open_state.document_modified);
  open_state.document_modified = true;
  settings.warn = 2;
  EXPECT_TRUE(confirm_discard_changes(editor));
}

}  // namespace
}  // namespace corvelin::test

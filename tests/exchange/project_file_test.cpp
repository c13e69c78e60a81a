// Projects: the text to the letter, the way back, and texts that lie.
#include "exchange/project_file.h"

#include "exchange/save_project.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "platform/text.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class ProjectFile : public CoreTest {
 protected:
  // A document of two files and three parts, with everything set that a project holds.
  void make_document() {
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
    const auto file =
        add_source_file(folder.file("sub ümlaut.mp3", Mp3Builder{}.frames(50).bytes()));
    document.files[*file].first_audio = length;
    document.files[*file].audio_end = 50 * length;
    delete_range(10 * length, 20 * length);
    add_part(document.total_size, *file, length, 5 * length);
    document.parts[1].part_gainbeg = -12;
    document.parts[1].part_title = u"Tïtle";
    document.parts[2].part_artist = u"Artist";
    document.parts[2].part_iscue = 1;
    document.end_gain = -40;
    document.sheet_title = u"Album";
    document.sheet_artist = u"Band";
    seek_to(2 * length);
    set_sel_begin(length);
    set_sel_end(3 * length);
    stream.vbr = 1;
  }

  bool open_project(const std::string& path) {
    open_state.audio_name = path;
    return open_document();
  }

  // Opens a project whose first source is a file of 100 frames, followed by these lines.
  bool open_with(const std::string& lines) {
    folder.file("a.mp3", Mp3Builder{}.frames(100).bytes());
    return open_project(
        folder.file("p.cvp", "x\nutf8=1\nfile_beg=0\nfile_end=1\nfile=a.mp3\n" + lines));
  }
};

TEST_F(ProjectFile, IsWrittenInItsOrder) {
  make_document();
  open_state.project_name = folder.path("p.cvp");
  EXPECT_EQ(project_text(folder.path("")),
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
}

TEST_F(ProjectFile, ComesBackWithEveryFieldAndFromAMovedFolder) {
  make_document();
  open_state.project_name = folder.path("p.cvp");
  const std::string text = project_text(folder.path(""));
  ASSERT_FALSE(write_project());
  const TestFolder other;
  for (const char* const name : {"p.cvp", "a.mp3", "sub ümlaut.mp3"})
    std::filesystem::copy(folder.path(name), other.path(name));
  ASSERT_TRUE(open_project(other.path("p.cvp")));
  EXPECT_EQ(document.files[1].file_name, other.path("sub ümlaut.mp3"));
  EXPECT_EQ(project_text(other.path("")), text);
  EXPECT_EQ(document.current_part, 0);
  EXPECT_EQ(settings.file_recent.front(), other.path("p.cvp"));
  EXPECT_FALSE(open_state.document_modified);

  std::filesystem::remove(other.path("sub ümlaut.mp3"));
  EXPECT_FALSE(open_project(other.path("p.cvp")));
  EXPECT_TRUE(document.files.empty());
  EXPECT_EQ(host.boxes.back().text.find("Project file: " + other.path("p.cvp") + "\n\n"), 0U);
}

TEST_F(ProjectFile, NamesSourcesElsewhereInFull) {
  make_document();
  EXPECT_NE(project_text(folder.path("deeper/")).find("file=" + folder.path("a.mp3") + "\r\n"),
            std::string::npos);
}

TEST_F(ProjectFile, OddFileNamesSurvive) {
  const Bytes bytes = Mp3Builder{}.frames(10).bytes();
  for (const char* const name : {"line\nend\r.mp3", "1 digit.mp3", "not\xFFutf8.mp3",
                                 "back\\slash.mp3", "a=b.mp3", "/double.mp3"}) {
    ASSERT_TRUE(open(name, bytes));
    open_state.project_name = folder.path("p.cvp");
    ASSERT_FALSE(write_project());
    ASSERT_TRUE(open_project(folder.path("p.cvp"))) << name;
    EXPECT_TRUE(std::filesystem::equivalent(document.files[0].file_name, folder.path(name)));
  }
}

TEST_F(ProjectFile, ReadsTheOlderForm) {
  const std::string name = folder.file("ä.mp3", Mp3Builder{}.frames(10).bytes());
  const std::string part = "part_title=M\xFCller\npart_size=417\npart_beg=0\n";
  ASSERT_TRUE(open_project(
      folder.file("p.cvp", "x\nfile=" + wide_to_hex(bytes_to_wide(name, true)) + "\n" + part)));
  EXPECT_EQ(document.parts[0].part_title, u"Müller");
  ASSERT_TRUE(open_project(folder.file("p.cvp", "x\nfile=\xE4.mp3\n" + part)));
  EXPECT_EQ(document.files[0].file_name, name);
  EXPECT_FALSE(open_project(folder.file("p.cvp", "x\nfile=430\n" + part)));  // half a character
}

TEST_F(ProjectFile, SortsPartsAndCutsNames) {
  ASSERT_TRUE(
      open_with("part_filepos=417\npart_size=417\npart_beg=900\n"
                "part_filepos=834\npart_size=834\npart_beg=5\npart_title=" +
                std::string(350, 'x') + "\npart_size=1\npart_beg=100000\n"));
  ASSERT_EQ(part_count(), 3);
  EXPECT_EQ(document.parts[0].part_filepos, 834U);
  EXPECT_EQ(document.parts[1].part_beg, 834U);
  EXPECT_EQ(document.parts[2].part_title.size(), 300U);
  EXPECT_EQ(selection.sel_beg, no_position);
}

// The first source was probed; a second line about it must not move its bounds.
TEST_F(ProjectFile, ASourceNamedTwiceIsOneSource) {
  folder.file("b.mp3", Mp3Builder{}.frames(10).bytes());
  ASSERT_TRUE(
      open_with("file_beg=5\nfile_end=10\nfile=a.mp3\nfile=./b.mp3\nfile=.//b.mp3\n"
                "part_file=1\npart_size=417\npart_beg=0\n"));
  EXPECT_EQ(file_count(), 2);
  EXPECT_EQ(document.files[0].first_audio, 0U);
  EXPECT_EQ(document.files[0].audio_end, 100 * length);
  const std::string text = project_text();
  close_document();
  ASSERT_TRUE(parse_project(text));
  EXPECT_EQ(project_text(), text);
}

TEST_F(ProjectFile, TakesPlacesOnlyWithinTheStream) {
  const std::string part = "part_size=4170\npart_beg=0\n";
  ASSERT_TRUE(open_with(part + "position=99999\nsel_beg=5000\nsel_end=417\n"));
  EXPECT_EQ(selection.cursor, 4170U);
  EXPECT_EQ(selection.sel_beg, no_position);
  ASSERT_TRUE(open_with(part + "position=-5\nsel_beg=0\n"));
  EXPECT_EQ(selection.cursor, 4170U);
  EXPECT_EQ(selection.sel_end, no_position);
}

TEST_F(ProjectFile, RefusesWhatNoDocumentCanBe) {
  folder.file("b.mp3", Mp3Builder{}.frames(10).bytes());
  std::string many;
  for (int i = 0; i < 1001; ++i) many += "part_size=417\npart_beg=0\n";
  for (const std::string& lines :
       {std::string("part_file=1\npart_size=417\npart_beg=0\n"), std::string("part_beg=0\n"),
        std::string("part_filepos=-417\npart_size=834\npart_beg=0\n"),
        std::string("part_size=-1000\npart_beg=0\npart_size=2000\npart_beg=0\n"), many,
        std::string(),
        std::string("file_beg=10\nfile_end=10\nfile=b.mp3\npart_size=1\npart_beg=0\n"),
        std::string("file_end=0\nfile=b.mp3\npart_size=1\npart_beg=0\n"),
        "file_end=99\nfile=" + std::string(401, 'x') + "\npart_size=1\npart_beg=0\n",
        std::string("file_end=99\nfile=C:\\b.mp3\npart_size=1\npart_beg=0\n")}) {
    host.boxes.clear();
    EXPECT_FALSE(open_with(lines)) << lines.substr(0, 60);
    EXPECT_TRUE(document.files.empty());
    EXPECT_EQ(host.boxes.size(), 1U);
  }
}

// Cut off anywhere, it opens whole up to the cut or tells the failure.
TEST_F(ProjectFile, CutOffAtEveryByteItIsStillSound) {
  make_document();
  open_state.project_name = folder.path("p.cvp");
  const std::string text = project_text();
  std::size_t opened = 0;
  for (std::size_t size = 0; size < text.size(); ++size) {
    if (open_project(folder.file("p.cvp", text.substr(0, size)))) ++opened;
    expect_sound_document();
  }
  EXPECT_GT(opened, 100U);
}

TEST_F(ProjectFile, SaveCommandGoesByTheExtension) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  settings.msg_hide = 0xFFFF;
  open_state.document_modified = true;
  EXPECT_FALSE(save_project(false, false));  // cancelled
  EXPECT_EQ(host.dialogs.back().path, folder.path("a.cvp"));
  EXPECT_TRUE(open_state.project_name.empty());

  host.new_files = {folder.path("x.txt")};
  EXPECT_FALSE(save_project(false, false));
  EXPECT_EQ(host.boxes.back().text, "Could not create/write to file.");
  host.new_files = {folder.path("x.cvp")};
  EXPECT_TRUE(save_project(true, false));
  EXPECT_FALSE(open_state.document_modified);
  open_state.document_modified = true;
  EXPECT_TRUE(save_project(false, false));  // without asking again
  EXPECT_TRUE(host.new_files.empty());
  host.new_files = {folder.path("x.cvp")};
  EXPECT_TRUE(save_project(true, true));
  EXPECT_EQ(open_state.project_name, folder.path("x.cue"));
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "x.cue", "x.cvp"}));
}

TEST_F(ProjectFile, UnsavedChangesAreAskedAbout) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  EXPECT_TRUE(confirm_discard_changes());
  open_state.document_modified = true;
  EXPECT_FALSE(confirm_discard_changes());  // Cancel is the default
  EXPECT_EQ(host.boxes.back().text, "Changes unsaved. Save modified Project?");
  host.answers = {BoxAnswer::no};
  EXPECT_TRUE(confirm_discard_changes());
  EXPECT_FALSE(open_state.document_modified);
  open_state.document_modified = true;
  settings.warn = 2;
  EXPECT_TRUE(confirm_discard_changes());
}

}  // namespace
}  // namespace corvelin::test

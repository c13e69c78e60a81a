// Saves: what stands in the target, and what becomes of the source.
#include "exchange/save_audio.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "exchange/save_run.h"
#include "exchange/settings.h"
#include "model/selection.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SaveTest : public CoreTest {
 protected:
  SaveOutcome save_as(const std::string& name) {
    host.new_files = {folder.path(name)};
    return save_audio();
  }
};

const std::string title_frame = Mp3Builder::id3v2_frame("TIT2", std::string("\0Title", 6));

TEST_F(SaveTest, CopiesTagsAndFramesBitForBit) {
  const Bytes bytes =
      Mp3Builder{}.id3v2(title_frame).shape({.noisy = true}).frames(500).id3v1("x").bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("b.mp3")), bytes);
  EXPECT_EQ(settings.file_recent.front(), folder.path("b.mp3"));
  EXPECT_EQ(host.dialogs.front().title, "Create audio file");
  EXPECT_EQ(host.dialogs.front().types.front().pattern, "*.mp3");
}

TEST_F(SaveTest, LeavesOutWhatTheSettingsSay) {
  const Bytes audio = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}
                                .id3v2(title_frame)
                                .vbr_header({.marker = "Info", .frames = 100})
                                .raw(audio)
                                .ape(50, true)
                                .id3v1("x")
                                .bytes()));
  settings.keep_id3v2 = 0;
  settings.keep_info = 0;
  open_state.keep_id3v1 = false;
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("b.mp3")), audio);
}

TEST_F(SaveTest, MakesTheStoredDurationSayNothing) {
  struct Row {
    std::string tag;
    std::string expected;
  };
  const std::string zeros(10, '\0');
  const std::string second_duration = Mp3Builder::id3v2_frame("TLEN", "abc");
  for (const Row& row :
       {Row{Mp3Builder::id3v2_frame("TLEN",
                                    "\x01"
                                    "123456") +
                title_frame,
            Mp3Builder::id3v2_frame("TXXX", std::string(7, '\0')) + title_frame},
        // A size that goes beyond the tag: zeroing ends with it.
        Row{std::string("TLEN\0\0\0\xFF\0\0abc", 13), std::string("TXXX\0\0\0\xFF\0\0\0\0\0", 13)},
        // Found inside a text too, and only the first one is treated.
        Row{"xTLENabc\x02yz12345" + second_duration,
            "xTXXXabc\x02yz" + std::string(2, '\0') + "345" + second_duration},
        // Too near to the tag's end to be a frame.
        Row{zeros + "TLEN1234", zeros + "TLEN1234"}}) {
    const Bytes audio = Mp3Builder{}.frames(50).bytes();
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.id3v2(row.tag).raw(audio).bytes()));
    settings.warn_existing = 0;
    ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
    EXPECT_EQ(read_file(folder.path("b.mp3")), Mp3Builder{}.id3v2(row.expected).raw(audio).bytes());
  }
}

TEST_F(SaveTest, DurationIsFoundAcrossBlocks) {
  for (const std::size_t before : {65520UL, 65526UL, 65530UL, 65536UL}) {
    const std::string padding(before, 'p');
    const Bytes audio = Mp3Builder{}.frames(50).bytes();
    ASSERT_TRUE(open(
        "a.mp3",
        Mp3Builder{}.id3v2(padding + Mp3Builder::id3v2_frame("TLEN", "12345")).raw(audio).bytes()));
    settings.warn_existing = 0;
    ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
    EXPECT_EQ(read_file(folder.path("b.mp3")),
              Mp3Builder{}
                  .id3v2(padding + Mp3Builder::id3v2_frame("TXXX", std::string(5, '\0')))
                  .raw(audio)
                  .bytes());
  }
}

TEST_F(SaveTest, SavedVbrFileReadsBackAsItWasWritten) {
  Mp3Builder audio;
  for (int i = 0; i < 150; ++i) audio.frame({.bitrate = 64}).frame({.bitrate = 192});
  ASSERT_TRUE(open("a.mp3", audio.bytes()));
  ASSERT_EQ(stream.vbr, 1);
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  close_all();
  open_state.audio_name = folder.path("b.mp3");
  ASSERT_TRUE(open_document());
  EXPECT_EQ(stream.vbr, 6);
  EXPECT_EQ(stream.xing_frames, 300U);
  EXPECT_EQ(document.total_size, audio.size());
  EXPECT_FLOAT_EQ(stream.avg_frame_size, static_cast<float>(417 + audio.size()) / 300);
  EXPECT_GT(stream.toc[99], stream.toc[50]);

  settings.write_xing = 0;
  ASSERT_EQ(save_as("c.mp3"), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("c.mp3")), audio.bytes());
}

TEST_F(SaveTest, SavesTheSelectionWithItsOwnHeader) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header({.marker = "Info"}).frames(100).bytes()));
  EXPECT_EQ(save_selection(), SaveOutcome::not_started);
  EXPECT_EQ(host.boxes.back().text, "No selection or selection too short.");
  set_sel_begin(10 * length);
  set_sel_end(30 * length);
  settings.save_quit = 1;
  open_state.document_modified = true;
  host.new_files = {folder.path("b.mp3")};
  ASSERT_EQ(save_selection(), SaveOutcome::saved);
  const Bytes saved = read_file(folder.path("b.mp3"));
  EXPECT_EQ(saved.size(), 21 * length);
  EXPECT_EQ(saved[47], 20);  // the header's count of frames
  EXPECT_FALSE(host.close_requested);
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_FALSE(open_state.selection_only);
}

TEST_F(SaveTest, AacGetsItsId3v2TagAndNothingElse) {
  Mp3Builder aac = Mp3Builder{}.id3v2(title_frame);
  for (std::size_t i = 0; i < 100; ++i) aac.raw(adts_frame(44100, 300 + i));
  const Bytes without_tag = aac.bytes();
  ASSERT_TRUE(open("a.aac", aac.id3v1("x").bytes()));
  stream.vbr = 1;
  ASSERT_EQ(save_as("b.aac"), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("b.aac")), without_tag);
  EXPECT_EQ(host.dialogs.front().types.front().pattern, "*.aac");
}

TEST_F(SaveTest, ReSyncsAreTold) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(50).zeros(20).frames(50).bytes()));
  SaveRun run(folder.path("b.mp3"), false);
  ASSERT_TRUE(run.begin());
  while (run.step()) {
  }
  EXPECT_EQ(run.result(), 100U);
  EXPECT_EQ(run.report(), "Frames: 100    Re-syncs: 1\r\n");
  EXPECT_EQ(read_file(folder.path("b.mp3")), Mp3Builder{}.frames(100).bytes());
}

TEST_F(SaveTest, ReplacesTheSourceByAnyNameOfIt) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  const auto replace = [&](const std::string& name) {
    EXPECT_TRUE(open("a.mp3", bytes));
    document.parts[0].part_size = 50 * length;
    recompute_total();
    host.boxes.clear();
    host.answers = {BoxAnswer::yes};
    EXPECT_EQ(save_as(name), SaveOutcome::saved) << name;
    ASSERT_EQ(host.boxes.size(), 1U) << name;
    EXPECT_EQ(host.boxes[0].text,
              folder.path(name) + "\n\nReally close and replace the source file?");
    EXPECT_TRUE(document.files.empty());
    EXPECT_EQ(read_file(folder.path(name)), Mp3Builder{}.frames(50).bytes()) << name;
  };
  replace("a.mp3");
  replace("./a.mp3");
  replace("A.mp3");
  std::filesystem::create_symlink("a.mp3", folder.path("link.mp3"));
  replace("link.mp3");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.mp3")));
  EXPECT_EQ(read_file(folder.path("a.mp3")), Mp3Builder{}.frames(50).bytes());
  std::filesystem::create_hard_link(folder.path("a.mp3"), folder.path("hard.mp3"));
  replace("hard.mp3");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"A.mp3", "a.mp3", "hard.mp3", "link.mp3"}));
}

TEST_F(SaveTest, KeepsTheSourceWhenTheAnswerIsNo) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  EXPECT_EQ(save_as("a.mp3"), SaveOutcome::not_started);
  EXPECT_EQ(host.boxes.back().default_answer, BoxAnswer::no);
  EXPECT_FALSE(document.files.empty());
  settings.warn = 1;
  EXPECT_EQ(save_as("a.mp3"), SaveOutcome::saved);
  EXPECT_EQ(host.boxes.size(), 1U);
}

// A save beside the file asks, when what stands there is a source or leads to one.
TEST_F(SaveTest, UnattendedItReplacesNoSourceUnasked) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  ASSERT_EQ(save_unattended(false), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")), bytes);
  document.parts[0].part_size = 50 * length;
  recompute_total();

  std::filesystem::remove(folder.path("a.mp3.mp3"));
  std::filesystem::create_symlink("a.mp3", folder.path("a.mp3.mp3"));
  EXPECT_EQ(save_unattended(false), SaveOutcome::not_started);
  std::filesystem::remove(folder.path("a.mp3.mp3"));
  add_source_file(folder.file("a.mp3.mp3", bytes));
  EXPECT_EQ(save_unattended(false), SaveOutcome::not_started);
  EXPECT_EQ(read_file(folder.path("a.mp3")), bytes);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")), bytes);
  host.answers = {BoxAnswer::yes};
  EXPECT_EQ(save_unattended(false), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")), Mp3Builder{}.frames(50).bytes());
  EXPECT_TRUE(document.files.empty());
}

// Many programs save by renaming a new file over the old one, so the name is of another file then.
TEST_F(SaveTest, TheNameOfASourceStaysOne) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  folder.file("new.mp3", "new");
  std::filesystem::rename(folder.path("new.mp3"), folder.path("a.mp3"));
  EXPECT_EQ(save_as("a.mp3"), SaveOutcome::not_started);
  EXPECT_EQ(read_text(folder.path("a.mp3")), "new");
}

TEST_F(SaveTest, ReplacesASourceWhoseNameIsAsLongAsNamesGet) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  const std::string name = std::string(250, 'x') + "x.mp3";
  ASSERT_TRUE(open(name, bytes));
  EXPECT_EQ(save_unattended(true), SaveOutcome::saved);
  EXPECT_EQ(folder.names(), std::vector<std::string>{name});
}

TEST_F(SaveTest, NeverTouchesAFileThatGoesByTheTemporaryName) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  add_source_file(folder.file("a.mp3.~~~.mp3", bytes));
  EXPECT_EQ(save_unattended(true), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("a.mp3.~~~.mp3")), bytes);
  EXPECT_EQ(read_file(folder.path("a.mp3")), bytes);
  EXPECT_EQ(folder.names().size(), 2U);

  // A link that waits there is not followed, wherever it leads.
  ASSERT_TRUE(open("b.mp3", bytes));
  const std::string beside = name_beside(folder.path("b.mp3"));
  std::filesystem::create_symlink("elsewhere", folder.path("b.mp3.~~~.mp3"));
  std::filesystem::create_symlink("elsewhere", beside);
  EXPECT_EQ(save_unattended(true), SaveOutcome::saved);
  folder.file("c.mp3", "old");
  ASSERT_TRUE(open("b.mp3", bytes));
  EXPECT_EQ(save_as("c.mp3"), SaveOutcome::saved);
  EXPECT_FALSE(replace_file(folder.path("d"), "text"));
  EXPECT_FALSE(file_facts(folder.path("elsewhere")).found);
  EXPECT_TRUE(
      std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.path("b.mp3"))));
  EXPECT_EQ(read_file(folder.path("c.mp3")), bytes);
}

TEST_F(SaveTest, KeepsDatesAndPermissions) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  ::chmod(folder.path("a.mp3").c_str(), 0640);
  const std::timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
  ::utimensat(AT_FDCWD, folder.path("a.mp3").c_str(), times, 0);
  settings.keep_date = 2;
  ASSERT_EQ(save_as("new.mp3"), SaveOutcome::saved);
  EXPECT_EQ(file_facts(folder.path("new.mp3")).write_time.tv_sec, 1100000000);
  settings.keep_date = 1;
  ASSERT_EQ(save_as("newer.mp3"), SaveOutcome::saved);
  EXPECT_NE(file_facts(folder.path("newer.mp3")).write_time.tv_sec, 1100000000);
  ASSERT_EQ(save_unattended(true), SaveOutcome::saved);
  EXPECT_EQ(file_facts(folder.path("a.mp3")).write_time.tv_sec, 1100000000);
  EXPECT_EQ(std::filesystem::status(folder.path("a.mp3")).permissions(),
            std::filesystem::perms{0640});
}

TEST_F(SaveTest, CancelLeavesWhatStoodBefore) {
  const Bytes bytes = Mp3Builder{}.frames(9000).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  const auto cancel_into = [&](const std::string& name, bool replaces) {
    SaveRun run(folder.path(name), replaces);
    ASSERT_TRUE(run.begin());
    ASSERT_TRUE(run.step());
    run.cancel();
    EXPECT_EQ(run.result(), 0U);
    EXPECT_FALSE(run.step());
  };
  cancel_into("new.mp3", false);
  EXPECT_GT(file_facts(folder.path("new.mp3")).size, 0U);  // as far as it got
  folder.file("old.mp3", "old");
  cancel_into("old.mp3", false);
  EXPECT_EQ(read_text(folder.path("old.mp3")), "old");
  cancel_into("a.mp3", true);
  EXPECT_EQ(read_file(folder.path("a.mp3")), bytes);
  EXPECT_EQ(folder.names(),
            (std::vector<std::string>{"a.mp3", "a.mp3.~~~.mp3", "new.mp3", "old.mp3"}));
  EXPECT_FALSE(document.files.empty());
}

TEST_F(SaveTest, DoesNotTakeAShrunkenSourceForAWholeOne) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  std::filesystem::resize_file(folder.path("a.mp3"), 50 * length);
  set_sel_begin(10 * length);
  set_sel_end(50 * length);
  host.new_files = {folder.path("whole.mp3")};
  EXPECT_EQ(save_selection(), SaveOutcome::saved);  // all of this is still there
  EXPECT_EQ(save_unattended(true), SaveOutcome::failed);
  EXPECT_NE(host.boxes.back().text.find("has become shorter"), std::string::npos);
  EXPECT_EQ(file_facts(folder.path("a.mp3")).size, 50 * length);
  settings.file_recent.clear();
  settings.save_quit = 1;
  open_state.document_modified = true;
  EXPECT_EQ(save_as("b.mp3"), SaveOutcome::failed);  // but what there is, is saved
  EXPECT_TRUE(open_state.document_modified && settings.file_recent.empty());
  EXPECT_FALSE(host.close_requested);
  EXPECT_EQ(read_file(folder.path("b.mp3")), Mp3Builder{}.frames(50).bytes());
  std::filesystem::resize_file(folder.path("a.mp3"), 10);
  folder.file("c.mp3", "old");
  EXPECT_EQ(save_as("c.mp3"), SaveOutcome::failed);
  EXPECT_EQ(read_text(folder.path("c.mp3")), "old");
}

TEST_F(SaveTest, SavesAFileThatWasDeletedMeanwhile) {
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  std::filesystem::remove(folder.path("a.mp3"));
  EXPECT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  EXPECT_EQ(read_file(folder.path("b.mp3")), bytes);
}

TEST_F(SaveTest, TellsWhatATargetLacks) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  std::filesystem::create_directory(folder.path("dir"));
  ::mkfifo(folder.path("pipe").c_str(), 0666);
  for (const char* const name : {"absent/b.mp3", "dir", "pipe"}) {
    host.boxes.clear();
    EXPECT_EQ(save_as(name), SaveOutcome::failed) << name;
    ASSERT_EQ(host.boxes.size(), 1U) << name;
    EXPECT_EQ(host.boxes[0].caption, "Error");
  }
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "dir", "pipe"}));
}

TEST_F(SaveTest, ProposesTheWorkingFolder) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(10).bytes()));
  EXPECT_EQ(save_audio(), SaveOutcome::not_started);
  EXPECT_EQ(host.dialogs.back().path, folder.path("a.mp3"));
  open_state.save_name.clear();
  settings.workdir_onsave = 1;
  settings.working_dir = "/work place/";
  save_audio();
  EXPECT_EQ(host.dialogs.back().path, "/work place/a.mp3");
}

TEST_F(SaveTest, AsksToQuitAfterACompleteSave) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(10).bytes()));
  settings.save_quit = 1;
  save_as("b.mp3");
  EXPECT_TRUE(host.close_requested);
}

}  // namespace
}  // namespace corvelin::test

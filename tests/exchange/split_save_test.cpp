// Split saves: what stands in the pieces, and what stops a run.
#include "exchange/split_save.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SplitSaveTest : public CoreTest {
 protected:
  SplitSaveTest() { settings.split_pattern = u"%N %T"; }

  // 40 frames in noise, so that no two are alike.
  static Bytes audio() { return Mp3Builder{}.shape({.noisy = true}).frames(40).bytes(); }
  static Bytes frames_of_audio(std::size_t from, std::size_t to) {
    const Bytes all = audio();
    const auto at = [&](std::size_t frame) {
      return all.begin() + static_cast<std::ptrdiff_t>(frame * length);
    };
    return {at(from), at(to)};
  }

  static void cue_at(std::uint32_t frame, std::u16string_view title = u"") {
    Part& part = document.parts[split_at(frame * length)];
    part.part_iscue = 1;
    part.part_title = title;
  }

  // Runs a split to its end.
  SplitResult split(std::uint16_t first_number = 1) {
    SplitRun run(folder.path(""), first_number);
    while (run.step()) {
    }
    status = run.status();
    report = run.report();
    log = run.log();
    return run.result();
  }

  [[nodiscard]] std::vector<std::string> pieces() const {
    std::vector<std::string> names;
    for (const std::string& name : folder.names())
      if (name != "a.mp3") names.push_back(name);
    return names;
  }
  [[nodiscard]] Bytes piece(const std::string& name) const { return read_file(folder.path(name)); }

  std::string status;
  std::string report;
  std::string log;
};

TEST_F(SplitSaveTest, WritesARegionACue) {
  ASSERT_TRUE(open("a.mp3", audio()));
  cue_at(10, u"Two");
  split_at(15 * length);  // a plain cut parts nothing
  cue_at(25, u"Zwölf/Três");
  set_sel_begin(5 * length);
  set_sel_end(6 * length);
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(pieces(), (std::vector<std::string>{"01 .mp3", "02 Two.mp3", "03 Zwölf_Três.mp3"}));
  EXPECT_EQ(piece("01 .mp3"), frames_of_audio(0, 10));
  EXPECT_EQ(piece("02 Two.mp3"), frames_of_audio(10, 25));
  EXPECT_EQ(piece("03 Zwölf_Três.mp3"), frames_of_audio(25, 40));
  EXPECT_EQ(log, folder.path("01 .mp3") + "\r\n" + folder.path("02 Two.mp3") + "\r\n" +
                     folder.path("03 Zwölf_Três.mp3") + "\r\n");
  EXPECT_EQ(open_state.save_name, folder.path("03 Zwölf_Três.mp3"));
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_TRUE(settings.file_recent.size() == 1 && host.boxes.empty());
}

TEST_F(SplitSaveTest, AFileWithoutCuesIsOnePiece) {
  ASSERT_TRUE(open("a.mp3", audio()));
  document.parts[0].part_iscue = 0;
  EXPECT_EQ(count_split_regions(), 1);
  EXPECT_EQ(split(7), SplitResult::finished);
  EXPECT_EQ(piece("07 .mp3"), audio());
}

TEST_F(SplitSaveTest, PiecesOverlapByTheirBeginnings) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.shape({.noisy = true}).frames(400).bytes()));
  cue_at(20);
  cue_at(200);
  settings.split_overlap = 128 + 2;
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(piece("01 .mp3").size(), 20 * length);
  EXPECT_EQ(piece("02 .mp3").size(), 200 * length);  // there are no two seconds before it
  // Two seconds are about 76.6 frames, which end with a whole one.
  EXPECT_EQ(piece("03 .mp3").size(), (200 + 76) * length);
  settings.split_overlap = 2;  // off
  EXPECT_EQ(split(11), SplitResult::finished);
  EXPECT_EQ(piece("13 .mp3").size(), 200 * length);
}

TEST_F(SplitSaveTest, NeverReplacesAnything) {
  ASSERT_TRUE(open("a.mp3", audio()));
  cue_at(10);
  const std::string victim = folder.file("victim", "old");
  const auto expect_refused = [&](const char* what) {
    EXPECT_EQ(split(), SplitResult::create_error) << what;
    EXPECT_EQ(status, "Create error!");
    EXPECT_EQ(report, "Create error!\r\n" + folder.path("02 .mp3") + "\r\nFile exists\r\n");
    EXPECT_EQ(piece("01 .mp3"), frames_of_audio(0, 10));  // the complete one stays
    std::filesystem::remove(folder.path("01 .mp3"));
    std::filesystem::remove(folder.path("02 .mp3"));
  };
  folder.file("02 .mp3", "old");
  expect_refused("a file");
  std::filesystem::create_symlink(victim, folder.path("02 .mp3"));
  expect_refused("a link");
  std::filesystem::create_symlink("nowhere", folder.path("02 .mp3"));
  expect_refused("a link that leads nowhere");
  ::mkfifo(folder.path("02 .mp3").c_str(), 0666);
  expect_refused("a pipe");
  std::filesystem::create_directory(folder.path("02 .mp3"));
  expect_refused("a folder");
  EXPECT_EQ(read_text(victim), "old");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "victim"}));

  settings.split_pattern = u"%F";  // the name of the source itself
  EXPECT_EQ(split(), SplitResult::create_error);
  EXPECT_EQ(piece("a.mp3"), audio());
}

TEST_F(SplitSaveTest, NamesTheFolderThatIsNotThere) {
  ASSERT_TRUE(open("a.mp3", audio()));
  EXPECT_EQ(split_unattended(folder.path("absent")), SaveOutcome::failed);
  EXPECT_EQ(open_state.split_dest_folder, folder.path("absent/"));
  EXPECT_EQ(pieces(), std::vector<std::string>{});
  open_state.document_modified = true;
  EXPECT_EQ(split_unattended(""), SaveOutcome::saved);
  EXPECT_EQ(pieces(), std::vector<std::string>{"01 .mp3"});
  EXPECT_TRUE(open_state.document_modified);
}

TEST_F(SplitSaveTest, EachPieceHasItsTagsAndItsSourcesDate) {
  const std::string old_title = "old";
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}
                                .id3v2(Mp3Builder::id3v2_frame("TLEN", "123"))
                                .raw(audio())
                                .id3v1(old_title)
                                .bytes()));
  cue_at(10, u"Two");
  cue_at(20, u"Three");
  document.parts[1].part_artist = u"Singer";
  settings.split_id3v11 = 1;
  settings.split_id3v2 = 1;
  settings.keep_id3v2 = 0;  // rules over whole saves alone
  const std::timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
  ::utimensat(AT_FDCWD, folder.path("a.mp3").c_str(), times, 0);
  settings.keep_date = 2;
  EXPECT_EQ(split(9), SplitResult::finished);
  const Bytes neutral =
      Mp3Builder{}.id3v2(Mp3Builder::id3v2_frame("TXXX", std::string(3, '\0'))).bytes();
  const auto expect_piece = [&](const std::string& name, std::size_t from, std::size_t to,
                                const std::string& title, const std::string& artist, char track) {
    std::string tag = "TAG" + title;
    tag.resize(33);
    tag += artist;
    tag.resize(126);
    EXPECT_EQ(
        piece(name),
        Mp3Builder{}.raw(neutral).raw(frames_of_audio(from, to)).raw(tag + track + '\xFF').bytes())
        << name;
  };
  expect_piece("09 .mp3", 0, 10, "", "", 9);
  EXPECT_EQ(file_facts(folder.path("09 .mp3")).write_time.tv_sec, 1100000000);
  expect_piece("10 Two.mp3", 10, 20, "Two", "Singer", 10);
  expect_piece("11 Three.mp3", 20, 40, "Three", "Singer", 11);  // kept from the piece before
}

TEST_F(SplitSaveTest, TagsFollowTheSettingAfterwards) {
  ASSERT_TRUE(open("a.mp3", audio()));
  settings.split_id3v11 = 1;
  settings.save_id3v1 = 0;
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(piece("01 .mp3").size(), 40 * length + 128);
  EXPECT_FALSE(open_state.keep_id3v1);
}

TEST_F(SplitSaveTest, EachPieceHasAHeaderOfItsOwn) {
  Mp3Builder variable;
  for (int i = 0; i < 60; ++i) variable.frame({.bitrate = 64}).frame({.bitrate = 192});
  ASSERT_TRUE(open("a.mp3", variable.bytes()));
  document.parts[split_at(document.total_size / 2)].part_iscue = 1;
  EXPECT_EQ(split(), SplitResult::finished);
  for (const char* const name : {"01 .mp3", "02 .mp3"}) {
    const Bytes bytes = piece(name);
    EXPECT_EQ(std::string(bytes.begin() + 36, bytes.begin() + 40), "Xing");
    EXPECT_EQ(bytes[47], 60);  // frames
    EXPECT_EQ(bytes.size(), length + 60 / 2 * (208 + 626));
    EXPECT_EQ(bytes[50] * 256U + bytes[51], bytes.size() & 0xFFFF);
  }
}

TEST_F(SplitSaveTest, TellsOfReSyncs) {
  const Bytes damaged = Mp3Builder{}.frames(20).zeros(30).frames(20).bytes();
  ASSERT_TRUE(open("a.mp3", damaged));
  cue_at(10);
  EXPECT_EQ(split(), SplitResult::finished);
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].caption, "Warning");
  EXPECT_EQ(host.boxes[0].text, "While saving 2 file(s) 1 re-sync(s) occured.");
  EXPECT_EQ(piece("02 .mp3"), Mp3Builder{}.frames(30).bytes());
  batch_active = true;
  EXPECT_EQ(split(3), SplitResult::finished);
  EXPECT_EQ(host.boxes.size(), 1U);
}

TEST_F(SplitSaveTest, StopsAtASourceThatHasBecomeShorter) {
  ASSERT_TRUE(open("a.mp3", audio()));
  cue_at(10);
  std::filesystem::resize_file(folder.path("a.mp3"), 30 * length);
  EXPECT_EQ(split(), SplitResult::write_error);
  EXPECT_NE(report.find("has become shorter"), std::string::npos);
}

TEST_F(SplitSaveTest, CancelComesBetweenTwoRegions) {
  ASSERT_TRUE(open("a.mp3", audio()));
  cue_at(10);
  cue_at(20);
  SplitRun run(folder.path(""), 1);
  EXPECT_TRUE(run.step());
  EXPECT_EQ(run.percent_done(), 33);
  EXPECT_EQ(run.progress_text(), "1 / 3");
  run.cancel();
  EXPECT_FALSE(run.step());
  EXPECT_EQ(run.report(), "");
  EXPECT_EQ(pieces(), std::vector<std::string>{"01 .mp3"});
}

}  // namespace
}  // namespace corvelin::test

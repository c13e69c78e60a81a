// SPDX-License-Identifier: GPL-2.0-or-later
// Split saves: what stands in the pieces, and what stops a run.
#include "exchange/split_save.h"
#include "unattended/save_unattended.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <atomic>
#include <functional>
#include <future>

#include "edit/editor.h"
#include "model/cuts.h"
#include "platform/files/system_calls.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class SplitSaveTest : public EditTest {
 protected:
  // 40 frames in noise, so that no two are alike, with cues at 10 and 20.
  void SetUp() override {
    settings.split_pattern = u"%N %T";
    ASSERT_TRUE(open("a.mp3", audio_));
    make("0-10* 10-20*:Two 20-40*:Zwölf/Três");
  }

  [[nodiscard]] Bytes frames_of_audio(std::uint32_t from, std::uint32_t to) const {
    return {audio_.begin() + from * length, audio_.begin() + to * length};
  }

  // Runs a split to its end.
  SplitResult split(std::uint16_t first_number = 1) {
    SplitRun run(document, selection, open_state, folder.path(""), first_number,
                 editor.batch_active);
    while (run.step()) {
    }
    report = run.report();
    log = run.log();
    return run.result();
  }

  /// The names in the folder but for the source, which they may not be.
  [[nodiscard]] std::string pieces() const {
    std::string names;
    for (const std::string& name : folder.names())
      if (name != "a.mp3") names += name + "\r\n";
    return names;
  }
  [[nodiscard]] Bytes piece(const std::string& name) const { return read_file(folder.path(name)); }

  const Bytes audio_ = frames(40, {.noisy = true});
  std::string report;
  std::string log;
};

TEST_F(SplitSaveTest, WritesARegionACue) {
  split_at(document, 15 * length);  // a plain cut parts nothing
  select(5, 6);
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(pieces(), "01.mp3\r\n02 Two.mp3\r\n03 Zwölf_Três.mp3\r\n");
  EXPECT_EQ(piece("01.mp3"), frames_of_audio(0, 10));
  EXPECT_EQ(piece("02 Two.mp3"), frames_of_audio(10, 20));
  EXPECT_EQ(piece("03 Zwölf_Três.mp3"), frames_of_audio(20, 40));
  EXPECT_EQ(log, folder.path("01.mp3") + "\r\n" + folder.path("02 Two.mp3") + "\r\n" +
                     folder.path("03 Zwölf_Três.mp3") + "\r\n");
  EXPECT_EQ(open_state.save_name, folder.path("03 Zwölf_Três.mp3"));
  EXPECT_EQ(places(), "");
  make("0-40");  // without cues it is one piece
  EXPECT_EQ(split(7), SplitResult::finished);
  EXPECT_EQ(piece("07.mp3"), audio_);
}

TEST_F(SplitSaveTest, PiecesOverlapByTheirBeginnings) {
  ASSERT_TRUE(open("b.mp3", frames(400)));
  make("0-20* 20-200* 200-400*");
  settings.split_overlap = 128 + 2;
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(piece("01.mp3").size(), 20 * length);
  EXPECT_EQ(piece("02.mp3").size(), 200 * length);  // there are no two seconds before it
  // Two seconds are about 76.6 frames, which end with a whole one.
  EXPECT_EQ(piece("03.mp3").size(), (200 + 76) * length);
  settings.split_overlap = 2;  // off
  EXPECT_EQ(split(11), SplitResult::finished);
  EXPECT_EQ(piece("13.mp3").size(), 200 * length);
}

TEST_F(SplitSaveTest, NeverReplacesAnything) {
  const std::string victim = folder.file("victim", "old");
  const std::string second = folder.path("02 Two.mp3");
  const std::function<void()> obstacles[] = {
      [&] { folder.file("02 Two.mp3", "old"); },
      [&] { std::filesystem::create_symlink(victim, second); },
      [&] { std::filesystem::create_symlink("nowhere", second); },
      [&] { ::mkfifo(second.c_str(), 0666); }, [&] { std::filesystem::create_directory(second); }};
  for (const auto& put : obstacles) {
    put();
    EXPECT_EQ(split(), SplitResult::create_error);
    EXPECT_EQ(report, "Create error!\r\n" + second + "\r\nFile exists\r\n");
    EXPECT_EQ(piece("01.mp3"), frames_of_audio(0, 10));  // the complete one stays
    std::filesystem::remove(folder.path("01.mp3"));
    std::filesystem::remove(second);
  }
  EXPECT_EQ(read_text(victim), "old");
  EXPECT_EQ(pieces(), "victim\r\n");
  settings.split_pattern = u"%F";  // the name of the source itself
  EXPECT_EQ(split(), SplitResult::create_error);
  EXPECT_EQ(piece("a.mp3"), audio_);
}

TEST_F(SplitSaveTest, UnattendedItTakesTheFolderGivenOrItsOwn) {
  EXPECT_EQ(split_unattended(editor, folder.path("a.mp3/below_a_file")), SaveOutcome::failed);
  EXPECT_EQ(pieces(), "");
  open_state.document_modified = true;
  EXPECT_EQ(split_unattended(editor, ""), SaveOutcome::saved);
  EXPECT_EQ(pieces(), "01.mp3\r\n02 Two.mp3\r\n03 Zwölf_Três.mp3\r\n");
  EXPECT_TRUE(open_state.document_modified);
}

TEST_F(SplitSaveTest, EachPieceHasItsTagsAndItsSourcesDate) {
  const auto tag = [](std::string_view id, const std::string& content) {
    return Mp3Builder{}.id3v2(Mp3Builder::id3v2_frame(id, content)).bytes();
  };
  const Bytes duration = tag("TLEN", "123");
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.raw(duration).raw(audio_).id3v1("old").bytes()));
  for (const std::uint32_t cue : {10U, 20U})
    document.parts[split_at(document, cue * length)].part_iscue = 1;
  document.parts[1].part_title = u"Two";
  document.parts[1].part_artist = u"Singer";
  document.parts[2].part_title = u"Three";
  settings.split_id3v11 = settings.split_id3v2 = 1;
  settings.keep_id3v2 = 0;  // rules over whole saves alone
  const std::timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
  ::utimensat(AT_FDCWD, folder.path("a.mp3").c_str(), times, 0);
  settings.keep_date = 2;
  EXPECT_EQ(split(9), SplitResult::finished);
  EXPECT_EQ(file_facts(folder.path("09.mp3")).write_time.tv_sec, 1100000000);
  struct {
    std::string name;
    std::uint32_t from, to;
    std::string title, artist;
    char track;
  } const rows[] = {{"09.mp3", 0, 10, "", "", 9},
                    {"10 Two.mp3", 10, 20, "Two", "Singer", 10},
                    {"11 Three.mp3", 20, 40, "Three", "Singer", 11}};  // kept from the one before
  for (const auto& row : rows) {
    std::string id3v1 = "TAG" + row.title;
    id3v1.resize(33);
    id3v1 += row.artist;
    id3v1.resize(126);
    Mp3Builder expected = Mp3Builder{}.raw(tag("TXXX", std::string(3, '\0')));
    expected.raw(frames_of_audio(row.from, row.to)).raw(id3v1 + row.track + '\xFF');
    EXPECT_EQ(piece(row.name), expected.bytes()) << row.name;
  }
  EXPECT_EQ(std::string(document.stream.id3v1.begin(), document.stream.id3v1.begin() + 7),
            std::string("TAGold\0", 7));
  ASSERT_TRUE(open("b.mp3", audio_));
  EXPECT_EQ(split(19), SplitResult::finished);
  EXPECT_FALSE(open_state.keep_id3v1);
  EXPECT_NE(document.stream.id3v1[0], 'T');
  const Bytes aac = Mp3Builder{}.adts(20, 300).bytes();
  ASSERT_TRUE(open("c.aac", aac));
  EXPECT_EQ(split(29), SplitResult::finished);
  EXPECT_EQ(piece("29.aac"), aac);  // which never has one
}

TEST_F(SplitSaveTest, EachPieceHasAHeaderOfItsOwn) {
  Mp3Builder variable;
  for (int i = 0; i < 60; ++i)
    variable.frame({.bitrate = 64}).frame({.bitrate = 192, .copyright = true});
  ASSERT_TRUE(open("a.mp3", variable.bytes()));
  document.parts[split_at(document, document.total_size / 2)].part_iscue = 1;
  EXPECT_EQ(split(), SplitResult::finished);
  for (const char* const name : {"01.mp3", "02.mp3"}) {
    const Bytes bytes = piece(name);
    EXPECT_EQ(std::string(bytes.begin() + 36, bytes.begin() + 40), "Xing");
    EXPECT_EQ(bytes[47], 60);  // frames
    EXPECT_EQ(bytes[3], 0);    // as the first frame, not the one before the piece
    EXPECT_EQ(bytes.size(), length + 60 / 2 * (208 + 626));
    EXPECT_EQ(bytes[50] * 256U + bytes[51], bytes.size() & 0xFFFF);
  }
}

TEST_F(SplitSaveTest, TellsOfReSyncs) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).zeros(30).frames(20).bytes()));
  document.parts[split_at(document, 30 * length + 30)].part_iscue = 1;
  EXPECT_EQ(split(), SplitResult::finished);
  EXPECT_EQ(take_box(), "Warning: While saving 2 file(s) 1 re-sync(s) occured.");
  EXPECT_EQ(piece("01.mp3"), frames(30));
  editor.batch_active = true;
  EXPECT_EQ(split(3), SplitResult::finished);
  EXPECT_EQ(take_box(), "");
}

TEST_F(SplitSaveTest, StopsBetweenTwoRegions) {
  SplitRun run(document, selection, open_state, folder.path(""), 1);
  while (run.progress_text() != "1 / 3") ASSERT_TRUE(run.step());
  EXPECT_EQ(run.percent_done(), 33);
  while (file_facts(folder.path("02 Two.mp3")).size == 0) ASSERT_TRUE(run.step());
  EXPECT_TRUE(run.try_cancel());
  EXPECT_FALSE(run.step());
  EXPECT_EQ(run.progress_text() + run.report(), "1 / 3");
  EXPECT_EQ(pieces(), "01.mp3\r\n");
  EXPECT_EQ(run.log(), folder.path("01.mp3") + "\r\n");
}

// A disk that takes its time, until the gate is opened.
std::shared_future<void> gate;
std::atomic<bool> is_at_gate;
void wait_at_gate() {
  is_at_gate = true;
  gate.wait();
}

TEST_F(SplitSaveTest, NoStepAndNoCancelWaitsForASlowDisk) {
  const std::function<void()> slow_calls[] = {
      [] {
        system_calls.write = [](int to, const void* from, std::size_t size) {
          wait_at_gate();
          return original_system_calls.write(to, from, size);
        };
      },
      [] {
        system_calls.close = [](int file) {
          wait_at_gate();
          return original_system_calls.close(file);
        };
      }};
  for (const auto& make_slow : slow_calls) {
    std::promise<void> opener;
    gate = opener.get_future().share();
    is_at_gate = false;
    make_slow();
    SplitRun run(document, selection, open_state, folder.path(""), 1);
    while (!is_at_gate) ASSERT_TRUE(run.step());
    for (int i = 0; i < 10; ++i) EXPECT_TRUE(run.step());
    EXPECT_FALSE(run.try_cancel());
    opener.set_value();
    while (!run.try_cancel()) {
    }
    EXPECT_EQ(pieces(), "");
    system_calls = original_system_calls;
  }
}

TEST_F(SplitSaveTest, StopsAtASourceThatHasBecomeShorter) {
  std::filesystem::resize_file(folder.path("a.mp3"), 30 * length);
  EXPECT_EQ(split(11), SplitResult::write_error);
  EXPECT_NE(report.find("has become shorter"), std::string::npos);
}

}  // namespace
}  // namespace corvelin::test

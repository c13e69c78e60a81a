// SPDX-License-Identifier: GPL-2.0-or-later
// Batches: order and options of the list, what each option makes of a file, and the results.
#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "edit/editor.h"
#include "model/frame_reader.h"
#include "platform/files/system_calls.h"
#include "settings/settings.h"
#include "support/core_test.h"
#include "support/sample_audio.h"
#include "unattended/batch_job.h"
#include "unattended/batch_leftovers.h"
#include "unattended/batch_run.h"

namespace corvelin::test {
namespace {

using enum BatchOption;

class Batch : public CoreTest {
 protected:
  Batch() { job.source_folder = folder.path(""); }

  // Runs the job over the folder as it is now. Tells what became of each file.
  std::string run(const std::function<bool()>& between_slices = nullptr) {
    job.scan_batch_folder();
    BatchRun batch(editor, job, between_slices);
    while (batch.step()) {
    }
    lines.clear();
    for (const BatchProblem& problem : batch.problems()) lines.push_back(problem.line);
    lines.insert(lines.begin(), batch.progress_text());
    std::string told;
    for (const BatchResult& result : batch.results())
      told += result.name + " " + std::string(name_of(result.outcome)) + "; ";
    return told;
  }

  [[nodiscard]] std::string listed() const {
    std::string names;
    for (const BatchItem& item : job.items) names += item.name + " ";
    return names;
  }

  BatchJob job;
  std::vector<std::string> lines;
};

TEST_F(Batch, ListsAudioInNaturalOrder) {
  for (const char* const name :
       {"t10.mp3", "t2.MP3", "t2.aac", "a1c.mp3", "a1b.mp3", "x.wav", "T3.mp2"})
    folder.file(name, std::string(name == std::string("t2.aac") ? 3'000'000 : 10, 'x'));
  std::filesystem::create_directory(folder.path("folder.mp3"));
  std::filesystem::create_symlink("nowhere", folder.path("dead.mp3"));
  job.mask = "*.*";
  job.scan_batch_folder();
  EXPECT_EQ(listed(), "a1b.mp3 a1c.mp3 t2.aac t2.MP3 T3.mp2 t10.mp3 ");
  job.sort_by(BatchColumn::file);
  EXPECT_EQ(job.items.front().name, "t10.mp3");
  job.sort_by(BatchColumn::size);
  EXPECT_EQ(job.items.back().size_text, "2.86 MB");
  job.mask = "A1?.mp3";
  job.scan_batch_folder();
  EXPECT_EQ(listed(), "a1b.mp3 a1c.mp3 ");
  job.items[0].is_selected = false;
  job.move_selected(0);
  EXPECT_EQ(listed(), "a1c.mp3 a1b.mp3 ");
}

TEST_F(Batch, TakesNoFieldThatIsWrong) {
  folder.file("a.mp3", frames(30));
  for (const BatchOption option : {cut, simple_fade}) job.set_option(option, true);
  job.cut_begin = "2,5";
  EXPECT_EQ(read_seconds(job.cut_begin), 2.5);
  EXPECT_EQ(job.fault_in(BatchField::cut_begin), "");
  for (const char* const bad : {"1:30", "2,5.1", "-1", " 1", "x", "."}) {
    job.fade_end = bad;
    EXPECT_NE(job.fault_in(BatchField::fade_end), "") << bad;
  }
  job.scan_batch_folder();
  EXPECT_EQ(listed(), "a.mp3 ");
  system_calls.readdir = [](DIR* open) -> dirent* {
    dirent* const entry = original_system_calls.readdir(open);
    errno = entry == nullptr ? EIO : 0;
    return entry;
  };
  job.scan_batch_folder();
  system_calls = original_system_calls;
  EXPECT_EQ(listed(), "");
  EXPECT_TRUE(job.source_fault.ends_with("Input/output error")) << job.source_fault;
  job.source_folder += "not there";
  job.scan_batch_folder();
  EXPECT_EQ(listed(), "");
  EXPECT_TRUE(job.source_fault.ends_with("No such file or directory")) << job.source_fault;
}

TEST_F(Batch, OptionsExcludeOneAnother) {
  struct Case {
    BatchOption option;
    std::vector<BatchOption> others;  // that stay
  } const cases[] = {
      {only_save, {}},
      {pause_detection, {}},
      {auto_cue, {}},
      {join, {}},
      {normalize, {cut, simple_fade, auto_crop, limit_length, skip_unchanged}},
      {level, {cut, simple_fade, auto_crop, limit_length, skip_unchanged}},
      {cut, {normalize, simple_fade, limit_length, skip_unchanged, level}},
      {auto_crop, {normalize, simple_fade, skip_unchanged, level}},
      {simple_fade, {normalize, cut, auto_crop, limit_length, skip_unchanged, level}}};
  constexpr unsigned all = 0x7FF;
  constexpr auto overwrite = static_cast<unsigned>(overwrite_originals);
  for (const Case& c : cases) {
    unsigned expected = static_cast<unsigned>(c.option) | overwrite;
    for (const BatchOption other : c.others) expected |= static_cast<unsigned>(other);
    job.options = all | overwrite;
    job.set_option(c.option, true);
    EXPECT_EQ(job.options, expected);
    job.options = all | overwrite;
    job.set_option(c.option, false);
    EXPECT_EQ(job.options, expected & ~static_cast<unsigned>(c.option));
  }
}

TEST_F(Batch, DoesToEachFileWhatTheOptionsSay) {
  // 100 frames of 417 bytes are 2.6 s at 128 kbit/s.
  const auto size_after = [this](std::initializer_list<BatchOption> options) {
    std::filesystem::remove(folder.path("a.mp3.mp3"));
    job.options = 0;
    for (const BatchOption option : options) job.set_option(option, true);
    run();
    const bool is_there = std::filesystem::exists(folder.path("a.mp3.mp3"));
    return is_there && open(folder.path("a.mp3.mp3")) ? document.total_size / length : 0;
  };
  const std::string source = folder.file("a.mp3", tone_frames(100));
  job.mask = "a.mp3";
  job.limit_seconds = "1";
  job.cut_begin = "0.5";
  EXPECT_EQ(size_after({}), 0U);
  EXPECT_EQ(size_after({only_save}), 100U);
  EXPECT_EQ(size_after({limit_length}), 38U);  // whole frames in 16000 bytes
  EXPECT_EQ(size_after({cut}), 80U);           // 19.1 frames
  job.limit_seconds = "60";
  EXPECT_EQ(size_after({limit_length}), 100U);
  EXPECT_EQ(size_after({limit_length, skip_unchanged}), 0U);
  EXPECT_EQ(size_after({level}), 100U);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")).size(), read_file(source).size());
  job.batch_level = 14;
  EXPECT_EQ(size_after({level}), 100U);
  EXPECT_NE(read_file(folder.path("a.mp3.mp3")), read_file(source));
  job.limit_seconds = "0";
  EXPECT_EQ(size_after({limit_length}), 0U);
  EXPECT_EQ(lines[1], "1: a.mp3  nothing would be left");
  job.cut_end = "3";
  EXPECT_EQ(size_after({cut}), 0U);
  EXPECT_EQ(lines[1], "1: a.mp3  nothing would be left");
  job.fade_begin = "60";  // longer than the file
  job.batch_bottom = 60;
  EXPECT_EQ(size_after({simple_fade}), 100U);
  EXPECT_NE(read_file(folder.path("a.mp3.mp3")), read_file(source));
  job.fade_begin = "1";  // 38 frames
  EXPECT_EQ(size_after({simple_fade}), 100U);
  const Bytes plain = read_file(source);
  const Bytes faded = read_file(folder.path("a.mp3.mp3"));
  constexpr auto half = static_cast<std::ptrdiff_t>(50 * length);
  EXPECT_FALSE(std::equal(plain.begin(), plain.begin() + half, faded.begin()));
  EXPECT_TRUE(std::equal(plain.begin() + half, plain.end(), faded.begin() + half));
}

// MPEG 2 has 38.28 frames of 576 samples a second at 22.05 kHz.
TEST_F(Batch, CutsByTheClock) {
  folder.file("a.mp3", frames(200, {.version = 2, .bitrate = 64, .sample_rate = 22050}));
  job.cut_begin = "1";
  job.cut_end = "1.5";
  job.set_option(cut, true);
  run();
  const std::size_t frame = frame_length({.version = 2, .bitrate = 64, .sample_rate = 22050});
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")).size(), (200 - 39 - 58) * frame);
}

TEST_F(Batch, WritesOverNothingUnasked) {
  const Bytes audio = frames(30);
  folder.file("a.mp3", audio);
  folder.file("a.mp3.mp3", "mine");
  folder.file("bad.mp3", "no audio at all");
  job.set_option(only_save, true);
  job.mask = "*a*.mp3";
  EXPECT_EQ(run(), "a.mp3 failed; a.mp3.mp3 failed; bad.mp3 failed; ");
  EXPECT_EQ(lines, (std::vector<std::string>{"Processing file: 3 / 3  (written: 0)",
                                             "1: File exists:  a.mp3", "2: Open failed:  a.mp3.mp3",
                                             "3: Open failed:  bad.mp3"}));
  EXPECT_EQ(read_text(folder.path("a.mp3.mp3")), "mine");
  std::filesystem::remove(folder.path("a.mp3.mp3"));

  job.dest_folder = job.source_folder;  // where each target is its source
  job.mask = "a.mp3";
  EXPECT_EQ(run(), "a.mp3 failed; ");
  EXPECT_EQ(lines[1], "1: File exists:  a.mp3");
  EXPECT_EQ(read_file(folder.path("a.mp3")), audio);

  job.set_option(overwrite_originals, true);
  job.set_option(limit_length, true);
  job.limit_seconds = "0.1";
  folder.file("a.mp3.~~~.mp3", "mine");
  job.mask = "a*.mp3";
  EXPECT_EQ(run(), "a.mp3 failed; ");
  EXPECT_TRUE(lines[1].starts_with("a.mp3.~~~.mp3: left out")) << lines[1];
  {
    InputFile source;  // as a save under way has it
    ASSERT_FALSE(source.open(folder.path("a.mp3")) || source.lock());
    offer_removal_of_leftovers(job);
    EXPECT_TRUE(host.boxes.empty());
  }
  host.answers = {BoxAnswer::no, BoxAnswer::yes};
  offer_removal_of_leftovers(job);
  EXPECT_EQ(read_text(folder.path("a.mp3.~~~.mp3")), "mine");
  offer_removal_of_leftovers(job);
  host.boxes.clear();
  EXPECT_EQ(run(), "a.mp3 written; ");
  EXPECT_LT(read_file(folder.path("a.mp3")).size(), audio.size());
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "bad.mp3"}));
}

TEST_F(Batch, ReplacesAFileOfSeveralNamesOnce) {
  folder.file("a.mp3", frames(30));
  std::filesystem::create_symlink("a.mp3", folder.path("b.mp3"));
  for (const BatchOption option : {overwrite_originals, cut}) job.set_option(option, true);
  job.cut_begin = "0.1";
  job.dest_folder = "/nowhere";  // is for copies
  EXPECT_EQ(run(), "a.mp3 written; b.mp3 failed; ");
  EXPECT_EQ(lines[1], "2: b.mp3  leads to the same file as a.mp3");
  EXPECT_EQ(read_file(folder.path("a.mp3")).size(), 26U * length);
}

TEST_F(Batch, TellsOfBadDataThatIsLeftOut) {
  folder.file("a.mp3", Mp3Builder{}.frames(30).zeros(300).frames(30).bytes());
  job.set_option(only_save, true);
  EXPECT_EQ(run(), "a.mp3 written; ");
  EXPECT_NE(lines[1].find("1: a.mp3  Frames: 60    Re-syncs: 1"), std::string::npos) << lines[1];
}

TEST_F(Batch, JoinsAllOrNothing) {
  for (const char* const name : {"1.mp3", "2.mp3", "10.mp3"}) folder.file(name, frames(30));
  job.set_option(join, true);
  EXPECT_EQ(run(), "1.mp3 failed; 2.mp3 unjoined; 10.mp3 unjoined; ");  // without a name
  job.join_name = "all";
  EXPECT_EQ(run(), "1.mp3 joined; 2.mp3 joined; 10.mp3 joined; all.mp3 written; ");
  EXPECT_EQ(read_file(folder.path("all.mp3")).size(), 90U * length);
  std::filesystem::remove(folder.path("all.mp3"));
  job.mask = "*.mp?";
  EXPECT_EQ(run(), "1.mp3 joined; 2.mp3 joined; 10.mp3 joined; all.mp3 written; ");
  std::filesystem::remove(folder.path("all.mp3"));
  folder.file("2.mp3", frames(30, {.has_crc = true}));
  EXPECT_EQ(run(), "1.mp3 unjoined; 2.mp3 failed; 10.mp3 unjoined; ");
  EXPECT_FALSE(std::filesystem::exists(folder.path("all.mp3")));
}

TEST_F(Batch, StopsBehindTheFileUnderWay) {
  for (const char* const name : {"1.mp3", "2.mp3"}) folder.file(name, frames(30));
  job.set_option(only_save, true);
  job.scan_batch_folder();
  BatchRun batch(editor, job, [this] {
    job.set_option(overwrite_originals, true);  // is for the next run
    return true;
  });
  batch.step();
  batch.cancel();
  while (batch.step()) {
  }
  EXPECT_EQ(batch.results()[0].target, folder.path("1.mp3.mp3"));
  EXPECT_EQ(batch.results()[1].outcome, BatchOutcome::stopped);
  EXPECT_EQ(batch.problems().back().line, "User stopped");
}

}  // namespace
}  // namespace corvelin::test

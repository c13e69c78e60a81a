// SPDX-License-Identifier: GPL-2.0-or-later
// Saves: what stands in the target, and what becomes of the source.
#include "edit/save_audio.h"
#include "unattended/save_unattended.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <csignal>
#include <functional>
#include <future>
#include <optional>

#include "audio/encoder_settings.h"
#include "edit/editor.h"
#include "exchange/save_run.h"
#include "exchange/split_save.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/files/system_calls.h"
#include "platform/processes/interruption.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class SaveTest : public CoreTest {
 protected:
  SaveOutcome save_as(const std::string& name) {
    host.new_files = {folder.path(name)};
    return save_audio(editor);
  }
  [[nodiscard]] Bytes saved(const std::string& name) const { return read_file(folder.path(name)); }

  void keep_first_half() {
    document.parts[0].part_size = 50 * length;
    recompute_total(document);
  }

  const Bytes hundred_ = frames(100, {.noisy = true});
};

const std::string title_frame = Mp3Builder::id3v2_frame("TIT2", std::string("\0Title", 6));

TEST_F(SaveTest, CopiesTagsAndFramesBitForBit) {
  const Bytes bytes = Mp3Builder{}.id3v2(title_frame).raw(hundred_).id3v1("x").bytes();
  ASSERT_TRUE(open("a.mp3", bytes));
  std::filesystem::remove(folder.path("a.mp3"));  // an open file is enough
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  EXPECT_EQ(saved("b.mp3"), bytes);
  EXPECT_EQ(settings.file_recent.front(), folder.path("b.mp3"));
  EXPECT_EQ(host.dialogs.front().types.front().pattern, "*.mp3");

  ASSERT_TRUE(open("a.mp3", Mp3Builder{}
                                .id3v2(title_frame)
                                .vbr_header({.marker = "Info", .frames = 100})
                                .raw(hundred_)
                                .ape(50, true)
                                .id3v1("x")
                                .bytes()));
  settings.keep_id3v2 = settings.keep_info = 0;
  open_state.keep_id3v1 = false;
  ASSERT_EQ(save_as("c.mp3"), SaveOutcome::saved);
  EXPECT_EQ(saved("c.mp3"), hundred_);
}

TEST_F(SaveTest, MakesTheStoredDurationSayNothing) {
  const auto duration = [](std::string_view text) { return Mp3Builder::id3v2_frame("TLEN", text); };
  const auto nothing = [](std::size_t size) {
    return Mp3Builder::id3v2_frame("TXXX", std::string(size, '\0'));
  };
  std::vector<std::pair<std::string, std::string>> tags = {
      {duration("\x01\x31\x32\x33\x34\x35\x36") + title_frame, nothing(7) + title_frame},
      // A size that goes beyond the tag: zeroing ends with it.
      {std::string("TLEN\0\0\0\xFF\0\0abc", 13), std::string("TXXX\0\0\0\xFF\0\0\0\0\0", 13)},
      // Found inside a text too, and only the first one is treated.
      {"xTLENabc\x02yz12345" + duration("abc"),
       "xTXXXabc\x02yz" + std::string(2, '\0') + "345" + duration("abc")},
      // Too near to the tag's end to be a frame.
      {std::string(10, '\0') + "TLEN1234", std::string(10, '\0') + "TLEN1234"}};
  for (const std::size_t before : {65520UL, 65526UL, 65530UL, 65536UL})  // across blocks
    tags.emplace_back(std::string(before, 'p') + duration("12345"),
                      std::string(before, 'p') + nothing(5));
  settings.warn_existing = 0;
  for (const auto& [tag, expected] : tags) {
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.id3v2(tag).raw(hundred_).bytes()));
    ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
    EXPECT_TRUE(saved("b.mp3") == Mp3Builder{}.id3v2(expected).raw(hundred_).bytes()) << tag.size();
  }
}

TEST_F(SaveTest, SavedVbrFileReadsBackAsItWasWritten) {
  Mp3Builder audio;
  for (int i = 0; i < 150; ++i) audio.frame({.bitrate = 64}).frame({.bitrate = 192});
  ASSERT_TRUE(open("a.mp3", audio.bytes()));
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  ASSERT_TRUE(open(folder.path("b.mp3")));
  EXPECT_EQ(document.stream.vbr, 6);
  EXPECT_EQ(document.stream.xing_frames, 300U);
  EXPECT_EQ(document.total_size, audio.size());
  EXPECT_FLOAT_EQ(document.stream.avg_frame_size, static_cast<float>(417 + audio.size()) / 300);
  EXPECT_GT(document.stream.toc[99], document.stream.toc[50]);
  settings.write_xing = 0;
  ASSERT_EQ(save_as("c.mp3"), SaveOutcome::saved);
  EXPECT_EQ(saved("c.mp3"), audio.bytes());
}

TEST_F(SaveTest, SavesTheSelectionWithItsOwnHeader) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header({.marker = "Info"}).raw(hundred_).bytes()));
  EXPECT_EQ(save_selection(editor), SaveOutcome::not_started);
  EXPECT_EQ(host.boxes.back().text, "No selection or selection too short.");
  set_sel_begin(document, selection, 10 * length);
  set_sel_end(document, selection, 30 * length);
  settings.save_quit = 1;
  open_state.document_modified = true;
  host.new_files = {folder.path("b.mp3")};
  ASSERT_EQ(save_selection(editor), SaveOutcome::saved);
  const Bytes bytes = saved("b.mp3");
  EXPECT_TRUE(std::equal(bytes.begin() + length, bytes.end(), hundred_.begin() + 10 * length,
                         hundred_.begin() + 30 * length));
  EXPECT_EQ(bytes[47], 20);  // the header's count of frames
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_FALSE(host.close_requested);
  EXPECT_EQ(save_selection(editor), SaveOutcome::not_started);  // cancelled
  ASSERT_EQ(save_as("c.mp3"), SaveOutcome::saved);              // all of it
  EXPECT_EQ(saved("c.mp3").size(), 101 * length);
  EXPECT_TRUE(host.close_requested);
}

TEST_F(SaveTest, AacGetsItsId3v2TagAndNothingElse) {
  Mp3Builder aac = Mp3Builder{}.id3v2(title_frame).adts(100, 300, 1);
  const Bytes without_tag = aac.bytes();
  ASSERT_TRUE(open("a.aac", aac.id3v1("x").bytes()));
  document.stream.vbr = 1;
  ASSERT_EQ(save_as("b.aac"), SaveOutcome::saved);
  EXPECT_EQ(saved("b.aac"), without_tag);
  EXPECT_EQ(host.dialogs.front().types.front().pattern, "*.aac");
}

TEST_F(SaveTest, ReplacesTheSourceByAnyNameOfIt) {
  const auto replace = [&](const std::string& name) {
    EXPECT_TRUE(open("a.mp3", hundred_));
    keep_first_half();
    host.answers = {BoxAnswer::yes};
    EXPECT_EQ(save_as(name), SaveOutcome::saved);
    EXPECT_EQ(take_box(),
              "Warning: " + folder.path(name) + "\n\nReally close and replace the source file?");
    EXPECT_TRUE(document.files.empty());
    EXPECT_EQ(saved(name), frames(50, {.noisy = true})) << name;
  };
  replace("a.mp3");
  replace("./a.mp3");
  replace("A.mp3");
  std::filesystem::create_symlink("a.mp3", folder.path("link.mp3"));
  replace("link.mp3");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.mp3")));
  EXPECT_EQ(saved("a.mp3").size(), 50 * length);
  std::filesystem::create_hard_link(folder.path("a.mp3"), folder.path("hard.mp3"));
  replace("hard.mp3");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"A.mp3", "a.mp3", "hard.mp3", "link.mp3"}));
}

TEST_F(SaveTest, KeepsTheSourceWhenTheAnswerIsNo) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  EXPECT_EQ(save_as("a.mp3"), SaveOutcome::not_started);
  EXPECT_EQ(host.boxes.back().default_answer, BoxAnswer::no);
  EXPECT_FALSE(document.files.empty());
  settings.warn = 1;
  EXPECT_EQ(save_as("a.mp3"), SaveOutcome::saved);
  EXPECT_EQ(host.boxes.size(), 1U);
}

// A save beside the file asks, when what stands there is a source or leads to one.
TEST_F(SaveTest, UnattendedItReplacesNothingUnasked) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  ASSERT_EQ(save_unattended(editor, false), SaveOutcome::saved);
  EXPECT_EQ(saved("a.mp3.mp3"), hundred_);
  folder.file("a.mp3.mp3", "somebody's");
  EXPECT_EQ(save_unattended(editor, false), SaveOutcome::not_started);
  EXPECT_EQ(take_box(), "Warning: File exists: " + folder.path("a.mp3.mp3") + "\n\nReplace it?");
  EXPECT_EQ(read_text(folder.path("a.mp3.mp3")), "somebody's");
  keep_first_half();
  std::filesystem::remove(folder.path("a.mp3.mp3"));
  std::filesystem::create_symlink("a.mp3", folder.path("a.mp3.mp3"));
  EXPECT_EQ(save_unattended(editor, false), SaveOutcome::not_started);
  std::filesystem::remove(folder.path("a.mp3.mp3"));
  add_source_file(document, folder.file("a.mp3.mp3", hundred_));
  EXPECT_EQ(save_unattended(editor, false), SaveOutcome::not_started);
  EXPECT_EQ(saved("a.mp3"), hundred_);
  EXPECT_EQ(saved("a.mp3.mp3"), hundred_);
  host.answers = {BoxAnswer::yes};
  EXPECT_EQ(save_unattended(editor, false), SaveOutcome::saved);
  EXPECT_EQ(saved("a.mp3.mp3").size(), 50 * length);
  EXPECT_TRUE(document.files.empty());
}

// What others made of the source meanwhile stays.
TEST_F(SaveTest, ReplacesNoSourceButTheOneThatWasOpened) {
  settings.warn = 0;
  const auto rename_over = [&] {  // as many programs save
    folder.file("new.mp3", "new");
    std::filesystem::rename(folder.path("new.mp3"), folder.path("a.mp3"));
  };
  const auto write_in_place = [&] { folder.file("a.mp3", frames(200)); };
  auto other_run = std::make_unique<InputFile>();
  const auto lock = [&] {
    ASSERT_FALSE(other_run->open(folder.path("a.mp3")));
    ASSERT_FALSE(other_run->lock());
  };
  const std::pair<std::function<void()>, std::string> rows[] = {
      {rename_over, "Another program has changed this file"},
      {write_in_place, "Another program has changed this file"},
      {lock, "Another run of this program is replacing this file"}};
  for (const auto& [change, reason] : rows) {
    ASSERT_TRUE(open("a.mp3", hundred_));
    change();
    const Bytes changed = saved("a.mp3");
    EXPECT_EQ(save_as("a.mp3"), SaveOutcome::failed);
    EXPECT_EQ(take_box(), "Error: " + reason + "\n" + folder.path("a.mp3"));
    EXPECT_EQ(saved("a.mp3"), changed);
    EXPECT_FALSE(document.files.empty());
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.mp3"});
  }
  other_run.reset();
  ASSERT_TRUE(open("a.mp3", hundred_));
  SaveRun run(document, selection, open_state, folder.path("a.mp3"), whole_stream(document), 0);
  ASSERT_TRUE(run.begin());
  write_in_place();  // during the save
  while (run.step()) {
  }
  EXPECT_TRUE(run.has_failed() && !run.has_replaced());
  EXPECT_TRUE(
      run.report().ends_with("Could not replace source file. Saved as:\r\na.mp3.~~~.mp3\r\n"));
  EXPECT_EQ(saved("a.mp3"), frames(200));
}

TEST_F(SaveTest, ReplacesASourceWithANameAsLongAsNamesGet) {
  const std::string name = std::string(250, 'x') + "x.mp3";
  ASSERT_TRUE(open(name, hundred_));
  EXPECT_EQ(save_unattended(editor, true), SaveOutcome::saved);
  EXPECT_EQ(folder.names(), std::vector<std::string>{name});
}

TEST_F(SaveTest, NeverTouchesAFileThatGoesByTheTemporaryName) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  add_source_file(document, folder.file("a.mp3.~~~.mp3", hundred_));
  EXPECT_EQ(save_unattended(editor, true), SaveOutcome::saved);
  EXPECT_EQ(saved("a.mp3.~~~.mp3"), hundred_);
  EXPECT_EQ(saved("a.mp3"), hundred_);
  EXPECT_EQ(folder.names().size(), 2U);

  // A link that waits there is not followed, wherever it leads.
  ASSERT_TRUE(open("b.mp3", hundred_));
  std::filesystem::create_symlink("elsewhere", folder.path("b.mp3.~~~.mp3"));
  std::filesystem::create_symlink("elsewhere", name_beside(folder.path("b.mp3")));
  EXPECT_EQ(save_unattended(editor, true), SaveOutcome::saved);
  folder.file("c.mp3", "old");
  ASSERT_TRUE(open("b.mp3", hundred_));
  EXPECT_EQ(save_as("c.mp3"), SaveOutcome::saved);
  EXPECT_FALSE(file_facts(folder.path("elsewhere")).found);
  EXPECT_TRUE(
      std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.path("b.mp3"))));
  EXPECT_EQ(saved("c.mp3"), hundred_);
}

TEST_F(SaveTest, KeepsDatesAndPermissions) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  ::chmod(folder.path("a.mp3").c_str(), 0640);
  constexpr uid_t other = 12345;
  const bool may_give = ::chown(folder.path("a.mp3").c_str(), other, other) == 0;
  const std::timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
  ::utimensat(AT_FDCWD, folder.path("a.mp3").c_str(), times, 0);
  ASSERT_TRUE(open(folder.path("a.mp3")));
  const auto has_date = [&](const char* name) {
    return file_facts(folder.path(name)).write_time.tv_sec == 1100000000;
  };
  const std::string note = "user.note";
  const bool has_notes = ::setxattr(folder.path("a.mp3").c_str(), note.c_str(), "x", 1, 0) == 0;
  settings.keep_date = 2;
  ASSERT_EQ(save_as("new.mp3"), SaveOutcome::saved);
  EXPECT_EQ(file_facts(folder.path("new.mp3")).permissions & 0007U, 0U);  // as of its source
  settings.keep_date = 1;
  ASSERT_EQ(save_as("newer.mp3"), SaveOutcome::saved);
  static mode_t first_mode;
  system_calls.fchmod = [](int file, mode_t mode) {
    struct stat status = {};
    ::fstat(file, &status);
    first_mode = status.st_mode & 0777U;
    return original_system_calls.fchmod(file, mode);
  };
  ASSERT_EQ(save_unattended(editor, true), SaveOutcome::saved);
  system_calls = original_system_calls;
  EXPECT_EQ(first_mode, 0600U);
  EXPECT_TRUE(has_date("new.mp3") && !has_date("newer.mp3") && has_date("a.mp3"));
  EXPECT_EQ(std::filesystem::status(folder.path("a.mp3")).permissions(),
            std::filesystem::perms{0640});
  char value = 0;
  ::getxattr(folder.path("a.mp3").c_str(), note.c_str(), &value, 1);
  EXPECT_TRUE(!has_notes || value == 'x');
  struct stat status = {};
  ::stat(folder.path("a.mp3").c_str(), &status);
  EXPECT_EQ(status.st_uid, may_give ? other : ::geteuid());
  EXPECT_EQ(status.st_gid, may_give ? other : ::getegid());
}

TEST_F(SaveTest, ReplacesNothingThatIsWriteProtected) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  ::chmod(folder.path("a.mp3").c_str(), 0444);
  folder.file("b.mp3", "mine");
  ::chmod(folder.path("b.mp3").c_str(), 0444);
  host.answers = {BoxAnswer::yes, BoxAnswer::yes};
  EXPECT_NE(save_unattended(editor, true), SaveOutcome::saved);
  EXPECT_NE(take_box().find("write-protected"), std::string::npos);
  SaveRun run(document, selection, open_state, folder.path("b.mp3"), whole_stream(document));
  EXPECT_FALSE(run.begin());
  EXPECT_NE(take_box().find("write-protected"), std::string::npos);
  EXPECT_EQ(saved("a.mp3"), hundred_);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "b.mp3"}));
}

TEST_F(SaveTest, CancelLeavesWhatStoodBefore) {
  const Bytes bytes = frames(9000);
  ASSERT_TRUE(open("a.mp3", bytes));
  folder.file("old.mp3", "old");
  std::string report;
  for (const char* const name : {"new.mp3", "old.mp3", "a.mp3"}) {
    const bool is_source = name == std::string_view("a.mp3");
    SaveRun run(document, selection, open_state, folder.path(name), whole_stream(document),
                is_source ? std::optional<std::uint16_t>(0) : std::nullopt);
    ASSERT_TRUE(run.begin() && run.step());
    run.cancel();
    EXPECT_EQ(run.result(), 0U);
    EXPECT_FALSE(run.step());
    run.cancel();  // which does nothing any more
    report += run.report();
  }
  EXPECT_EQ(report, folder.path("new.mp3") + " is not whole.\r\n" + folder.path("a.mp3.~~~.mp3") +
                        " is not whole.\r\n");
  EXPECT_EQ(read_text(folder.path("old.mp3")), "old");
  EXPECT_EQ(saved("a.mp3"), bytes);
  EXPECT_EQ(folder.names(),
            (std::vector<std::string>{"a.mp3", "a.mp3.~~~.mp3", "new.mp3", "old.mp3"}));
  EXPECT_FALSE(document.files.empty());
}

// A disk that takes its time, until the gate is opened.
std::shared_future<void> gate;
std::atomic<bool> is_at_gate;
void wait_at_gate() {
  is_at_gate = true;
  gate.wait();
}

TEST_F(SaveTest, NoStepAndNoCancelWaitsForASlowDisk) {
  const Bytes bytes = frames(12000);  // two blocks and some
  const Bytes old = {'o', 'l', 'd'};
  ASSERT_TRUE(open("a.mp3", bytes));
  for (const std::string slow : {"write", "sync", "sync and a cancel"}) {
    folder.file("b.mp3", old);
    std::promise<void> opener;
    gate = opener.get_future().share();
    is_at_gate = false;
    if (slow == "write") {
      system_calls.write = [](int to, const void* from, std::size_t size) {
        wait_at_gate();
        return original_system_calls.write(to, from, size);
      };
    } else {
      system_calls.fsync = [](int file) {
        wait_at_gate();
        return original_system_calls.fsync(file);
      };
    }
    SaveRun run(document, selection, open_state, folder.path("b.mp3"), whole_stream(document));
    ASSERT_TRUE(run.begin());
    while (!is_at_gate) ASSERT_TRUE(run.step());
    for (int i = 0; i < 10; ++i) EXPECT_TRUE(run.step()) << slow;
    EXPECT_EQ(read_text(folder.path("b.mp3")), "old");
    const bool is_cancelled = slow == "sync and a cancel";
    EXPECT_FALSE(is_cancelled && run.try_cancel());
    opener.set_value();
    while (is_cancelled ? !run.try_cancel() : run.step()) {
    }
    EXPECT_TRUE(saved("b.mp3") == (is_cancelled ? old : bytes)) << slow;
    EXPECT_EQ(run.has_failed(), is_cancelled);
    system_calls = original_system_calls;
  }
}

// What was written of a replacement goes: nobody will look for it.
TEST_F(SaveTest, InterruptedItLeavesNoFileBesideTheSource) {
  ASSERT_TRUE(open("a.mp3", frames(9000)));
  SaveRun run(document, selection, open_state, folder.path("a.mp3"), whole_stream(document), 0);
  ASSERT_TRUE(run.begin() && run.step());
  EXPECT_EQ(folder.names().size(), 2U);
  catch_interruptions();
  ::raise(SIGTERM);
  run.cancel();
  EXPECT_EQ(run.report(), "");
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a.mp3"});
  EXPECT_EQ(take_interruption(), SIGTERM);
  EXPECT_EQ(interruption(), 0);
}

TEST_F(SaveTest, TellsHowMuchOfTheStreamIsMissing) {
  const Bytes half = frames(50);
  const std::tuple<const char*, Bytes, std::string> rows[] = {
      {"a broken frame", Mp3Builder{}.raw(half).zeros(300).raw(half).bytes(), ""},
      {"a tag",
       Mp3Builder{}
           .raw(half)
           .id3v1("x")
           .raw(Bytes{'I', 'D', '3', 4, 0, 0, 0, 0, 100, 0})
           .zeros(12800)
           .raw(half)
           .bytes(),
       ""},
      {"two places", Mp3Builder{}.raw(half).zeros(1500).raw(half).zeros(16500).raw(half).bytes(),
       "1.1 seconds are missing, the first of them at 0'01.31."}};
  for (const auto& [name, bytes, missing] : rows) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(open("a.mp3", bytes));
    const bool is_whole = missing.empty();
    EXPECT_EQ(save_as("b.mp3"), is_whole ? SaveOutcome::saved : SaveOutcome::failed);
    if (!is_whole) {
      EXPECT_EQ(take_box(), "Error: " + folder.path("b.mp3 is not whole: ") + missing);
    }
    SplitRun split(document, selection, open_state, folder.path("0/"), 1);
    std::filesystem::create_directory(folder.path("0"));
    while (split.step()) continue;
    EXPECT_EQ(split.result(), is_whole ? SplitResult::finished : SplitResult::not_whole);
    EXPECT_EQ(split.report().ends_with(missing + "\r\n"), !is_whole);
    std::filesystem::remove_all(folder.path("0"));
    // What bad data left takes no source's place.
    EXPECT_EQ(save_unattended(editor, true), is_whole ? SaveOutcome::saved : SaveOutcome::failed);
    if (!is_whole) {
      EXPECT_EQ(saved("a.mp3"), bytes);
    }
    host.boxes.clear();
    for (const char* const left : {"b.mp3", "a.mp3.~~~.mp3"})
      std::filesystem::remove(folder.path(left));
  }
}

TEST_F(SaveTest, DoesNotTakeAShrunkenSourceForAWholeOne) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  std::filesystem::resize_file(folder.path("a.mp3"), 50 * length);
  host.answers.assign(9, BoxAnswer::yes);  // to save although it was written to
  set_sel_begin(document, selection, 10 * length);
  set_sel_end(document, selection, 50 * length);
  host.new_files = {folder.path("whole.mp3")};
  EXPECT_EQ(save_selection(editor), SaveOutcome::saved);  // all of this is still there
  EXPECT_EQ(save_unattended(editor, true), SaveOutcome::failed);
  EXPECT_EQ(saved("a.mp3").size(), 50 * length);
  settings.file_recent.clear();
  settings.save_quit = 1;
  open_state.document_modified = true;
  EXPECT_EQ(save_as("b.mp3"), SaveOutcome::failed);  // but what there is, is saved
  EXPECT_TRUE(host.boxes.back().text.ends_with("has become shorter since it was first opened.\n" +
                                               folder.path("b.mp3") +
                                               " is not whole: 1.3 seconds are missing, the first "
                                               "of them at 0'01.31."));
  EXPECT_TRUE(open_state.document_modified && settings.file_recent.empty());
  EXPECT_FALSE(host.close_requested);
  EXPECT_EQ(saved("b.mp3"), frames(50, {.noisy = true}));
  std::filesystem::resize_file(folder.path("a.mp3"), 10);
  folder.file("c.mp3", "old");
  EXPECT_EQ(save_as("c.mp3"), SaveOutcome::failed);
  EXPECT_EQ(read_text(folder.path("c.mp3")), "old");
}

TEST_F(SaveTest, AsksBeforeItSavesFromASourceThatChanged) {
  const Bytes tagged = Mp3Builder{}.id3v2(title_frame).raw(hundred_).bytes();
  for (const bool is_new_file : {false, true}) {
    ASSERT_TRUE(open("a.mp3", hundred_));
    if (is_new_file) std::filesystem::rename(folder.path("a.mp3"), folder.path("old.mp3"));
    folder.file("a.mp3", tagged);
    EXPECT_EQ(save_as("b.mp3"), SaveOutcome::not_started);
    EXPECT_EQ(split_unattended(editor, folder.path("")), SaveOutcome::not_started);
    EXPECT_NE(take_box().find(is_new_file ? "put another file" : "wrote to this file"),
              std::string::npos);
    EXPECT_FALSE(file_facts(folder.path("b.mp3")).found);
  }
  host.answers = {BoxAnswer::yes};
  EXPECT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  EXPECT_EQ(saved("b.mp3"), hundred_);
}

TEST_F(SaveTest, TellsWhatATargetLacks) {
  ASSERT_TRUE(open("a.mp3", hundred_));
  settings.workdir_onsave = 1;
  settings.working_dir = "/work place/";
  EXPECT_EQ(save_audio(editor), SaveOutcome::not_started);
  EXPECT_EQ(host.dialogs.back().path, "/work place/a.mp3");
  std::filesystem::create_directory(folder.path("dir"));
  ::mkfifo(folder.path("pipe").c_str(), 0666);
  for (const char* const name : {"absent/b.mp3", "dir", "pipe"}) {
    EXPECT_EQ(save_as(name), SaveOutcome::failed) << name;
    EXPECT_TRUE(take_box().starts_with("Error: ")) << name;
  }
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "dir", "pipe"}));
}

// The table of a long stream is made from places that were noted on the way, once a megabyte; it is
// that of a walk over all frames.
TEST_F(SaveTest, SeekTableOfALongStreamIsThatOfItsFrames) {
  Mp3Builder audio;
  for (int i = 0; i < 2500; ++i) audio.frame({.bitrate = 64}).frame({.bitrate = 320});
  ASSERT_TRUE(open("a.mp3", audio.bytes()));
  ASSERT_EQ(document.stream.vbr, vbr_seen);
  ASSERT_EQ(save_as("b.mp3"), SaveOutcome::saved);
  const Bytes saved = read_file(folder.path("b.mp3"));
  const double size = static_cast<double>(saved.size());
  for (std::uint32_t i = 1; i < 100; ++i) {
    // In front of frame 50 i lie the header, 25 i frames of 208 bytes and one less of 1044.
    const double place = 417 + 25 * i * 208 + (25 * i - 1) * 1044;
    EXPECT_EQ(saved[36 + 16 + i], std::lround(place / size * 256)) << i;
  }
}

TEST_F(SaveTest, EncodesAllOfTheStreamAnew) {
  const Bytes bytes =
      Mp3Builder{}.id3v2(title_frame).raw(frames(50)).zeros(20).raw(frames(50)).id3v1("x").bytes();
  const auto names = std::vector<std::string>{"a.mp3"};
  const std::string target = folder.path("b.mp3");
  for (const bool is_vbr : {false, true}) {
    ASSERT_TRUE(open("a.mp3", bytes));
    settings.enc_lam_vbr_method = is_vbr ? 2 : lame_method_cbr;
    settings.enc_lam_bitrate = 128;
    {
      settings.enc_lam_mode = lame_mode_mono;
      SaveRun run(document, selection, open_state, target, whole_stream(document), {},
                  SaveMode::reencode);
      EXPECT_FALSE(run.begin());
      EXPECT_TRUE(take_box().starts_with("Not possible: Audio parameters do not match."));
      EXPECT_EQ(folder.names(), names);
      settings.enc_lam_mode = 1;
      SaveRun other(document, selection, open_state, target, whole_stream(document), {},
                    SaveMode::reencode);
      EXPECT_TRUE(other.begin());
      other.cancel();  // the encoder is free for the next run
    }
    delete_range(document, 20 * length, 20 * length);  // a border, to tell the parts apart
    SaveRun run(document, selection, open_state, target, whole_stream(document), {},
                SaveMode::reencode);
    ASSERT_TRUE(run.begin());
    while (run.step()) continue;
    EXPECT_EQ(run.progress_text(), "Frames: 100    Re-syncs: 1");
    EXPECT_EQ(document.current_part, 0);
    EXPECT_TRUE(run.log().starts_with("ID3v2"));
    EXPECT_EQ(saved("b.mp3")[0], 'I');  // and LAME's header frame, if any, stands behind the tag
    ASSERT_TRUE(open(target));
    EXPECT_TRUE(open_state.keep_id3v1);
    std::uint32_t count = 0;
    for (EditPosition pos = 0; pos < document.total_size; ++count)
      pos = next_frame_in(document, part_at(document, pos), pos, selection.current_frame);
    EXPECT_GE(count, 100U);  // nothing is missing at the end
    EXPECT_LE(count, 103U);  // and the encoder adds little
    EXPECT_EQ(document.stream.xing_frames, is_vbr ? count : 0);
    std::filesystem::remove(target);
  }
}

}  // namespace
}  // namespace corvelin::test

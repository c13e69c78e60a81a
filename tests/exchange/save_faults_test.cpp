// SPDX-License-Identifier: GPL-2.0-or-later
// Every system call on files, made to fail in turn: whatever reads or writes must tell the error
// and leave the old file or the new one whole.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <map>

#include <algorithm>
#include <cerrno>
#include <functional>

#include "edit/editor.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "exchange/split_save.h"
#include "model/cuts.h"
#include "platform/files/system_calls.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "support/core_test.h"
#include "unattended/save_unattended.h"

namespace corvelin::test {
namespace {

enum class Fault { io_error, half_a_write, kill };

// Counts the calls and makes one of them fail.
struct FaultPlan {
  int failing_call = 0;  // from 1
  Fault fault = Fault::io_error;
  int calls = 0;
  bool is_synced = false;        // what was written last is on disk
  bool is_folder_synced = true;  // and so is the name that a file was given last

  bool is_due() {
    const bool due = ++calls == failing_call;
    if (due && fault == Fault::kill) ::_exit(2);
    return due;
  }
  [[nodiscard]] int fail() const {
    errno = fault == Fault::half_a_write ? ENOSPC : EIO;
    return -1;
  }
};

FaultPlan plan;

template <auto member>
struct Faulty;

// Passes a call on unless it is its turn to fail.
template <typename Result, typename... Arguments, Result (*SystemCalls::*member)(Arguments...)>
struct Faulty<member> {
  static Result call(Arguments... arguments) {
    return plan.is_due() ? plan.fail() : (original_system_calls.*member)(arguments...);
  }
  static ssize_t write(int descriptor, const void* bytes, std::size_t count, auto... offset) {
    plan.is_synced = false;
    if (!plan.is_due()) return (original_system_calls.*member)(descriptor, bytes, count, offset...);
    if (plan.fault != Fault::half_a_write || count < 2) return plan.fail();
    ++plan.failing_call;  // the next one finds no space
    return (original_system_calls.*member)(descriptor, bytes, count / 2, offset...);
  }
};

int faulty_open(const char* path, int flags, mode_t mode) {
  EXPECT_TRUE((flags & O_CREAT) == 0 || (flags & O_EXCL) != 0) << path;  // nothing is truncated
  return Faulty<&SystemCalls::open>::call(path, flags, mode);
}

int faulty_fsync(int descriptor) {
  struct stat status = {};
  ::fstat(descriptor, &status);
  (S_ISDIR(status.st_mode) ? plan.is_folder_synced : plan.is_synced) = true;
  return Faulty<&SystemCalls::fsync>::call(descriptor);
}

int faulty_rename(const char* from, const char* to) {
  EXPECT_TRUE(plan.is_synced) << to;
  plan.is_folder_synced = false;
  return Faulty<&SystemCalls::rename>::call(from, to);
}

int faulty_close(int descriptor) {
  const int result = original_system_calls.close(descriptor);
  return plan.is_due() ? plan.fail() : result;
}

// Space that can't be set aside, an owner that can't be given and a lock that there is none of are
// no failures.
SystemCalls make_faulty_calls() {
  SystemCalls calls = original_system_calls;
  calls.open = faulty_open;
  calls.fstat = Faulty<&SystemCalls::fstat>::call;
  calls.pread = Faulty<&SystemCalls::pread>::call;
  calls.write = [](int to, const void* bytes, std::size_t n) {
    return Faulty<&SystemCalls::write>::write(to, bytes, n);
  };
  calls.pwrite = [](int to, const void* bytes, std::size_t n, off_t at) {
    return Faulty<&SystemCalls::pwrite>::write(to, bytes, n, at);
  };
  calls.ftruncate = Faulty<&SystemCalls::ftruncate>::call;
  calls.fsync = faulty_fsync;
  calls.futimens = Faulty<&SystemCalls::futimens>::call;
  calls.fchmod = Faulty<&SystemCalls::fchmod>::call;
  calls.close = faulty_close;
  calls.rename = faulty_rename;
  calls.mkdir = Faulty<&SystemCalls::mkdir>::call;
  return calls;
}

const SystemCalls faulty_calls = make_faulty_calls();

class SaveFaults : public CoreTest, public ::testing::WithParamInterface<Fault> {
 protected:
  // Runs `work` with its first call failing, then its second, until a run gets through. `work`
  // tells whether it reported success; `check` looks at what is left after a failure.
  void fail_in_turn(const std::function<bool()>& work, const std::function<void()>& check) {
    for (int call = 1; call < 1000; ++call) {
      host.boxes.clear();
      plan = {.failing_call = call, .fault = GetParam()};
      system_calls = faulty_calls;
      const bool succeeded = work();
      system_calls = original_system_calls;
      if (plan.calls < call) {
        EXPECT_TRUE(succeeded);
        EXPECT_TRUE(plan.is_folder_synced);
        EXPECT_GT(call, 10);
        return;
      }
      EXPECT_FALSE(succeeded) << "call " << call << " failed unnoticed";
      EXPECT_FALSE(host.boxes.empty() && report_.empty()) << "call " << call << " failed untold";
      check();
    }
    FAIL() << "no run got through";
  }

  /// Opens it, with the tail cut off, and saves it in its place.
  bool replace_source() {
    if (!open(folder.path("a.mp3"))) return false;
    settings.keep_date = 1;
    document.parts[0].part_size = 40 * length;
    recompute_total(document);
    return save_unattended(editor, true) == SaveOutcome::saved;
  }
  [[nodiscard]] bool is_source_whole() const {
    const Bytes now = read_file(folder.path("a.mp3"));
    return now == audio_ || now == shorter_;
  }
  bool save_as_b() {
    if (!open(folder.path("a.mp3"))) return false;
    settings.keep_date = 2;
    host.new_files = {folder.path("b.mp3")};
    return save_audio(editor) == SaveOutcome::saved;
  }

  // A file as a save makes it, with so many frames.
  Bytes saved_file(int count) {
    Mp3Builder file = Mp3Builder{}.id3v2(Mp3Builder::id3v2_frame("TIT2", "Title"));
    EXPECT_TRUE(
        open("made.mp3", file.vbr_header({.marker = "Info"}).frames(count).id3v1("x").bytes()));
    EXPECT_EQ(save_unattended(editor, true), SaveOutcome::saved);
    const Bytes bytes = read_file(folder.path("made.mp3"));
    EXPECT_EQ(bytes.size(), file.size());
    std::filesystem::remove(folder.path("made.mp3"));
    return bytes;
  }

  const Bytes audio_ = saved_file(60);
  const Bytes shorter_ = saved_file(40);
  const std::size_t tag_size_ = audio_.size() - 61 * length - 128;
  std::string report_;  // of a split, which shows no box
};

TEST_P(SaveFaults, ReplacingASourceLeavesOldOrNew) {
  const auto work = [&] {
    folder.file("a.mp3", audio_);
    open_state.save_name.clear();
    return replace_source();
  };
  fail_in_turn(work, [&] {
    EXPECT_TRUE(is_source_whole());
    if (document.files.empty()) {
      EXPECT_EQ(open_state.save_name.empty(), read_file(folder.path("a.mp3")) == audio_);
    }
  });
}

// Killed at each call of a replacing save, the source is the old file or the finished new one.
TEST_P(SaveFaults, AKillLeavesAWholeSource) {
  if (GetParam() != Fault::io_error) return;  // once is enough
  int status = -1;
  for (int call = 1; call < 1000 && status != 0; ++call) {
    for (const std::string& name : folder.names()) std::filesystem::remove(folder.path(name));
    folder.file("a.mp3", audio_);
    const pid_t child = ::fork();
    if (child == 0) {
      plan = {.failing_call = call, .fault = Fault::kill};
      system_calls = faulty_calls;
      ::_exit(replace_source() ? 0 : 1);
    }
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(is_source_whole()) << call;
  }
  EXPECT_EQ(status, 0);
}

TEST_P(SaveFaults, SavingOverAnotherFileLeavesOldOrNew) {
  folder.file("a.mp3", audio_);
  const auto work = [&] {
    folder.file("b.mp3", "old");
    return save_as_b();
  };
  fail_in_turn(work, [&] {
    const Bytes now = read_file(folder.path("b.mp3"));
    EXPECT_TRUE(now.size() == 3 || now == audio_);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "b.mp3"}));
  });
}

// What there is of it stays, and its name is told.
TEST_P(SaveFaults, NewFileIsNotTakenForWhole) {
  folder.file("a.mp3", audio_);
  const auto work = [&] {
    std::filesystem::remove(folder.path("b.mp3"));
    return save_as_b();
  };
  fail_in_turn(work, [&] {
    const bool is_told = host.boxes.back().text.ends_with("b.mp3 is not whole.");
    EXPECT_EQ(is_told, file_facts(folder.path("b.mp3")).found);
  });
}

TEST_P(SaveFaults, PiecesOfASplitAreWholeButForTheNamedOne) {
  folder.file("a.mp3", audio_);
  const std::string target = folder.path("out");
  std::size_t complete = 0;
  settings.keep_date = 2;
  settings.split_id3v2 = settings.split_id3v11 = 1;
  settings.split_pattern = u"%N";
  const auto work = [&] {
    complete = 0;
    report_.clear();
    std::filesystem::remove_all(target);
    std::filesystem::create_directory(target);
    if (!open(folder.path("a.mp3"))) return false;
    document.parts[split_at(document, 30 * length)].part_iscue = 1;
    SplitRun run(document, selection, open_state, target + "/", 1);
    while (run.step()) {
    }
    complete = static_cast<std::size_t>(std::ranges::count(run.log(), '\n'));
    report_ = run.report();
    return run.result() == SplitResult::finished;
  };
  fail_in_turn(work, [&] {
    const std::string failed = target + (complete == 0 ? "/01.mp3" : "/02.mp3");
    const bool is_left = file_facts(failed).found;
    EXPECT_TRUE(report_.empty() ||
                report_.find("error!\r\n" + failed + (is_left ? " is not whole.\r\n" : "\r\n")) !=
                    std::string::npos);
    EXPECT_TRUE(complete == 0 ||
                file_facts(target + "/01.mp3").size == tag_size_ + 31 * length + 128);
    EXPECT_EQ(read_file(folder.path("a.mp3")), audio_);
  });
}

TEST_P(SaveFaults, TextFilesStayOldOrNew) {
  settings.msg_hide = 0xFFFF;
  ASSERT_TRUE(open("a.mp3", audio_));
  const std::map<std::string, std::string> rows = {{"c.ini", "[Corvelin]\r\nold"},
                                                   {"p.cvp", "[Corvelin project file]\r\nold"},
                                                   {"p.cue", "TITLE old"}};
  for (const auto& row : rows) {
    const std::string& name = row.first;
    const std::string& old = row.second;
    const bool is_settings = name == "c.ini";
    open_state.project_name = folder.path(name);
    const auto work = [&] {
      folder.file(name, old);
      report_ = is_settings ? write_settings(folder.path(name)).message() : "";
      return is_settings ? report_ == "Success" : save_project(editor, false, false);
    };
    fail_in_turn(work, [&] {
      const std::string now = read_text(folder.path(name));
      EXPECT_TRUE(now == old || (is_settings ? now == format_settings() : now.ends_with("\r\n")));
      EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", name}));
    });
    std::filesystem::remove(folder.path(name));
  }
}

std::string name_of_fault(const ::testing::TestParamInfo<Fault>& info) {
  return info.param == Fault::io_error ? "IoError" : "HalfAWrite";
}

INSTANTIATE_TEST_SUITE_P(Faults, SaveFaults,
                         ::testing::Values(Fault::io_error, Fault::half_a_write), name_of_fault);

}  // namespace
}  // namespace corvelin::test

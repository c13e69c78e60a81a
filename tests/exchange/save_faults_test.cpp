// Every system call that writes, made to fail in turn: a save, the replacement of a source and the
// settings file must tell the error and leave the old file or the new one whole.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>

#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "exchange/split_save.h"
#include "model/cuts.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "support/core_test.h"
#include "unattended/save_unattended.h"

namespace corvelin::test {
namespace {

enum class Fault { no_space, io_error, half_a_write, kill };

// Counts the calls and makes one of them fail.
struct FaultPlan {
  int failing_call = 0;  // from 1
  Fault fault = Fault::no_space;
  int calls = 0;
  bool is_synced = false;  // what was written last is on disk

  bool is_due() {
    const bool due = ++calls == failing_call;
    if (due && fault == Fault::kill) ::_exit(2);
    return due;
  }
  [[nodiscard]] int fail() const {
    errno = fault == Fault::io_error ? EIO : ENOSPC;
    return -1;
  }
};

FaultPlan plan;

template <auto member>
struct Faulty;

// Passes a call on unless it is its turn to fail.
template <typename Result, typename... Arguments, Result (*WriteCalls::*member)(Arguments...)>
struct Faulty<member> {
  static Result call(Arguments... arguments) {
    return plan.is_due() ? plan.fail() : (system_write_calls.*member)(arguments...);
  }
  static ssize_t write(int descriptor, const void* bytes, std::size_t count, auto... offset) {
    plan.is_synced = false;
    if (!plan.is_due()) return (system_write_calls.*member)(descriptor, bytes, count, offset...);
    if (plan.fault != Fault::half_a_write || count < 2) return plan.fail();
    ++plan.failing_call;  // the next one finds no space
    return (system_write_calls.*member)(descriptor, bytes, count / 2, offset...);
  }
};

const WriteCalls faulty_calls = {
    .open = Faulty<&WriteCalls::open>::call,
    .write = [](int to, const void* bytes,
                std::size_t n) { return Faulty<&WriteCalls::write>::write(to, bytes, n); },
    .pwrite = [](int to, const void* bytes, std::size_t n,
                 off_t at) { return Faulty<&WriteCalls::pwrite>::write(to, bytes, n, at); },
    // A reservation that fails is no failure: the writes would tell.
    .fallocate = [](int, int, off_t, off_t) { return 0; },
    .ftruncate = Faulty<&WriteCalls::ftruncate>::call,
    .fsync =
        [](int descriptor) {
          plan.is_synced = true;
          return Faulty<&WriteCalls::fsync>::call(descriptor);
        },
    .futimens = Faulty<&WriteCalls::futimens>::call,
    .fchmod = Faulty<&WriteCalls::fchmod>::call,
    .close =
        [](int descriptor) {
          const int result = system_write_calls.close(descriptor);
          return plan.is_due() ? plan.fail() : result;
        },
    .rename =
        [](const char* from, const char* to) {
          EXPECT_TRUE(plan.is_synced) << to;
          return Faulty<&WriteCalls::rename>::call(from, to);
        },
    .unlink = system_write_calls.unlink,
    .mkdir = Faulty<&WriteCalls::mkdir>::call,
    .rmdir = system_write_calls.rmdir,
};

class WriteFaults : public CoreTest, public ::testing::WithParamInterface<Fault> {
 protected:
  // Runs `work` with its first call failing, then its second, until a run gets through. `work`
  // tells whether it reported success; `check` looks at what is left after a failure.
  void fail_in_turn(const std::function<bool()>& work, const std::function<void()>& check) {
    for (int call = 1; call < 100; ++call) {
      plan = {.failing_call = call, .fault = GetParam()};
      host.boxes.clear();
      write_calls = faulty_calls;
      const bool succeeded = work();
      write_calls = system_write_calls;
      if (plan.calls < call) {
        EXPECT_TRUE(succeeded);
        EXPECT_GT(call, 4);
        return;
      }
      EXPECT_FALSE(succeeded) << "call " << call << " failed unnoticed";
      check();
    }
    FAIL() << "no run got through";
  }

  /// Opens it, with the tail cut off, and saves it in its place.
  bool replace_source() {
    EXPECT_TRUE(open("a.mp3", audio_));
    settings.keep_date = 1;
    document.parts[0].part_size = 300 * length;
    recompute_total();
    return save_unattended(true) == SaveOutcome::saved;
  }
  [[nodiscard]] bool is_source_whole() const {
    const Bytes now = read_file(folder.path("a.mp3"));
    return now == audio_ || now.size() == 301 * length + 128;
  }
  bool save_as_b() {
    EXPECT_TRUE(open("a.mp3", audio_));
    settings.keep_date = 2;
    host.new_files = {folder.path("b.mp3")};
    return save_audio() == SaveOutcome::saved;
  }

  const Bytes audio_ = Mp3Builder{}.vbr_header({.marker = "Info"}).frames(400).id3v1("x").bytes();
};

TEST_P(WriteFaults, ReplacingASourceLeavesOldOrNew) {
  fail_in_turn([&] { return replace_source(); }, [&] { EXPECT_TRUE(is_source_whole()); });
}

// Killed at each call of a replacing save, the source is the old file or the finished new one.
TEST_P(WriteFaults, AKillLeavesAWholeSource) {
  if (GetParam() != Fault::no_space) return;  // once is enough
  int status = -1;
  for (int call = 1; call < 100 && status != 0; ++call) {
    for (const std::string& name : folder.names()) std::filesystem::remove(folder.path(name));
    folder.file("a.mp3", audio_);
    const pid_t child = ::fork();
    if (child == 0) {
      plan = {.failing_call = call, .fault = Fault::kill};
      write_calls = faulty_calls;
      ::_exit(replace_source() ? 0 : 1);
    }
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(is_source_whole()) << call;
  }
  EXPECT_EQ(status, 0);
}

TEST_P(WriteFaults, SavingOverAnotherFileLeavesOldOrNew) {
  const auto work = [&] {
    folder.file("b.mp3", "old");
    return save_as_b();
  };
  fail_in_turn(work, [&] {
    const auto size = file_facts(folder.path("b.mp3")).size;
    EXPECT_TRUE(size == 3 || size == audio_.size());
    EXPECT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "b.mp3"}));
  });
}

TEST_P(WriteFaults, NewFileIsNotTakenForWhole) {
  const auto work = [&] {
    std::filesystem::remove(folder.path("b.mp3"));
    return save_as_b();
  };
  fail_in_turn(work, [&] { EXPECT_EQ(host.boxes.size(), 1U); });
}

TEST_P(WriteFaults, PiecesOfASplitAreWholeButForTheNamedOne) {
  const std::string target = folder.path("out");
  std::size_t complete = 0;
  std::string report;
  settings.keep_date = 2;
  settings.split_id3v11 = 1;
  settings.split_pattern = u"%N";
  const auto work = [&] {
    std::filesystem::remove_all(target);
    std::filesystem::create_directory(target);
    EXPECT_TRUE(open("a.mp3", audio_));
    document.parts[split_at(200 * length)].part_iscue = 1;
    SplitRun run(target + "/", 1);
    while (run.step()) {
    }
    complete = static_cast<std::size_t>(std::ranges::count(run.log(), '\n'));
    report = run.report();
    return run.result() == SplitResult::finished;
  };
  fail_in_turn(work, [&] {
    const std::string failed = target + (complete == 0 ? "/01.mp3" : "/02.mp3");
    EXPECT_NE(report.find("error!\r\n" + failed + "\r\n"), std::string::npos) << report;
    EXPECT_EQ(file_facts(target + "/02.mp3").found, complete == 1 && !report.starts_with("Create"));
    EXPECT_TRUE(complete == 0 || file_facts(target + "/01.mp3").size == 201 * length + 128);
    EXPECT_EQ(read_file(folder.path("a.mp3")), audio_);
  });
}

TEST_P(WriteFaults, TextFilesStayOldOrNew) {
  settings.msg_hide = 0xFFFF;
  ASSERT_TRUE(open("a.mp3", audio_));
  for (const std::string name : {"c.ini", "p.cvp", "p.cue"}) {
    const bool is_settings = name == "c.ini";
    open_state.project_name = folder.path(name);
    const auto work = [&] {
      folder.file(name, "old");
      return is_settings ? !write_settings(folder.path(name)) : save_project(false, false);
    };
    fail_in_turn(work, [&] {
      const std::string now = read_text(folder.path(name));
      EXPECT_TRUE(now == "old" || (is_settings ? now == format_settings() : now.ends_with("\r\n")));
      EXPECT_EQ(take_box(), is_settings ? "" : "Error: Could not create/write to file.");
      EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", name}));
    });
    std::filesystem::remove(folder.path(name));
  }
}

std::string name_of_fault(const ::testing::TestParamInfo<Fault>& info) {
  return std::array{"NoSpace", "IoError", "HalfAWrite"}[static_cast<std::size_t>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(Faults, WriteFaults,
                         ::testing::Values(Fault::no_space, Fault::io_error, Fault::half_a_write),
                         name_of_fault);

}  // namespace
}  // namespace corvelin::test

// Every system call that writes, made to fail in turn: a save, the replacement of a source and the
// settings file must tell the error and leave the old file or the new one whole.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>

#include "exchange/save_audio.h"
#include "exchange/save_project.h"
#include "exchange/settings.h"
#include "exchange/settings_file.h"
#include "exchange/split_save.h"
#include "model/cuts.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

enum class Fault { no_space, io_error, half_a_write, kill };

// Counts the calls and makes one of them fail.
struct FaultPlan {
  int failing_call = 0;  // from 1
  Fault fault = Fault::no_space;
  int calls = 0;

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

ssize_t faulty_write(int descriptor, const void* bytes, std::size_t count) {
  if (!plan.is_due()) return system_write_calls.write(descriptor, bytes, count);
  if (plan.fault == Fault::half_a_write && count > 1) {
    ++plan.failing_call;  // and the next one finds no space
    return system_write_calls.write(descriptor, bytes, count / 2);
  }
  return plan.fail();
}

ssize_t faulty_pwrite(int descriptor, const void* bytes, std::size_t count, off_t offset) {
  if (!plan.is_due()) return system_write_calls.pwrite(descriptor, bytes, count, offset);
  if (plan.fault == Fault::half_a_write && count > 1) {
    ++plan.failing_call;
    return system_write_calls.pwrite(descriptor, bytes, count / 2, offset);
  }
  return plan.fail();
}

int faulty_close(int descriptor) {
  const int result = system_write_calls.close(descriptor);
  return plan.is_due() ? plan.fail() : result;
}

const WriteCalls faulty_calls = {
    .open =
        [](const char* path, int flags, mode_t mode) {
          return plan.is_due() ? plan.fail() : system_write_calls.open(path, flags, mode);
        },
    .write = faulty_write,
    .pwrite = faulty_pwrite,
    // A reservation that fails is no failure: the writes would tell.
    .fallocate = [](int, int, off_t, off_t) { return 0; },
    .ftruncate =
        [](int descriptor, off_t size) {
          return plan.is_due() ? plan.fail() : system_write_calls.ftruncate(descriptor, size);
        },
    .fsync =
        [](int descriptor) {
          return plan.is_due() ? plan.fail() : system_write_calls.fsync(descriptor);
        },
    .futimens =
        [](int descriptor, const std::timespec times[2]) {
          return plan.is_due() ? plan.fail() : system_write_calls.futimens(descriptor, times);
        },
    .fchmod =
        [](int descriptor, mode_t mode) {
          return plan.is_due() ? plan.fail() : system_write_calls.fchmod(descriptor, mode);
        },
    .close = faulty_close,
    .rename =
        [](const char* from, const char* to) {
          return plan.is_due() ? plan.fail() : system_write_calls.rename(from, to);
        },
    .unlink = system_write_calls.unlink,
    .mkdir =
        [](const char* path, mode_t mode) {
          return plan.is_due() ? plan.fail() : system_write_calls.mkdir(path, mode);
        },
    .rmdir = system_write_calls.rmdir,
};

class WriteFaults : public CoreTest, public ::testing::WithParamInterface<Fault> {
 protected:
  // Runs `work` with its first call failing, then its second, until a run gets through. `work`
  // tells whether it reported success; `check` looks at what is left after a failure.
  void fail_in_turn(const std::function<bool()>& work, const std::function<void()>& check) {
    for (int call = 1; call < 100; ++call) {
      plan = {.failing_call = call, .fault = GetParam()};
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

  [[nodiscard]] Bytes audio() const {
    return Mp3Builder{}.vbr_header({.marker = "Info"}).frames(400).id3v1("x").bytes();
  }
};

TEST_P(WriteFaults, ReplacingASourceLeavesOldOrNew) {
  const Bytes old_bytes = audio();
  const auto work = [&] {
    EXPECT_TRUE(open("a.mp3", old_bytes));
    settings.keep_date = 1;
    document.parts[0].part_size = 300 * 417;
    recompute_total();
    host.boxes.clear();
    return save_unattended(true) == SaveOutcome::saved;
  };
  const auto check = [&] {
    const Bytes now = read_file(folder.path("a.mp3"));
    EXPECT_TRUE(now == old_bytes || now.size() == 301 * 417 + 128);
  };
  fail_in_turn(work, check);
}

// Killed at each call of a replacing save, the source is the old file or the finished new one.
TEST_F(CoreTest, AKillLeavesAWholeSource) {
  const Bytes old_bytes =
      Mp3Builder{}.vbr_header({.marker = "Info"}).frames(400).id3v1("x").bytes();
  const auto save_and_die = [&](int call) {
    open("a.mp3", old_bytes);
    settings.keep_date = 1;
    document.parts[0].part_size = 300 * 417;
    recompute_total();
    plan = {.failing_call = call, .fault = Fault::kill};
    write_calls = faulty_calls;
    ::_exit(save_unattended(true) == SaveOutcome::saved ? 0 : 1);
  };
  int status = -1;
  for (int call = 1; call < 100 && status != 0; ++call) {
    for (const std::string& name : folder.names()) std::filesystem::remove(folder.path(name));
    const pid_t child = ::fork();
    if (child == 0) save_and_die(call);
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    const Bytes now = read_file(folder.path("a.mp3"));
    EXPECT_TRUE(now == old_bytes || now.size() == 301 * 417 + 128) << call;
  }
  EXPECT_EQ(status, 0);
}

TEST_P(WriteFaults, SavingOverAnotherFileLeavesOldOrNew) {
  const auto work = [&] {
    EXPECT_TRUE(open("a.mp3", audio()));
    folder.file("b.mp3", "old");
    settings.keep_date = 2;
    host.boxes.clear();
    host.new_files = {folder.path("b.mp3")};
    return save_audio() == SaveOutcome::saved;
  };
  const auto check = [&] {
    const auto size = file_facts(folder.path("b.mp3")).size;
    EXPECT_TRUE(size == 3 || size == audio().size());
    EXPECT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "b.mp3"}));
  };
  fail_in_turn(work, check);
}

TEST_P(WriteFaults, NewFileIsNotTakenForWhole) {
  const auto work = [&] {
    std::filesystem::remove(folder.path("b.mp3"));
    EXPECT_TRUE(open("a.mp3", audio()));
    settings.keep_date = 2;
    host.boxes.clear();
    host.new_files = {folder.path("b.mp3")};
    return save_audio() == SaveOutcome::saved;
  };
  fail_in_turn(work, [&] { EXPECT_EQ(host.boxes.size(), 1U); });
}

TEST_P(WriteFaults, PiecesOfASplitAreWholeButForTheNamedOne) {
  const Bytes bytes = audio();
  const std::string target = folder.path("out");
  std::size_t complete = 0;
  std::string report;
  const auto work = [&] {
    std::filesystem::remove_all(target);
    std::filesystem::create_directory(target);
    EXPECT_TRUE(open("a.mp3", bytes));
    document.parts[split_at(200 * 417)].part_iscue = 1;
    settings.keep_date = 2;
    settings.split_id3v11 = 1;
    settings.split_pattern = u"%N";
    SplitRun run(target + "/", 1);
    while (run.step()) {
    }
    complete = static_cast<std::size_t>(std::ranges::count(run.log(), '\n'));
    report = run.report();
    return run.result() == SplitResult::finished;
  };
  const auto check = [&] {
    const std::string failed = target + (complete == 0 ? "/01.mp3" : "/02.mp3");
    EXPECT_NE(report.find("error!\r\n" + failed + "\r\n"), std::string::npos) << report;
    EXPECT_EQ(file_facts(target + "/02.mp3").found, complete == 1 && !report.starts_with("Create"));
    if (complete == 1) {
      EXPECT_EQ(file_facts(target + "/01.mp3").size, 201U * 417 + 128);
    }
    EXPECT_EQ(read_file(folder.path("a.mp3")), bytes);
  };
  fail_in_turn(work, check);
}

TEST_P(WriteFaults, SettingsStayOldOrNew) {
  const std::string path = folder.path("c.ini");
  const auto work = [&] {
    folder.file("c.ini", "old");
    return !write_settings(path);
  };
  const auto check = [&] {
    const std::string now = read_text(path);
    EXPECT_TRUE(now == "old" || now == format_settings());
    EXPECT_EQ(folder.names(), std::vector<std::string>{"c.ini"});
  };
  fail_in_turn(work, check);
}

TEST_P(WriteFaults, ProjectsAndCueSheetsStayOldOrNew) {
  settings.msg_hide = 0xFFFF;
  for (const char* const name : {"p.cvp", "p.cue"}) {
    ASSERT_TRUE(open("a.mp3", audio()));
    open_state.project_name = folder.path(name);
    const auto work = [&] {
      folder.file(name, "old");
      host.boxes.clear();
      return save_project(false, false);
    };
    const auto check = [&] {
      const std::string now = read_text(folder.path(name));
      EXPECT_TRUE(now == "old" || now.ends_with("\r\n"));
      EXPECT_FALSE(host.boxes.empty());
      EXPECT_EQ(host.boxes.back().text, "Could not create/write to file.");
      EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", name}));
    };
    fail_in_turn(work, check);
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

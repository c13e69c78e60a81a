// SPDX-License-Identifier: GPL-2.0-or-later
// Measures the program as a user runs it, on files of 400 MB in a warm cache, and prints each time
// as a ratio to `cp` of the same bytes or to the same work on a small file. Needs 2.2 GB below
// TMPDIR.
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "edit/undo.h"
#include "exchange/project_file.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "opening/append.h"
#include "opening/open_state.h"
#include "runs.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"

namespace {

using corvelin::test::Bytes;
using corvelin::test::FrameShape;
using corvelin::test::Mp3Builder;
using namespace corvelin::bench;

constexpr std::size_t large = 400'000'000;
constexpr std::size_t small = 4'000'000;
constexpr std::size_t gigabyte = 1'000'000'000;

void write_file(const std::string& path, const Bytes& unit, std::size_t size) {
  std::ofstream out(path, std::ios::binary);
  for (std::size_t written = 0; written < size; written += unit.size())
    out.write(reinterpret_cast<const char*>(unit.data()),
              static_cast<std::streamsize>(unit.size()));
}

Bytes constant_frames() {
  Mp3Builder builder;
  for (int i = 0; i < 500; ++i) builder.frame({.has_padding = i % 25 != 0, .noisy = true});
  return builder.bytes();
}

Bytes variable_frames() {
  Mp3Builder builder;
  for (int i = 0; i < 500; ++i) {
    constexpr int bitrates[] = {32, 64, 96, 128, 160, 192, 256, 320};
    builder.frame({.bitrate = bitrates[i * 7 % 8], .noisy = true});
  }
  return builder.bytes();
}

// Each with a CRC, which a change of the level sets anew.
Bytes protected_frames() {
  Mp3Builder builder;
  for (int i = 0; i < 500; ++i) builder.frame({.has_crc = true, .noisy = true});
  return builder.bytes();
}

// A sheet for source.mp3 of `size` bytes at 128 kbit/s, its tracks all of one length.
void write_cue_sheet(const std::string& path, std::size_t tracks, std::size_t size) {
  constexpr std::size_t bytes_per_second = 16000;
  const std::size_t seconds = size / bytes_per_second / tracks;
  std::ofstream out(path, std::ios::binary);
  out << "FILE \"source.mp3\" MP3\r\n";
  for (std::size_t i = 0; i < tracks; ++i)
    out << fmt::format("  TRACK {:02} AUDIO\r\n    INDEX 01 {:02}:{:02}:00\r\n", i + 1,
                       i * seconds / 60, i * seconds % 60);
}

void print_time(const char* name, double limit, const std::function<void()>& work) {
  double best = 1e9;
  for (int round = 0; round < rounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    best = std::min(best, taken.count());
  }
  fmt::print("  {:42} {:5.2f} ms (limit {:.0f})\n", name, best, limit);
}

class Bench {
 public:
  Bench() {
    std::string name = (std::filesystem::temp_directory_path() / "corvelin-bench-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
  }
  ~Bench() { std::filesystem::remove_all(folder_); }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  void saves() {
    const std::string source = path("source.mp3");
    const auto copy = [&] { return fresh({"cp", source, path("target.mp3")}); };
    const auto save = [&] {
      return fresh({CORVELIN_CLI, source, "-e", "save " + path("target.mp3")});
    };
    write_file(source, constant_frames(), large);
    const auto constant = best_of({copy, save});
    report("Copying save of 400 MB", constant[1], constant[0], "cp", 1.15);
    write_file(source, variable_frames(), large);
    const auto variable = best_of({copy, save});
    report("Save of 400 MB with a VBR header", variable[1], variable[0], "cp", 1.6);

    write_file(source, protected_frames(), large);
    const auto save_at_a_level = [&] {
      return fresh({CORVELIN_CLI, source, "-e", "select 0b end", "-e", "level -4 -4", "-e",
                    "save " + path("target.mp3")});
    };
    const auto levels = best_of({save, save_at_a_level});
    report("Save of 400 MB with levels and CRCs", levels[1], levels[0], "one without", 1.5);
    std::filesystem::remove(source);
    std::filesystem::remove(path("target.mp3"));
  }

  void splits() {
    const std::string source = path("source.mp3");
    const std::string pieces = path("pieces");
    write_file(source, constant_frames(), gigabyte);
    write_cue_sheet(path("source.cue"), 100, gigabyte);
    const auto copy = [&] { return fresh({"cp", source, path("target.mp3")}); };
    const auto split = [&] {
      std::filesystem::remove_all(pieces);
      std::filesystem::create_directory(pieces);
      return run({CORVELIN_CLI, path("source.cue"), "--split", pieces});
    };
    const auto costs = best_of({copy, split});
    report("Split of 1 GB into 100 pieces (below 32 MB)", costs[1], costs[0], "cp", 1.2);
    std::filesystem::remove_all(pieces);
    std::filesystem::remove(source);
    std::filesystem::remove(path("target.mp3"));
  }

  void batches() {
    std::filesystem::create_directory(path("album"));
    for (int i = 1; i <= 200; ++i)
      write_file(path(fmt::format("album/song{}.mp3", i).c_str()), constant_frames(), 5'000'000);
    const auto anew = [&](std::vector<std::string> words) {
      std::filesystem::remove_all(path("target"));
      ::sync();  // what others have written is not to be paid for here
      return run(words);
    };
    const std::vector<std::string> batch = {CORVELIN_CLI, "--batch", path("album"), "--do",
                                            "save",       "--to",    path("target")};
    std::vector<std::string> in_turn = batch;
    in_turn.insert(in_turn.end(), {"-j", "1"});
    const auto costs = best_of({
        [&] {
          return anew({"cp", "-r", path("album"), path("target")});
        },
        [&] { return anew(batch); },
        [&] { return anew(in_turn); },
    });
    report("Batch that saves 200 files of 5 MB", costs[1], costs[0], "cp -r", 1.15);
    report("  one after the other", costs[2], costs[0], "cp -r", 1.15);
    std::filesystem::remove_all(path("album"));
    std::filesystem::remove_all(path("target"));
  }

  void opens() {
    for (const bool is_variable : {false, true}) {
      const Bytes unit = is_variable ? variable_frames() : constant_frames();
      write_file(path("large.mp3"), unit, large);
      write_file(path("small.mp3"), unit, small + 2'000'000);
      const auto open = [&](const char* name) {
        return [this, name] { return run({CORVELIN_CLI, path(name)}); };
      };
      const auto costs = best_of({open("small.mp3"), open("large.mp3")}, 3 * rounds);
      report(is_variable ? "Opening a 400 MB VBR file" : "Opening a 400 MB CBR file", costs[1],
             costs[0], "one of 6 MB", 1.5);
      fmt::print("{:44} {:5.1f} ms (limit 15), {:.1f} MB (limit 15)\n", "  the whole process",
                 costs[1].milliseconds, costs[1].megabytes);
      std::filesystem::remove(path("large.mp3"));
    }
  }

  void times() {
    const std::string source = path("source.mp3");
    write_file(source, variable_frames(), large);
    const auto costs = best_of({[&] {
                                  return run({"cat", source});
                                },
                                [&] {
                                  return run({CORVELIN_CLI, source, "--json"});
                                }});
    report("Exact times of 400 MB of VBR", costs[1], costs[0], "cat", 1.5);
    std::filesystem::remove(source);
  }

  void junk() {
    const Bytes audio = constant_frames();
    std::ofstream out(path("junk.mp3"), std::ios::binary);
    for (int i = 0; i < 512 * 1024; ++i) out.write("\xFF\xFB", 2);
    out.close();
    const auto cost = best_of({[&] {
      const std::string line =
          "'" CORVELIN_CLI "' '" + path("junk.mp3") + "' --info 2>/dev/null || true";
      return run({"sh", "-c", line});
    }});
    fmt::print("{:44} {:5.1f} ms (limit 50)\n", "First-frame search in 1 MiB of FF FB",
               cost[0].milliseconds);
  }

  void cue_sheets() {
    const std::string source = path("source.mp3");
    write_file(source, variable_frames(), 500'000'000);
    std::string sheet = "FILE \"source.mp3\" MP3\r\n";
    for (int i = 0; i < 100; ++i)
      sheet += fmt::format("TRACK {:02} AUDIO\r\nINDEX 01 {}:00:00\r\n", i + 1, i * 4);
    std::ofstream(path("in.cue")) << sheet;
    run({CORVELIN_CLI, path("in.cue"), "--set", "msg_hide=255", "-e",
         "save_project " + path("cues.cvp")});
    const auto costs = best_of({
        [&] {
          return run({"cat", source});
        },
        [&] {
          return run({CORVELIN_CLI, path("cues.cvp"), "--json"});
        },
        [&] {
          std::filesystem::remove(path("cues.cue"));
          return run({CORVELIN_CLI, path("cues.cvp"), "--set", "msg_hide=255", "-e",
                      "save_project " + path("cues.cue")});
        },
    });
    report("Cue sheet of 100 cues, 500 MB VBR", costs[2], costs[0], "cat", 1.5);
    std::filesystem::remove(source);
  }

  // Cuts, cues, restores and steps back at random places of a document of 900 parts.
  void edits() {
    const std::string source = path("source.mp3");
    write_file(source, constant_frames(), gigabyte);
    std::mt19937 random(1);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    std::ofstream parts(path("parts"));
    for (int i = 1; i < 900; ++i)
      parts << fmt::format("select {0}b {0}b\n152\n", i * (gigabyte / 900));
    parts << "save_project " << path("edits.cvp") << "\n";
    parts.close();
    run({CORVELIN_CLI, source, "--set", "msg_hide=255", "--script", path("parts")});

    constexpr int edit_count = 10000;
    std::ofstream script(path("script"));
    for (int i = 0; i < edit_count; ++i) {
      const std::size_t place = below(gigabyte);
      const std::size_t kind = below(8);
      if (kind < 3) {
        script << fmt::format("select {}b {}b\n152\n", place, place + below(500'000));
      } else if (kind < 6) {
        script << fmt::format("seek {}b\n116\n153\n", place);
      } else {
        script << (kind == 6 ? "undo\n" : "206\n");
      }
    }
    script.close();
    // Some of the lines are refused, as at random they must be.
    const std::string line = "'" CORVELIN_CLI "' '" + path("edits.cvp") +
                             "' --keep-going --script '" + path("script") + "' 2>/dev/null || true";
    const Cost cost = run({"sh", "-c", line});
    fmt::print("{:44} {:5.1f} s (limit 20), {:.1f} MB (limit 64)\n",
               "10,000 edits of 900 parts over 1 GB", cost.milliseconds / 1000, cost.megabytes);
    std::filesystem::remove(source);
  }

  // In this process: steps back, and a search through a file that holds no frame.
  void steps_and_searches() {
    using namespace corvelin;
    constexpr std::size_t size = 100'000'000;
    start_up(editor_, std::nullopt);
    write_file(path("a.mp3"), variable_frames(), size);
    open_file(editor_, path("a.mp3"));
    const auto steps = [this] {
      for (int i = 0; i < 20; ++i) undo_push(editor_, true, "x");
      while (!editor_.undo_stack.empty()) undo_pop(editor_);
    };
    fmt::print("In this process, with a VBR file of 100 MB:\n");
    print_time("20 steps taken and taken back", 20, steps);
    print_time("opened", 5, [this] { open_file(editor_, path("a.mp3")); });
    write_file(path("zeros.mp3"), Bytes(1'000'000), size);
    print_time("100 MB of zeros refused for an append", 60,
               [this] { append_file(editor_.document, path("zeros.mp3")); });
    shut_down(editor_);
  }

  // In this process: what an edit of a large document costs beside the edit.
  void projects() {
    using namespace corvelin;
    start_up(editor_, std::nullopt);
    write_file(path("a.mp3"), constant_frames(), small);
    open_file(editor_, path("a.mp3"));
    const std::uint32_t size = editor_.document.total_size / 1001;
    for (std::uint32_t i = 1; i < 1000; ++i) {
      split_at(editor_.document,
               frame_at(editor_.document, i * size, editor_.selection.current_frame));
      editor_.document.parts[editor_.document.parts.size() - 1].part_title =
          u"A title of a common length";
    }
    editor_.open_state.project_name = path("p.cvp");
    fmt::print("A project of {} parts:\n", editor_.document.parts.size());
    print_time("written", 10, [this] {
      write_project(editor_.document, editor_.selection, editor_.open_state,
                    editor_.open_state.project_name, editor_.selection.cursor);
    });
    print_time("taken as an undo step", 2, [this] { undo_push(editor_, true, "x"); });
    print_time("read", 10, [this] { open_file(editor_, path("p.cvp")); });
    shut_down(editor_);
  }

 private:
  [[nodiscard]] std::string path(const char* name) const { return folder_ + "/" + name; }

  // A run that writes target.mp3 anew.
  [[nodiscard]] Cost fresh(const std::vector<std::string>& words) const {
    std::filesystem::remove(path("target.mp3"));
    return run(words);
  }

  corvelin::Editor editor_;
  std::string folder_;
};

}  // namespace

int main() {
  Bench bench;
  bench.saves();
  bench.splits();
  bench.batches();
  bench.opens();
  bench.times();
  bench.junk();
  bench.cue_sheets();
  bench.edits();
  bench.steps_and_searches();
  bench.projects();
}

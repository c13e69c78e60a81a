// SPDX-License-Identifier: GPL-2.0-or-later
// Editors and documents beside each other: what is done with one is as if no other were there, in
// turn and on threads of their own.
#include <algorithm>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "audio/sample_reader.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "exchange/project_file.h"
#include "exchange/save_run.h"
#include "model/frame_locator.h"
#include "support/core_test.h"
#include "support/sample_audio.h"

namespace corvelin::test {
namespace {

using Random = std::mt19937;

// An editor under random commands, and what each left.
class Work {
 public:
  Work(const std::string& path, unsigned seed) : random_(seed) {
    EXPECT_TRUE(open_file(editor_, path));
  }
  ~Work() { close_all(editor_); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void step() {
    static constexpr const char* commands[] = {
        "cut_or_cue",    "edit_restore",    "cues_at_selection_ends", "toggle_cue", "mute_cut",
        "trim_left_out", "trim_right_in",   "move_cue_left",          "undo",       "simple_fade",
        "part_level_up", "part_level_down", "go_to_next_range",       "frame_back"};
    seek_to(editor_.playback, place());
    set_sel_begin(editor_.document, editor_.selection, place());
    set_sel_end(editor_.document, editor_.selection, editor_.selection.sel_beg + below(9000));
    for (int i = 0; i < 2; ++i)
      dispatch_command(editor_, find_command(commands[below(std::size(commands))]).value());
    history_.push_back(std::to_string(editor_.undo_stack.size()) +
                       project_text(editor_.document, editor_.selection, editor_.selection.cursor));
  }

  void run(int steps) {
    for (int i = 0; i < steps; ++i) step();
  }

  [[nodiscard]] const std::vector<std::string>& history() const { return history_; }

 private:
  std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_()) % limit; }

  EditPosition place() {
    FrameInfo found;
    return frame_at(editor_.document, below(editor_.document.total_size), found);
  }

  Editor editor_;
  Random random_;
  std::vector<std::string> history_;
};

class TwoEditors : public CoreTest {
 protected:
  static constexpr int steps = 200;

  std::string mpeg_ = folder.file("a.mp3", frames(2000));
  std::string low_ = folder.file(
      "b.mp3", frames(3000, {.version = 2, .bitrate = 8, .sample_rate = 22050, .is_mono = true}));

  [[nodiscard]] static std::vector<std::string> alone(const std::string& path, unsigned seed) {
    Work work(path, seed);
    work.run(steps);
    return work.history();
  }
};

TEST_F(TwoEditors, KnowNothingOfEachOther) {
  const auto first_alone = alone(mpeg_, 1);
  const auto second_alone = alone(low_, 2);
  ASSERT_GT(first_alone.back().size(), first_alone.front().size());

  Work first(mpeg_, 1);
  Work second(low_, 2);
  for (int i = 0; i < steps; ++i) {
    first.step();
    second.step();
  }
  EXPECT_EQ(first.history(), first_alone);
  EXPECT_EQ(second.history(), second_alone);

  Work third(mpeg_, 1);
  Work fourth(low_, 2);
  std::thread beside([&] { fourth.run(steps); });
  third.run(steps);
  beside.join();
  EXPECT_EQ(third.history(), first_alone);
  EXPECT_EQ(fourth.history(), second_alone);
}

// A save and a measuring work on copies, while the user edits on.
TEST_F(TwoEditors, ThreadsWorkOnCopiesOfADocumentThatIsEdited) {
  const auto save = [](Document copy, const Selection& places, const std::string& path) {
    const OpenState names;
    SaveRun run(copy, places, names, path, whole_stream(copy));
    bool goes_on = run.begin();
    while (goes_on) goes_on = run.step();
    return run.is_written();
  };
  const auto peak = [](const Document& copy) {
    SampleReader reader(copy);
    if (!reader.open(frame_cursor_at(copy, 0), copy.total_size, 20)) return 0;
    int highest = 0;
    while (reader.pos() < copy.total_size) highest = std::max<int>(highest, reader.read_peak(20));
    return highest;
  };

  ASSERT_TRUE(open("tone.mp3", tone_frames(400)));
  for (Part& part : document.parts) part.part_gainbeg = -3;
  document.end_gain = -3;
  touch(document);
  const Document before = document;
  ASSERT_TRUE(save(before, selection, folder.path("alone.mp3")));
  const int peak_alone = peak(before);
  ASSERT_GT(peak_alone, 0);

  bool is_saved = false;
  int peak_beside = 0;
  std::thread saver([&, copy = document, places = selection] {
    is_saved = save(copy, places, folder.path("beside.mp3"));
  });
  std::thread measurer([&, copy = document] { peak_beside = peak(copy); });
  for (int i = 0; i < 200; ++i) {
    set_selection(selection, 0, document.total_size / 2);
    dispatch_command(editor, find_command("cut_or_cue").value());
    dispatch_command(editor, find_command("undo").value());
  }
  saver.join();
  measurer.join();
  EXPECT_TRUE(is_saved);
  EXPECT_EQ(read_file(folder.path("beside.mp3")), read_file(folder.path("alone.mp3")));
  EXPECT_EQ(peak_beside, peak_alone);
  EXPECT_EQ(document.parts, before.parts);
}

}  // namespace
}  // namespace corvelin::test

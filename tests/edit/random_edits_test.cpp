// SPDX-License-Identifier: GPL-2.0-or-later
// Thousands of random commands over streams of all kinds. After each one the tables are sound, and
// every border, the cursor and the selection stand where a frame begins. Undo brings the project
// text of before each step back.
#include <cstdint>
#include <random>
#include <set>
#include <vector>

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/navigation.h"
#include "edit/open_files.h"
#include "edit/undo.h"
#include "exchange/project_file.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

// Where frames begin in a file, and its end: known from its making, not from the program.
using Borders = std::set<std::uint32_t>;

struct TestFile {
  std::string name;
  Bytes bytes;
  Borders borders;

  void add(const Bytes& frame) {
    borders.insert(static_cast<std::uint32_t>(bytes.size()));
    bytes.insert(bytes.end(), frame.begin(), frame.end());
    borders.insert(static_cast<std::uint32_t>(bytes.size()));
  }
};

using Random = std::mt19937;

std::uint32_t below(Random& random, std::uint32_t limit) {
  return static_cast<std::uint32_t>(random()) % limit;
}

TestFile mpeg_file(const std::string& name, std::vector<FrameShape> shapes, Random& random) {
  TestFile file = {.name = name};
  for (std::uint32_t count = 100 + below(random, 400); count > 0; --count)
    file.add(mpeg_frame(shapes[below(random, static_cast<std::uint32_t>(shapes.size()))]));
  return file;
}

TestFile padded(Random& random) {
  return mpeg_file("p.mp3", {{}, {.has_padding = true}, {.has_crc = true}}, random);
}

TestFile variable(Random& random) {
  return mpeg_file("v.mp3", {{.bitrate = 32}, {.bitrate = 128}, {.bitrate = 320}}, random);
}

TestFile layer_two(Random& random) {
  return mpeg_file("l.mp2", {{.layer = 2, .bitrate = 192}, {.layer = 2, .bitrate = 384}}, random);
}

TestFile low_rate(Random& random) {
  return mpeg_file("m.mp3", {{.version = 2, .bitrate = 8, .sample_rate = 22050, .is_mono = true}},
                   random);
}

TestFile aac(Random& random) {
  TestFile file = {.name = "a.aac"};
  for (int i = 0; i < 300; ++i) file.add(adts_frame(44100, 100 + below(random, 900)));
  return file;
}

class RandomEdits : public CoreTest {
 protected:
  void open_files(const TestFile& first, const TestFile* second) {
    ASSERT_TRUE(open(first.name, first.bytes));
    borders_ = {first.borders};
    if (second == nullptr) return;
    const auto index = add_source_file(document, folder.file("second", second->bytes));
    const auto size = static_cast<std::uint32_t>(second->bytes.size());
    document.files[*index].audio_end = size;
    add_part(document, document.total_size, *index, 0, size);
    borders_.push_back(second->borders);
  }

  void run(int steps, Random& random) {
    settings.max_undo = most_undo;
    for (int i = 0; i < steps && !HasFailure(); ++i) {
      if (undo_stack.size() == most_undo) undo_clear(editor);
      texts_.resize(undo_stack.size());
      arrange(random);
      name_parts_from_files(document);  // as undo does
      texts_.push_back(project_text(document, selection, selection.cursor));
      const char* const command = choose(random);
      SCOPED_TRACE(std::to_string(i) + ", " + command);
      dispatch_command(editor, find_command(command).value());
      expect_whole_frames();
      texts_.resize(undo_stack.size());
      if (below(random, 4) == 0) take_back(1 + below(random, 3));
    }
  }

 private:
  struct Choice {
    const char* command;
    int weight;
  };

  static constexpr Choice choices[] = {
      {"cut_or_cue", 16},        {"edit_restore", 5},           {"crop", 1},
      {"remove_edit_points", 1}, {"cues_at_selection_ends", 4}, {"set_cue_flags", 1},
      {"remove_cue_flags", 1},   {"cue_pure_splits", 1},        {"toggle_cue", 2},
      {"mute_cut", 3},           {"trim_left_out", 4},          {"trim_left_in", 4},
      {"trim_right_in", 4},      {"trim_right_out", 4},         {"move_cue_left", 3},
      {"move_cue_right", 3},     {"check_resyncs", 1},          {"move_selection_left", 1},
      {"move_end_right", 1},     {"select_to_end", 1},          {"select_current_part", 1},
  };

  // A place as the user gives one, with a liking for the borders.
  EditPosition place(Random& random) {
    const std::uint32_t kind = below(random, 8);
    if (kind == 0) return document.total_size;
    if (kind < 4) return document.parts[below(random, part_count(document))].part_beg;
    return frame_at(document, below(random, document.total_size), selection.current_frame);
  }

  void arrange(Random& random) {
    if (below(random, 2) == 0) seek_to(playback, place(random));
    if (below(random, 3) == 0)
      document.current_part = static_cast<PartIndex>(below(random, part_count(document)));
    if (below(random, 9) == 0) document.parts[document.current_part].part_gainbeg = -5;
    if (below(random, 2) != 0) return;
    if (below(random, 2) == 0) clear_selection(selection);
    set_sel_begin(document, selection, place(random));
    // Mostly short, so that the stream lives on.
    const EditPosition end = place(random);
    const bool is_short = end - selection.sel_beg < document.total_size / 10;
    if (is_short || below(random, 50) == 0) set_sel_end(document, selection, end);
  }

  static const char* choose(Random& random) {
    std::vector<int> weights;
    for (const Choice& choice : choices) weights.push_back(choice.weight);
    std::discrete_distribution<std::size_t> chosen(weights.begin(), weights.end());
    return choices[chosen(random)].command;
  }

  void expect_on_border(EditPosition pos) const {
    ASSERT_LE(pos, document.total_size);
    const PartIndex part = part_at(document, pos);
    const std::uint32_t offset = file_pos_of(document, part, pos);
    EXPECT_TRUE(borders_[document.parts[part].part_file].contains(offset)) << pos;
  }

  void expect_whole_frames() const {
    expect_sound_document();
    for (const Part& part : document.parts) {
      const Borders& borders = borders_[part.part_file];
      EXPECT_TRUE(borders.contains(part.part_filepos)) << part.part_filepos;
      EXPECT_TRUE(borders.contains(part.part_filepos + part.part_size)) << part.part_size;
    }
    expect_on_border(selection.cursor);
    if (selection.sel_beg == no_position) return;
    expect_on_border(selection.sel_beg);
    expect_on_border(selection.sel_end);
  }

  void take_back(std::uint32_t steps) {
    for (; steps > 0 && !undo_stack.empty(); --steps) {
      const bool is_whole = undo_stack.front().undo_snapshot.has_value();
      EXPECT_TRUE(undo_pop(editor));
      if (is_whole) {
        EXPECT_EQ(project_text(document, selection, selection.cursor), texts_.back());
      }
      texts_.pop_back();
      expect_whole_frames();
    }
  }

  static constexpr std::uint16_t most_undo = 50;

  std::vector<Borders> borders_;
  std::vector<std::string> texts_;  // of the project before each step on the undo stack
};

TEST_F(RandomEdits, KeepWholeFramesAndUndo) {
  for (unsigned seed = 1; seed <= 12 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (TestFile (*const make)(Random&) : {padded, variable, layer_two, low_rate, aac}) {
      const TestFile first = make(random);
      const TestFile second = make(random);
      SCOPED_TRACE(first.name);
      open_files(first, seed % 3 == 0 ? &second : nullptr);
      run(200, random);
    }
  }
}

}  // namespace
}  // namespace corvelin::test

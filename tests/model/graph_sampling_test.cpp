// SPDX-License-Identifier: GPL-2.0-or-later
// The slots of the graph.
#include "model/graph_sampling.h"

#include <fmt/format.h>

#include <filesystem>
#include <random>

#include "edit/editor.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class GraphSampling : public EditTest {
 protected:
  // Each slot by its place in frames and its marks: [ a cut begins, ( a cue, * of the current part,
  // s selected, @ cursor, g level changed, then /place of a handle. "<" is blank in front of the
  // stream, ">" behind it.
  static std::string in_words(const FrameSlot& slot) {
    const auto has = [&](int flag) { return (slot.sample_flags & flag) != 0; };
    std::string text = in_frames(slot.sample_pos);
    if (has(sample_is_outside)) text = slot.sample_bitrate == 1 ? ">" : "<";
    if (has(sample_is_cut)) text += '[';
    if (has(sample_is_cue)) text += '(';
    if (has(sample_is_current)) text += '*';
    if (has(sample_is_selected)) text += 's';
    if (has(sample_at_cursor)) text += '@';
    if (has(sample_has_gain)) text += 'g';
    if (has(sample_is_border)) text += fmt::format("/{}", slot.sample_handle);
    return text;
  }

  std::string sampled(std::uint32_t view_frames, std::uint32_t fold = 1) {
    sample_frames(samples, document, selection, selection.cursor, view_frames, fold);
    std::string text;
    for (const FrameSlot& slot : samples.slots) text += (text.empty() ? "" : " ") + in_words(slot);
    return text;
  }

  GraphSamples samples;
};

TEST_F(GraphSampling, MarksWhatBeginsAndLiesAtEachFrame) {
  struct {
    const char* state;
    const char* slots;
  } const rows[] = {{"0-20* @10", "6 7 8 9 10@ 11 12 13 14"},
                    // As many blank slots as fit in front, and one more.
                    {"0-20* @0", "< < < < < 0(*@/64 1 2 3"},
                    {"0-20* @2", "< < < 0(*/64 1 2@ 3 4 5"},
                    // The first blank slot behind the stream has the handle of its end, and so has
                    // the last frame.
                    {"0-20* @20", "16 17 18 19*/64 >*/64 > > > >"},
                    {"0-20* @18", "14 15 16 17 18@ 19/64 >/64 > >"},
                    {"0-5 8-20*g-4 @5 =5-7 #1", "1g 2g 3g 4g 5(*s@g/72 6sg 7sg 8g 9g"},
                    {"0-4* 6-8 2-9 @4 =5-5", "0(*/64 1 2 3 4[@/64 5s 6[/64 7 8"}};
  for (const auto& row : rows) {
    make(row.state);
    EXPECT_EQ(sampled(8), row.slots) << row.state;
  }
}

TEST_F(GraphSampling, MovesOnOverWhatIsNoFrame) {
  Mp3Builder builder;
  builder.frames(4).zeros(70'000);                  // longer than a block
  builder.frame({.sample_rate = 48000}).frames(2);  // of another rate: left out
  builder.raw("\xFF\xFB\x90").frames(2);            // looks like a frame together with the next
  ASSERT_TRUE(open("b.mp3", builder.bytes()));
  document.stream.avg_frame_size = length;
  selection.cursor = 2 * length;
  EXPECT_EQ(sampled(14), "< < < < < < 0(*/64 1 2@ 3 172+328 173+328 174+328 175+331/64 >/64");
}

TEST_F(GraphSampling, SeesAHeaderAcrossTwoBlocks) {
  const Bytes bytes = Mp3Builder{}.frames(4).zeros(61'999 - 4 * length).frames(3).bytes();
  ASSERT_TRUE(open("b.mp3", bytes));
  document.stream.avg_frame_size = length;
  selection.cursor = 2 * length;
  EXPECT_EQ(sampled(4), "0(*/64 1 2@ 3 148+283");
}

TEST_F(GraphSampling, ShowsALastFrameOfAFewBytes) {
  ASSERT_TRUE(open("b.aac", Mp3Builder{}.adts(30, length).adts(1, 9).bytes()));
  document.stream.avg_frame_size = length;
  selection.cursor = 30 * length;
  EXPECT_EQ(sampled(4), "28 29 30@/64 >/64 >");
}

TEST_F(GraphSampling, EndsWhereAFileBecameShorter) {
  make("0-5* 5-20* @5");
  EXPECT_EQ(sampled(8), "1 2 3 4 5(@/64 6 7 8 9");
  std::filesystem::resize_file(document.files[0].file_name, 6 * length + 200);
  EXPECT_EQ(sampled(8), "1 2 3 4 5(@/64 >/64 > > >");
  std::filesystem::resize_file(document.files[0].file_name, 2 * length + 200);
  EXPECT_EQ(sampled(8), "1/64 >/64 > > > > > > >");
}

TEST_F(GraphSampling, WhatIsKeptIsWhatWouldBeRead) {
  Mp3Builder builder;
  for (int i = 0; i < 400; ++i) {
    constexpr int bitrates[] = {64, 128, 160, 256};
    builder.frame({.bitrate = bitrates[i * 7 % 4], .global_gain = 120 + i % 90, .noisy = true});
  }
  ASSERT_TRUE(open("b.mp3", builder.bytes()));
  std::mt19937 random(1);
  const auto below = [&](std::uint32_t limit) {
    return static_cast<std::uint32_t>(random()) % limit;
  };
  const auto frame = [&] {
    return frame_at(document, below(document.total_size), selection.current_frame);
  };
  for (int i = 0; i < 300; ++i) {
    move_cursor(document, selection, frame());
    if (i % 5 == 0) {
      const EditPosition cut = frame();
      delete_range(document, cut, frame_at(document, cut + below(500), selection.current_frame));
      settle_places(editor);
      document.parts[below(part_count(document))].part_gainbeg =
          static_cast<std::int16_t>(i % 8 - 4);
    }
    if (i == 150) open("c.mp3", frames(100));
    const std::uint32_t view_frames = 10 + below(200);
    GraphSamples fresh;
    sample_frames(fresh, document, selection, selection.cursor, view_frames, 1);
    sample_frames(samples, document, selection, selection.cursor, view_frames, 1);
    ASSERT_EQ(samples.slots, fresh.slots) << i;
  }
}

}  // namespace
}  // namespace corvelin::test

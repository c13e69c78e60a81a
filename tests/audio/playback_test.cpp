// SPDX-License-Identifier: GPL-2.0-or-later
// What is heard, with a device that the test moves, against a straight decode of the same frames;
// and where the cursor is meanwhile and afterwards.
#include "audio/playback.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "audio/decoder_bridge.h"
#include "audio/level_meter.h"
#include "audio/sample_reader.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/transport.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "shell/panel_buttons.h"
#include "support/core_test.h"
#include "support/scripted_wave_system.h"

namespace corvelin::test {
namespace {

constexpr std::size_t frame_bytes = 1152 * 4;  // of samples

class PlaybackTest : public CoreTest {
 protected:
  PlaybackTest() { open_sample("cbr128.mp3"); }
  ~PlaybackTest() override { stop_playing(editor); }

  void open_sample(const std::string& name) {
    ASSERT_TRUE(open(std::string(CORVELIN_SAMPLES "/") + name));
    begins = {0};
    Bytes block(frame_block_limit);
    FrameCursor cursor;
    while (read_frames(document, block, cursor, document.total_size, 1).frames == 1)
      begins.push_back(cursor.pos);
    ASSERT_EQ(begins.back(), document.total_size);
  }

  // The samples of the whole edited stream.
  Bytes decode_all() {
    SampleReader reader(document);
    EXPECT_TRUE(reader.open({}, document.total_size, 10));
    Bytes all;
    while (reader.pos() < document.total_size) {
      const std::span<const std::int16_t> samples = reader.read(10);
      const auto* const bytes = reinterpret_cast<const std::uint8_t*>(samples.data());
      all.insert(all.end(), bytes, bytes + samples.size_bytes());
    }
    return all;
  }

  // The device takes a period, and all that is due is done.
  void pass() {
    device.play(device.format.block_align * std::size_t{512});
    deliver();
  }

  static void deliver() {
    while (deliver_wave_events()) {
    }
  }

  Bytes play_to_end() {
    for (int periods = 0; periods < 10000 && playback.is_playing; ++periods) pass();
    EXPECT_FALSE(playback.is_playing);
    return device.played;
  }

  void play_for(std::size_t bytes) {
    const std::size_t end = device.played.size() + bytes;
    while (device.played.size() < end) pass();
  }

  // Which frame begins at or behind a place.
  std::size_t frame_from(std::uint64_t pos) const {
    return static_cast<std::size_t>(
        std::ranges::lower_bound(begins, pos, {}, [](EditPosition begin) { return begin; }) -
        begins.begin());
  }

  // The samples of the frames that begin between two places.
  Bytes slice(const Bytes& all, std::uint64_t from, std::uint64_t to) const {
    const std::size_t first = std::min(frame_from(from) * frame_bytes, all.size());
    const std::size_t last = std::min(frame_from(to) * frame_bytes, all.size());
    return {all.begin() + static_cast<std::ptrdiff_t>(first),
            all.begin() + static_cast<std::ptrdiff_t>(std::max(first, last))};
  }

  ScriptedWaveSystem device;
  std::vector<EditPosition> begins;  // of all frames, and the end
};

// Whether `played` is `expected` and silence behind it. Behind a seek decoders round differently.
::testing::AssertionResult sounds_like(const Bytes& played, const Bytes& expected) {
  if (played.size() < expected.size())
    return ::testing::AssertionFailure() << played.size() << " < " << expected.size();
  const auto sample = [](const Bytes& bytes, std::size_t i) -> int {
    return i + 1 < bytes.size() ? static_cast<std::int16_t>(bytes[i] | bytes[i + 1] << 8) : 0;
  };
  for (std::size_t i = 0; i < played.size(); i += 2) {
    if (std::abs(sample(played, i) - sample(expected, i)) > 1)
      return ::testing::AssertionFailure() << "at frame " << double(i) / frame_bytes << " of "
                                           << double(expected.size()) / frame_bytes;
  }
  return ::testing::AssertionSuccess();
}

TEST_F(PlaybackTest, PlaysTheEditedStreamToItsEnd) {
  settings.volume = 65535;  // as loud as it gets
  apply_volume();
  delete_range(document, begins[100], begins[150]);
  document.parts[1].part_gainbeg = -20;
  delete_range(document, begins[700], document.total_size);
  const Bytes all = decode_all();
  ASSERT_EQ(dispatch_command(editor, 134), DispatchResult::done);
  EXPECT_TRUE(is_button_pressed(editor, 134));
  EXPECT_EQ(device.format, pcm_16_bit(2, 44100));
  EXPECT_TRUE(sounds_like(play_to_end(), all));
  EXPECT_EQ(playback.ended_by, PlayEnd::ran_out);
  EXPECT_EQ(selection.cursor, document.total_size);
  EXPECT_FALSE(is_button_pressed(editor, 134));
  EXPECT_EQ(playback_underruns(playback), 0U);
  EXPECT_GT(level_meter.meter_margin[0], 50);
  EXPECT_EQ(level_meter.meter_level[0], 0);
  EXPECT_TRUE(device.opened.empty());
  dispatch_command(editor, 134);  // at the end
  EXPECT_FALSE(playback.is_playing);
}

// Selections and stretches are in frames; a prelisten of 5/10 s takes 8000 bytes, which is 19
// frames and a bit.
TEST_F(PlaybackTest, PrelistensTheStretchesOfTheSelection) {
  constexpr std::uint32_t stretch = 8000;
  settings.prelisten_time = 5;
  const Bytes all = decode_all();
  const std::size_t last = begins.size() - 1;
  struct Row {
    PrelistenMode mode;
    std::size_t begin, end;                    // of the selection
    std::uint64_t from, to, and_from, and_to;  // what is heard
  };
  const auto at = [this](std::size_t frame) { return begins[frame]; };
  const Row table[] = {
      {prelisten_as_cut, 60, 90, at(60) - stretch, at(60), at(90), at(90) + stretch},
      {prelisten_as_cut, 0, 90, 0, 0, at(90), at(90) + stretch},
      {prelisten_as_cut, 60, last, at(60) - stretch, at(60), 0, 0},
      {prelisten_as_cut, 60, 60, at(60) - stretch, at(60) + stretch, 0, 0},
      {prelisten_to_begin, 60, 90, at(60) - stretch, at(60), 0, 0},
      {prelisten_to_begin, 3, 90, 0, at(3), 0, 0},
      {prelisten_to_begin, 0, 90, 0, 0, 0, 0},
      {prelisten_from_begin, 60, 90, at(60), at(60) + stretch, 0, 0},
      {prelisten_from_begin, 60, 65, at(60), at(65), 0, 0},
      {prelisten_to_end, 60, 90, at(90) - stretch, at(90), 0, 0},
      {prelisten_to_end, 85, 90, at(85), at(90), 0, 0},
      {prelisten_from_end, 60, 90, at(90), at(90) + stretch, 0, 0},
      {prelisten_from_end, 60, last - 2, at(last - 2), at(last), 0, 0},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.mode * 1000 + static_cast<int>(row.begin));
    selection.sel_beg = begins[row.begin];
    selection.sel_end = begins[row.end];
    seek_to(playback, begins[7]);
    ASSERT_EQ(request_prelisten(editor, row.mode), Result::done);
    ASSERT_TRUE(playback.is_playing);
    device.played.clear();
    const Bytes heard = play_to_end();
    EXPECT_EQ(selection.cursor, begins[7]);
    EXPECT_EQ(document.current_part, 0);
    const std::size_t behind = frame_from(row.and_to) - frame_from(row.and_from);
    if (behind == 0) {
      EXPECT_TRUE(sounds_like(heard, slice(all, row.from, row.to)));
      continue;
    }
    delete_range(document, begins[row.begin], begins[row.end]);
    EXPECT_TRUE(sounds_like(heard, slice(decode_all(), row.from, begins[row.begin + behind])));
    open_sample("cbr128.mp3");
  }
  clear_selection(selection);
  EXPECT_EQ(request_prelisten(editor, prelisten_to_begin), Result::nothing);
  EXPECT_FALSE(playback.is_playing);
}

TEST_F(PlaybackTest, AStopLeavesTheCursorWhereTheListenerIs) {
  selection.sel_beg = begins[100];
  selection.sel_end = begins[300];
  settings.prelisten_time = 50;
  request_prelisten(editor, prelisten_from_begin);
  play_for(20 * frame_bytes);
  EXPECT_TRUE(is_button_pressed(editor, 127));
  const EditPosition heard = play_position(playback);
  EXPECT_GE(frame_from(heard), 117U);
  EXPECT_LE(frame_from(heard), 120U);
  EXPECT_GT(selection.cursor, heard);  // what was read runs ahead
  stop_playing(editor);
  EXPECT_EQ(selection.cursor, heard);
  EXPECT_EQ(playback.ended_by, PlayEnd::stopped);
  EXPECT_FALSE(is_button_pressed(editor, 127));

  seek_to(playback, begins[40]);
  play_or_stop(editor);
  EXPECT_TRUE(has_fast_labels(editor));
  play_for(8 * frame_bytes);
  playback.stops_at_buffer = true;  // Escape
  while (playback.is_playing) pass();
  EXPECT_GE(frame_from(selection.cursor), 46U);
  EXPECT_LE(frame_from(selection.cursor), 50U);
}

TEST_F(PlaybackTest, LoopsOverTheSelectionAndFollowsIt) {
  const Bytes all = decode_all();
  const auto loop = [&](std::size_t from, std::size_t to) {
    return slice(all, begins[from], begins[to]);
  };
  const auto expect_within = [&](std::size_t from, std::size_t to) {
    // After the ring has turned once all that is heard is the new loop.
    play_for(12 * frame_bytes);
    device.played.clear();
    play_for(3 * (to - from) * frame_bytes);
    Bytes twice = loop(from, to);
    const Bytes once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    bool is_found = false;
    for (std::size_t start = 0; start + twice.size() <= device.played.size() && !is_found;
         start += 4)
      is_found = static_cast<bool>(
          sounds_like({device.played.begin() + static_cast<std::ptrdiff_t>(start),
                       device.played.begin() + static_cast<std::ptrdiff_t>(start + twice.size())},
                      twice));
    EXPECT_TRUE(is_found) << from << '-' << to;
  };
  selection.sel_beg = begins[50];
  selection.sel_end = begins[57];
  dispatch_command(editor, 1045);
  expect_within(50, 57);
  selection.sel_end = begins[60];
  expect_within(50, 60);
  selection.sel_beg = begins[20];  // an earlier place altogether
  selection.sel_end = begins[25];
  expect_within(20, 25);
  EXPECT_EQ(playback_underruns(playback), 0U);
  clear_selection(selection);
  play_to_end();
  EXPECT_EQ(playback.ended_by, PlayEnd::ran_out);
}

TEST_F(PlaybackTest, GoesOnFromASeek) {
  const Bytes all = decode_all();
  play(editor);
  play_for(10 * frame_bytes);
  seek_to(playback, begins[500]);
  EXPECT_EQ(play_position(playback), begins[500]);
  deliver();
  device.played.clear();
  play_for(10 * frame_bytes);
  const Bytes expected = slice(all, begins[500], begins[508]);
  // The device had taken no more than a period of what was before.
  Bytes behind(device.played.begin(),
               device.played.begin() + static_cast<std::ptrdiff_t>(expected.size()));
  EXPECT_TRUE(sounds_like(behind, expected));
  EXPECT_GE(frame_from(play_position(playback)), 506U);
  // In the last buffers, when the end is on its way already.
  seek_to(playback, begins[begins.size() - 3]);
  play_for(frame_bytes);
  seek_to(playback, begins[100]);
  device.played.clear();
  play_for(10 * frame_bytes);
  EXPECT_TRUE(playback.is_playing);
  EXPECT_GE(frame_from(play_position(playback)), 106U);
  seek_to(playback, document.total_size);
  play_to_end();
  EXPECT_EQ(selection.cursor, document.total_size);
}

TEST_F(PlaybackTest, HearsEditsWithTheNextBuffer) {
  delete_range(document, begins[40], begins[1000]);
  const Bytes cut = decode_all();
  ASSERT_NE(restore_border(document, selection, 1, begins[40]), no_part);
  clear_selection(selection);
  seek_to(playback, 0);
  play(editor);
  play_for(16 * frame_bytes);
  delete_range(document, begins[40], begins[1000]);
  play_to_end();
  EXPECT_TRUE(sounds_like(device.played, cut));
  EXPECT_EQ(playback.ended_by, PlayEnd::ran_out);
  EXPECT_EQ(selection.cursor, document.total_size);
}

TEST_F(PlaybackTest, ADeviceThatIsGoneEndsThePlayWithAMessage) {
  device.refusal = "busy";
  seek_to(playback, begins[30]);
  play(editor);
  EXPECT_FALSE(playback.is_playing);
  ASSERT_FALSE(host.boxes.empty());
  EXPECT_EQ(host.boxes.back().cause, "busy");
  EXPECT_EQ(take_box(), "Error: Could not open wave/audio device");
  EXPECT_EQ(selection.cursor, begins[30]);
  EXPECT_EQ(playback.decoder.decoder_ready, false);
  selection.sel_beg = begins[100];
  selection.sel_end = begins[300];
  request_prelisten(editor, prelisten_to_end);
  EXPECT_EQ(selection.cursor, begins[30]);

  device.refusal.clear();
  play(editor);
  play_for(20 * frame_bytes);
  const EditPosition heard = play_position(playback);
  device.is_lost = true;
  host.boxes.clear();
  pass();
  EXPECT_FALSE(playback.is_playing);
  EXPECT_EQ(playback.ended_by, PlayEnd::lost);
  EXPECT_EQ(selection.cursor, heard);
  EXPECT_EQ(take_box(), "Error: Could not open wave/audio device");
  device.is_lost = false;
  play(editor);
  EXPECT_TRUE(playback.is_playing);
}

TEST_F(PlaybackTest, TellsOfASourceThatHasBecomeShorter) {
  const std::string name = folder.path("a.mp3");
  std::filesystem::copy_file(std::string(CORVELIN_SAMPLES "/") + "cbr128.mp3", name);
  ASSERT_TRUE(open(name));
  seek_to(playback, begins[200]);
  std::filesystem::resize_file(name, begins[300]);
  play(editor);
  play_to_end();
  EXPECT_EQ(playback.ended_by, PlayEnd::cut_off);
  EXPECT_EQ(take_box(), fmt::format("Error: {}\n{}", name,
                                    "This file has become shorter since it was first opened."));
  selection.sel_beg = begins[100];  // up to there all is whole
  selection.sel_end = begins[290];
  request_prelisten(editor, prelisten_to_begin);
  play_to_end();
  EXPECT_EQ(playback.ended_by, PlayEnd::ran_out);
}

TEST_F(PlaybackTest, StopsBeforeTheDocumentGoes) {
  settings.keep_dev_open = 1;
  open_sample("cbr128.mp3");
  EXPECT_EQ(device.opened.size(), 1U);  // kept awake
  play(editor);
  EXPECT_EQ(device.opened.size(), 2U);
  close_all(editor);
  EXPECT_FALSE(playback.is_playing);
  EXPECT_TRUE(device.opened.empty());

  open_sample("cbr128.mp3");
  undo_push(editor, true, "step");
  undo_push(editor, false, "places");
  play(editor);
  undo_pop(editor);
  EXPECT_TRUE(playback.is_playing);
  undo_pop(editor);
  EXPECT_FALSE(playback.is_playing);
}

TEST_F(PlaybackTest, PlaysEachKindOfStream) {
  struct Row {
    const char* name;
    std::uint32_t use_mpglib;
    WaveFormat format;
  };
  const Row table[] = {
      {"vbr.mp3", 1, pcm_16_bit(2, 44100)},        {"mono_mpeg2.mp3", 0, pcm_16_bit(1, 22050)},
      {"layer2.mp2", 1, pcm_16_bit(2, 48000)},     {"speech.aac", 0, pcm_16_bit(2, 44100)},
      {"stereo_low.aac", 0, pcm_16_bit(2, 44100)},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.name);
    open_sample(row.name);
    settings.use_mpglib = row.use_mpglib;
    const Bytes all = decode_all();
    device.played.clear();
    play(editor);
    EXPECT_EQ(device.format, row.format);
    EXPECT_TRUE(sounds_like(play_to_end(), all));
    EXPECT_EQ(playback_underruns(playback), 0U);
  }
}

TEST_F(PlaybackTest, PlaysFasterFromTheNextFillOn) {
  play(editor);
  const auto played_in = [this](std::size_t bytes) {
    play_for(20 * frame_bytes);  // what was filled before
    const EditPosition from = play_position(playback);
    play_for(bytes);
    return frame_from(play_position(playback)) - frame_from(from);
  };
  for (int level = 1; level <= 5; ++level) dispatch_command(editor, 129);
  EXPECT_EQ(playback.fast_play_level, fastest_play);
  EXPECT_NEAR(static_cast<double>(played_in(100 * frame_bytes)), 288, 12);
  for (int level = 1; level <= 3; ++level) dispatch_command(editor, 128);
  EXPECT_NEAR(static_cast<double>(played_in(100 * frame_bytes)), 146, 12);
  for (int level = 1; level <= 2; ++level) dispatch_command(editor, 128);
  EXPECT_EQ(playback.fast_play_level, 0);
  EXPECT_NEAR(static_cast<double>(played_in(100 * frame_bytes)), 100, 4);
  EXPECT_EQ(playback_underruns(playback), 0U);
}

}  // namespace
}  // namespace corvelin::test

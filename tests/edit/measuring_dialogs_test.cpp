// SPDX-License-Identifier: GPL-2.0-or-later
// The dialogs that measure: normalize and pause detection on real audio; and the cues by the clock.
#include <algorithm>

#include "audio/sample_reader.h"
#include "edit/auto_cue_dialog.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/normalize_dialog.h"
#include "edit/pause_dialog.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "settings/settings.h"
#include "support/edit_test.h"
#include "support/sample_audio.h"
#include "unattended/dialog_runs.h"

namespace corvelin::test {
namespace {

class Measuring : public EditTest {
 protected:
  static void run(LongRun& run) {
    while (run.step()) {
    }
  }

  int peak_of_stream() {
    SampleReader reader(document);
    EXPECT_TRUE(reader.open({}, document.total_size, 10));
    int peak = 0;
    while (reader.pos() < document.total_size) peak = std::max<int>(peak, reader.read_peak(10));
    return peak;
  }

  // Where the frames of the stream begin, and its end.
  std::vector<EditPosition> places_of_frames() {
    std::vector<EditPosition> places = {0};
    Bytes block(frame_block_limit);
    for (FrameCursor at; at.pos < document.total_size; places.push_back(at.pos)) {
      while (at.pos == places.back()) read_frames(document, block, at, document.total_size, 1);
    }
    return places;
  }
  int frame_of(EditPosition pos) {
    const std::vector<EditPosition> places = places_of_frames();
    return static_cast<int>(std::ranges::find(places, pos) - places.begin());
  }
};

class Normalize : public Measuring {
 protected:
  void SetUp() override {
    ASSERT_TRUE(open(CORVELIN_SAMPLES "/crc.mp3"));
    selection.sel_beg = 0;
    selection.sel_end = document.total_size;
    seek_to(playback, 5000);
  }

  NormalizeDialog dialog_{editor};
};

TEST_F(Normalize, RaisesThePeakToFullScale) {
  const EditPosition cursor = selection.cursor;
  dialog_.begin();
  run(dialog_);
  EXPECT_EQ(dialog_.percent_done(), 100);
  EXPECT_EQ(dialog_.state, NormalizeDialog::State::finished);
  EXPECT_EQ(selection.cursor, cursor);
  EXPECT_NEAR(dialog_.norm_peak, 17804, 1);
  EXPECT_EQ(dialog_.peak_text(), "-5.30 dB");
  EXPECT_EQ(dialog_.change_text(), "+4.5 dB");
  ASSERT_TRUE(dialog_.accept());
  EXPECT_EQ(parts().substr(parts().size() - 2), "g3");
  EXPECT_EQ(document.end_gain, 3);
  EXPECT_NEAR(peak_of_stream(), 17804 * 1.6818, 3);  // by 3 x 1.50515 dB

  // The cuts and levels of the edit are in what is measured.
  document.parts[0].part_gainbeg = document.end_gain = 8;
  selection.sel_beg = 0;
  selection.sel_end = document.total_size;
  dialog_.begin();
  EXPECT_FALSE(dialog_.step());
  EXPECT_EQ(dialog_.state, NormalizeDialog::State::full_scale);
  EXPECT_FALSE(dialog_.close_unattended());
  EXPECT_EQ(document.end_gain, 8);
}

TEST_F(Normalize, TakesTheChangeOfTheSliderAndTheBatch) {
  dialog_.begin();
  dialog_.cancel();
  EXPECT_FALSE(dialog_.step());
  dialog_.set_change(-40);
  EXPECT_EQ(dialog_.norm_change, -16);
  dialog_.accept();
  EXPECT_EQ(document.end_gain, -16);
  undo_pop(editor);

  dialog_.batch_level = 14;  // two steps below full scale
  document.parts[0].part_gainbeg = document.end_gain = 4;
  selection.sel_beg = 0;
  selection.sel_end = document.total_size;
  dialog_.begin();
  run(dialog_);  // an offset doesn't end the scan
  EXPECT_EQ(dialog_.state, NormalizeDialog::State::finished);
  EXPECT_TRUE(dialog_.close_unattended());
  EXPECT_EQ(document.end_gain, 2);
}

TEST_F(Normalize, HasNothingToDoWithSilence) {
  ASSERT_TRUE(open("a.mp3", frames(60)));
  selection.sel_beg = 0;
  selection.sel_end = document.total_size;
  dialog_.begin();
  run(dialog_);
  EXPECT_EQ(dialog_.peak_text() + dialog_.change_text(), "silence+0.0 dB");
  EXPECT_FALSE(dialog_.accept());
  EXPECT_NE(take_box().find("digital silence"), std::string::npos);
  EXPECT_EQ(state(), "0-60* =0-60");
  dialog_.set_change(2);
  EXPECT_TRUE(dialog_.accept());
  EXPECT_EQ(state(), "0-60*g2 =0-60 !^");
}

// Two pauses of 60 and 70 frames, and one of 30 between them, among tones of 30 frames.
class Pauses : public Measuring {
 protected:
  void SetUp() override {
    const Bytes tone = tone_frames(30);
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}
                                  .raw(tone)
                                  .frames(60)
                                  .raw(tone)
                                  .frames(30)
                                  .raw(tone)
                                  .frames(70)
                                  .raw(tone)
                                  .bytes()));
    settings.silence_skip = 0;
  }

  // What the scan made of the stream: the parts in frames, the cues with their marks.
  std::string scanned() {
    PauseDialog dialog(editor);
    dialog.begin();
    EXPECT_TRUE(dialog.accept());
    run(dialog);
    EXPECT_EQ(dialog.percent_done(), 100);
    std::string text = dialog.progress_text() + " |";
    for (const Part& part : document.parts) {
      text += ' ' + std::to_string(frame_of(part.part_beg));
      if (part.part_iscue != 0) text += '*';
    }
    return text + " | " + std::to_string(frame_of(document.total_size));
  }
};

TEST_F(Pauses, GetACueInFrontOfTheirEnd) {
  struct Row {
    const char* what;
    std::uint16_t Settings::*setting;
    std::uint16_t value;
    const char* result;
  };
  // The tones begin with frames 90, 150 and 250, each with one that leans on data that was cut off.
  const Row table[] = {
      {"default", &Settings::silence_duration, 5, "Found: 2 | 0* 81* 241* | 280"},
      {"shorter ones too", &Settings::silence_duration, 2, "Found: 3 | 0* 81* 141* 241* | 280"},
      {"at the loud frame", &Settings::silence_offset, 60, "Found: 2 | 0* 91* 251* | 280"},
      {"first 4 s unsearched", &Settings::silence_skip, 4, "Found: 1 | 0* 241* | 280"},
      {"all is quiet", &Settings::silence_level, 181, "Found: 0 | 0* | 280"},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.what);
    SetUp();
    settings.silence_duration = 5;
    settings.silence_offset = 50;
    settings.*row.setting = row.value;
    EXPECT_EQ(scanned(), row.result);
    EXPECT_FALSE(has_selection(selection));
    EXPECT_EQ(document.current_part, part_at(document, selection.cursor));
  }
}

TEST_F(Pauses, AreCutOutWhole) {
  settings.silence_cut = 1;
  seek_to(playback, places_of_frames()[200]);
  const std::string result = scanned();
  // 32 to 81 and 182 to 241, as the tones ring on for two frames.
  EXPECT_EQ(result, "Found: 2 | 0* 32* 133* | 172");
  EXPECT_EQ(undo_stack.size(), 1U);
  undo_pop(editor);
  EXPECT_EQ(document.parts.size(), 1U);
}

TEST_F(Pauses, AreLookedForInTheSelection) {
  selection.sel_beg = places_of_frames()[40];
  selection.sel_end = places_of_frames()[110];
  settings.silence_duration = 4;
  EXPECT_EQ(scanned(), "Found: 1 | 0* 81* | 280");
  SetUp();
  settings.silence_cut = 1;
  selection.sel_beg = places_of_frames()[20];
  selection.sel_end = places_of_frames()[245];  // in front of the end of the second pause
  EXPECT_EQ(scanned(), "Found: 1 | 0* 32* | 231");
}

TEST_F(Pauses, CanBeStoppedAndStartedAgain) {
  PauseDialog dialog(editor);
  ASSERT_TRUE(dialog.accept());
  EXPECT_FALSE(dialog.accept());
  dialog.cancel();
  EXPECT_FALSE(dialog.step());
  EXPECT_FALSE(dialog.pause_running);
  ASSERT_TRUE(dialog.accept());
  run(dialog);
  EXPECT_EQ(dialog.pause_found, 2);
  EXPECT_EQ(PauseDialog::level_text() + ", " + PauseDialog::offset_text(), "-31.2 dB, -10 frames");
  EXPECT_EQ(dialog.duration_text(), "> 1.3 sec");
}

struct AutoCueRow {
  const char* what;
  const char* interval;
  const char* last;
  int begin, end;      // of the selection, in frames; 0 for none
  const char* result;  // the parts
};

TEST_F(Measuring, AutoCueSetsCuesByTheClock) {
  // 38.28125 frames a second, whatever the average rate says.
  const AutoCueRow table[] = {
      {"each 12 s", "0:12", "0:06", 0, 0, "0-460* 460-919* 919-1400*"},
      {"24.6 s are too short for two", "0:12", "0:13", 0, 0, "0-460* 460-1400*"},
      {"shorter than the interval", "1:00", "0:06", 0, 0, "0-1400*"},
      {"in a selection", "0:10", "0:00", 50, 900, "0-50* 50-433* 433-816* 816-1400*"},
      {"no number", "x:10", "y", 0, 0, "0-383* 383-766* 766-1149* 1149-1400*"},
      {"an interval of 0", "0:00", "0:06", 0, 0, "0-1400*"},
  };
  for (const AutoCueRow& row : table) {
    SCOPED_TRACE(row.what);
    ASSERT_TRUE(open("a.mp3", frames(1400)));
    document.stream.avg_bitrate *= 2;
    if (row.end != 0)
      select(static_cast<std::uint32_t>(row.begin), static_cast<std::uint32_t>(row.end));
    AutoCueDialog dialog(editor);
    dialog.begin();
    dialog.interval = row.interval;
    dialog.last_length = row.last;
    dialog.accept();
    EXPECT_EQ(parts(), row.result);
  }
  EXPECT_EQ(take_box(), "Not possible: An interval of 0 seconds sets no cue.");
  AutoCueDialog dialog(editor);
  dialog.begin();
  dialog.interval = "12";
  EXPECT_FALSE(dialog.accept());
  settings.autocue = 65;
  dialog.begin();
  EXPECT_EQ(dialog.interval, "1:05");
  dialog.interval = "0:20";
  dialog.creates_names = true;
  EXPECT_TRUE(dialog.accept());
  EXPECT_EQ(parts(), "0-766* 766-1400*:0'20.01");
  EXPECT_TRUE(open_state.document_modified);
}

TEST_F(Measuring, CuesThatHaveNoRoomAreTold) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(1400).raw(tone_frames(30)).bytes()));
  EXPECT_EQ(set_auto_cues(editor, {.interval = 0.02}), Result::refused);
  EXPECT_EQ(document.parts.size(), most_parts);
  const std::string told = "Not possible: No more than 1000 parts are possible. ";
  EXPECT_EQ(take_box(), told + "No cue was set from 0'26.12 on.");
  PauseDialog dialog(editor);
  settings.silence_skip = 0;
  settings.silence_offset = 60;
  EXPECT_FALSE(run_unattended(dialog));
  EXPECT_EQ(take_box(), told + "No cue was set from 0'36.62 on.");
}

}  // namespace
}  // namespace corvelin::test

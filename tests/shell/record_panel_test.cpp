// SPDX-License-Identifier: GPL-2.0-or-later
// What is shown of a recording.
#include "shell/record_panel.h"

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "shell/editor_view.h"
#include "shell/status_display.h"
#include "support/core_test.h"
#include "support/recording_canvas.h"

namespace corvelin::test {
namespace {

// The records as a recorder leaves them; no device is needed to show them.
class RecordPanelTest : public CoreTest {
 protected:
  RecordPanelTest() { recorder.is_armed = true; }
  ~RecordPanelTest() override {
    static_cast<Recording&>(recorder) = {};
    level_meter = {};
  }

  const StatusDisplay& refreshed() {
    refresh_status(editor, status, Refresh::recording_state);
    return status;
  }
  RecordingCanvas drawn() {
    EditorView view;
    RecordingCanvas canvas;
    lay_out_view(view, 200, 360, 1);
    view_redraw(editor, view, canvas);
    return canvas;
  }

  StatusDisplay status;
};

TEST_F(RecordPanelTest, PanelTellsTimesAndWhatIsSpecial) {
  recorder.rec_rate = 128'000;
  recorder.rec_file_bytes = 16'000 * 65;
  recorder.rec_backlog = 4;
  settings.db_scale = 0;
  EXPECT_EQ(drawn().written("mpeg"), ">80,100'Recording time'40 >80,210'Buffer'40");
  EXPECT_EQ(drawn().written("cursor"), "100,210'12 %'40 100,90'1'05.0'120");
  EXPECT_EQ(drawn().written("selection"), "");

  settings.rec_time = 2;
  settings.rec_appenddata = 1;
  recorder.rec_remaining = 16'000 * 55;
  recorder.rec_level_on = true;
  EXPECT_EQ(drawn().written("mpeg"), ">80,100'Recording time'40 >80,210'Remaining time'40");
  EXPECT_EQ(drawn().written("cursor"), "100,210'0'55.0'40 100,90'1'05.0'120");
  EXPECT_EQ(drawn().written("selection"), "100,264,101,360'Level activated recording'40");

  recorder.rec_by_pcm = true;  // then only the time of this take is known
  recorder.rec_pcm_clock = 16'000 * 5;
  recorder.rec_speed = 1.35F;
  EXPECT_EQ(drawn().written("cursor"), "100,210'0'55.0'40 100,90'(0'05.0)'120");
  EXPECT_EQ(drawn().written("selection"), "100,264,101,360'\"High speed\" recording'40");
  EXPECT_EQ(view_in_words(editor),
            "Recording time: (0'05.0); Remaining time: 0'55.0; \"High speed\" recording");
}

TEST_F(RecordPanelTest, MeterShowsClippingAndTheThreshold) {
  recorder.channels = 1;
  recorder.rec_level_on = true;
  settings.rec_threshold = 0x0411;  // a level of 17
  level_meter.meter_hold = {127, 127};
  // The meter goes from row 19 to row 294 and its mark of -18 stands at 35 of 127 parts.
  EXPECT_EQ(drawn().drawn("cursor", 0, 360), "170,19,192,21 170,219,192,221");
}

TEST_F(RecordPanelTest, StatusTellsTheEncoderAndThenTheFileAndItsCues) {
  struct {
    std::int32_t method;
    std::uint8_t mode;
    const char* text;
  } const rows[] = {{-1, 0, "  Encoder = Lame: 32 kbps, 44 kHz, Stereo"},
                    {2, 1, "  Encoder = Lame: 32-320 kbps (VBR, Q4), 44 kHz, Joint Stereo"},
                    {4, 3, "  Encoder = Lame: 32-320 kbps (ABR 100 kbps), 44 kHz, Mono"}};
  for (const auto& row : rows) {
    settings.enc_lam_vbr_method = row.method;
    settings.enc_lam_mode = row.mode;
    EXPECT_EQ(refreshed().info_bar, row.text);
  }
  settings.enc_type = 1;
  EXPECT_EQ(refreshed().info_bar, "  Encoder = ACM: 128 kbps, 44 kHz, Stereo");
  EXPECT_EQ(status.position_field, " Press Play to start recording... ");

  recorder.rec_writing = true;
  recorder.rec_file_name = "/x/take.mp3";
  EXPECT_EQ(refreshed().position_field, " Writing '/x/take.mp3'");
  EXPECT_EQ(status.range_field, " Press 'Set begin' to set cues");
  recorder.rec_rate = 128'000;
  recorder.rec_cues = {{}, {.recorded_at = 16'000 * 62}};
  EXPECT_EQ(refreshed().range_field, " Cue (2): 1'02.0");
}

}  // namespace
}  // namespace corvelin::test

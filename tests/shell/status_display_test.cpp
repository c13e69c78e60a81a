// SPDX-License-Identifier: GPL-2.0-or-later
// The texts beside the view and on the buttons.
#include "shell/status_display.h"

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "edit/editor.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "shell/button_texts.h"
#include "shell/debug_text.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class StatusDisplayTest : public EditTest {
 protected:
  const StatusDisplay& refreshed(Refresh level = Refresh::all) {
    refresh_status(editor, status, level);
    return status;
  }

  StatusDisplay status;
};

TEST_F(StatusDisplayTest, FieldsTellPositionSelectionAndPart) {
  make("0-8* 8-20* @5 =8-12 #1");
  document.stream.avg_bitrate = 3336;  // so that a frame lasts a second
  EXPECT_EQ(refreshed().position_field, " Total: 0'20.00   Now: 0'05.00   (25%)");
  EXPECT_EQ(status.range_field, " Selection: 0'08.00 - 0'12.00 (0'04.00)");
  EXPECT_EQ(status.scroll_position, 250);
  EXPECT_TRUE(status.has_scroll_bar);
  EXPECT_EQ(status.title, "a.mp3 - Corvelin");

  clear_selection(selection);
  open_state.project_name = "/x/y.cvp";
  EXPECT_EQ(refreshed().range_field, " Part (2 / 2): 0'08.00 - 0'20.00 (0'12.00)");
  EXPECT_EQ(status.title, "y.cvp / a.mp3 - Corvelin");
  document.stream.vbr = vbr_seen;
  EXPECT_EQ(refreshed().range_field, " Part (2 / 2): 0'08.00 - 0'20.00");
}

TEST_F(StatusDisplayTest, BarTellsTheStreamItsTagsAndTheDecoder) {
  const std::string tags = "     |     ID3v1: No  -  ID3v2: No     |     Play decoder: ACM";
  struct {
    const char* name;
    Bytes bytes;
    std::string text;
  } const rows[] = {
      {"a.mp3", frames(20), "  MPEG 1.0 Layer 3  -  128 kbps  -  44 kHz  -  Stereo" + tags},
      {"a.mp3",
       frames(20, {.version = 25,
                   .bitrate = 64,
                   .sample_rate = 11025,
                   .is_mono = true,
                   .has_crc = true,
                   .copyright = true}),
       "  MPEG 2.5 Layer 3  -  64 kbps  -  11 kHz  -  Mono,  CRC,  ©" + tags},
      {"a.mp2", frames(20, {.layer = 2, .bitrate = 64}),
       "  MPEG 1.0 Layer 2  -  64 kbps  -  44 kHz  -  Stereo" + tags},
      {"a.aac", Mp3Builder{}.adts(20, 300).bytes(),
       "  AAC-LC/ADTS (MPEG 4)  -  103 kbps (ABR 103 kbps)  -  44 kHz  -  Stereo"
       "     |     ID3v1: No  -  ID3v2: No     |     Play decoder: libfaad2"},
      {"a.mp3", Mp3Builder{}.id3v2("").frames(20).id3v1("T").bytes(),
       "  MPEG 1.0 Layer 3  -  128 kbps  -  44 kHz  -  Stereo     |     ID3v1: Yes / Save: Yes"
       "  -  ID3v2: Yes / Keep: Yes     |     Play decoder: ACM"}};
  for (const auto& row : rows) {
    ASSERT_TRUE(open(row.name, row.bytes));
    EXPECT_EQ(refreshed().info_bar, row.text);
  }
  settings.save_id3v1 = settings.keep_id3v2 = 0;
  settings.use_mpglib = 1;
  EXPECT_TRUE(refreshed().info_bar.ends_with(
      "ID3v1: Yes / Save: No  -  ID3v2: Yes / Keep: No     |     Play decoder: mpglib"));
  document.stream.vbr = vbr_seen;
  document.stream.avg_bitrate = 96'400;
  selection.current_frame.bitrate = 64;
  EXPECT_TRUE(refreshed().info_bar.starts_with(
      "  MPEG 1.0 Layer 3  -  64 kbps, VBR (96 kbps)  -  44 kHz  -  Stereo  "));
  selection.current_frame = {};
  EXPECT_TRUE(refreshed().info_bar.starts_with(" No sync     |     ID3v1: Yes"));
}

TEST_F(StatusDisplayTest, LevelsSayHowMuchIsBroughtUpToDate) {
  make("0-8* 8-20* @5");
  level_meter = {.meter_margin = {127, 64}};
  refreshed(Refresh::places);
  EXPECT_EQ(status.title, "");
  EXPECT_EQ(status.margin, "");
  const std::string range = status.range_field;
  make("0-8* 8-20* @8 #1");
  refreshed(Refresh::playing);
  EXPECT_EQ(status.range_field, range);
  EXPECT_EQ(status.scroll_position, 400);
  EXPECT_EQ(status.margin, " 0.0  /  6.0");
  document.kind.channel_mode = mono;
  level_meter = {};
  EXPECT_EQ(refreshed(Refresh::playing).margin, "42.1");
  selection.current_frame.frame_length = 0;
  EXPECT_EQ(refreshed(Refresh::playing).position_field, " (40%) ");

  close_all(editor);
  EXPECT_EQ(refresh_status(editor, status, Refresh::all), Refresh::no_document);
  EXPECT_EQ(status.title + status.position_field + status.range_field + status.info_bar,
            "Corvelin   ");
  EXPECT_FALSE(status.has_scroll_bar);
  recorder.is_armed = true;
  EXPECT_EQ(refresh_status(editor, status, Refresh::playing), Refresh::recording_state);
  recorder.is_armed = false;
}

TEST_F(StatusDisplayTest, WordsTellWhatIsSeen) {
  make("0-8* 8-20* @5 =8-12 #1");
  document.stream.avg_bitrate = 3336;
  EXPECT_EQ(view_in_words(editor),
            "Total: 0'20.00   Now: 0'05.00   (25%); Part (2 / 2): 0'08.00 - 0'20.00 (0'12.00); "
            "Selection: 0'08.00 - 0'12.00 (0'04.00)");
  level_meter = {.meter_level = {95, 0}};
  EXPECT_EQ(meter_in_words(editor), "-6 dB / -48 dB");
  document.kind.channel_mode = mono;
  EXPECT_EQ(meter_in_words(editor), "-48 dB");
  level_meter = {};
  close_all(editor);
  EXPECT_EQ(view_in_words(editor), "");
}

TEST_F(StatusDisplayTest, DebugTextTellsThePartsAsFarAsItHasRoom) {
  make("0-8* 9-20* @5");
  EXPECT_EQ(debug_text(editor),
            "Size all: 7923\nCursor: 2085\nGG bit: 73\n"
            "Part: 00  beg: 0  fpos: 0  size: 3336\nPart: 01  beg: 3336  fpos: 3753  size: 4587\n"
            "Info header: 0\n\ndpi factor: 1.00\n");
  make(
      "0-1 1-2 2-3 3-4 4-5 5-6 6-7 7-8 8-9 9-10 10-11 11-12 12-13 13-14 14-15 15-16 16-17 17-18 "
      "18-19 19-20 0-1 1-2 2-3 3-4 4-5 5-6 6-7 7-8 8-9 9-10");
  EXPECT_LE(debug_text(editor).size(), 1000U);
  EXPECT_TRUE(debug_text(editor).ends_with("dpi factor: 1.00\n"));
}

TEST(ButtonTexts, TellTheKeyAndWhatUndoTakesBack) {
  Editor editor;
  editor.undo_stack = {{.undo_label = "Auto crop"}};
  struct {
    CommandId id;
    const char* tooltip;
    const char* name;
  } const rows[] = {{152, "Cut/Cue: Delete selected range / create Cue or edit point   [Del or C]",
                     "Cut/Cue: Delete selected range / create Cue or edit point"},
                    {205, "Trim left side of current cut to left   [Ctrl+1]",
                     "Trim left side of current cut to left"},
                    {1050, "Configure   [F11]", "Configure"},
                    {213, "Create/use ID3v1 tag", "Create/use ID3v1 tag"},
                    {1022, "Undo: Auto crop   [Ctrl+Z]", "Undo"},
                    {1, "", ""}};
  for (const auto& row : rows) {
    EXPECT_EQ(button_tooltip(editor, row.id), row.tooltip);
    EXPECT_EQ(button_name(editor, row.id), row.name);
  }
}

}  // namespace
}  // namespace corvelin::test

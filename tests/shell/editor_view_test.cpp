// SPDX-License-Identifier: GPL-2.0-or-later
// What the view draws, in rows written by hand.
#include "shell/editor_view.h"

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "edit/editor.h"
#include "model/stream_info.h"
#include "platform/processes/program.h"
#include "settings/settings.h"
#include "shell/pixel_canvas.h"
#include "support/edit_test.h"
#include "support/recording_canvas.h"

namespace corvelin::test {
namespace {

// A stream of 8 frames with the heights 18, 205, 255 and 0, twice, in a view 100 pixels high, of
// which the graph has 87. The texts over the graph are off.
class EditorViewTest : public EditTest {
 protected:
  void SetUp() override {
    Mp3Builder builder;
    for (const int gain : {150, 180, 200, 100, 150, 180, 200, 100})
      builder.frame({.global_gain = gain});
    ASSERT_TRUE(open("a.mp3", builder.bytes()));
    settings.big_timer = settings.time_marks = settings.db_scale = 0;
  }

  RecordingCanvas draw(int width, int height = 100) {
    RecordingCanvas canvas;
    lay_out_view(view, width, height, 1);
    view_redraw(editor, view, canvas);
    return canvas;
  }
  std::string graph(const char* colour, int width) { return draw(width).drawn(colour, 0, 87); }
  std::string map(const char* colour, int width) { return draw(width).drawn(colour, 88, 100); }

  EditorView view;
};

TEST_F(EditorViewTest, BarsStandOnTheBottomAndShowTheHighestFrameOfTheirColumn) {
  make("0-8* @4");
  struct {
    std::uint16_t zoom;
    int width;
    const char* bars;
  } const rows[] = {{8, 8, "0,81,1,87 1,19,2,87 2,2,3,87 4,81,5,87 5,19,6,87 6,2,7,87"},
                    {16, 8, "0,2,1,87 1,2,2,87 4,81,5,87 5,81,6,87 6,19,7,87 7,19,8,87"},
                    {4, 4, "0,19,1,87 1,2,2,87 2,19,3,87 3,2,4,87"},
                    {1, 1, "0,2,1,87"},
                    {32, 3, ""}};  // not even one frame
  for (const auto& row : rows) {
    settings.zoom = row.zoom;
    EXPECT_EQ(graph("mpeg", row.width), row.bars) << row.zoom;
  }
  settings.zoom = 8;
  make("0-2* 2-4 4-8g-4 @4");
  document.end_gain = -4;
  EXPECT_EQ(graph("mpeg", 8), "0,81,1,87 1,19,2,87");
  // A gain of 146 is 4 cubed and 64 less 60 high, one of 176 has 171.
  EXPECT_EQ(graph("cuts", 8), "2,2,3,87 4,86,5,87 5,30,6,87 6,2,7,87 2,0,3,86 4,0,5,86");
}

TEST_F(EditorViewTest, BordersAreLinesAndWhatLiesOutsideIsABlock) {
  struct {
    std::uint16_t zoom;
    int width;
    const char* state;
    const char* cuts;
    const char* actual;
  } const rows[] = {
      {8, 8, "0-2* 2-5 6-8* @4 #1", ":0,0,1,86 :5,0,6,86 7,0,8,86", "2,0,3,86"},
      // A frame that spans two columns has one line, but two where the next one has a line too.
      {16, 8, "0-8* @1", "0,0,1,86 1,0,2,86 2,0,3,86 3,0,4,86", ":4,0,5,86"},
      {16, 8, "0-1* 1-8 @2", "2,0,3,86", ":0,0,1,86 :1,0,2,86"},
      {4, 4, "0-3* 3-4* 4-8 @4 #1", ":0,0,1,86 2,0,3,86", ":1,0,2,86"},
      {8, 4, "0-8* @8", "3,0,4,86", "2,0,3,86"}};  // at its end the stream's end is current
  for (const auto& row : rows) {
    make(row.state);
    settings.zoom = row.zoom;
    EXPECT_EQ(graph("cuts", row.width), row.cuts) << row.state;
    EXPECT_EQ(graph("actual", row.width), row.actual) << row.state;
  }
}

TEST_F(EditorViewTest, SelectionReachesToTheFrameBehindIt) {
  struct {
    std::uint16_t zoom;
    int width;
    const char* state;
    const char* selection;
  } const rows[] = {{8, 8, "0-8* @4 =2-5", "2,0,5,86"},
                    {8, 8, "0-8* @4 =3-3", ":3,0,4,86"},
                    {8, 4, "0-8* @4 =0-7", "0,0,3,86"},  // begins and ends outside
                    {8, 8, "0-8* @6 =6-8", "4,0,8,86"},
                    {8, 8, "0-8* @7 =0-1", ""},
                    {16, 8, "0-8* @4 =3-4", "2,0,4,86"},
                    {2, 4, "0-8* @4 =1-1", ":1,0,2,86"},
                    {2, 4, "0-8* @4 =1-6", "1,0,2,86"},
                    {1, 4, "0-8* @2 =3-4", "2,0,3,86"}};  // never narrower than a column
  for (const auto& row : rows) {
    make(row.state);
    settings.zoom = row.zoom;
    EXPECT_EQ(graph("selection", row.width), row.selection) << row.state << " " << row.zoom;
  }
}

TEST_F(EditorViewTest, HandlesStandAtTheirLevelAndShowItInDecibels) {
  make("0-2* 2-6g-4 6-8g12 @5 #1");
  document.end_gain = -60;
  const RecordingCanvas canvas = draw(8);
  // At 72 and 40 of 192 parts of the 86 rows, 4 rows up; the end's at 184, and at the last frame.
  EXPECT_EQ(canvas.written("000000"),
            "2,28'   '15 on grip 6,13'   '15 on grip 7,78'   '15 on grip 8,78'   '15 on grip");
  EXPECT_EQ(canvas.written("cuts"),
            "15,13' 18.0 '15 on background 16,78' -90.0 '15 on background "
            "17,78' -90.0 '15 on background");
  EXPECT_EQ(canvas.written("actual"), "11,28' -6.0 '15 on background");
  EXPECT_EQ(view.handles[0], (Rect{2, 28, 11, 43}));  // its label covers the rest

  document.kind.layer = 2;
  EXPECT_EQ(draw(8).written("actual"), "");
  EXPECT_EQ(view.handles[0], (Rect{2, 28, 24, 43}));
}

TEST_F(EditorViewTest, CursorBitratesAndTimesStandAtTheirColumns) {
  make("0-8* @4");
  EXPECT_EQ(graph("cursor", 6), ":3,0,4,86");
  settings.zoom = 32;
  EXPECT_EQ(graph("cursor", 8), ":4,0,5,86");  // only in the first of the frame's columns
  settings.zoom = 1;
  make("0-2* 2-8g-4 @1");
  EXPECT_EQ(graph("cursor", 2), ":1,0,2,86");  // together with two handles

  settings.time_marks = 1;
  settings.zoom = 8;
  document.stream.avg_bitrate = 660;  // so that a frame lasts 5.05 seconds
  make("0-8* @4");
  EXPECT_EQ(draw(4).written("cursor"),
            "-1,71'|  0'10'15 0,71'|  0'15'15 1,71'|  0'20'15 2,71'|  0'25'15");
  settings.zoom = 32;  // every frame begins a second, and has four columns
  document.stream.avg_bitrate = 2;
  EXPECT_EQ(draw(8).written("cursor"), "-1,71'|  1:23'24'15 3,71'|  1:51'12'15");

  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(2).shape({.bitrate = 320}).frames(2).bytes()));
  settings.bitrate_graph = 1;
  settings.zoom = 8;
  selection.cursor = 2 * length;
  document.stream.avg_frame_size = length;
  EXPECT_EQ(draw(4).drawn("vumeter", 0, 20).substr(0, 20), "2,13,3,16 3,13,4,16 ");
}

TEST_F(EditorViewTest, MapShowsPartsSelectionCursorAndTheRangeOfTheGraph) {
  make("0-2* 3-5 6-8*:Title @4 =1-3 #1");
  const RecordingCanvas canvas = draw(100);
  EXPECT_EQ(canvas.drawn("cuts", 88, 100), "-1,88,33,99 66,88,101,99");
  EXPECT_EQ(canvas.drawn("actual", 88, 100), "33,88,66,99");
  EXPECT_EQ(canvas.drawn("background", 88, 100),
            "-1,88,33,89 -1,98,33,99 -1,88,0,99 32,88,33,99 "
            "33,88,66,89 33,98,66,99 33,88,34,99 65,88,66,99 "
            "66,88,101,89 66,98,101,99 66,88,67,99 100,88,101,99");
  EXPECT_EQ(canvas.written("background"), "70,89,98,98'Title'15");
  EXPECT_EQ(canvas.drawn("selection", 88, 100), "#15,89,51,98");
  EXPECT_EQ(canvas.drawn("cursor", 88, 100), "65,88,67,99 0,88,100,89 0,98,100,99");
  // A view of two frames; at the stream's very end the range reaches to it.
  EXPECT_EQ(draw(2).drawn("cursor", 98, 99), "1,98,2,99");
}

TEST_F(EditorViewTest, MeterHasABarAndAHoldMarkForEachChannel) {
  level_meter = {.meter_level = {64, 0}, .meter_hold = {127, 100}};
  EXPECT_EQ(draw(200, 200).drawn("vumeter", 0, 200),
            "165,9,193,10 165,165,193,166 165,9,166,166 192,9,193,166 "
            "166,87,178,165 166,10,178,12 180,164,192,165 180,43,192,45");
  document.kind.channel_mode = mono;
  settings.db_scale = 1;
  const RecordingCanvas canvas = draw(200, 200);
  EXPECT_EQ(canvas.drawn("vumeter", 0, 200),
            "179,9,193,10 179,165,193,166 179,9,180,166 192,9,193,166 "
            "180,48,192,49 180,91,192,92 180,121,192,122 173,164,179,165 "
            "180,164,192,165 180,43,192,45");
  EXPECT_EQ(canvas.written("vumeter"),
            ">170,3'[dB]   0'15 >170,157'-48'15 >170,41'-6'15 >170,84'-12'15 >170,114'-18'15");
  EXPECT_EQ(draw(200, 60).written("vumeter"),  // there is no room for more
            ">179,-4'[dB]   0'15 >179,42'-48'15 >179,7'-6'15 >179,20'-12'15");
  level_meter = {};
}

TEST_F(EditorViewTest, BigTimerGetsSmallerTheMoreItSays) {
  make("0-2* 2-8 @5 #1");
  document.stream.avg_bitrate = 1000;  // so that a frame lasts 3.336 seconds
  settings.big_timer = 1;
  struct {
    std::uint32_t relative;
    std::uint32_t total;
    std::uint16_t most;
    int height;
    const char* timer;
  } const rows[] = {{0, 0, 500, 900, "8,31'0'16.68'200"},
                    {0, 0, 100, 900, "8,31'0'16.68'100"},
                    {0, 0, 500, 300, "8,31'0'16.68'150"},
                    {1, 0, 500, 900, "8,31'02 > 0'10.01'150"},
                    {0, 1, 500, 900, "8,31'0'16.68 / 0'26'150"},
                    {1, 1, 500, 900, "8,31'02 > 0'10.01 / 0'20'112"},
                    {1, 1, 500, 60, "8,31'02 > 0'10.01 / 0'20'40"}};
  for (const auto& row : rows) {
    settings.big_relative = row.relative;
    settings.big_total = row.total;
    settings.timer_height = row.most;
    EXPECT_EQ(draw(10, row.height).written("cursor"), row.timer);
  }
}

TEST_F(EditorViewTest, NamesStandOverTheGraphAndHintsUntilTheyWereSeen) {
  make("0-4*:One 4-8 @4");
  document.parts[0].part_artist = std::u16string(60, u'a');
  document.sheet_title = u"Album";
  const RecordingCanvas named = draw(8);
  EXPECT_EQ(
      named.written("actual", -100, 80),
      "10,24' 0.0 '15 on background 10,46'" + std::string(40, 'a') + " - One'25 10,21'Album'25");
  select(2, 2);
  selection.sel_title = u"Next";
  EXPECT_EQ(draw(8).written("selection"), "10,6'[cue] Next'25");
  playback.fast_play_level = 3;
  EXPECT_EQ(draw(8).written("cursor"), "10,6'Fast Play (3)'25");
  playback.fast_play_level = 0;

  clear_selection(selection);
  document.stream.is_aac = 1;
  EXPECT_EQ(draw(8).written("mpeg"), "10,10'Note: No level adjustment on AAC'25");
  document.stream.is_aac = 0;
  document.kind.layer = 2;
  EXPECT_EQ(draw(8).written("mpeg"), "10,10'Layer 2 graph shows limited audio information'25");
  document.stream.avg_bitrate = 400;  // the cursor is 33 seconds behind the start
  draw(8);
  selection.cursor = 0;
  EXPECT_EQ(draw(8).written("mpeg"), "");
}

TEST_F(EditorViewTest, StartScreenIsALittleBrighterOrDarkerThanItsGround) {
  close_all(editor);
  settings.rgb_background = 0x4F2010;
  EXPECT_EQ(draw(100, 200).written("774838"),
            "|50,60'Corvelin'40 bold |50,100'Version " + std::string(program_version) +
                "'20 bold "
                "|50,120'Free software under the GNU General Public License'20 bold");
  settings.rgb_background = 0xFF2850;
  EXPECT_NE(draw(100, 200).written("D72828"), "");
}

TEST(PixelCanvasTest, FillsOnlyWhatLiesInTheViewAndLeavesGapsInPatterns) {
  class Picture : public PixelCanvas {
   public:
    using PixelCanvas::PixelCanvas;
    int text(int, int, std::string_view, const TextStyle&) override { return 0; }
    void paragraph(const Rect&, std::string_view, const TextStyle&) override {}
  };
  std::vector<std::uint32_t> pixels(8 * 4, 0);  // rows of 8, of which 6 are the view's
  Picture picture(pixels, 6, 4, 8);
  picture.fill({-5, 2, 90, 90}, 0x112233);
  picture.fill({1, -1, 2, 4}, 0xFF, Pattern::dots);
  picture.fill({2, 0, 6, 3}, 0xFF00, Pattern::hatch);
  std::string text;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const std::uint32_t pixel = pixels[i];
    text += pixel == 0 ? '.' : pixel == 0xFF332211 ? '#' : pixel == 0xFFFF0000 ? 'r' : 'g';
    if (i % 8 == 7) text += '\n';
  }
  EXPECT_EQ(text, ".r..g...\n...g....\n#rg###..\n######..\n");
}

}  // namespace
}  // namespace corvelin::test

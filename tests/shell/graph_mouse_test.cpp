// SPDX-License-Identifier: GPL-2.0-or-later
// Gestures on the view.
#include "shell/graph_mouse.h"

#include "audio/playback.h"
#include "edit/editor.h"
#include "settings/settings.h"
#include "support/edit_test.h"
#include "support/recording_canvas.h"

namespace corvelin::test {
namespace {

// A view of 20 frames, 200 pixels high: 174 of the graph, the rest of the map. With the cursor in
// the middle of the stream frame n stands in column n.
class GraphMouseTest : public EditTest {
 protected:
  void SetUp() override {
    EditTest::SetUp();
    lay_out_view(view, 20, 200, 1);
  }

  void redraw() {
    RecordingCanvas canvas;
    view_redraw(editor, view, canvas);
  }

  // A gesture of steps "l10,5": the left (l) or right (r) button goes down at a point, or with "L",
  // "R" moves there held; "-" lets go. "^" and "+" in front hold Ctrl and Shift. Each step that
  // asks for a refresh gets one.
  void gesture(const std::string& steps) {
    redraw();
    std::istringstream words(steps);
    for (std::string word; words >> word;) {
      if (word == "-") {
        if (release_mouse(editor, mouse)) redraw();
        continue;
      }
      MouseButtons buttons;
      for (; word[0] == '^' || word[0] == '+'; word.erase(0, 1)) {
        (word[0] == '^' ? buttons.ctrl : buttons.shift) = true;
      }
      buttons.left = word[0] == 'l' || word[0] == 'L';
      buttons.right = word[0] == 'r' || word[0] == 'R';
      const bool is_press = word[0] == 'l' || word[0] == 'r';
      std::istringstream point(word.substr(1));
      int x = 0;
      int y = 0;
      char comma = 0;
      point >> x >> comma >> y;
      if ((is_press ? press_mouse : move_mouse)(editor, mouse, view, buttons, x, y)) redraw();
    }
  }

  EditorView view;
  GraphMouse mouse;
};

TEST_F(GraphMouseTest, GesturesSelectSeekAndDragHandles) {
  settings.mouse_method = 1;
  struct {
    const char* before;
    const char* gesture;
    const char* after;
  } const rows[] = {
      {"0-20* @10", "l5,90 L8,90 L12,90 -", "0-20* =5-12 @10 ^"},
      {"0-20* @10", "l5,90 L8,190 L9,999 -", "0-20* =5-8 @10 ^"},  // begun in the graph
      {"0-8* 8-20* @10", "l12,90 -", "0-8* 8-20* =12-12 @10 #1 ^"},
      {"0-20* @10 =4-6", "+l9,90 -", "0-20* =4-9 @10 ^"},
      {"0-20* @10", "^l4,90 -", "0-20* @4"},
      {"0-20* @10", "l10,180 L5,180 -", "0-20* @5"},  // in the map
      {"0-20* @10", "l10,180 L5,10 -", "0-20* @5"},   // whose drag goes on above it
      {"0-20* @10", "r10,180 -", "0-20* =10-10 @10 ^"},
      {"0-20* @18", "l19,90 -", "0-20* =20-20 @18 ^"},  // behind the end
      // The handle of frame 8 stands at 53 to 67, right of it.
      {"0-8* 8-20* @10", "l10,60 L10,0 -", "0-8 8-20g32 @10 #1 !^"},
      {"0-8* 8-20* @10", "l10,60 L10,174 -", "0-8 8-20g-60 @10 #1 !^"},
      {"0-8* 8-20* @10", "l10,60 L10,58 -", "0-8* 8-20* @10 #1 !^"},  // 32 less 58 x 96 / 174
      {"0-8* 8-20* @10", "r10,60 R10,60 R9,60 -", "0-5* 5-20* @10 #1 !^"},
      {"0-8* 8-20* @10", "r10,60 R5,60 R4,60 -",
       "0-1* 1-20* @10 #1 !^"},                                      // not onto the part before
      {"0-7* 8-20* @10", "r9,60 R14,60 -", "0-7* 8-20* @10 #1 !^"},  // a cut doesn't move
      {"0-20* @10", "r2,60 R8,60 -", "0-20* @10 !^"}};               // nor the stream's start
  for (const auto& row : rows) {
    make(row.before);
    mouse = {};
    gesture(row.gesture);
    EXPECT_EQ(state(), row.after) << row.before << " " << row.gesture;
    EXPECT_LE(undo_stack.size(), 1U);  // all of a gesture is one step
  }
}

TEST_F(GraphMouseTest, HandCursorShowsAHandleOfALevel) {
  make("0-8* 8-20* @15");  // the border is in column 3
  redraw();
  struct {
    int x;
    int y;
    MouseButtons buttons;
    bool on_handle;
  } const rows[] = {
      {4, 53, {}, true}, {3, 60, {}, false}, {12, 67, {}, true}, {13, 60, {}, false},
      {4, 60, {}, true}, {4, 52, {}, false}, {4, 60, {}, true},  {4, 68, {.ctrl = true}, true},
      {4, 68, {}, false}};
  for (const auto& row : rows) {
    EXPECT_FALSE(move_mouse(editor, mouse, view, row.buttons, row.x, row.y));
    EXPECT_EQ(mouse.on_handle, row.on_handle) << row.x << "," << row.y;
  }
}

TEST_F(GraphMouseTest, WhatHasNoLevelAndWhatPlaysIsLeftAlone) {
  ASSERT_TRUE(open("a.mp2", frames(20, {.layer = 2})));
  make("0-8* 8-20* @10");
  gesture("l10,60 -");
  EXPECT_EQ(state(), "0-8* 8-20* @10 #1");
  ASSERT_TRUE(open("a.mp3", frames(20)));
  make("0-8* 8-20* @10");
  playback.is_playing = true;
  playback.played_pos = selection.cursor;
  gesture("l12,90 -");
  playback.is_playing = false;
  EXPECT_EQ(state(), "0-8* 8-20* =12-12 @10 ^");  // the current part is the one that is heard

  gesture("l10,60");
  close_all(editor);
  gesture("L10,0 -");
  EXPECT_FALSE(open_state.document_modified);
}

}  // namespace
}  // namespace corvelin::test

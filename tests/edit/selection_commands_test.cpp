// SPDX-License-Identifier: GPL-2.0-or-later
// Moving, selecting by mouse, and the fields that take typed times.
#include "edit/selection_commands.h"

#include "edit/editor.h"
#include "edit/navigation.h"
#include "edit/time_fields.h"
#include "model/cuts.h"
#include "settings/settings.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class SelectionCommands : public EditTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", frames(1000, {.noisy = true}))); }
};

TEST_F(SelectionCommands, MouseMovesTheNearerEndOrTheOneOfItsButton) {
  struct {
    std::uint32_t frame;
    MouseButtons buttons;
    bool is_press;
    const char* places;
    std::uint16_t method = 1;
  } const rows[] = {{100, {.left = true}, true, " =100-100"},
                    {200, {.left = true}, false, " =100-200"},
                    {140, {.right = true}, true, " =140-200"},
                    {170, {.left = true, .shift = true}, true, " =140-170"},
                    {50, {.left = true, .ctrl = true}, true, " =140-170 @50"},
                    {300, {.left = true}, true, " =300-300 @50", 0},
                    {400, {.right = true}, true, " =300-400 @50", 0}};
  for (const auto& row : rows) {
    settings.mouse_method = row.method;
    mouse_select(editor, row.frame * length, row.buttons, row.is_press);
    EXPECT_EQ(places(), row.places);
  }
  EXPECT_EQ(undo_stack.size(), 5U);  // a move belongs to its press, and the cursor needs no step
}

TEST_F(SelectionCommands, CursorMovesByFramesAndBorders) {
  struct {
    std::function<void(Editor&)> command;
    std::uint32_t frame;
  } const steps[] = {
      {skip_forward_small, 38},   {skip_forward_large, 421},
      {skip_back_small, 382},  // one frame more than forward
      {skip_back_large, 0},       {frame_back, 0},
      {frame_forward, 1},         {go_to_track_end, 1000},
      {skip_forward_small, 1000}, {frame_back, 999},  // the last frame, which none follows
      {frame_back, 998},          {frame_forward, 999},
      {frame_forward, 1000},      {rewind, 0},
      {go_to_selection_end, 0},   {go_to_next_range, 10},
      {go_to_next_range, 30},     {go_to_next_range, 1000},
      {go_to_next_range, 1000},   {go_to_previous_range, 30},
      {go_to_previous_range, 10}, {go_to_previous_range, 0},
      {go_to_previous_range, 0}};
  split_at(document, 10 * length);
  split_at(document, 30 * length);
  for (const auto& step : steps) {
    step.command(editor);
    EXPECT_EQ(selection.cursor, step.frame * length) << &step - steps;
  }
  for (int i = 0; i < 4; ++i) zoom_in();
  EXPECT_EQ(settings.zoom, 32);
  for (int i = 0; i < 9; ++i) zoom_out();
  EXPECT_EQ(settings.zoom, 1);
}

// One second is 15963 bytes at 417 bytes a frame and 44100 Hz; 10 seconds lie in frame 383. The
// frames 100 and 200 begin at 2.612 s and 5.225 s.
TEST_F(SelectionCommands, FieldsTakeWhatWasChangedInThem) {
  struct {
    void (*field)(Editor& editor, std::string_view);
    const char* text;
    const char* places;
  } const rows[] = {
      {apply_now_field, " Total: 0'26.12   Now: 0'10.00   (0%)", " =100-200 @383"},
      // The time as it was.
      {apply_now_field, "Total 0'26.12 Now 0'10.00 (50.0%)", " =100-200 @500"},
      {apply_now_field, "Now 9'00 (50%)", " =100-200 @1000"},
      {apply_now_field, "Now", " =100-200 @1000"},
      {apply_now_field, "0'10.00 (1%)", " =100-200 @1000"},
      {apply_now_field, "Total 0'26.12 Now 0'26.12 (1", " =100-200 @1000"},
      {apply_selection_field, " Selection: 0'02.61 - 0'05.22 (0'02.61)", " =100-200 @1000"},
      {apply_selection_field, " Selection: 0'02.61 - 0'10.00 (0'02.61)", " =100-383 @1000"},
      // A length wins over an end, and the end, set last, pulls the begin along.
      {apply_selection_field, "Selection 0'02.61 - 0'10.00 (0'05.22)", " =100-300 @1000"},
      {apply_selection_field, "Selection 0'10.00 - 0'05.22 (0'05.22)", " =200-200 @1000"},
      {apply_selection_field, "Part 1'00 - 2'00 (1'00)", " =200-200 @1000"},
      {apply_selection_field, "Selection 1'00", " =200-200 @1000"},
      {apply_selection_field, "Selection 1'00 - 2'00", " =200-200 @1000"}};
  select(100, 200);
  for (const auto& row : rows) {
    row.field(editor, row.text);
    EXPECT_EQ(places(), row.places) << row.text;
  }
}

}  // namespace
}  // namespace corvelin::test

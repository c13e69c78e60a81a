// SPDX-License-Identifier: GPL-2.0-or-later
// The part table, its look-ups, and the places in it.
#include "model/document.h"

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/exact_time.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

using DocumentTest = EditTest;

TEST_F(DocumentTest, EndBelongsToTheLastPartAndWhatIsBehindToTheFirst) {
  make("0-1 5-7");
  const std::pair<EditPosition, PartIndex> places[] = {
      {416, 0}, {417, 1}, {1251, 1}, {1252, 0}, {no_position, 0}};
  for (const auto& [pos, part] : places) EXPECT_EQ(part_at(document, pos), part) << pos;
}

TEST_F(DocumentTest, NewPartGoesInFrontOfOneAtTheSamePlace) {
  make("0-10:old");
  EXPECT_EQ(add_part(document, 0, 0, length, 2 * length), 0);
  EXPECT_EQ(parts(), "1-3 0-10:old");
  document.current_part = 1;
  EXPECT_EQ(remove_part(document, 1), 0);
  recompute_total(document);
  EXPECT_EQ(document.current_part, 0);
  EXPECT_EQ(remove_part(document, 7), no_part);
}

TEST_F(DocumentTest, CopyLivesOnByItself) {
  make("0-10*:one 12-20g-4");
  Document copy = document;
  delete_range(document, 2 * length, 5 * length);
  document.parts[0].part_title = u"other";
  EXPECT_NE(document.revision, copy.revision);
  EXPECT_EQ(copy.total_size, 18 * length);
  EXPECT_EQ(copy.parts[0].part_title, u"one");

  close_document(document);
  FrameInfo last_found;
  EXPECT_EQ(frame_at(copy, 12 * length - 5, last_found), 12 * length);
  EXPECT_NEAR(exact_seconds(copy, 10 * length), 10 * 1152 / 44100.0, 1e-9);
  std::vector<std::uint8_t> block(2 * length);
  FrameCursor cursor = frame_cursor_at(copy, 0);
  EXPECT_EQ(read_frames(copy, block, cursor, copy.total_size).frames, 2U);
}

TEST_F(DocumentTest, FilePositionNeverLiesBeforeThePart) {
  document.parts[0].part_filepos = length;
  EXPECT_EQ(file_pos_of(document, 0, 100), 517U);
  EXPECT_EQ(file_pos_of(document, 0, 0xFFFFFF00), 417U);  // wrapped around
  EXPECT_EQ(file_pos_of(document, 0, 50000), 50417U);     // behind the end: the locator reads on
  document.parts[0].part_size = document.total_size = 0xFFFFFC00;
  EXPECT_EQ(file_pos_of(document, 0, 0xFFFFFB00),
            0xFFFFFCA1U);  // the end of a stream of nearly 4 GiB
}

TEST_F(DocumentTest, TablesHaveTheirLimits) {
  make("0-1");
  EXPECT_EQ(add_part(document, 0, 1, 0, length), no_part);  // no such file
  while (document.parts.size() < most_parts)
    ASSERT_NE(add_part(document, 0, 0, 0, length), no_part);
  EXPECT_EQ(add_part(document, 0, 0, 0, length), no_part);

  const std::string name = document.files[0].file_name;
  EXPECT_EQ(add_source_file(document, name), 0);
  EXPECT_EQ(add_source_file(document, folder.path("absent.mp3")), std::nullopt);
  EXPECT_EQ(add_source_file(document, folder.file("b.mp3", frames(3))), 1);
  remove_last_source_file(document);
  remove_last_source_file(document);  // this one is in use
  EXPECT_EQ(file_count(document), 1);
  document.files.resize(most_files);
  EXPECT_EQ(add_source_file(document, name), std::nullopt);  // even for one in the table
}

TEST_F(DocumentTest, PartsAreNamedAfterTheirFilesWhenThereAreSeveral) {
  name_parts_from_files(document);
  EXPECT_EQ(parts(), "0-20*");
  const std::string name = std::string(120, 'n') + ".mp3";
  add_part(document, document.total_size, *add_source_file(document, folder.file(name, frames(3))),
           0, length);
  name_parts_from_files(document);
  EXPECT_EQ(parts(), "0-20*:a.mp3 0-1:" + std::string(96, 'n'));
}

TEST_F(DocumentTest, EndsOfTheSelectionPushEachOtherAlong) {
  struct {
    void (*set)(const Document&, Selection&, EditPosition);
    std::uint32_t frame;
    const char* places;
    std::uint32_t is_cue;
  } const steps[] = {{set_sel_begin, 2, " =2-2", 1}, {set_sel_end, 3, " =2-3", 0},
                     {set_sel_end, 2, " =2-2", 1},   {set_sel_begin, 5, " =5-5", 1},
                     {set_sel_end, 6, " =5-6", 0},   {set_sel_begin, 8, " =8-8", 1},
                     {set_sel_end, 1, " =1-1", 1}};
  for (const auto& step : steps) {
    step.set(document, selection, step.frame * length);
    EXPECT_EQ(places(), step.places);
    EXPECT_EQ(selection.sel_iscue, step.is_cue) << step.places;
  }
  set_sel_end(document, selection, no_position);
  EXPECT_EQ(places(), " =1-1");
  selection.sel_cue_locked = 1;  // as after the restore of a cue
  set_sel_end(document, selection, 4 * length);
  EXPECT_EQ(selection.sel_iscue, 1U);
  clear_selection(selection);
  EXPECT_EQ(selection.sel_cue_locked, 0U);
}

TEST_F(DocumentTest, SeekLandsOnAFrameOrTheEnd) {
  make("0-20 0-2");
  const std::pair<EditPosition, const char*> seeks[] = {{500, "0-20 0-2 @2"},
                                                        {0xFFFFFFF0, "0-20 0-2 @2"},
                                                        {20 * length, "0-20 0-2 @20 #1"},
                                                        {100000, "0-20 0-2 @22 #1"}};
  for (const auto& [pos, after] : seeks) {
    move_cursor(document, selection, pos);
    EXPECT_EQ(state(), after);
  }
}

TEST_F(DocumentTest, CursorShowsTheLastFrameWhereThereIsNone) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).zeros(20000).bytes()));
  move_cursor(document, selection, 20 * length + 1);
  EXPECT_EQ(selection.cursor, document.total_size);
  EXPECT_EQ(selection.current_frame.frame_length, length);
}

// Behind the last part its file goes on at another sample rate, and so does the search.
TEST_F(DocumentTest, NoPlaceLiesBehindTheEnd) {
  ASSERT_TRUE(
      open("x.mp3", Mp3Builder{}.frames(40).shape({.sample_rate = 48000}).frames(40).bytes()));
  document.parts[0].part_size = 60 * length;
  recompute_total(document);
  const EditPosition place = document.total_size - 1;
  selection.current_frame = {};
  frame_at(document, 0, selection.current_frame);
  ASSERT_GT(frame_at(document, place, selection.current_frame), document.total_size);
  set_sel_begin(document, selection, frame_at(document, place, selection.current_frame));
  set_sel_end(document, selection, frame_at(document, place, selection.current_frame));
  move_cursor(document, selection, place);
  EXPECT_EQ(places(), " =60-60 @60");
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// Frames in edited order.
#include "model/frame_reader.h"

#include "edit/editor.h"
#include "frames/frame_gain.h"
#include "model/stream_info.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class FrameReader : public CoreTest {
 protected:
  // Reads the whole stream in calls of at most `limit` bytes.
  Bytes read_all(std::size_t limit = frame_block_limit) {
    Bytes all;
    Bytes block(limit);
    FrameCursor cursor = frame_cursor_at(document, 0);
    frame_count = 0;
    resync_count = 0;
    for (int calls = 0; cursor.pos < document.total_size && calls < 10000; ++calls) {
      const FramesRead read = read_frames(document, block, cursor, document.total_size);
      all.insert(all.end(), block.begin(), block.begin() + static_cast<long>(read.size));
      frame_count += read.frames;
      resync_count += read.resync_count;
    }
    EXPECT_EQ(cursor.pos, document.total_size);
    return all;
  }

  std::uint32_t frame_count = 0;
  std::uint32_t resync_count = 0;
};

TEST_F(FrameReader, DeliversTheFileWhateverTheBlock) {
  const Bytes bytes = frames(200, {.noisy = true});
  ASSERT_TRUE(open("a.mp3", bytes));
  for (const std::size_t limit : {std::size_t{1792}, std::size_t{2000}, frame_block_limit}) {
    EXPECT_EQ(read_all(limit), bytes);
    EXPECT_EQ(frame_count, 200U);
    EXPECT_EQ(resync_count, 0U);
  }
}

TEST_F(FrameReader, GoesFromFileToFile) {
  for (const bool has_tag : {false, true}) {
    Mp3Builder first = Mp3Builder{}.frames(10);
    if (has_tag) first.id3v1("tag");
    ASSERT_TRUE(open("a.mp3", first.bytes()));
    const auto file = add_source_file(document, folder.file("b.mp3", frames(5, {.bitrate = 64})));
    document.files[*file].audio_end = 5 * 208;
    add_part(document, document.total_size, *file, 208, 3 * 208);
    EXPECT_EQ(read_all(), Mp3Builder{}.frames(10).shape({.bitrate = 64}).frames(3).bytes());
    EXPECT_EQ(resync_count, has_tag ? 1U : 0U);
  }
}

TEST_F(FrameReader, LeavesOutAFrameThatItsPartCutsThrough) {
  ASSERT_TRUE(open("a.mp3", frames(20)));
  document.parts[0].part_size = 2 * length + 100;
  add_part(document, 2 * length + 100, 0, 10 * length, 3 * length);
  EXPECT_EQ(read_all(), frames(5));
}

// Whatever a block ends on, what comes out is the same as of one block.
TEST_F(FrameReader, BlocksMayEndAnywhere) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(6).zeros(30).frames(10).bytes()));
  const Bytes whole = frames(16);
  for (std::size_t limit = 2 * length; limit <= 6 * length + 40; ++limit) {
    EXPECT_EQ(read_all(limit), whole) << limit;
    EXPECT_EQ(frame_count, 16U);
    EXPECT_EQ(resync_count, 1U) << limit;
  }
}

// Four bytes behind the last frame are no place that was lost.
TEST_F(FrameReader, DoesNotCountAFewBytesAtTheEnd) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(5).raw("\xFF\xFB\xF0\xF0").bytes()));
  EXPECT_EQ(read_all(), frames(5));
  EXPECT_EQ(resync_count, 0U);
}

TEST_F(FrameReader, StopsAtTheEndAskedFor) {
  ASSERT_TRUE(open("a.mp3", frames(20)));
  const FrameInfo shown = selection.current_frame;
  Bytes block(frame_block_limit);
  FrameCursor cursor = frame_cursor_at(document, 2 * length);
  EXPECT_EQ(read_frames(document, block, cursor, 5 * length, 2).size, 2 * length);
  EXPECT_EQ(read_frames(document, block, cursor, 5 * length, 2).frames, 1U);
  EXPECT_EQ(cursor.pos, 5 * length);
  EXPECT_EQ(selection.current_frame, shown);
  cursor.pos = document.total_size + 1;
  EXPECT_EQ(read_frames(document, block, cursor, document.total_size).size, 0U);
}

TEST_F(FrameReader, AppliesLevelsAndHeaderBitsWithTheirCrc) {
  ASSERT_TRUE(open("a.mp3", frames(3, {.has_crc = true, .noisy = true})));
  document.parts[0].part_gainbeg = document.end_gain = -50;
  document.header_rewrite = {
      .rewrite_header = true, .rewrite_copyright = 1, .rewrite_original = 1, .rewrite_private = 1};
  EXPECT_EQ(read_all(), frames(3, {.has_crc = true,
                                   .copyright = true,
                                   .original = true,
                                   .private_bit = true,
                                   .global_gain = 100,
                                   .noisy = true}));
}

// Frames of other kinds in the midst of a stream are changed by their own layout or not at all.
TEST_F(FrameReader, ChangesEachFrameByItsOwnLayout) {
  const auto mixed = [](int gain) {
    Mp3Builder bytes = Mp3Builder{}.shape({.global_gain = gain}).frames(3);
    bytes.frame({.is_mono = true, .global_gain = gain}).frames(2);
    return bytes.frame({.has_crc = true, .global_gain = gain}).frames(3).bytes();
  };
  ASSERT_TRUE(open("a.mp3", mixed(150)));
  document.parts[0].part_gainbeg = document.end_gain = -20;
  EXPECT_EQ(read_all(), mixed(130));
}

TEST_F(FrameReader, LeavesLayer2AndAacDataAlone) {
  const Bytes layer2 = Mp3Builder{}.shape({.layer = 2}).frames(5).bytes();
  ASSERT_TRUE(open("a.mp2", layer2));
  document.end_gain = -20;
  EXPECT_EQ(read_all(), layer2);

  const Bytes aac = Mp3Builder{}.adts(20, 200, 1).bytes();
  ASSERT_TRUE(open("a.aac", aac));
  document.end_gain = -20;
  document.header_rewrite = {.rewrite_header = true, .rewrite_copyright = 1, .rewrite_private = 1};
  EXPECT_EQ(read_all(), aac);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The sweep must find what single searches find.
#include "opening/frame_sweep.h"

#include <random>

#include "edit/editor.h"
#include "model/stream_info.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

// Junk of 20,000 bytes and more with many headers in it, of several sample rates, some of them
// followed by another.
Bytes junk(std::mt19937& random, bool is_aac) {
  Bytes bytes(20000 + random() % 20000);
  const bool is_dense = random() % 2 == 0;
  for (std::uint8_t& byte : bytes) byte = is_dense ? 0xFF : static_cast<std::uint8_t>(random());
  const int headers = 1 + static_cast<int>(random() % 40);
  for (int i = 0; i < headers; ++i) {
    constexpr int rates[] = {44100, 48000, 32000};
    const int rate = rates[random() % 3];
    const Bytes header = is_aac ? adts_frame(rate, 20 + random() % 400)
                                : mpeg_frame({.bitrate = 64, .sample_rate = rate});
    const std::size_t at = random() % (bytes.size() - 2000);
    std::copy_n(header.begin(), 9, bytes.begin() + static_cast<long>(at));
    if (random() % 2 == 0)
      std::copy_n(header.begin(), 9, bytes.begin() + static_cast<long>(at + header.size()));
  }
  return bytes;
}

class FrameSweepTest : public CoreTest, public ::testing::WithParamInterface<bool> {};

TEST_P(FrameSweepTest, FindsWhatSingleSearchesFind) {
  int found_count = 0;
  int count = 0;
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    close_all(editor);
    document.stream.is_aac = GetParam() ? 1 : 0;
    const Bytes bytes = junk(random, GetParam());
    add_source_file(document, folder.file("junk", bytes));
    // The file may go on behind the audio.
    const auto end = static_cast<std::uint32_t>(bytes.size() - random() % 2 * 500);
    document.files[0].audio_end = end;
    add_part(document, 0, 0, 0, end);

    FrameSweep sweep(*document.files[0].handle, frame_format(document.stream), end);
    std::uint32_t rate = any_sample_rate;
    for (std::uint32_t pos = seed % 7; pos < end;
         pos += 1 + static_cast<std::uint32_t>(random() % 200)) {
      const FramePlace expected = find_frame(document, 0, pos, rate);
      const FramePlace found = sweep.find(pos, rate).value_or(FramePlace{});
      ASSERT_EQ(found.pos, expected.pos) << seed << " " << pos;
      ASSERT_EQ(found.frame, expected.frame) << seed << " " << pos;
      ++count;
      if (found.frame.version == 0) continue;
      ++found_count;
      rate = random() % 3 == 0 ? found.frame.sample_rate : rate;
    }
  }
  EXPECT_GT(found_count, count / 10);
  EXPECT_LT(found_count, count);
}

INSTANTIATE_TEST_SUITE_P(Streams, FrameSweepTest, ::testing::Bool());

}  // namespace
}  // namespace corvelin::test

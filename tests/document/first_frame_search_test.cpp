// The sweep must find what searching step by step finds.
#include "document/first_frame_search.h"

#include <random>

#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

FramePlace search_step_by_step(EditPosition from) {
  for (EditPosition pos = from;; pos += 20) {
    const FramePlace found = find_frame(0, pos);
    if (found.pos != none || pos + 20 >= document.total_size || pos + 20 > 0xFFFFF) return found;
  }
}

// Junk of 25,000 bytes and more with many headers in it, of several sample rates, some of them
// followed by another.
Bytes junk(unsigned seed, bool is_aac) {
  std::mt19937 random(seed);
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

class FirstFrameSearch : public CoreTest, public ::testing::WithParamInterface<bool> {};

TEST_P(FirstFrameSearch, FindsWhatSingleSearchesFind) {
  int found_count = 0;
  for (unsigned seed = 0; seed < 120; ++seed) {
    close_all();
    stream.is_aac = GetParam() ? 1 : 0;
    const Bytes bytes = junk(seed, GetParam());
    add_source_file(folder.file("junk" + std::to_string(seed), bytes));
    document.files[0].audio_end = static_cast<std::uint32_t>(bytes.size());
    add_part(0, 0, 0, document.files[0].audio_end);

    const FramePlace expected = search_step_by_step(seed % 7);
    const FramePlace found = find_first_frame(seed % 7);
    ASSERT_EQ(found.pos, expected.pos) << seed;
    ASSERT_EQ(found.frame, expected.frame) << seed;
    if (expected.pos != no_position) ++found_count;
  }
  EXPECT_GT(found_count, 20);
  EXPECT_LT(found_count, 120);
}

INSTANTIATE_TEST_SUITE_P(Streams, FirstFrameSearch, ::testing::Bool());

}  // namespace
}  // namespace corvelin::test

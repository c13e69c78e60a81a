// Frame headers: lengths and rates worked out by hand from the standard's tables.
#include "stream/frame_header.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "document/open_document.h"
#include "support/mp3_builder.h"

namespace corvelin::test {
namespace {

struct MpegCase {
  std::string name;
  FrameShape shape;
  std::uint16_t length;  // 0: no valid frame
  std::uint8_t version;
};

class MpegHeader : public ::testing::TestWithParam<MpegCase> {};

TEST_P(MpegHeader, IsDecoded) {
  reset_state(ResetLevel::start);
  const MpegCase& row = GetParam();
  FrameInfo info = {.channel_mode = 3, .copyright = 1};
  const bool valid = decode_frame_header(info, mpeg_frame(row.shape));
  ASSERT_EQ(valid, row.length != 0);
  if (!valid) {
    EXPECT_EQ(info, FrameInfo{});
    return;
  }
  EXPECT_EQ(info.frame_length, row.length);
  EXPECT_EQ(info.bitrate, row.shape.bitrate);
  EXPECT_EQ(info.sample_rate, static_cast<std::uint32_t>(row.shape.sample_rate));
  EXPECT_EQ(info.version, row.version);
  EXPECT_EQ(info.layer, row.shape.layer);
  EXPECT_EQ(info.channel_mode, row.shape.is_mono ? 4 : 1);
  EXPECT_EQ(info.has_crc, row.shape.has_crc ? 1U : 0U);
  EXPECT_EQ(info.padding, row.shape.has_padding ? 1U : 0U);
  EXPECT_EQ(info.copyright, row.shape.copyright ? 1U : 0U);
  EXPECT_EQ(info.original, row.shape.original ? 1U : 0U);
  EXPECT_EQ(info.private_bit, row.shape.private_bit ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, MpegHeader,
    ::testing::Values(
        MpegCase{"Common", {}, 417, 1},
        MpegCase{
            "HighestPadded", {.bitrate = 320, .sample_rate = 48000, .has_padding = true}, 961, 1},
        MpegCase{"Shortest", {.version = 2, .bitrate = 8, .sample_rate = 24000}, 24, 2},
        MpegCase{"OddHalved", {.version = 2, .bitrate = 8, .sample_rate = 22050}, 26, 2},
        MpegCase{"Layer2IsNotHalved",
                 {.version = 2, .layer = 2, .bitrate = 160, .sample_rate = 16000},
                 1440,
                 2},
        MpegCase{"Layer2Longest",
                 {.layer = 2, .bitrate = 384, .sample_rate = 32000, .has_padding = true},
                 1729,
                 1},
        MpegCase{"BeyondTheUnit",
                 {.version = 25, .layer = 2, .bitrate = 160, .sample_rate = 8000},
                 0,
                 3},
        MpegCase{"AllFlags",
                 {.version = 25,
                  .bitrate = 64,
                  .sample_rate = 11025,
                  .is_mono = true,
                  .has_crc = true,
                  .copyright = true,
                  .original = true,
                  .private_bit = true},
                 417,
                 3}),
    [](const auto& row) { return row.param.name; });

TEST(MpegHeaderBytes, RefusesWhatIsNotEdited) {
  reset_state(ResetLevel::start);
  constexpr std::array<std::array<std::uint8_t, 4>, 8> headers = {{
      {0xFE, 0xFB, 0x90, 0x00},  // no sync
      {0xFF, 0xDB, 0x90, 0x00},  // only ten bits of sync
      {0xFF, 0xFF, 0x90, 0x00},  // Layer I
      {0xFF, 0xF9, 0x90, 0x00},  // layer bits 00
      {0xFF, 0xEB, 0x90, 0x00},  // the reserved version
      {0xFF, 0xFB, 0x00, 0x00},  // free format
      {0xFF, 0xFB, 0xF0, 0x00},  // bitrate index 15
      {0xFF, 0xFB, 0x9C, 0x00},  // sample rate index 3
  }};
  for (const auto& header : headers) {
    FrameInfo info;
    EXPECT_FALSE(decode_frame_header(info, header)) << int{header[1]} << " " << int{header[2]};
  }
}

TEST(AdtsHeader, TakesLengthAndTheRateItStandsFor) {
  reset_state(ResetLevel::start);
  stream.is_aac = 1;
  struct Row {
    int sample_rate;
    std::size_t length;
    bool valid;
    int bitrate;
  };
  for (const Row& row :
       {Row{44100, 1454, true, 500}, Row{44100, 1455, false, 501}, Row{44100, 0, false, 0},
        Row{7350, 18, true, 1}, Row{7350, 17, false, 0}, Row{96000, 2, true, 1}}) {
    Bytes bytes = adts_frame(row.sample_rate, std::max<std::size_t>(row.length, 9), true);
    bytes[3] = static_cast<std::uint8_t>((bytes[3] & 0xFC) | row.length >> 11);
    bytes[4] = static_cast<std::uint8_t>(row.length >> 3);
    bytes[5] = static_cast<std::uint8_t>((row.length & 7) << 5 | 0x1F);
    FrameInfo info;
    EXPECT_EQ(decode_frame_header(info, bytes), row.valid) << row.length;
    EXPECT_EQ(info.frame_length, row.length);
    EXPECT_EQ(info.bitrate, row.bitrate);
    EXPECT_EQ(info.channel_mode, mono);
    EXPECT_EQ(info.version, 4);
    EXPECT_EQ(info.layer, 0);
  }
  FrameInfo info;
  Bytes beyond = adts_frame(44100, 300);
  beyond[2] = static_cast<std::uint8_t>((beyond[2] & 0xC3) | 13 << 2);  // sample rate index 13
  EXPECT_FALSE(decode_frame_header(info, beyond));
}

TEST(VbrHeaderOffset, FollowsVersionAndChannels) {
  const auto offset = [](std::uint8_t version, std::uint8_t mode) {
    return vbr_header_offset({.channel_mode = mode, .version = version});
  };
  EXPECT_EQ(offset(1, 1), 36U);
  EXPECT_EQ(offset(1, 3), 36U);
  EXPECT_EQ(offset(1, 4), 21U);
  EXPECT_EQ(offset(2, 2), 21U);
  EXPECT_EQ(offset(3, 4), 13U);
}

}  // namespace
}  // namespace corvelin::test

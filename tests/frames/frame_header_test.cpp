// SPDX-License-Identifier: GPL-2.0-or-later
// Frame headers: lengths and rates worked out by hand from the standard's tables.
#include "frames/frame_header.h"

#include <gtest/gtest.h>

#include <string>

#include "support/mp3_builder.h"

namespace corvelin::test {
namespace {

TEST(FrameHeader, IsDecoded) {
  const FrameShape odd = {.version = 25,
                          .bitrate = 64,
                          .sample_rate = 11025,
                          .is_mono = true,
                          .has_crc = true,
                          .copyright = true,
                          .private_bit = true};
  struct {
    FrameShape shape;
    std::uint16_t length;
  } const rows[] = {
      {{}, 417},
      {{.bitrate = 320, .sample_rate = 48000, .has_padding = true, .original = true}, 961},
      {{.version = 2, .bitrate = 8, .sample_rate = 24000}, 24},
      {{.version = 2, .bitrate = 8, .sample_rate = 22050}, 26},  // an odd length, halved
      // Layer II is not halved, and its longest frame.
      {{.version = 2, .layer = 2, .bitrate = 160, .sample_rate = 16000}, 1440},
      {{.layer = 2, .bitrate = 384, .sample_rate = 32000, .has_padding = true}, 1729},
      {odd, 417}};
  for (const auto& [shape, size] : rows) {
    FrameInfo info = {.channel_mode = 3, .copyright = 1};
    ASSERT_TRUE(decode_frame_header(info, mpeg_frame(shape), FrameFormat::mpeg)) << size;
    EXPECT_EQ(info.frame_length, size);
    EXPECT_EQ(info.bitrate, shape.bitrate);
    EXPECT_EQ(info.sample_rate, static_cast<std::uint32_t>(shape.sample_rate));
    EXPECT_EQ(info.version, shape.version == 25 ? 3 : shape.version);
    EXPECT_EQ(info.layer, shape.layer);
    EXPECT_EQ(info.channel_mode, shape.is_mono ? 4 : 1);
    EXPECT_EQ(info.has_crc != 0, shape.has_crc);
    EXPECT_EQ(info.padding != 0, shape.has_padding);
    EXPECT_EQ(info.copyright != 0, shape.copyright);
    EXPECT_EQ(info.original != 0, shape.original);
    EXPECT_EQ(info.private_bit != 0, shape.private_bit);
  }
}

TEST(FrameHeader, WhatIsNotEditedIsRefused) {
  const Bytes headers[] = {
      {0xFE, 0xFB, 0x90, 0x00},  // no sync
      {0xFF, 0xDB, 0x90, 0x00},  // only ten bits of sync
      {0xFF, 0xFF, 0x90, 0x00},  // Layer I
      {0xFF, 0xF9, 0x90, 0x00},  // layer bits 00
      {0xFF, 0xEB, 0x90, 0x00},  // the reserved version
      {0xFF, 0xFB, 0x00, 0x00},  // free format
      {0xFF, 0xFB, 0xF0, 0x00},  // bitrate index 15
      {0xFF, 0xFB, 0x9C, 0x00},  // sample rate index 3
      // Longer than any frame that is edited.
      mpeg_frame({.version = 25, .layer = 2, .bitrate = 160, .sample_rate = 8000})};
  for (const Bytes& header : headers) {
    FrameInfo info = {.channel_mode = 3};
    EXPECT_FALSE(decode_frame_header(info, header, FrameFormat::mpeg))
        << int{header[1]} << " " << int{header[2]};
    EXPECT_EQ(info, FrameInfo{});
  }
}

TEST(FrameHeader, OfAdtsHasItsLengthAndTheRateItStandsFor) {
  struct {
    int sample_rate;
    std::size_t length;
    bool is_valid;
    int bitrate;
  } const rows[] = {{44100, 1454, true, 500},  {48000, 1903, true, 713}, {48000, 5263, true, 1973},
                    {7350, 18, true, 1},       {8000, 8, true, 0},       {8000, 7, false, 0},
                    {44100, 8191, true, 2822}, {44100, 0, false, 0}};
  for (const auto& row : rows) {
    Bytes bytes = adts_frame(row.sample_rate, std::max<std::size_t>(row.length, 9), true);
    bytes[3] = static_cast<std::uint8_t>((bytes[3] & 0xFC) | row.length >> 11);
    bytes[4] = static_cast<std::uint8_t>(row.length >> 3);
    bytes[5] = static_cast<std::uint8_t>((row.length & 7) << 5 | 0x1F);
    FrameInfo info;
    EXPECT_EQ(decode_frame_header(info, bytes, FrameFormat::adts), row.is_valid) << row.length;
    EXPECT_EQ(info.frame_length, row.length);
    EXPECT_EQ(info.bitrate, row.bitrate);
    EXPECT_EQ(info.channel_mode, mono);
  }
  FrameInfo info;
  Bytes beyond = adts_frame(44100, 300);
  beyond[2] = static_cast<std::uint8_t>((beyond[2] & 0xC3) | 13 << 2);  // sample rate index 13
  EXPECT_FALSE(decode_frame_header(info, beyond, FrameFormat::adts));
  EXPECT_FALSE(decode_frame_header(info, mpeg_frame({}), FrameFormat::adts));
  Bytes surround = adts_frame(48000, 300);
  for (const auto& [layout, name] : {std::pair{3, "3.0"}, {6, "5.1"}, {7, "7.1"}}) {
    surround[2] = static_cast<std::uint8_t>((surround[2] & 0xFE) | layout >> 2);
    surround[3] = static_cast<std::uint8_t>((surround[3] & 0x3F) | (layout & 3) << 6);
    EXPECT_TRUE(decode_frame_header(info, surround, FrameFormat::adts));
    EXPECT_EQ(surround_name(info.channels), name);
    EXPECT_NE(info.channel_mode, mono);
  }
}

}  // namespace
}  // namespace corvelin::test

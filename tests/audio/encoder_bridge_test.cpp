// SPDX-License-Identifier: GPL-2.0-or-later
// Encoding with both encoders: the frames that come out are all of the sound, and a header frame
// counts them.
#include "audio/encoder_bridge.h"

#include <cmath>
#include <numbers>
#include <vector>

#include "audio/encoder_settings.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "platform/codecs/dynamic_library.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

constexpr std::size_t second = 44100;  // sample frames

std::vector<std::int16_t> tone(std::size_t frames, unsigned channels) {
  std::vector<std::int16_t> samples;
  for (std::size_t i = 0; i < frames; ++i) {
    const double angle = 2 * std::numbers::pi * 440 * static_cast<double>(i) / second;
    samples.insert(samples.end(), channels, static_cast<std::int16_t>(10000 * std::sin(angle)));
  }
  return samples;
}

struct EncoderCase {
  const char* name;
  EncoderType type;
  std::int32_t method;
  std::uint8_t mode;
  std::uint8_t channel_mode;  // of the frames
  bool has_header;
};

class Encoder : public CoreTest, public ::testing::WithParamInterface<EncoderCase> {
 protected:
  ~Encoder() override { library_folder.clear(); }

  // Encodes ten seconds in blocks of an odd length, and returns the file.
  std::string encode(unsigned channels) {
    const std::vector<std::int16_t> samples = tone(10 * second, channels);
    EncoderSession session;
    EXPECT_TRUE(
        open_encoder(session, EncoderUse::record, static_cast<std::uint16_t>(channels), second));
    Bytes bytes;
    std::vector<std::uint8_t> room(encoder_room(10000));
    for (std::size_t at = 0; at < samples.size(); at += 9998) {
      const std::size_t count = std::min<std::size_t>(9998, samples.size() - at);
      const auto got = encode_block(session, std::span(samples).subspan(at, count), room);
      bytes.insert(bytes.end(), room.begin(),
                   room.begin() + static_cast<std::ptrdiff_t>(got.value_or(0)));
    }
    const std::size_t rest = encode_rest(session, room);
    bytes.insert(bytes.end(), room.begin(), room.begin() + static_cast<std::ptrdiff_t>(rest));
    const std::string path = folder.file("encoded.mp3", bytes);
    EXPECT_FALSE(close_encoder(session, path));
    return path;
  }
};

TEST_P(Encoder, PutsAllOfTheSoundIntoFrames) {
  settings.enc_type = static_cast<std::uint8_t>(GetParam().type);
  settings.enc_lam_vbr_method = GetParam().method;
  settings.enc_lam_mode = GetParam().mode;
  settings.enc_lam_bitrate_max = 320;
  ASSERT_TRUE(open(encode(GetParam().mode == lame_mode_mono ? 1 : 2)));

  std::uint32_t frames = 0;
  for (EditPosition pos = 0; pos < document.total_size; ++frames)
    pos = next_frame_in(document, part_at(document, pos), pos, selection.current_frame);
  EXPECT_GE(frames * 1152, 10 * second);         // nothing is missing at the end
  EXPECT_LE(frames * 1152, 10 * second + 3456);  // and the encoder adds little
  EXPECT_EQ(document.kind.channel_mode, GetParam().channel_mode);
  EXPECT_EQ(document.stream.xing_frames, GetParam().has_header ? frames : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Encoder,
    ::testing::Values(
        EncoderCase{"LameVbr", EncoderType::lame, lame_method_vbr, 1, 2, true},
        EncoderCase{"LameAbrMono", EncoderType::lame, lame_method_abr, lame_mode_mono, 4, true},
        EncoderCase{"LameCbr", EncoderType::lame, lame_method_cbr, 0, 1, false},
        EncoderCase{"CodecManager", EncoderType::codec_manager, lame_method_cbr, 1, 2, false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Encoder, TellsWhatToInstallWhereTheLibraryIsMissing) {
  library_folder = folder.path("none");
  settings.enc_type = 2;
  EncoderSession session;
  EXPECT_FALSE(open_encoder(session, EncoderUse::record, 2, second));
  const std::string box = take_box();
  EXPECT_TRUE(box.starts_with("Could not load Lame_enc.dll: Lame MP3 encoder")) << box;
  EXPECT_NE(box.find("libmp3lame0"), std::string::npos);
  EXPECT_EQ(encoder_probe_lame().text, "Lame_enc.dll not found");
  EXPECT_EQ(settings.enc_type, 0);
  EXPECT_FALSE(open_encoder(session, EncoderUse::reencode, 2, second));
  EXPECT_TRUE(take_box().starts_with("Please note: "));
}

TEST_F(Encoder, SettingsPullEachOtherAlong) {
  settings.enc_lam_vbr_method = lame_method_cbr;
  settings.enc_lam_bitrate = 128;
  settings.enc_lam_bitrate_max = 160;
  EXPECT_TRUE(choose_lame_bitrate(192));
  EXPECT_EQ(settings.enc_lam_bitrate_max, 192);
  settings.enc_lam_vbr_method = lame_method_vbr;
  EXPECT_FALSE(choose_lame_bitrate(192));
  EXPECT_FALSE(choose_lame_bitrate_max(192));
  EXPECT_TRUE(choose_lame_bitrate_max(224));

  ASSERT_TRUE(store_lame_preset("mine"));
  EXPECT_EQ(settings.enc_lam_preset.front(), "44100,1,192,224,002,000,04,100,00000000,mine");
  EXPECT_FALSE(store_lame_preset("mine"));
  choose_lame_quality(lame_quality_voice);
  EXPECT_EQ(settings.enc_lam_vbr_method, lame_method_abr);
  EXPECT_EQ(settings.enc_lam_abr_bitrate, 56);
  EXPECT_EQ(settings.enc_lam_mode, lame_mode_mono);
  settings.enc_lam_preset.emplace_back("44100,3,064,320,000,255,04,100,00000000,constant");
  apply_lame_preset(1);
  EXPECT_EQ(settings.enc_lam_vbr_method, lame_method_cbr);
  apply_lame_preset(0);
  EXPECT_EQ(settings.enc_lam_mode, 1);
  EXPECT_EQ(settings.enc_lam_bitrate, 192);
}

}  // namespace
}  // namespace corvelin::test

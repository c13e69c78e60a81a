// SPDX-License-Identifier: GPL-2.0-or-later
// Lists, rules and presets of the MP3 encoder's settings.
#include "audio/encoder_settings.h"

#include <fmt/format.h>

#include <algorithm>

#include "frames/frame_header.h"
#include "platform/text/text.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

constexpr std::uint32_t lowest_mpeg1_samplerate = 32000;  // hertz

constexpr std::uint16_t lowest_abr = 8;  // kbit/s
constexpr std::uint16_t highest_abr = 320;

std::span<const std::uint16_t> bitrates_at(std::uint32_t samplerate) {
  return layer3_bitrates(samplerate < lowest_mpeg1_samplerate ? 2 : 1);
}

std::string_view vbr_quality_remark(int quality) {
  switch (quality) {
    case 0:
      return ui_text(row::best);
    case 4:
      return ui_text(row::default_choice);
    case 9:
      return ui_text(row::smallest);
    default:
      return "";
  }
}

// Where a preset's line has its fields.
struct PresetColumn {
  std::size_t place;
  std::size_t width;
};
constexpr PresetColumn samplerate_column = {0, 5};
constexpr PresetColumn mode_column = {6, 1};
constexpr PresetColumn bitrate_column = {8, 3};
constexpr PresetColumn bitrate_max_column = {12, 3};
constexpr PresetColumn quality_column = {16, 3};
constexpr PresetColumn method_column = {20, 3};
constexpr PresetColumn vbr_quality_column = {24, 2};
constexpr PresetColumn abr_bitrate_column = {27, 3};
constexpr std::size_t preset_name_place = 40;

// One format of the codec manager.
struct CodecManagerFormat {
  std::uint32_t samplerate = 0;  // hertz
  std::uint16_t bitrate = 0;     // kbit/s
  std::uint8_t channels = 0;

  bool operator==(const CodecManagerFormat&) const = default;

  [[nodiscard]] std::string text() const {
    return fmt::format("{} kbps, {} kHz, {}", bitrate, samplerate / 1000,
                       channels == 1 ? "Mono" : "Stereo");
  }
};

std::vector<CodecManagerFormat> codec_manager_formats() {
  std::vector<CodecManagerFormat> formats;
  for (const std::uint32_t samplerate : {48000U, 44100U, 32000U, 24000U, 22050U, 16000U}) {
    const std::span<const std::uint16_t> rates = bitrates_at(samplerate);
    for (const std::uint8_t channels : {std::uint8_t{2}, std::uint8_t{1}})
      for (std::size_t i = rates.size(); i-- > 0;)
        formats.push_back({samplerate, rates[i], channels});
  }
  return formats;
}

CodecManagerFormat codec_manager_format() {
  return {settings.enc_acm_samplerate, static_cast<std::uint16_t>(settings.enc_acm_bitrate / 1000),
          settings.enc_acm_channels};
}

std::int32_t field(std::string_view line, PresetColumn column) {
  if (column.place >= line.size()) return 0;
  return std::max(leading_number(line.substr(column.place, column.width)), 0);
}

}  // namespace

EncoderType encoder_type() { return static_cast<EncoderType>(settings.enc_type); }

bool is_lame_vbr() {
  return settings.enc_lam_vbr_method != lame_method_cbr &&
         settings.enc_lam_vbr_method != lame_method_abr;
}

std::vector<EncoderChoice> lame_bitrate_choices() {
  const bool is_least = settings.enc_lam_vbr_method != lame_method_cbr;
  std::vector<EncoderChoice> choices;
  for (const std::uint16_t rate : bitrates_at(settings.enc_lam_samplerate))
    choices.push_back({rate, fmt::format("{} kbit/s{}", rate, is_least ? " (min)" : "")});
  return choices;
}

std::vector<EncoderChoice> lame_bitrate_max_choices() {
  std::vector<EncoderChoice> choices;
  for (const std::uint16_t rate : bitrates_at(settings.enc_lam_samplerate))
    choices.push_back({rate, fmt::format("Max {} kbit/s", rate)});
  return choices;
}

std::vector<EncoderChoice> lame_samplerate_choices() {
  std::vector<EncoderChoice> choices;
  for (const int rate : {48000, 44100, 32000, 24000, 22050, 16000})
    choices.push_back({rate, fmt::format("{} Hz", rate)});
  return choices;
}

std::vector<EncoderChoice> lame_mode_choices() {
  return {{0, "Stereo"}, {lame_mode_joint_stereo, "Joint Stereo"}, {lame_mode_mono, "Mono"}};
}

std::vector<EncoderChoice> lame_quality_choices() {
  return {{0, std::string(ui_text(row::normal_quality))},
          {1, std::string(ui_text(row::low_quality))},
          {2, std::string(label_text(row::high_quality))},
          {5, std::string(ui_text(row::very_high_quality))},
          {lame_quality_voice, std::string(ui_text(row::voice_quality))}};
}

std::vector<EncoderChoice> lame_method_choices() {
  return {{lame_method_cbr, std::string(ui_text(row::constant_bitrate))},
          {lame_method_vbr, std::string(ui_text(row::variable_bitrate))},
          {lame_method_abr, std::string(ui_text(row::average_bitrate))}};
}

std::vector<EncoderChoice> lame_vbr_quality_choices() {
  std::vector<EncoderChoice> choices;
  for (int quality = 0; quality <= 9; ++quality)
    choices.push_back({quality, fmt::format("{} {}{}", ui_text(row::vbr_quality), quality,
                                            vbr_quality_remark(quality))});
  return choices;
}

void correct_lame_settings() {
  if (settings.enc_lam_mode != 0 && settings.enc_lam_mode != lame_mode_mono)
    settings.enc_lam_mode = lame_mode_joint_stereo;
  const auto known = lame_quality_choices();
  if (std::ranges::none_of(known, [](const EncoderChoice& choice) {
        return static_cast<std::uint32_t>(choice.value) == settings.enc_lam_quality;
      }))
    settings.enc_lam_quality = 0;
  if (is_lame_vbr()) settings.enc_lam_vbr_method = lame_method_vbr;
  if (settings.enc_lam_quality != lame_quality_voice) return;
  settings.enc_lam_vbr_method = lame_method_abr;
  settings.enc_lam_abr_bitrate = 56;
  settings.enc_lam_mode = lame_mode_mono;
}

bool choose_lame_bitrate(std::uint16_t kbit_s) {
  if (kbit_s >= settings.enc_lam_bitrate_max) {
    if (settings.enc_lam_vbr_method != lame_method_cbr) return false;
    settings.enc_lam_bitrate_max = kbit_s;
  }
  settings.enc_lam_bitrate = kbit_s;
  return true;
}

bool choose_lame_bitrate_max(std::uint16_t kbit_s) {
  if (kbit_s <= settings.enc_lam_bitrate) return false;
  settings.enc_lam_bitrate_max = kbit_s;
  return true;
}

void choose_lame_abr_bitrate(std::int32_t kbit_s) {
  settings.enc_lam_abr_bitrate = static_cast<std::uint16_t>(
      std::clamp(kbit_s, std::int32_t{lowest_abr}, std::int32_t{highest_abr}));
}

void choose_lame_quality(std::uint32_t quality) {
  settings.enc_lam_quality = quality;
  correct_lame_settings();
}

std::vector<EncoderChoice> codec_manager_choices() {
  std::vector<EncoderChoice> choices;
  if (chosen_codec_manager_format() < 0) choices.push_back({-1, codec_manager_format().text()});
  std::int32_t number = 0;
  for (const CodecManagerFormat& format : codec_manager_formats())
    choices.push_back({number++, format.text()});
  return choices;
}

std::int32_t chosen_codec_manager_format() {
  const std::vector<CodecManagerFormat> formats = codec_manager_formats();
  const auto found = std::ranges::find(formats, codec_manager_format());
  return found == formats.end() ? -1 : static_cast<std::int32_t>(found - formats.begin());
}

void choose_codec_manager_format(std::int32_t value) {
  const std::vector<CodecManagerFormat> formats = codec_manager_formats();
  if (value < 0 || static_cast<std::size_t>(value) >= formats.size()) return;
  const CodecManagerFormat& format = formats[static_cast<std::size_t>(value)];
  // A frame of 1152 samples, or of 576 at the low rates, in whole bytes.
  const std::uint32_t factor = format.samplerate < lowest_mpeg1_samplerate ? 72000 : 144000;
  settings.enc_acm_samplerate = format.samplerate;
  settings.enc_acm_bitrate = format.bitrate * 1000U;
  settings.enc_acm_channels = format.channels;
  settings.enc_acm_blocksize =
      static_cast<std::uint16_t>(factor * format.bitrate / format.samplerate);
}

std::string_view lame_preset_name(std::string_view line) {
  return line.size() > preset_name_place ? line.substr(preset_name_place) : std::string_view{};
}

void apply_lame_preset(std::size_t index) {
  if (index >= settings.enc_lam_preset.size()) return;
  const std::string_view line = settings.enc_lam_preset[index];
  settings.enc_lam_samplerate = static_cast<std::uint32_t>(field(line, samplerate_column));
  settings.enc_lam_mode = static_cast<std::uint8_t>(field(line, mode_column));
  settings.enc_lam_bitrate = static_cast<std::uint16_t>(field(line, bitrate_column));
  settings.enc_lam_bitrate_max = static_cast<std::uint16_t>(field(line, bitrate_max_column));
  settings.enc_lam_quality = static_cast<std::uint32_t>(field(line, quality_column));
  // CBR, which is -1, stands in the line as a number of 8 bits.
  const auto method = static_cast<std::uint8_t>(field(line, method_column));
  settings.enc_lam_vbr_method = method == 0xFF ? lame_method_cbr : method;
  settings.enc_lam_vbr_quality = static_cast<std::uint8_t>(field(line, vbr_quality_column));
  choose_lame_abr_bitrate(field(line, abr_bitrate_column));
  correct_lame_settings();
}

bool store_lame_preset(std::string_view name) {
  std::vector<std::string>& presets = settings.enc_lam_preset;
  const bool is_known = std::ranges::any_of(
      presets, [&](const std::string& line) { return lame_preset_name(line) == name; });
  if (name.empty() || is_known || presets.size() >= most_lame_presets) return false;
  presets.push_back(fmt::format("{:05},{:01},{:03},{:03},{:03},{:03},{:02},{:03},{:08},{}",
                                settings.enc_lam_samplerate, settings.enc_lam_mode,
                                settings.enc_lam_bitrate, settings.enc_lam_bitrate_max,
                                settings.enc_lam_quality & 0xFF, settings.enc_lam_vbr_method & 0xFF,
                                settings.enc_lam_vbr_quality, settings.enc_lam_abr_bitrate, 0,
                                on_one_line(std::string(name))));
  return true;
}

void delete_lame_preset(std::size_t index) {
  if (index < settings.enc_lam_preset.size())
    settings.enc_lam_preset.erase(settings.enc_lam_preset.begin() +
                                  static_cast<std::ptrdiff_t>(index));
}

}  // namespace corvelin

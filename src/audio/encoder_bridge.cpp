// SPDX-License-Identifier: GPL-2.0-or-later
// Sessions of the two encoders.
#include "audio/encoder_bridge.h"

#include <fmt/format.h>

#include <algorithm>

#include "audio/encoder_settings.h"
#include "platform/codecs/dynamic_library.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// The codec manager: samples go to frames of the same rate and a constant bit rate.
Mp3Form codec_manager_form(EncoderUse use) {
  const std::uint32_t kbit_s = settings.enc_acm_bitrate / 1000;
  return {
      .samples_per_sec = settings.enc_acm_samplerate,
      .stream_samples_per_sec = settings.enc_acm_samplerate,
      .mode = settings.enc_acm_channels == 1 ? EncoderChannels::one : EncoderChannels::joint,
      .bitrate = kbit_s,
      .bitrate_max = kbit_s,
      .quality = settings.enc_acm_highquality != 0 ? EncoderQuality::high : EncoderQuality::normal,
      .separate = use == EncoderUse::record_split};
}

BitrateMethod lame_method() {
  switch (settings.enc_lam_vbr_method) {
    case lame_method_cbr:
      return BitrateMethod::constant;
    case lame_method_abr:
      return BitrateMethod::average;
    case 1:
      return BitrateMethod::old_variable;
    default:
      return BitrateMethod::variable;
  }
}

EncoderChannels lame_mode() {
  switch (settings.enc_lam_mode) {
    case 0:
      return EncoderChannels::two;
    case lame_mode_mono:
      return EncoderChannels::one;
    default:
      return EncoderChannels::joint;
  }
}

EncoderQuality lame_quality() {
  switch (settings.enc_lam_quality) {
    case 1:
      return EncoderQuality::low;
    case 2:
    case lame_quality_voice:
      return EncoderQuality::high;
    case 5:
      return EncoderQuality::very_high;
    default:
      return EncoderQuality::normal;
  }
}

Mp3Form lame_form(EncoderUse use, std::uint32_t sample_rate) {
  const bool is_constant = settings.enc_lam_vbr_method == lame_method_cbr;
  return {
      .samples_per_sec = sample_rate,
      .stream_samples_per_sec = settings.enc_lam_samplerate,
      .mode = lame_mode(),
      .method = lame_method(),
      .bitrate = settings.enc_lam_bitrate,
      .bitrate_max = settings.enc_lam_bitrate_max,
      .bitrate_average = settings.enc_lam_abr_bitrate,
      .variable_quality = settings.enc_lam_vbr_quality,
      .quality = lame_quality(),
      .is_original = use != EncoderUse::reencode,
      .separate = use == EncoderUse::record_split,
      .writes_header = !is_constant && (use == EncoderUse::reencode || use == EncoderUse::record)};
}

bool refuse_with_instruction(TextRow caption) {
  host().show_message_box({.caption = std::string(ui_text(caption)),
                           .text = with_package(ui_text(row::lame_installation), "libmp3lame0"),
                           .icon = BoxIcon::warning});
  return false;
}

bool open_codec_manager(EncoderSession& session, EncoderUse use, std::uint16_t channels,
                        std::uint32_t sample_rate) {
  const bool fits =
      channels == settings.enc_acm_channels && sample_rate == settings.enc_acm_samplerate;
  if (fits && session.encoder.open(codec_manager_form(use)) == EncoderFault::none) {
    session.lame_samples = session.encoder.samples_per_call();
    return true;
  }
  return refuse_with_instruction(use != EncoderUse::reencode ? row::encoder_not_opened
                                                             : row::error);
}

bool open_lame(EncoderSession& session, EncoderUse use, std::uint32_t sample_rate) {
  Mp3Encoder& lame = session.encoder;
  const bool records = use != EncoderUse::reencode;
  const EncoderFault fault = lame.open(lame_form(use, sample_rate));
  if (fault == EncoderFault::no_library)
    return refuse_with_instruction(records ? row::lame_not_loaded : row::error);
  if (fault != EncoderFault::none) {
    host().show_message_box(
        {.caption = std::string(ui_text(records ? row::record_init_error : row::encode_init)),
         .text = format_row(ui_text(row::lame_refused), static_cast<int>(fault)),
         .icon = BoxIcon::error});
    return false;
  }
  std::uint32_t& samples = session.lame_samples;
  samples = lame.samples_per_call();
  // A recording's buffers are sized by this, and larger ones need fewer calls.
  const std::uint32_t room = lame.room_per_call();
  if (records && room > samples)
    samples = settings.enc_lam_mode == lame_mode_mono ? room / 2 : room;
  return true;
}

}  // namespace

bool open_encoder(EncoderSession& session, EncoderUse use, std::uint16_t channels,
                  std::uint32_t sample_rate) {
  switch (encoder_type()) {
    case EncoderType::codec_manager:
      return open_codec_manager(session, use, channels, sample_rate);
    case EncoderType::lame:
      return open_lame(session, use, sample_rate);
    case EncoderType::none:
      break;
  }
  return refuse_with_instruction(row::please_note);
}

std::optional<std::size_t> encode_block(EncoderSession& session, std::span<const std::int16_t> pcm,
                                        std::span<std::uint8_t> out) {
  if (!session.encoder.is_open()) return std::nullopt;
  std::size_t total = 0;
  while (!pcm.empty()) {
    const std::size_t count = std::min<std::size_t>(session.lame_samples, pcm.size());
    total += session.encoder.encode(pcm.first(count), out.subspan(total));
    pcm = pcm.subspan(count);
  }
  return total;
}

std::size_t encode_rest(EncoderSession& session, std::span<std::uint8_t> out) {
  return session.encoder.flush(out);
}

std::error_code close_encoder(EncoderSession& session, const std::string& path,
                              std::uint64_t offset) {
  Mp3Encoder& encoder = session.encoder;
  encoder.close();
  const std::error_code error =
      path.empty() ? std::error_code{} : encoder.write_header(path, offset);
  encoder = {};
  return error;
}

EncoderProbe encoder_probe_lame() {
  const Mp3Encoder::Version version = Mp3Encoder::version();
  if (!version.is_found) {
    if (encoder_type() == EncoderType::lame) settings.enc_type = 0;
    return {.text = fmt::format("{} {}", ui_text(row::lame_library), ui_text(row::not_found))};
  }
  return {.is_found = true,
          .text = fmt::format("{} {}: Version {}.{}, Engine {}.{}", ui_text(row::use),
                              ui_text(row::lame_library), version.library_major,
                              version.library_minor, version.engine_major, version.engine_minor)};
}

EncoderProbe encoder_probe_codec_manager() {
  Mp3Encoder probe;
  const bool is_found = probe.open(codec_manager_form(EncoderUse::record)) == EncoderFault::none;
  if (is_found) return {.is_found = true, .text = fmt::format("{} ACM", ui_text(row::use))};
  if (encoder_type() == EncoderType::codec_manager) settings.enc_type = 0;
  return {.text = fmt::format("ACM {}", ui_text(row::not_found))};
}

std::string encoder_log_line() {
  if (encoder_type() == EncoderType::codec_manager)
    return fmt::format("Encoder: ACM, {} kbps, {} kHz", settings.enc_acm_bitrate / 1000,
                       settings.enc_acm_samplerate / 1000);
  if (settings.enc_lam_vbr_method == lame_method_cbr)
    return fmt::format("Encoder: Lame, {} kbps, {} kHz", settings.enc_lam_bitrate,
                       settings.enc_lam_samplerate / 1000);
  return fmt::format("Encoder: Lame, VBR (Q{}), {} kHz", settings.enc_lam_vbr_quality,
                     settings.enc_lam_samplerate / 1000);
}

}  // namespace corvelin

// Sessions of the two encoders.
#include "audio/encoder_bridge.h"

#include <fmt/format.h>

#include <algorithm>

#include "audio/encoder_settings.h"
#include "platform/dynamic_library.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

EncoderType encoder_type() { return static_cast<EncoderType>(settings.enc_type); }

WaveFormat acm_target() {
  return {.format_tag = wave_format_mpeg_layer3,
          .channels = settings.enc_acm_channels,
          .samples_per_sec = settings.enc_acm_samplerate,
          .avg_bytes_per_sec = settings.enc_acm_bitrate / 8};
}

BeConfig lame_config(EncoderUse use, std::uint32_t sample_rate) {
  const bool is_variable = settings.enc_lam_vbr_method != lame_method_cbr;
  const bool is_abr = settings.enc_lam_vbr_method == lame_method_abr;
  return {
      .dwSampleRate = sample_rate,
      .dwReSampleRate = settings.enc_lam_samplerate,
      .nMode = settings.enc_lam_mode,
      .dwBitrate = settings.enc_lam_bitrate,
      .dwMaxBitrate = settings.enc_lam_bitrate_max,
      .nPreset = settings.enc_lam_quality,
      .bOriginal = use != EncoderUse::reencode,
      .bNoRes = use == EncoderUse::record_split,
      .bWriteVBRHeader = is_variable && (use == EncoderUse::reencode || use == EncoderUse::record),
      .bEnableVBR = is_variable,
      .nVBRQuality = settings.enc_lam_vbr_quality,
      .dwVbrAbr_bps = is_abr ? settings.enc_lam_abr_bitrate * 1000U : 0,
      .nVbrMethod = settings.enc_lam_vbr_method};
}

bool refuse_with_instruction(std::string_view caption) {
  host().show_message_box({.caption = std::string(caption),
                           .text = with_package(ui_text(row::lame_installation), "libmp3lame0"),
                           .icon = BoxIcon::warning});
  return false;
}

bool open_acm(EncoderUse use, std::uint16_t channels, std::uint32_t sample_rate) {
  const AcmResult result =
      acm_stream_open(encoder_session.acm_encoder, pcm_16_bit(channels, sample_rate), acm_target(),
                      {.high_quality = settings.enc_acm_highquality != 0,
                       .separate = use == EncoderUse::record_split});
  if (result == AcmResult::ok) return true;
  return refuse_with_instruction(use != EncoderUse::reencode ? "Could not open ACM encoder"
                                                             : ui_text(row::error));
}

bool open_lame(EncoderUse use, std::uint32_t sample_rate) {
  LameEnc& lame = encoder_session.lame;
  const bool records = use != EncoderUse::reencode;
  if (!lame.load())
    return refuse_with_instruction(records ? "Could not load Lame_enc.dll" : ui_text(row::error));
  std::uint32_t& samples = encoder_session.lame_samples;
  std::uint32_t room = 0;
  const std::uint32_t error = lame.beInitStream(lame_config(use, sample_rate), samples, room);
  if (error != be_successful) {
    lame = {};
    host().show_message_box({.caption = records ? "Record init error" : "Encode init",
                             .text = fmt::format("Lame: beInitStream failed, error # {}", error),
                             .icon = BoxIcon::error});
    return false;
  }
  // A recording's buffers are sized by this, and larger ones need fewer calls.
  if (records && room > samples)
    samples = settings.enc_lam_mode == lame_mode_mono ? room / 2 : room;
  return true;
}

}  // namespace

EncoderSession encoder_session;

bool open_encoder(EncoderUse use, std::uint16_t channels, std::uint32_t sample_rate) {
  switch (encoder_type()) {
    case EncoderType::codec_manager:
      return open_acm(use, channels, sample_rate);
    case EncoderType::lame:
      return open_lame(use, sample_rate);
    case EncoderType::none:
      break;
  }
  return refuse_with_instruction(ui_text(row::please_note));
}

std::optional<std::size_t> encode_block(std::span<const std::int16_t> pcm,
                                        std::span<std::uint8_t> out) {
  EncoderSession& session = encoder_session;
  std::size_t total = 0;
  if (session.acm_encoder.is_open()) {
    AcmBlock block = {
        .source = {reinterpret_cast<const std::uint8_t*>(pcm.data()), pcm.size_bytes()},
        .destination = out};
    acm_stream_convert(session.acm_encoder, block);
    return block.destination_used;
  }
  if (!session.lame.is_loaded()) return std::nullopt;
  while (!pcm.empty()) {
    const std::size_t count = std::min<std::size_t>(session.lame_samples, pcm.size());
    std::uint32_t got = 0;
    session.lame.beEncodeChunk(pcm.first(count), out.subspan(total), got);
    total += got;
    pcm = pcm.subspan(count);
  }
  return total;
}

std::size_t encode_rest(std::span<std::uint8_t> out) {
  if (encoder_session.acm_encoder.is_open()) {
    AcmBlock block = {.destination = out};
    acm_stream_flush(encoder_session.acm_encoder, block);
    return block.destination_used;
  }
  std::uint32_t got = 0;
  if (encoder_session.lame.is_loaded()) encoder_session.lame.beDeinitStream(out, got);
  return got;
}

std::error_code close_encoder(const std::string& path, std::uint64_t offset) {
  EncoderSession& session = encoder_session;
  acm_stream_close(session.acm_encoder);
  if (!session.lame.is_loaded()) return {};
  session.lame.beCloseStream();
  const std::error_code error =
      path.empty() ? std::error_code{} : session.lame.beWriteVBRHeader(path, offset);
  session.lame = {};
  return error;
}

EncoderProbe encoder_probe_lame() {
  LameEnc lame;
  if (!lame.load()) {
    if (encoder_type() == EncoderType::lame) settings.enc_type = 0;
    return {.text = fmt::format("Lame_enc.dll {}", ui_text(row::not_found))};
  }
  const BeVersion version = lame.beVersion();
  return {.is_found = true,
          .text = fmt::format("{} Lame_enc.dll: Version {}.{}, Engine {}.{}", ui_text(row::use),
                              version.library_major, version.library_minor, version.engine_major,
                              version.engine_minor)};
}

EncoderProbe encoder_probe_acm() {
  const WaveFormat source = pcm_16_bit(settings.enc_acm_channels, settings.enc_acm_samplerate);
  const bool is_found =
      encoder_session.acm_encoder.is_open() || acm_can_convert(source, acm_target());
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

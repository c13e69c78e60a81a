// SPDX-License-Identifier: GPL-2.0-or-later
// The three decoders behind one session.
#include "audio/decoder_bridge.h"

#include <algorithm>
#include <string>
#include <utility>

#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/codecs/aac_decoder.h"
#include "platform/codecs/dynamic_library.h"
#include "platform/codecs/mpeg_decoder.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::uint32_t low_rate = 32000;  // Hz: below it a frame of MPEG audio is a half one

WaveFormat pcm_format_of_stream(const Document& document) {
  return pcm_16_bit(document.kind.channel_mode == mono ? 1 : 2, document.kind.sample_rate);
}

void tell(std::string_view text, std::string_view caption, BoxIcon icon) {
  host().show_message_box(
      {.caption = std::string(caption), .text = std::string(text), .icon = icon});
}

// Where the library is there, all that is left to do is to choose it.
void tell_to_install_mpglib(TextRow caption) {
  const std::string_view steps = ui_text(row::mpglib_installation);
  tell(MpegDecoder::is_available() ? format_row(ui_text(row::decoder_is_installed), steps)
                                   : with_package(steps, "libmpg123-0"),
       ui_text(caption), BoxIcon::warning);
}

// The place moves behind the frame that the library looks at, which is not heard. None when there
// is no frame up to the end.
std::span<const std::uint8_t> read_first_frame(DecoderSession& session, const Document& document,
                                               FrameCursor& at) {
  std::size_t got = 0;
  while (got == 0 && at.pos < document.total_size) {
    const EditPosition before = at.pos;
    got = read_frames(document, session.block, at, document.total_size, 1).size;
    if (got == 0 && at.pos == before) break;
  }
  return std::span(session.block).first(got);
}

// By the kind of the whole stream: the decoder gives no more samples for a frame of another kind in
// its midst.
std::uint32_t samples_per_frame(const Document& document) {
  const bool is_low = document.kind.sample_rate < low_rate;
  if (document.stream.is_aac != 0) return is_low ? 2048 : 1024;
  return document.kind.layer == 3 && is_low ? 576 : 1152;
}

void tell_to_install_faad(const std::string& reason) {
  if (!reason.empty()) tell(reason, ui_text(row::error), BoxIcon::information);
  tell(with_package(ui_text(row::aac_installation), "libfaad2"), ui_text(row::aac_playback_needs),
       BoxIcon::warning);
}

bool tell_of_faad(TextRow cause) {
  tell(ui_text(cause), ui_text(row::decoder_init_error), BoxIcon::error);
  return false;
}

// The library gives two channels whatever the stream has, and below 32 kHz twice its rate.
bool open_faad(DecoderSession& session, const Document& document, FrameCursor& at) {
  auto decoder = std::make_unique<AacDecoder>();
  const std::uint32_t sample_rate = document.kind.sample_rate;
  const DecoderOpening opening = decoder->open(sample_rate);
  if (opening.fault == DecoderFault::no_library) tell_to_install_faad(opening.reason);
  if (opening.fault == DecoderFault::no_library) return false;
  const bool is_doubled = sample_rate < low_rate;
  session.pcm_format = pcm_16_bit(2, is_doubled ? 2 * sample_rate : sample_rate);
  if (is_doubled) session.pcm_buffer_bytes *= 2;
  if (opening.fault != DecoderFault::none) return tell_of_faad(row::faad_takes_no_such_stream);
  const std::span<const std::uint8_t> first = read_first_frame(session, document, at);
  if (first.empty()) return tell_of_faad(row::no_whole_frame);
  if (!decoder->begin(first)) return tell_of_faad(row::faad_refused_frame);
  session.decoder = std::move(decoder);
  return true;
}

DecoderFault open_mpeg(DecoderSession& session) {
  auto decoder = std::make_unique<MpegDecoder>();
  const DecoderFault fault = decoder->open(session.pcm_format.channels).fault;
  if (fault == DecoderFault::none) session.decoder = std::move(decoder);
  return fault;
}

bool open_mpglib(DecoderSession& session) {
  const DecoderFault fault = open_mpeg(session);
  if (fault == DecoderFault::no_library) tell_to_install_mpglib(row::mpglib_not_loaded);
  if (fault == DecoderFault::refused)
    tell(ui_text(row::mpglib_refused), ui_text(row::decoder_init_error), BoxIcon::error);
  return fault == DecoderFault::none;
}

// The codec manager takes Layer III alone.
bool open_codec_manager(DecoderSession& session, const Document& document) {
  if (document.kind.layer == 2) tell_to_install_mpglib(row::layer_2_needs_mpglib);
  if (document.kind.layer != 3) return false;
  if (open_mpeg(session) == DecoderFault::none) return true;
  tell_to_install_mpglib(row::decoder_not_opened);
  return false;
}

bool open_decoder(DecoderSession& session, const Document& document, FrameCursor& at) {
  switch (session.chosen) {
    case Decoder::faad:
      return open_faad(session, document, at);
    case Decoder::mpglib:
      return open_mpglib(session);
    case Decoder::codec_manager:
      break;
  }
  return open_codec_manager(session, document);
}

// The place goes to a frame start, and the decoder forgets what the damaged data left in it.
void start_anew(DecoderSession& session, const Document& document, FrameCursor& at) {
  if (const EditPosition frame = frame_at(document, at.pos, at.frame); frame != no_position)
    at.pos = frame;
  session.decoder->reset();
}

}  // namespace

Decoder chosen_decoder(const Document& document) {
  if (document.stream.is_aac != 0) return Decoder::faad;
  return settings.use_mpglib != 0 ? Decoder::mpglib : Decoder::codec_manager;
}

std::string_view decoder_name(Decoder decoder) {
  switch (decoder) {
    case Decoder::faad:
      return "libfaad2";
    case Decoder::mpglib:
      return "mpglib";
    case Decoder::codec_manager:
      break;
  }
  return "ACM";
}

bool decoder_open(DecoderSession& session, const Document& document, FrameCursor& at) {
  session.is_settled = false;
  session.pcm_format = pcm_format_of_stream(document);
  session.block.resize(frame_block_limit);
  session.chosen = chosen_decoder(document);
  session.decoder_ready = open_decoder(session, document, at);
  session.pcm_frame_bytes = samples_per_frame(document) * session.pcm_format.block_align;
  if (!session.decoder_ready) decoder_close(session);
  return session.decoder_ready;
}

void settle_decoder(DecoderSession& session, const Document& document, FrameCursor& at,
                    std::span<std::uint8_t> out) {
  decoder_reset(session);
  session.is_settled = true;
  FrameCursor reader = frame_cursor_at(document, settling_place(document, at.pos));
  while (reader.pos < at.pos) {
    const EditPosition before = reader.pos;
    const FramesRead read =
        read_frames(document, session.block, reader, at.pos, frames_in_room(session, out));
    decode_frames(session, document, at, std::span(session.block).first(read.size), out);
    if (reader.pos == before) break;
  }
}

std::uint32_t frames_in_room(const DecoderSession& session, std::span<const std::uint8_t> out) {
  return std::max(1u, static_cast<std::uint32_t>(out.size() / session.pcm_frame_bytes));
}

std::size_t decode_frames(DecoderSession& session, const Document& document, FrameCursor& at,
                          std::span<const std::uint8_t> input, std::span<std::uint8_t> out) {
  if (!session.decoder_ready) return 0;
  const DecodedBlock block = decode_with(*session.decoder, input, out);
  if (block.gave_up && session.chosen == Decoder::mpglib) start_anew(session, document, at);
  return block.gave_up && session.chosen == Decoder::codec_manager ? 0 : block.size;
}

void decoder_reset(DecoderSession& session) {
  session.is_settled = false;
  if (session.decoder) session.decoder->reset();
}

void decoder_close(DecoderSession& session) {
  session.decoder.reset();
  session.decoder_ready = false;
}

EditPosition settling_place(const Document& document, EditPosition pos) {
  constexpr std::uint32_t reach = 3584;  // bytes: more than that takes at any bitrate
  const EditPosition back = pos < reach ? 0 : pos - reach;
  return find_frame(document, part_at(document, back), back).pos;
}

void playback_buffers_configure(DecoderSession& session, const Document& document) {
  constexpr std::uint32_t frame_room = 5120;  // bytes of samples that a frame may take
  auto frames = std::clamp<std::uint32_t>(settings.buffer_frm, 1, 8);
  const auto kilobytes = std::clamp<std::uint32_t>(settings.buffer_max, 32, 64);
  if (frames * frame_room > kilobytes * 1024) frames = kilobytes / 5;
  settings.buffer_frm = static_cast<decltype(settings.buffer_frm)>(frames);
  settings.buffer_max = static_cast<decltype(settings.buffer_max)>(kilobytes);
  const bool is_halved = document.kind.sample_rate < low_rate;
  session.pcm_buffer_bytes = kilobytes * (is_halved ? 512 : 1024);
}

}  // namespace corvelin

// The three decoders behind one session.
#include "audio/decoder_bridge.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/dynamic_library.h"
#include "platform/faad.h"
#include "platform/host.h"
#include "platform/mpglib.h"
#include "platform/numbers.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::uint32_t low_rate = 32000;  // Hz: below it a frame of MPEG audio is a half one

Mpglib mpglib;
Faad faad;
MpglibState mpglib_state;

WaveFormat pcm_format_of_stream() {
  return pcm_16_bit(stream_kind.channel_mode == mono ? 1 : 2, stream_kind.sample_rate);
}

WaveFormat mpeg_format_of_stream() {
  return {.format_tag = wave_format_mpeg_layer3,
          .channels = pcm_format_of_stream().channels,
          .samples_per_sec = stream_kind.sample_rate,
          .avg_bytes_per_sec = whole_part(stream.avg_bitrate / 8)};
}

void tell(std::string_view text, std::string_view caption, BoxIcon icon) {
  host().show_message_box(
      {.caption = std::string(caption), .text = std::string(text), .icon = icon});
}

// Where the library is there, all that is left to do is to choose it.
void tell_to_install_mpglib(std::string_view caption) {
  const std::string_view steps = ui_text(row::mpglib_installation);
  tell(mpglib.load() ? std::string(steps) + "\n\nIt is installed: set use_mpglib to 1"
                     : with_package(steps, "libmpg123-0"),
       caption, BoxIcon::warning);
}

// The cursor moves behind the frame that the library looks at, which is not heard. None when there
// is no frame up to the end.
std::span<std::uint8_t> read_first_frame() {
  const std::span<std::uint8_t> block = std::span(frame_block).first(frame_block_limit);
  std::size_t got = 0;
  while (got == 0 && selection.cursor < document.total_size) {
    const EditPosition before = selection.cursor;
    got = read_frames_at_edit_cursor(block, document.total_size, 1).size;
    if (got == 0 && selection.cursor == before) break;
  }
  return block.first(got);
}

// By the kind of the whole stream: the decoder gives no more samples for a frame of another kind in
// its midst.
std::uint32_t samples_per_frame() {
  const bool is_low = stream_kind.sample_rate < low_rate;
  if (stream.is_aac != 0) return is_low ? 2048 : 1024;
  return stream_kind.layer == 3 && is_low ? 576 : 1152;
}

bool load_faad() {
  if (faad.is_loaded()) return true;
  if (const std::string reason = faad.load(); !reason.empty())
    tell(reason, ui_text(row::error), BoxIcon::information);
  if (!faad.is_loaded())
    tell(with_package(ui_text(row::aac_installation), "libfaad2"),
         "libfaad2.dll needed for AAC playback", BoxIcon::warning);
  return faad.is_loaded();
}

// The library gives two channels whatever the stream has, and below 32 kHz twice its rate.
bool open_faad() {
  if (!load_faad()) return false;
  const std::uint32_t sample_rate = stream_kind.sample_rate;
  const bool is_doubled = sample_rate < low_rate;
  decoder_session.pcm_format = pcm_16_bit(2, is_doubled ? 2 * sample_rate : sample_rate);
  if (is_doubled) decoder_session.pcm_buffer_bytes *= 2;

  decoder_session.faad_handle = faad.NeAACDecOpen();
  if (decoder_session.faad_handle == nullptr) return false;
  NeAACDecConfiguration* const configuration =
      faad.NeAACDecGetCurrentConfiguration(decoder_session.faad_handle);
  configuration->defSampleRate = sample_rate;
  configuration->outputFormat = FAAD_FMT_16BIT;
  configuration->downMatrix = 1;
  if (faad.NeAACDecSetConfiguration(decoder_session.faad_handle, configuration) == 0) return false;
  const std::span<std::uint8_t> frame = read_first_frame();
  unsigned long rate = 0;
  unsigned char channels = 0;
  return faad.NeAACDecInit(decoder_session.faad_handle, frame.data(), frame.size(), &rate,
                           &channels) >= 0;
}

bool open_mpglib() {
  if (!mpglib.load()) {
    tell_to_install_mpglib("Could not load mpglib.dll");
    return false;
  }
  if (mpglib.init_mp3(mpglib_state, decoder_session.pcm_format.channels)) return true;
  tell("Error initializing mpglib.", "Decoder init error", BoxIcon::error);
  return false;
}

bool open_acm() {
  if (stream_kind.layer == 2) tell_to_install_mpglib("Layer 2 only supported with mpglib.dll");
  if (stream_kind.layer != 3) return false;
  const AcmResult opened = acm_stream_open(decoder_session.acm_stream, mpeg_format_of_stream(),
                                           decoder_session.pcm_format);
  if (opened != AcmResult::ok) tell_to_install_mpglib("Could not open ACM Codec");
  return opened == AcmResult::ok;
}

bool open_decoder(Decoder decoder) {
  switch (decoder) {
    case Decoder::faad:
      return open_faad();
    case Decoder::mpglib:
      return open_mpglib();
    case Decoder::acm:
      break;
  }
  return open_acm();
}

std::size_t decode_by_mpglib(std::span<const std::uint8_t> input, std::span<std::uint8_t> out) {
  std::size_t total = 0;
  Mpglib::Result result = Mpglib::frame_done;
  while (result == Mpglib::frame_done) {
    std::size_t done = 0;
    result = Mpglib::decode_mp3(mpglib_state, input, out.subspan(total), done);
    input = {};
    total += done;
  }
  if (result == Mpglib::decode_error) {
    if (const EditPosition frame = frame_at(selection.cursor); frame != no_position)
      selection.cursor = frame;
    mpglib.init_mp3(mpglib_state, decoder_session.pcm_format.channels);
  }
  return total;
}

// Two channels of what the library made of a frame.
std::size_t take_pair(const std::int16_t* samples, std::size_t count, std::size_t channels,
                      std::span<std::uint8_t> out) {
  constexpr std::size_t pair_bytes = 2 * sizeof *samples;
  const std::size_t pairs = std::min(count / channels, out.size() / pair_bytes);
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::int16_t* const first = samples + i * channels;
    const std::int16_t pair[] = {first[0], first[channels == 1 ? 0 : 1]};
    std::memcpy(out.data() + i * pair_bytes, pair, pair_bytes);
  }
  return pairs * pair_bytes;
}

std::size_t decode_by_faad(std::span<const std::uint8_t> input, std::span<std::uint8_t> out) {
  std::size_t total = 0;
  while (!input.empty()) {
    NeAACDecFrameInfo info = {};
    // The library changes nothing in its input.
    auto* const bytes = const_cast<std::uint8_t*>(input.data());
    const void* const samples =
        faad.NeAACDecDecode(decoder_session.faad_handle, &info, bytes, input.size());
    if (info.error != 0) break;
    if (samples != nullptr && info.samples != 0 && info.channels != 0)
      total += take_pair(static_cast<const std::int16_t*>(samples), info.samples, info.channels,
                         out.subspan(total));
    if (info.bytesconsumed == 0 || info.bytesconsumed > input.size()) break;
    input = input.subspan(info.bytesconsumed);
  }
  return total;
}

std::size_t decode_by_acm(std::span<const std::uint8_t> input, std::span<std::uint8_t> out) {
  AcmBlock block = {.source = input, .destination = out};
  const AcmResult converted = acm_stream_convert(decoder_session.acm_stream, block);
  return converted == AcmResult::ok ? block.destination_used : 0;
}

}  // namespace

DecoderSession decoder_session;

Decoder chosen_decoder() {
  if (stream.is_aac != 0) return Decoder::faad;
  return settings.use_mpglib != 0 ? Decoder::mpglib : Decoder::acm;
}

std::string_view decoder_name(Decoder decoder) {
  switch (decoder) {
    case Decoder::faad:
      return "libfaad2";
    case Decoder::mpglib:
      return "mpglib";
    case Decoder::acm:
      break;
  }
  return "ACM";
}

bool decoder_open() {
  decoder_session.is_settled = false;
  decoder_session.pcm_format = pcm_format_of_stream();
  decoder_session.decoder_ready = open_decoder(chosen_decoder());
  decoder_session.pcm_frame_bytes = samples_per_frame() * decoder_session.pcm_format.block_align;
  if (!decoder_session.decoder_ready) decoder_close();
  return decoder_session.decoder_ready;
}

std::size_t decode_frames(std::span<const std::uint8_t> input, std::span<std::uint8_t> out) {
  if (!decoder_session.decoder_ready) return 0;
  switch (chosen_decoder()) {
    case Decoder::faad:
      return decode_by_faad(input, out);
    case Decoder::mpglib:
      return decode_by_mpglib(input, out);
    case Decoder::acm:
      break;
  }
  return decode_by_acm(input, out);
}

void decoder_reset() {
  decoder_session.is_settled = false;
  if (decoder_session.acm_stream.is_open()) acm_stream_reset(decoder_session.acm_stream);
  if (mpglib_state.is_open()) mpglib.init_mp3(mpglib_state, decoder_session.pcm_format.channels);
}

void decoder_close() {
  Mpglib::exit_mp3(mpglib_state);
  acm_stream_close(decoder_session.acm_stream);
  if (decoder_session.faad_handle != nullptr) faad.NeAACDecClose(decoder_session.faad_handle);
  decoder_session.faad_handle = nullptr;
  decoder_session.decoder_ready = false;
}

void playback_buffers_configure() {
  constexpr std::uint32_t frame_room = 5120;  // bytes of samples that a frame may take
  auto frames = std::clamp<std::uint32_t>(settings.buffer_frm, 1, 8);
  const auto kilobytes = std::clamp<std::uint32_t>(settings.buffer_max, 32, 64);
  if (frames * frame_room > kilobytes * 1024) frames = kilobytes / 5;
  settings.buffer_frm = static_cast<decltype(settings.buffer_frm)>(frames);
  settings.buffer_max = static_cast<decltype(settings.buffer_max)>(kilobytes);
  const bool is_halved = stream_kind.sample_rate < low_rate;
  decoder_session.pcm_buffer_bytes = kilobytes * (is_halved ? 512 : 1024);
}

void decoder_unload_all() {
  decoder_close();
  mpglib.unload();
  faad.unload();
  acm_unload_codecs();
}

}  // namespace corvelin

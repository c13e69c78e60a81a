// SPDX-License-Identifier: GPL-2.0-or-later
// From the decoder to the encoder.
#include "exchange/range_reencode.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

#include "audio/decoder_bridge.h"
#include "audio/decoder_run.h"
#include "audio/encoder_bridge.h"
#include "audio/encoder_settings.h"
#include "audio/fill_step.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "model/time_mapping.h"
#include "settings/settings.h"
#include "stream/frame_header.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// What is made of so many frames has room in the file's writer, at any bit rate.
constexpr std::uint32_t frames_per_block = 50;

EncoderType encoder_type() { return static_cast<EncoderType>(settings.enc_type); }

std::uint16_t encoder_channels() {
  if (encoder_type() == EncoderType::codec_manager) return settings.enc_acm_channels;
  return settings.enc_lam_mode == lame_mode_mono ? 1 : 2;
}

// AAC comes out of its decoder with two channels, also where the stream has one.
std::size_t keep_first_of_two(std::span<std::uint8_t> samples) {
  constexpr std::size_t size = sizeof(std::int16_t);
  const std::size_t count = samples.size() / (2 * size);
  for (std::size_t i = 0; i < count; ++i)
    std::memmove(samples.data() + i * size, samples.data() + 2 * i * size, size);
  return count * size;
}

}  // namespace

bool encoder_matches_stream() {
  const bool fits = (document.kind.channel_mode == mono) == (encoder_channels() == 1);
  if (encoder_type() != EncoderType::codec_manager) return fits;
  return fits && document.kind.sample_rate == settings.enc_acm_samplerate;
}

RangeReencode::~RangeReencode() {
  close_decoder();
  close_encoder({});
}

bool RangeReencode::open() {
  if (encoder_type() != EncoderType::none && !encoder_matches_stream()) {
    show_refusal(ui_text(row::parameters_do_not_match));
    return false;
  }
  part_before_ = document.current_part;
  std::optional<std::vector<std::uint8_t>> room = open_decoder_run(frames_per_block);
  if (!room) return false;
  samples_ = std::move(*room);
  if (!open_encoder(EncoderUse::reencode, encoder_channels(),
                    decoder_session.pcm_format.samples_per_sec))
    return false;
  log_ =
      fmt::format("{}!\r\n{} {}\r\n{}\r\n", menu_text_plain(ui_text(row::save_reencoded)),
                  ui_text(row::play_decoder), decoder_name(chosen_decoder()), encoder_log_line());
  return true;
}

void RangeReencode::begin_frames() {
  position_ = 0;
  is_stuck_ = false;
  resyncs_before_ = fill_resyncs();
}

std::error_code RangeReencode::write_frames() {
  const std::uint32_t frames_before = frames_;
  const std::uint32_t bytes_before = fill_bytes();
  const std::size_t bytes = decode_block(samples_, frames_per_block, frames_);
  resyncs_ = fill_resyncs() - resyncs_before_;
  const bool has_moved = selection.cursor > position_;
  left_out_.add(position_ + (fill_bytes() - bytes_before), std::min(selection.cursor, range_.end),
                selection.current_frame.frame_length);
  position_ = selection.cursor;
  // Frames of which nothing is heard would be a hole that nobody notices. A gap in the file, which
  // the reader has stepped over, is none, nor is a broken last frame.
  is_stuck_ = bytes == 0 && has_more() && (frames_ != frames_before || !has_moved);
  if (is_stuck_) range_.end = position_;
  encode(bytes);
  return {};
}

void RangeReencode::encode(std::size_t bytes) {
  if (decoder_session.pcm_format.channels == 2 && encoder_channels() == 1)
    bytes = keep_first_of_two(std::span(samples_).first(bytes));
  const auto* const pcm = reinterpret_cast<const std::int16_t*>(samples_.data());
  const auto made = encode_block({pcm, bytes / sizeof *pcm}, writer_.room());
  writer_.commit(made.value_or(0));
}

// The encoder looks ahead and keeps what it was given last. A user would miss that at the end: up
// to a tenth of a second, the last syllable of a speech.
std::error_code RangeReencode::write_rest() {
  writer_.commit(encode_rest(writer_.room()));
  close_decoder();
  return {};
}

// The encoder has kept a place for its header frame in front of the first one. It goes there while
// the file is still under the name that it is written under, so that it is on disk with the rest
// before the file takes another's place.
std::error_code RangeReencode::finish_header() {
  return close_encoder(target_.written_name(), id3v2_.size());
}

void RangeReencode::close_decoder() {
  if (samples_.empty()) return;
  samples_ = {};
  close_decoder_run();
  document.current_part = part_before_;
}

std::string RangeReencode::source_fault() const {
  std::string fault = RangeWriter::source_fault();
  if (!fault.empty() || !is_stuck_) return fault;
  return fmt::format("The decoder gave up at {}.",
                     format_time(to_time_scale(document, position_), document.stream.avg_bitrate));
}

std::string RangeReencode::log_of_frames() const { return log_; }

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// From the decoder to the encoder.
#include "exchange/range_reencode.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "audio/decoder_bridge.h"
#include "audio/encoder_settings.h"
#include "frames/frame_header.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// What is made of so many frames has room in the file's writer, at any bit rate.
constexpr std::uint32_t frames_per_block = 50;

std::uint16_t encoder_channels() {
  if (encoder_type() == EncoderType::codec_manager) return settings.enc_acm_channels;
  return settings.enc_lam_mode == lame_mode_mono ? 1 : 2;
}

// AAC comes out of its decoder with two channels, also where the stream has one.
std::vector<std::int16_t> first_of_two(std::span<const std::int16_t> samples) {
  std::vector<std::int16_t> first(samples.size() / 2);
  for (std::size_t i = 0; i < first.size(); ++i) first[i] = samples[2 * i];
  return first;
}

}  // namespace

bool encoder_matches_stream(const Document& document) {
  const bool fits = (document.kind.channel_mode == mono) == (encoder_channels() == 1);
  if (encoder_type() != EncoderType::codec_manager) return fits;
  return fits && document.kind.sample_rate == settings.enc_acm_samplerate;
}

RangeReencode::~RangeReencode() { close_encoder(encoder_, {}); }

bool RangeReencode::open() {
  if (encoder_type() != EncoderType::none && !encoder_matches_stream(document_)) {
    show_refusal(ui_text(row::parameters_do_not_match));
    return false;
  }
  if (!reader_.open(frame_cursor_at(document_, 0), document_.total_size, frames_per_block))
    return false;
  reader_.move_to(0);  // the decoder of AAC has used up a frame
  if (!open_encoder(encoder_, EncoderUse::reencode, encoder_channels(),
                    reader_.pcm_format().samples_per_sec))
    return false;
  log_ = fmt::format("{}!\r\n{} {}\r\n{}\r\n", menu_text_plain(ui_text(row::save_reencoded)),
                     ui_text(row::play_decoder), decoder_name(chosen_decoder(document_)),
                     encoder_log_line());
  return true;
}

void RangeReencode::begin_frames() {
  position_ = 0;
  is_stuck_ = false;
}

std::error_code RangeReencode::write_frames() {
  const std::uint32_t frames_before = frames_;
  const std::uint32_t bytes_before = reader_.bytes();
  const std::span<const std::int16_t> samples = reader_.read(frames_per_block);
  frames_ = reader_.frames();
  resyncs_ = reader_.resyncs();
  const bool has_moved = reader_.pos() > position_;
  left_out_.add(document_, position_ + (reader_.bytes() - bytes_before),
                std::min(reader_.pos(), range_.end), reader_.place().frame.frame_length);
  position_ = reader_.pos();
  // Frames of which nothing is heard would be a hole that nobody notices. A gap in the file, which
  // the reader has stepped over, is none, nor is a broken last frame.
  is_stuck_ = samples.empty() && has_more() && (frames_ != frames_before || !has_moved);
  if (is_stuck_) range_.end = position_;
  const bool is_doubled = reader_.pcm_format().channels == 2 && encoder_channels() == 1;
  if (is_doubled) {
    encode(first_of_two(samples));
  } else {
    encode(samples);
  }
  return {};
}

void RangeReencode::encode(std::span<const std::int16_t> pcm) {
  writer_.commit(encode_block(encoder_, pcm, writer_.room()).value_or(0));
}

// The encoder looks ahead and keeps what it was given last. A user would miss that at the end: up
// to a tenth of a second, the last syllable of a speech.
std::error_code RangeReencode::write_rest() {
  writer_.commit(encode_rest(encoder_, writer_.room()));
  reader_.close();
  return {};
}

// The encoder has kept a place for its header frame in front of the first one. It goes there while
// the file is still under the name that it is written under, so that it is on disk with the rest
// before the file takes another's place.
std::error_code RangeReencode::finish_header() {
  return close_encoder(encoder_, target_.written_name(), id3v2_.size());
}

std::string RangeReencode::source_fault() const {
  std::string fault = RangeWriter::source_fault();
  if (!fault.empty() || !is_stuck_) return fault;
  return fmt::format("The decoder gave up at {}.", format_time(to_time_scale(document_, position_),
                                                               document_.stream.avg_bitrate));
}

std::string RangeReencode::log_of_frames() const { return log_; }

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The way from frames to samples: one session at a time with one of three decoders, none of which
// is part of the program. Playback, measuring and the re-encoding save decode through it and
// exclude one another. A decoder that is missing costs only these three, and the user is told what
// to install.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/frame_decoder.h"
#include "platform/wave_format.h"

namespace corvelin {

/// Chosen anew at each need, by the open stream and the setting `use_mpglib`; so that setting may
/// only change while no session is open.
enum class Decoder { faad, mpglib, codec_manager };
Decoder chosen_decoder();

/// As the status shows it.
std::string_view decoder_name(Decoder decoder);

struct DecoderSession {
  std::unique_ptr<FrameDecoder> decoder;
  bool decoder_ready = false;          // a session is open
  bool is_settled = false;             // the decoder knows the frames in front of the cursor
  WaveFormat pcm_format;               // of the samples that come out
  std::uint32_t pcm_frame_bytes = 0;   // of samples that one frame makes at most
  std::uint32_t pcm_buffer_bytes = 0;  // the room for one block of samples
};

extern DecoderSession decoder_session;

/// Opens a session for the stream, from the cursor on, where `pcm_buffer_bytes` is set; an AAC
/// session uses up the frame at the cursor and may double the room. False when there is no decoder
/// for the stream, of which the user is told where installing one would help.
bool decoder_open();

/// Decodes whole frames and returns how many bytes of samples are in `out`. 0 without a session and
/// for frames that the decoder gives up on. After a damaged frame the cursor stands on a frame
/// start again.
std::size_t decode_frames(std::span<const std::uint8_t> input, std::span<std::uint8_t> out);

/// Forgets the frames before, as a seek asks for. The next fill settles the decoder anew.
void decoder_reset();

/// Ends the session, if there is one.
void decoder_close();

/// Brings `buffer_frm` and `buffer_max` into their limits and sets the room for one buffer of
/// playback by them.
void playback_buffers_configure();

}  // namespace corvelin

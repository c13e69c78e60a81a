// SPDX-License-Identifier: GPL-2.0-or-later
// The way from frames to samples: a session with one of three decoders, none of which is part of
// the program. Playback, each measuring and the re-encoding save have one of their own. A decoder
// that is missing costs only these three, and the user is told what to install.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/document.h"
#include "model/frame_reader.h"
#include "platform/codecs/frame_decoder.h"
#include "platform/devices/wave_format.h"

namespace corvelin {

/// Chosen by the stream and the setting `use_mpglib`.
enum class Decoder { faad, mpglib, codec_manager };
Decoder chosen_decoder(const Document& document);

/// As the status shows it.
std::string_view decoder_name(Decoder decoder);

struct DecoderSession {
  Decoder chosen = Decoder::codec_manager;
  std::unique_ptr<FrameDecoder> decoder;
  bool decoder_ready = false;          // a session is open
  bool is_settled = false;             // the decoder knows the frames in front of the cursor
  WaveFormat pcm_format;               // of the samples that come out
  std::uint32_t pcm_frame_bytes = 0;   // of samples that one frame makes at most
  std::uint32_t pcm_buffer_bytes = 0;  // the room for one block of samples
  std::vector<std::uint8_t> block;     // room for the frames that are to be decoded
};

/// Opens a session for the stream, from `at` on, where `pcm_buffer_bytes` is set; an AAC session
/// uses up the frame at `at` and may double the room. False when there is no decoder for the
/// stream, of which the user is told where installing one would help.
bool decoder_open(DecoderSession& session, const Document& document, FrameCursor& at);

/// Makes the decoder ready to give the frame at `at` as in a run from the start: decodes what lies
/// in front of it into `out`, where it is thrown away. At damage there `at` moves as below.
void settle_decoder(DecoderSession& session, const Document& document, FrameCursor& at,
                    std::span<std::uint8_t> out);

/// How many frames, at least one, have room for their samples in `out`.
std::uint32_t frames_in_room(const DecoderSession& session, std::span<const std::uint8_t> out);

/// Decodes whole frames and returns how many bytes of samples are in `out`. 0 without a session and
/// for frames that the decoder gives up on. After a damaged frame `at` stands on a frame start
/// again.
std::size_t decode_frames(DecoderSession& session, const Document& document, FrameCursor& at,
                          std::span<const std::uint8_t> input, std::span<std::uint8_t> out);

/// Forgets the frames before, as a seek asks for. The next read settles the decoder anew.
void decoder_reset(DecoderSession& session);

/// Ends the session, if there is one.
void decoder_close(DecoderSession& session);

/// Where a decoder has to begin so that it gives the frame at `pos` as in a run from the start: at
/// a frame in front of it, as a frame leans on the two before it and takes up to 511 bytes of its
/// data from further ones.
EditPosition settling_place(const Document& document, EditPosition pos);

/// Brings `buffer_frm` and `buffer_max` into their limits and sets the room for one buffer of
/// playback by them.
void playback_buffers_configure(DecoderSession& session, const Document& document);

}  // namespace corvelin

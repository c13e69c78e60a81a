// SPDX-License-Identifier: GPL-2.0-or-later
// The way from samples to MP3: a session with LAME or the codec manager, as `enc_type` says. A
// recording has one, and so has a save that encodes anew. Neither encoder is part of the program;
// one that is missing costs only these two, and the user is told what to install. The encoded data
// is never looked at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/codecs/mp3_encoder.h"

namespace corvelin {

struct EncoderSession {
  Mp3Encoder encoder;
  std::uint32_t lame_samples = 0;  // 16-bit samples, of both channels together, for one call
};

/// What a session is opened for. A recording tells its failures under other captions and is marked
/// as an original. One that goes behind what a file has already gets no header frame: that would
/// stand in the midst of the file. Nor does one that goes over several files; and there no frame
/// takes data from those before it, so that each file can be decoded from its first frame on.
enum class EncoderUse { reencode, record, record_behind, record_split };

/// Opens the encoder that the settings name, for samples of this form. False after a failure, which
/// the user has been told.
bool open_encoder(EncoderSession& session, EncoderUse use, std::uint16_t channels,
                  std::uint32_t sample_rate);

/// Encodes a block of samples, interleaved, and returns how many bytes are in `out`; nothing
/// without a session. A block that the encoder gives up on yields what it made before.
std::optional<std::size_t> encode_block(EncoderSession& session, std::span<const std::int16_t> pcm,
                                        std::span<std::uint8_t> out);

/// Fetches what the encoder still holds back: the last frames. Without them the end of the audio,
/// up to a tenth of a second, would be missing in the file.
std::size_t encode_rest(EncoderSession& session, std::span<std::uint8_t> out);

/// Ends the session, if there is one. LAME's header frame, where the settings ask for one, is
/// written to `offset` of the finished, closed file `path`, where the first frame holds its place;
/// with an empty `path`, that of a run that was cancelled, it isn't.
std::error_code close_encoder(EncoderSession& session, const std::string& path,
                              std::uint64_t offset = 0);

/// The least room for the bytes of so many samples, of both channels together.
constexpr std::size_t encoder_room(std::size_t samples) { return samples * 5 / 4 + 7200; }

/// What the Encoder page says of LAME and of the codec manager: "Use …" when it is there, and else
/// that it isn't found. An `enc_type` that names a missing one becomes that of none.
struct EncoderProbe {
  bool is_found = false;
  std::string text;
};

EncoderProbe encoder_probe_lame();
EncoderProbe encoder_probe_codec_manager();

/// The name of the encoder and its settings, as a save's log tells it.
std::string encoder_log_line();

}  // namespace corvelin

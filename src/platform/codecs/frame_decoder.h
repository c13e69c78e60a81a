// SPDX-License-Identifier: GPL-2.0-or-later
// The one interface of all decoders: whole frames go in, 16-bit samples come out. The libraries
// behind it are looked up at run time, each when a decoder of its kind is opened; any number of
// decoders work beside each other, each with its own memory of the frames before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace corvelin {

/// Why a decoder can't be opened.
enum class DecoderFault {
  none,
  no_library,  // it isn't there, or lacks an entry
  refused,     // the library does not take the stream
};

struct DecoderOpening {
  DecoderFault fault = DecoderFault::none;
  std::string reason;  // the system's words for why the library can't be loaded; may be empty
};

class FrameDecoder {
 public:
  FrameDecoder() = default;
  FrameDecoder(const FrameDecoder&) = delete;
  FrameDecoder& operator=(const FrameDecoder&) = delete;
  virtual ~FrameDecoder() = default;

  /// Puts whole frames in the queue. False when there is no memory for them.
  virtual bool feed(std::span<const std::uint8_t> frames) = 0;

  enum class Step { produced, needs_input, failed };

  /// Decodes the next frame of the queue to `out`, interleaved where there are two channels, and
  /// tells in `done` how many bytes that is; 0 also where a frame gives nothing yet.
  virtual Step take(std::span<std::uint8_t> out, std::size_t& done) = 0;

  /// Forgets the frames that were decoded before, and those in the queue.
  virtual void reset() = 0;
};

/// What a block of frames came to.
struct DecodedBlock {
  std::size_t size = 0;  // bytes of samples
  bool gave_up = false;  // on damaged data; what was decoded before it counts
};

/// Decodes whole frames to `out`.
DecodedBlock decode_with(FrameDecoder& decoder, std::span<const std::uint8_t> frames,
                         std::span<std::uint8_t> out);

}  // namespace corvelin

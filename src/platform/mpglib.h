// A decoder of MPEG audio (all layers) as three calls over a state that the caller owns: begin,
// end, and a call that takes input and gives the samples of one frame. Looked up at run time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/mpeg_decoder.h"

namespace corvelin {

/// A session. Its content is the library's business.
using MpglibState = MpegDecoder;

class Mpglib {
 public:
  bool load() { return library_.load(); }
  void unload() { library_.unload(); }
  [[nodiscard]] bool is_loaded() const { return library_.is_loaded(); }

  /// Begins a session whose samples have `channels` (1 or 2), whatever the frames have.
  bool init_mp3(MpglibState& state, int channels) const;

  static void exit_mp3(MpglibState& state);

  /// What `decode_mp3` found. While it is `frame_done`, call again without input.
  enum Result { frame_done = 0, needs_input = 1, decode_error = -1 };

  /// Appends whole frames to the session's queue and writes the samples of at most one frame to
  /// `out`; how many bytes stands in `done`.
  static Result decode_mp3(MpglibState& state, std::span<const std::uint8_t> input,
                           std::span<std::uint8_t> out, std::size_t& done);

 private:
  MpegLibrary library_;
};

}  // namespace corvelin

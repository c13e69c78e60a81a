// The three calls over the decoder.
#include "platform/mpglib.h"

namespace corvelin {

bool Mpglib::init_mp3(MpglibState& state, int channels) const {
  return state.open(library_, channels);
}

void Mpglib::exit_mp3(MpglibState& state) { state.close(); }

Mpglib::Result Mpglib::decode_mp3(MpglibState& state, std::span<const std::uint8_t> input,
                                  std::span<std::uint8_t> out, std::size_t& done) {
  done = 0;
  if (!input.empty() && !state.feed(input)) return decode_error;
  switch (state.next(out, done)) {
    case MpegStep::produced:
      return frame_done;
    case MpegStep::needs_input:
      return needs_input;
    case MpegStep::failed:
      break;
  }
  return decode_error;
}

}  // namespace corvelin

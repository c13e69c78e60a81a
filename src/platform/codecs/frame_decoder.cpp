// SPDX-License-Identifier: GPL-2.0-or-later
// The loop over a block of frames.
#include "platform/codecs/frame_decoder.h"

namespace corvelin {

DecodedBlock decode_with(FrameDecoder& decoder, std::span<const std::uint8_t> frames,
                         std::span<std::uint8_t> out) {
  using Step = FrameDecoder::Step;
  DecodedBlock block;
  Step step = decoder.feed(frames) ? Step::produced : Step::failed;
  while (step == Step::produced) {
    std::size_t done = 0;
    step = decoder.take(out.subspan(block.size), done);
    block.size += done;
  }
  block.gave_up = step == Step::failed;
  return block;
}

}  // namespace corvelin

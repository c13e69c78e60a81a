// SPDX-License-Identifier: GPL-2.0-or-later
// MPEG audio, all layers, by libmpg123. The frames are taken as they come: nothing in them is
// skipped (an Info frame is audio), nothing is cut off for gapless play, and bad data costs sound
// but never ends a session.
#pragma once

#include <memory>

#include "platform/codecs/frame_decoder.h"

struct mpg123_handle_struct;

namespace corvelin {

class MpegDecoder : public FrameDecoder {
 public:
  MpegDecoder();
  ~MpegDecoder() override;

  /// Whether the library is there, for the advice to whoever has it and doesn't use it.
  static bool is_available();

  /// Begins a session. Whatever the frames have, what comes out has `channels` (1 or 2).
  DecoderOpening open(int channels);

  bool feed(std::span<const std::uint8_t> frames) override;

  /// What has no room comes with the next call; without any room the queue waits.
  Step take(std::span<std::uint8_t> out, std::size_t& done) override;

  void reset() override;

 private:
  struct Library;

  bool begin();
  void close();

  std::unique_ptr<const Library> mpg123_;
  int channels_ = 0;
  mpg123_handle_struct* handle_ = nullptr;
  std::span<const std::uint8_t> ready_;  // of the last frame, in the library's buffer
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// AAC in ADTS frames, by libfaad. What comes out has two channels whatever the stream has, and
// below 32 kHz twice its sample rate.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/codecs/frame_decoder.h"

namespace corvelin {

class AacDecoder : public FrameDecoder {
 public:
  AacDecoder();
  ~AacDecoder() override;

  /// Opens the library for a stream of this sample rate, in hertz. `begin` has to follow.
  DecoderOpening open(std::uint32_t sample_rate);

  /// Shows the library a frame of the stream, which is not heard. False when it refuses that.
  bool begin(std::span<const std::uint8_t> frame);

  bool feed(std::span<const std::uint8_t> frames) override;
  Step take(std::span<std::uint8_t> out, std::size_t& done) override;

  /// Empties the queue. The library takes whatever frame comes next, and has no way to forget those
  /// before.
  void reset() override;

 private:
  struct Library;

  bool configure(std::uint32_t sample_rate);
  void close();

  std::unique_ptr<const Library> faad_;
  void* handle_ = nullptr;
  std::vector<std::uint8_t> queue_;
  std::size_t begin_ = 0;  // of the next frame in it
};

}  // namespace corvelin

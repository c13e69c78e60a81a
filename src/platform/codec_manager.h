// The audio codec manager: conversion streams from one form of audio to another, by whatever codec
// is there. It decodes and encodes MPEG Layer III.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/lame_enc.h"
#include "platform/mpeg_decoder.h"
#include "platform/wave_format.h"

namespace corvelin {

enum class AcmResult {
  ok,
  no_driver,  // no codec for these formats, or its library is missing
  failed,     // the codec gave up
};

/// An open conversion; closes itself.
struct AcmStream {
  MpegDecoder decoder;  // one of the two is open
  LameEnc encoder;
  WaveFormat destination;

  [[nodiscard]] bool is_open() const { return decoder.is_open() || encoder.is_open(); }
};

/// One block to convert, and how much of it was.
struct AcmBlock {
  std::span<const std::uint8_t> source;  // whole frames or samples; the stream takes them all
  std::span<std::uint8_t> destination;
  std::size_t destination_used = 0;  // bytes
};

/// For an encoder.
struct AcmOptions {
  bool high_quality = false;  // it may take its time
  bool separate = false;      // each frame is to stand by itself
};

/// From frames to 16-bit samples of the same rate, or from 16-bit samples to frames of a constant
/// bit rate.
AcmResult acm_stream_open(AcmStream& stream, const WaveFormat& source,
                          const WaveFormat& destination, const AcmOptions& options = {});

/// Whether a codec for these formats is there.
bool acm_can_convert(const WaveFormat& source, const WaveFormat& destination);

AcmResult acm_stream_convert(AcmStream& stream, AcmBlock& block);

/// What an encoder still holds back, at the end of the samples.
AcmResult acm_stream_flush(AcmStream& stream, AcmBlock& block);

/// Forgets the frames that were decoded before.
AcmResult acm_stream_reset(AcmStream& stream);
void acm_stream_close(AcmStream& stream);

/// Lets the libraries of the codecs go. No stream is open.
void acm_unload_codecs();

}  // namespace corvelin

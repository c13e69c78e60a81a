// The audio codec manager: conversion streams from one form of audio to another, by whatever codec
// is there. It decodes MPEG Layer III.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

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
  MpegDecoder decoder;
  WaveFormat destination;

  [[nodiscard]] bool is_open() const { return decoder.is_open(); }
};

/// One block to convert, and how much of it was.
struct AcmBlock {
  std::span<const std::uint8_t> source;  // whole frames; the stream takes them all
  std::span<std::uint8_t> destination;
  std::size_t destination_used = 0;  // bytes
};

/// From frames to 16-bit samples of the same rate.
AcmResult acm_stream_open(AcmStream& stream, const WaveFormat& source,
                          const WaveFormat& destination);
AcmResult acm_stream_convert(AcmStream& stream, AcmBlock& block);

/// Forgets the frames that were converted before.
AcmResult acm_stream_reset(AcmStream& stream);
void acm_stream_close(AcmStream& stream);

/// Lets the libraries of the codecs go. No stream is open.
void acm_unload_codecs();

}  // namespace corvelin

// Conversion streams over libmpg123 and LAME.
#include "platform/codec_manager.h"

namespace corvelin {

namespace {

MpegLibrary mpeg_library;

bool can_decode(const WaveFormat& source, const WaveFormat& destination) {
  return source.format_tag == wave_format_mpeg_layer3 &&
         (source.channels == 1 || source.channels == 2) &&
         destination == pcm_16_bit(source.channels, source.samples_per_sec);
}

bool can_encode(const WaveFormat& source, const WaveFormat& destination) {
  return destination.format_tag == wave_format_mpeg_layer3 &&
         (source.channels == 1 || source.channels == 2) &&
         source.channels == destination.channels &&
         source == pcm_16_bit(source.channels, source.samples_per_sec);
}

AcmResult open_encoder(AcmStream& stream, const WaveFormat& source, const AcmOptions& options) {
  if (!stream.encoder.load()) return AcmResult::no_driver;
  const std::uint32_t kbit_s = stream.destination.avg_bytes_per_sec / 125;
  const BeConfig config = {.dwSampleRate = source.samples_per_sec,
                           .dwReSampleRate = stream.destination.samples_per_sec,
                           .nMode = source.channels == 1 ? 3U : 1U,
                           .dwBitrate = kbit_s,
                           .dwMaxBitrate = kbit_s,
                           .nPreset = options.high_quality ? 2U : 0U,
                           .bNoRes = options.separate};
  std::uint32_t samples = 0;
  std::uint32_t room = 0;
  if (stream.encoder.beInitStream(config, samples, room) == be_successful) return AcmResult::ok;
  stream.encoder = {};
  return AcmResult::no_driver;
}

AcmResult encode(LameEnc& encoder, AcmBlock& block) {
  const auto* const samples = reinterpret_cast<const std::int16_t*>(block.source.data());
  std::uint32_t got = 0;
  const std::uint32_t error = encoder.beEncodeChunk(
      {samples, block.source.size() / sizeof *samples}, block.destination, got);
  block.destination_used = got;
  return error == be_successful ? AcmResult::ok : AcmResult::failed;
}

}  // namespace

AcmResult acm_stream_open(AcmStream& stream, const WaveFormat& source,
                          const WaveFormat& destination, const AcmOptions& options) {
  acm_stream_close(stream);
  stream.destination = destination;
  if (can_encode(source, destination)) return open_encoder(stream, source, options);
  if (!can_decode(source, destination) || !mpeg_library.load()) return AcmResult::no_driver;
  return acm_stream_reset(stream);
}

bool acm_can_convert(const WaveFormat& source, const WaveFormat& destination) {
  AcmStream stream;
  return acm_stream_open(stream, source, destination) == AcmResult::ok;
}

AcmResult acm_stream_convert(AcmStream& stream, AcmBlock& block) {
  if (stream.encoder.is_open()) return encode(stream.encoder, block);
  if (!stream.decoder.feed(block.source)) return AcmResult::failed;
  MpegStep step = MpegStep::produced;
  while (step == MpegStep::produced) {
    std::size_t done = 0;
    step = stream.decoder.next(block.destination.subspan(block.destination_used), done);
    block.destination_used += done;
  }
  return step == MpegStep::failed ? AcmResult::failed : AcmResult::ok;
}

AcmResult acm_stream_flush(AcmStream& stream, AcmBlock& block) {
  if (!stream.encoder.is_open()) return AcmResult::ok;
  std::uint32_t got = 0;
  const std::uint32_t error = stream.encoder.beDeinitStream(block.destination, got);
  block.destination_used = got;
  return error == be_successful ? AcmResult::ok : AcmResult::failed;
}

AcmResult acm_stream_reset(AcmStream& stream) {
  const bool is_open = stream.decoder.open(mpeg_library, stream.destination.channels);
  return is_open ? AcmResult::ok : AcmResult::failed;
}

void acm_stream_close(AcmStream& stream) {
  stream.decoder.close();
  stream.encoder = {};
}

void acm_unload_codecs() { mpeg_library.unload(); }

}  // namespace corvelin

// Conversion streams over libmpg123.
#include "platform/codec_manager.h"

namespace corvelin {

namespace {

MpegLibrary mpeg_library;

bool can_decode(const WaveFormat& source, const WaveFormat& destination) {
  return source.format_tag == wave_format_mpeg_layer3 &&
         (source.channels == 1 || source.channels == 2) &&
         destination == pcm_16_bit(source.channels, source.samples_per_sec);
}

}  // namespace

AcmResult acm_stream_open(AcmStream& stream, const WaveFormat& source,
                          const WaveFormat& destination) {
  acm_stream_close(stream);
  if (!can_decode(source, destination) || !mpeg_library.load()) return AcmResult::no_driver;
  stream.destination = destination;
  return acm_stream_reset(stream);
}

AcmResult acm_stream_convert(AcmStream& stream, AcmBlock& block) {
  if (!stream.decoder.feed(block.source)) return AcmResult::failed;
  MpegStep step = MpegStep::produced;
  while (step == MpegStep::produced) {
    std::size_t done = 0;
    step = stream.decoder.next(block.destination.subspan(block.destination_used), done);
    block.destination_used += done;
  }
  return step == MpegStep::failed ? AcmResult::failed : AcmResult::ok;
}

AcmResult acm_stream_reset(AcmStream& stream) {
  const bool is_open = stream.decoder.open(mpeg_library, stream.destination.channels);
  return is_open ? AcmResult::ok : AcmResult::failed;
}

void acm_stream_close(AcmStream& stream) { stream.decoder.close(); }

void acm_unload_codecs() { mpeg_library.unload(); }

}  // namespace corvelin

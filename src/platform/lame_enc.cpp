// LAME behind the entry points of an encoder library.
#include "platform/lame_enc.h"

#include <lame/lame.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <utility>
#include <vector>

#include "platform/dynamic_library.h"
#include "platform/file.h"

namespace corvelin {

// The functions of the library, all of which must be there.
struct LameEnc::Library {
  DynamicLibrary module;
  decltype(&::lame_init) init = nullptr;
  decltype(&::lame_close) close = nullptr;
  decltype(&::lame_init_params) init_params = nullptr;
  decltype(&::lame_get_framesize) get_framesize = nullptr;
  decltype(&::lame_encode_buffer) encode_buffer = nullptr;
  decltype(&::lame_encode_buffer_interleaved) encode_buffer_interleaved = nullptr;
  decltype(&::lame_encode_flush) encode_flush = nullptr;
  decltype(&::lame_get_lametag_frame) get_lametag_frame = nullptr;
  decltype(&::get_lame_version_numerical) get_version = nullptr;
  decltype(&::lame_set_in_samplerate) set_in_samplerate = nullptr;
  decltype(&::lame_set_out_samplerate) set_out_samplerate = nullptr;
  decltype(&::lame_set_num_channels) set_num_channels = nullptr;
  decltype(&::lame_set_mode) set_mode = nullptr;
  decltype(&::lame_set_quality) set_quality = nullptr;
  decltype(&::lame_set_brate) set_brate = nullptr;
  decltype(&::lame_set_original) set_original = nullptr;
  decltype(&::lame_set_disable_reservoir) set_disable_reservoir = nullptr;
  decltype(&::lame_set_bWriteVbrTag) set_write_vbr_tag = nullptr;
  decltype(&::lame_set_VBR) set_vbr = nullptr;
  decltype(&::lame_set_VBR_q) set_vbr_quality = nullptr;
  decltype(&::lame_set_VBR_mean_bitrate_kbps) set_vbr_mean = nullptr;
  decltype(&::lame_set_VBR_min_bitrate_kbps) set_vbr_min = nullptr;
  decltype(&::lame_set_VBR_max_bitrate_kbps) set_vbr_max = nullptr;
  decltype(&::lame_set_write_id3tag_automatic) set_write_id3tag = nullptr;
  decltype(&::lame_set_errorf) set_error_function = nullptr;
  decltype(&::lame_set_msgf) set_message_function = nullptr;
  decltype(&::lame_set_debugf) set_debug_function = nullptr;

  bool resolve() {
    return module.resolve(init, "lame_init") && module.resolve(close, "lame_close") &&
           module.resolve(init_params, "lame_init_params") &&
           module.resolve(get_framesize, "lame_get_framesize") &&
           module.resolve(encode_buffer, "lame_encode_buffer") &&
           module.resolve(encode_buffer_interleaved, "lame_encode_buffer_interleaved") &&
           module.resolve(encode_flush, "lame_encode_flush") &&
           module.resolve(get_lametag_frame, "lame_get_lametag_frame") &&
           module.resolve(get_version, "get_lame_version_numerical") &&
           module.resolve(set_in_samplerate, "lame_set_in_samplerate") &&
           module.resolve(set_out_samplerate, "lame_set_out_samplerate") &&
           module.resolve(set_num_channels, "lame_set_num_channels") &&
           module.resolve(set_mode, "lame_set_mode") &&
           module.resolve(set_quality, "lame_set_quality") &&
           module.resolve(set_brate, "lame_set_brate") &&
           module.resolve(set_original, "lame_set_original") &&
           module.resolve(set_disable_reservoir, "lame_set_disable_reservoir") &&
           module.resolve(set_write_vbr_tag, "lame_set_bWriteVbrTag") &&
           module.resolve(set_vbr, "lame_set_VBR") &&
           module.resolve(set_vbr_quality, "lame_set_VBR_q") &&
           module.resolve(set_vbr_mean, "lame_set_VBR_mean_bitrate_kbps") &&
           module.resolve(set_vbr_min, "lame_set_VBR_min_bitrate_kbps") &&
           module.resolve(set_vbr_max, "lame_set_VBR_max_bitrate_kbps") &&
           module.resolve(set_write_id3tag, "lame_set_write_id3tag_automatic") &&
           module.resolve(set_error_function, "lame_set_errorf") &&
           module.resolve(set_message_function, "lame_set_msgf") &&
           module.resolve(set_debug_function, "lame_set_debugf");
  }
};

struct LameEnc::Stream {
  lame_global_flags* flags = nullptr;  // null when closed
  int channels = 2;
  std::vector<std::uint8_t> header;  // of the stream that was closed last
};

namespace {

constexpr std::uint32_t mono_mode = 3;
constexpr std::int32_t cbr_method = -1;
constexpr std::int32_t abr_method = 4;

// A library that is asked to be quiet must not write to the terminal of a headless run.
void say_nothing(const char*, va_list) {}

// LAME's own scale: 0 takes the most care and time, 9 the least.
int quality_of(std::uint32_t preset) {
  constexpr int normal = 5;
  constexpr int low = 9;
  constexpr int high = 2;
  constexpr int very_high = 0;
  switch (preset) {
    case 1:
      return low;
    case 2:
    case 3:
      return high;
    case 5:
      return very_high;
    default:
      return normal;
  }
}

MPEG_mode mode_of(std::uint32_t mode) {
  return mode == mono_mode ? MONO : mode == 0 ? STEREO : JOINT_STEREO;
}

vbr_mode vbr_mode_of(std::int32_t method) {
  switch (method) {
    case cbr_method:
      return vbr_off;
    case abr_method:
      return vbr_abr;
    case 1:
      return vbr_rh;
    default:
      return vbr_mtrh;
  }
}

}  // namespace

LameEnc::LameEnc() = default;
LameEnc::~LameEnc() {
  if (stream_) beCloseStream();
}
LameEnc::LameEnc(LameEnc&&) noexcept = default;

// The stream goes while its library is still there.
LameEnc& LameEnc::operator=(LameEnc&& other) noexcept {
  if (this == &other) return *this;
  beCloseStream();
  stream_ = std::move(other.stream_);
  library_ = std::move(other.library_);
  return *this;
}

bool LameEnc::load() {
  if (library_) return true;
  auto library = std::make_unique<Library>();
  if (!library->module.load("libmp3lame.so.0").empty() || !library->resolve()) return false;
  library_ = std::move(library);
  return true;
}

bool LameEnc::is_loaded() const { return library_ != nullptr; }

bool LameEnc::is_open() const { return stream_ && stream_->flags != nullptr; }

BeVersion LameEnc::beVersion() const {
  lame_version_t version = {};
  if (library_) library_->get_version(&version);
  return {.library_major = static_cast<unsigned>(version.major),
          .library_minor = static_cast<unsigned>(version.minor),
          .engine_major = static_cast<unsigned>(version.psy_major),
          .engine_minor = static_cast<unsigned>(version.psy_minor)};
}

std::uint32_t LameEnc::beInitStream(const BeConfig& config, std::uint32_t& samples,
                                    std::uint32_t& mp3_buffer_size) {
  if (!library_) return be_invalid_handle;
  beCloseStream();
  lame_global_flags* const flags = library_->init();
  if (flags == nullptr) return be_no_more_handles;
  stream_ = std::make_unique<Stream>();
  stream_->flags = flags;
  stream_->channels = config.nMode == mono_mode ? 1 : 2;

  const Library& lame = *library_;
  lame.set_error_function(flags, say_nothing);
  lame.set_message_function(flags, say_nothing);
  lame.set_debug_function(flags, say_nothing);
  lame.set_write_id3tag(flags, 0);
  lame.set_in_samplerate(flags, static_cast<int>(config.dwSampleRate));
  lame.set_out_samplerate(flags, static_cast<int>(config.dwReSampleRate));
  lame.set_num_channels(flags, stream_->channels);
  lame.set_mode(flags, mode_of(config.nMode));
  lame.set_quality(flags, quality_of(config.nPreset));
  lame.set_original(flags, config.bOriginal ? 1 : 0);
  lame.set_disable_reservoir(flags, config.bNoRes ? 1 : 0);
  lame.set_write_vbr_tag(flags, config.bWriteVBRHeader ? 1 : 0);
  const vbr_mode method = config.bEnableVBR ? vbr_mode_of(config.nVbrMethod) : vbr_off;
  lame.set_vbr(flags, method);
  lame.set_brate(flags, static_cast<int>(config.dwBitrate));
  if (method == vbr_abr) {
    lame.set_vbr_mean(flags, static_cast<int>(config.dwVbrAbr_bps / 1000));
  } else if (method != vbr_off) {
    lame.set_vbr_quality(flags, static_cast<int>(config.nVBRQuality));
    lame.set_vbr_min(flags, static_cast<int>(config.dwBitrate));
    lame.set_vbr_max(flags, static_cast<int>(config.dwMaxBitrate));
  }
  if (lame.init_params(flags) < 0) {
    beCloseStream();
    return be_invalid_format_parameters;
  }
  const auto frame = static_cast<std::uint32_t>(lame.get_framesize(flags));
  samples = frame * static_cast<std::uint32_t>(stream_->channels);
  mp3_buffer_size = frame * 5 / 4 + 7200;  // what the library may fill with one frame's samples
  return be_successful;
}

std::uint32_t LameEnc::beEncodeChunk(std::span<const std::int16_t> pcm, std::span<std::uint8_t> out,
                                     std::uint32_t& out_bytes) {
  out_bytes = 0;
  if (!is_open()) return be_invalid_handle;
  const auto frames = static_cast<int>(pcm.size() / static_cast<unsigned>(stream_->channels));
  // The library takes its samples by a pointer that it doesn't write through.
  auto* const samples = const_cast<short*>(pcm.data());
  const auto room = static_cast<int>(std::min<std::size_t>(out.size(), INT_MAX));
  const int got =
      stream_->channels == 1
          ? library_->encode_buffer(stream_->flags, samples, samples, frames, out.data(), room)
          : library_->encode_buffer_interleaved(stream_->flags, samples, frames, out.data(), room);
  if (got < 0) return got == -1 ? be_buffer_too_small : be_invalid_format;
  out_bytes = static_cast<std::uint32_t>(got);
  return be_successful;
}

std::uint32_t LameEnc::beDeinitStream(std::span<std::uint8_t> out, std::uint32_t& out_bytes) {
  out_bytes = 0;
  if (!is_open()) return be_invalid_handle;
  const auto room = static_cast<int>(std::min<std::size_t>(out.size(), INT_MAX));
  const int got = library_->encode_flush(stream_->flags, out.data(), room);
  if (got < 0) return be_buffer_too_small;
  out_bytes = static_cast<std::uint32_t>(got);
  return be_successful;
}

std::uint32_t LameEnc::beCloseStream() {
  if (!is_open()) return be_invalid_handle;
  constexpr std::size_t longest_frame = 2880;  // bytes
  stream_->header.resize(longest_frame);
  const std::size_t size =
      library_->get_lametag_frame(stream_->flags, stream_->header.data(), longest_frame);
  stream_->header.resize(size <= longest_frame ? size : 0);
  library_->close(std::exchange(stream_->flags, nullptr));
  return be_successful;
}

std::error_code LameEnc::beWriteVBRHeader(const std::string& path, std::uint64_t offset) {
  if (!stream_ || stream_->header.empty()) return {};
  OutputFile file;
  if (const std::error_code error = file.open_existing(path)) return error;
  const std::error_code error = file.write_at(offset, stream_->header);
  const std::error_code close_error = file.close();
  return error ? error : close_error;
}

}  // namespace corvelin

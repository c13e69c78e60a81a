// SPDX-License-Identifier: GPL-2.0-or-later
// LAME, through its own C interface.
#include "platform/codecs/mp3_encoder.h"

#include <lame/lame.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <utility>
#include <vector>

#include "platform/codecs/dynamic_library.h"
#include "platform/files/file.h"

namespace corvelin {

// The functions of the library, all of which must be there.
struct Mp3Encoder::Library {
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

  bool load() { return module.load("libmp3lame.so.0").empty() && resolve(); }

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

struct Mp3Encoder::Stream {
  lame_global_flags* flags = nullptr;
  int channels = 2;
};

namespace {

// A library that is asked to be quiet must not write to the terminal of a headless run.
void say_nothing(const char*, va_list) {}

// LAME's own scale: 0 takes the most care and time, 9 the least.
int number_of(EncoderQuality quality) {
  switch (quality) {
    case EncoderQuality::low:
      return 9;
    case EncoderQuality::high:
      return 2;
    case EncoderQuality::very_high:
      return 0;
    case EncoderQuality::normal:
      break;
  }
  return 5;
}

MPEG_mode mode_of(EncoderChannels mode) {
  switch (mode) {
    case EncoderChannels::one:
      return MONO;
    case EncoderChannels::two:
      return STEREO;
    case EncoderChannels::joint:
      break;
  }
  return JOINT_STEREO;
}

vbr_mode vbr_mode_of(BitrateMethod method) {
  switch (method) {
    case BitrateMethod::average:
      return vbr_abr;
    case BitrateMethod::variable:
      return vbr_mtrh;
    case BitrateMethod::old_variable:
      return vbr_rh;
    case BitrateMethod::constant:
      break;
  }
  return vbr_off;
}

int room_in(std::span<const std::uint8_t> out) {
  return static_cast<int>(std::min<std::size_t>(out.size(), INT_MAX));
}

std::size_t bytes_got(int result) { return result < 0 ? 0 : static_cast<std::size_t>(result); }

}  // namespace

Mp3Encoder::Mp3Encoder() = default;
Mp3Encoder::~Mp3Encoder() { close(); }
Mp3Encoder::Mp3Encoder(Mp3Encoder&&) noexcept = default;

// The stream goes while its library is still there.
Mp3Encoder& Mp3Encoder::operator=(Mp3Encoder&& other) noexcept {
  if (this == &other) return *this;
  close();
  stream_ = std::move(other.stream_);
  library_ = std::move(other.library_);
  samples_per_call_ = other.samples_per_call_;
  room_per_call_ = other.room_per_call_;
  header_ = std::move(other.header_);
  return *this;
}

Mp3Encoder::Version Mp3Encoder::version() {
  Library library;
  if (!library.load()) return {};
  lame_version_t version = {};
  library.get_version(&version);
  return {.is_found = true,
          .library_major = static_cast<unsigned>(version.major),
          .library_minor = static_cast<unsigned>(version.minor),
          .engine_major = static_cast<unsigned>(version.psy_major),
          .engine_minor = static_cast<unsigned>(version.psy_minor)};
}

EncoderFault Mp3Encoder::open(const Mp3Form& form) {
  close();
  header_.clear();
  auto library = std::make_unique<Library>();
  if (!library->load()) return EncoderFault::no_library;
  library_ = std::move(library);
  const Library& lame = *library_;
  lame_global_flags* const flags = lame.init();
  if (flags == nullptr) return EncoderFault::no_memory;
  stream_ = std::make_unique<Stream>(Stream{flags, form.mode == EncoderChannels::one ? 1 : 2});

  lame.set_error_function(flags, say_nothing);
  lame.set_message_function(flags, say_nothing);
  lame.set_debug_function(flags, say_nothing);
  lame.set_write_id3tag(flags, 0);
  lame.set_in_samplerate(flags, static_cast<int>(form.samples_per_sec));
  lame.set_out_samplerate(flags, static_cast<int>(form.stream_samples_per_sec));
  lame.set_num_channels(flags, stream_->channels);
  lame.set_mode(flags, mode_of(form.mode));
  lame.set_quality(flags, number_of(form.quality));
  lame.set_original(flags, form.is_original ? 1 : 0);
  lame.set_disable_reservoir(flags, form.separate ? 1 : 0);
  lame.set_write_vbr_tag(flags, form.writes_header ? 1 : 0);
  const vbr_mode method = vbr_mode_of(form.method);
  lame.set_vbr(flags, method);
  lame.set_brate(flags, static_cast<int>(form.bitrate));
  if (method == vbr_abr) {
    lame.set_vbr_mean(flags, static_cast<int>(form.bitrate_average));
  } else if (method != vbr_off) {
    lame.set_vbr_quality(flags, static_cast<int>(form.variable_quality));
    lame.set_vbr_min(flags, static_cast<int>(form.bitrate));
    lame.set_vbr_max(flags, static_cast<int>(form.bitrate_max));
  }
  if (lame.init_params(flags) < 0) {
    close();
    return EncoderFault::refused;
  }
  const auto frame = static_cast<std::uint32_t>(lame.get_framesize(flags));
  samples_per_call_ = frame * static_cast<std::uint32_t>(stream_->channels);
  room_per_call_ = frame * 5 / 4 + 7200;  // what the library may fill with one frame's samples
  return EncoderFault::none;
}

std::size_t Mp3Encoder::encode(std::span<const std::int16_t> pcm, std::span<std::uint8_t> out) {
  if (!is_open()) return 0;
  const auto frames = static_cast<int>(pcm.size() / static_cast<unsigned>(stream_->channels));
  // The library takes its samples by a pointer that it doesn't write through.
  auto* const samples = const_cast<short*>(pcm.data());
  return bytes_got(stream_->channels == 1
                       ? library_->encode_buffer(stream_->flags, samples, samples, frames,
                                                 out.data(), room_in(out))
                       : library_->encode_buffer_interleaved(stream_->flags, samples, frames,
                                                             out.data(), room_in(out)));
}

std::size_t Mp3Encoder::flush(std::span<std::uint8_t> out) {
  return is_open() ? bytes_got(library_->encode_flush(stream_->flags, out.data(), room_in(out)))
                   : 0;
}

void Mp3Encoder::close() {
  if (!is_open()) return;
  constexpr std::size_t longest_frame = 2880;  // bytes
  header_.resize(longest_frame);
  const std::size_t size =
      library_->get_lametag_frame(stream_->flags, header_.data(), longest_frame);
  header_.resize(size <= longest_frame ? size : 0);
  library_->close(stream_->flags);
  stream_.reset();
}

std::error_code Mp3Encoder::write_header(const std::string& path, std::uint64_t offset) const {
  if (header_.empty()) return {};
  OutputFile file;
  if (const std::error_code error = file.open_existing(path)) return error;
  const std::error_code error = file.write_at(offset, header_);
  const std::error_code close_error = file.close();
  return error ? error : close_error;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// libfaad, through its own C interface.
#include "platform/codecs/aac_decoder.h"

#include <neaacdec.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "platform/codecs/dynamic_library.h"

namespace corvelin {

// The functions of the library, all of which must be there.
struct AacDecoder::Library {
  DynamicLibrary library;
  decltype(&::NeAACDecOpen) open = nullptr;
  decltype(&::NeAACDecClose) close = nullptr;
  decltype(&::NeAACDecGetCurrentConfiguration) configuration = nullptr;
  decltype(&::NeAACDecSetConfiguration) set_configuration = nullptr;
  decltype(&::NeAACDecInit) init = nullptr;
  decltype(&::NeAACDecDecode) decode = nullptr;

  std::string load() { return library.load("libfaad.so.2"); }

  bool resolve() {
    return library.resolve(open, "NeAACDecOpen") && library.resolve(close, "NeAACDecClose") &&
           library.resolve(configuration, "NeAACDecGetCurrentConfiguration") &&
           library.resolve(set_configuration, "NeAACDecSetConfiguration") &&
           library.resolve(init, "NeAACDecInit") && library.resolve(decode, "NeAACDecDecode");
  }
};

namespace {

// Two channels of what the library made of a frame.
std::size_t take_pair(const std::int16_t* samples, std::size_t count, std::size_t channels,
                      std::span<std::uint8_t> out) {
  constexpr std::size_t pair_bytes = 2 * sizeof *samples;
  const std::size_t pairs = std::min(count / channels, out.size() / pair_bytes);
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::int16_t* const first = samples + i * channels;
    const std::int16_t pair[] = {first[0], first[channels == 1 ? 0 : 1]};
    std::memcpy(out.data() + i * pair_bytes, pair, pair_bytes);
  }
  return pairs * pair_bytes;
}

// The library changes nothing in its input.
unsigned char* bytes_of(std::span<const std::uint8_t> input) {
  return const_cast<unsigned char*>(input.data());
}

}  // namespace

AacDecoder::AacDecoder() = default;
AacDecoder::~AacDecoder() { close(); }

DecoderOpening AacDecoder::open(std::uint32_t sample_rate) {
  close();
  auto library = std::make_unique<Library>();
  if (std::string reason = library->load(); !reason.empty())
    return {DecoderFault::no_library, std::move(reason)};
  if (!library->resolve()) return {DecoderFault::no_library, {}};
  faad_ = std::move(library);
  return {configure(sample_rate) ? DecoderFault::none : DecoderFault::refused, {}};
}

bool AacDecoder::configure(std::uint32_t sample_rate) {
  handle_ = faad_->open();
  if (handle_ == nullptr) return false;
  NeAACDecConfiguration* const configuration = faad_->configuration(handle_);
  configuration->defSampleRate = sample_rate;
  configuration->outputFormat = FAAD_FMT_16BIT;
  configuration->downMatrix = 1;
  return faad_->set_configuration(handle_, configuration) != 0;
}

bool AacDecoder::begin(std::span<const std::uint8_t> frame) {
  if (handle_ == nullptr) return false;
  unsigned long rate = 0;
  unsigned char channels = 0;
  return faad_->init(handle_, bytes_of(frame), frame.size(), &rate, &channels) >= 0;
}

bool AacDecoder::feed(std::span<const std::uint8_t> frames) {
  if (handle_ == nullptr) return false;
  queue_.erase(queue_.begin(), queue_.begin() + static_cast<std::ptrdiff_t>(begin_));
  begin_ = 0;
  queue_.insert(queue_.end(), frames.begin(), frames.end());
  return true;
}

FrameDecoder::Step AacDecoder::take(std::span<std::uint8_t> out, std::size_t& done) {
  done = 0;
  if (handle_ == nullptr) return Step::failed;
  const std::span<const std::uint8_t> ahead = std::span(queue_).subspan(begin_);
  if (ahead.empty()) return Step::needs_input;
  NeAACDecFrameInfo info = {};
  const void* const samples = faad_->decode(handle_, &info, bytes_of(ahead), ahead.size());
  if (info.error != 0) {
    reset();
    return Step::failed;
  }
  if (samples != nullptr && info.samples != 0 && info.channels != 0)
    done = take_pair(static_cast<const std::int16_t*>(samples), info.samples, info.channels, out);
  begin_ += info.bytesconsumed;
  if (info.bytesconsumed == 0 || begin_ > queue_.size()) reset();  // it makes nothing of the rest
  return Step::produced;
}

void AacDecoder::reset() {
  queue_.clear();
  begin_ = 0;
}

void AacDecoder::close() {
  if (handle_ != nullptr) faad_->close(std::exchange(handle_, nullptr));
}

}  // namespace corvelin

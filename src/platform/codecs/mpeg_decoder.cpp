// SPDX-License-Identifier: GPL-2.0-or-later
// libmpg123, fed frame by frame.
#include "platform/codecs/mpeg_decoder.h"

#include <mpg123.h>

#include <algorithm>
#include <utility>

#include "platform/codecs/dynamic_library.h"

namespace corvelin {

// The functions of the library, all of which must be there.
struct MpegDecoder::Library {
  DynamicLibrary library;
  decltype(&mpg123_init) init = nullptr;
  decltype(&mpg123_new) create = nullptr;
  decltype(&mpg123_delete) destroy = nullptr;
  decltype(&mpg123_param2) set = nullptr;
  decltype(&mpg123_format_none) no_formats = nullptr;
  decltype(&mpg123_format2) add_format = nullptr;
  decltype(&mpg123_open_feed) open_feed = nullptr;
  decltype(&mpg123_feed) feed = nullptr;
  decltype(&mpg123_decode_frame) decode_frame = nullptr;

  std::string load() { return library.load("libmpg123.so.0"); }

  bool resolve() {
    return library.resolve(init, "mpg123_init") && library.resolve(create, "mpg123_new") &&
           library.resolve(destroy, "mpg123_delete") && library.resolve(set, "mpg123_param2") &&
           library.resolve(no_formats, "mpg123_format_none") &&
           library.resolve(add_format, "mpg123_format2") &&
           library.resolve(open_feed, "mpg123_open_feed") && library.resolve(feed, "mpg123_feed") &&
           library.resolve(decode_frame, "mpg123_decode_frame") && init() == MPG123_OK;
  }
};

MpegDecoder::MpegDecoder() = default;
MpegDecoder::~MpegDecoder() { close(); }

bool MpegDecoder::is_available() {
  Library library;
  return library.load().empty() && library.resolve();
}

DecoderOpening MpegDecoder::open(int channels) {
  close();
  auto library = std::make_unique<Library>();
  if (std::string reason = library->load(); !reason.empty())
    return {DecoderFault::no_library, std::move(reason)};
  if (!library->resolve()) return {DecoderFault::no_library, {}};
  mpg123_ = std::move(library);
  channels_ = channels;
  return {begin() ? DecoderFault::none : DecoderFault::refused, {}};
}

void MpegDecoder::reset() {
  if (!mpg123_) return;
  close();
  begin();
}

bool MpegDecoder::begin() {
  handle_ = mpg123_->create(nullptr, nullptr);
  if (handle_ == nullptr) return false;
  // Whole frames are fed, so there is no need to wait for the next one before the first is decoded.
  constexpr long flags = MPG123_QUIET | MPG123_IGNORE_INFOFRAME | MPG123_SKIP_ID3V2 |
                         MPG123_NO_READAHEAD | MPG123_IGNORE_STREAMLENGTH;
  const long channel_flag = channels_ == 1 ? MPG123_MONO_MIX : MPG123_FORCE_STEREO;
  const int channel_set = channels_ == 1 ? MPG123_MONO : MPG123_STEREO;
  constexpr long without_limit = -1;
  const bool is_ready =
      mpg123_->set(handle_, MPG123_FLAGS, flags | channel_flag, 0) == MPG123_OK &&
      mpg123_->set(handle_, MPG123_RESYNC_LIMIT, without_limit, 0) == MPG123_OK &&
      mpg123_->no_formats(handle_) == MPG123_OK &&
      mpg123_->add_format(handle_, 0, channel_set, MPG123_ENC_SIGNED_16) == MPG123_OK &&
      mpg123_->open_feed(handle_) == MPG123_OK;
  if (!is_ready) close();
  return is_ready;
}

void MpegDecoder::close() {
  ready_ = {};
  if (handle_ != nullptr) mpg123_->destroy(std::exchange(handle_, nullptr));
}

bool MpegDecoder::feed(std::span<const std::uint8_t> frames) {
  return handle_ != nullptr && mpg123_->feed(handle_, frames.data(), frames.size()) == MPG123_OK;
}

FrameDecoder::Step MpegDecoder::take(std::span<std::uint8_t> out, std::size_t& done) {
  done = 0;
  if (handle_ == nullptr) return Step::failed;
  if (out.empty()) return Step::needs_input;
  if (ready_.empty()) {
    unsigned char* samples = nullptr;
    std::size_t size = 0;
    int result = MPG123_NEW_FORMAT;
    while (result == MPG123_NEW_FORMAT)  // the frame that brings it is decoded by the next call
      result = mpg123_->decode_frame(handle_, nullptr, &samples, &size);
    if (result == MPG123_NEED_MORE) return Step::needs_input;
    if (result != MPG123_OK) return Step::failed;
    ready_ = {samples, size};
  }
  done = std::min(ready_.size(), out.size());
  std::ranges::copy(ready_.first(done), out.begin());
  ready_ = ready_.subspan(done);
  return Step::produced;
}

}  // namespace corvelin

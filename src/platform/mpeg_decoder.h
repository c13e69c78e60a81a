// Decoding of MPEG audio frames by libmpg123, the ground under `mpglib` and the codec manager. The
// frames are taken as they come: nothing in them is skipped (an Info frame is audio), nothing is
// cut off for gapless play, and bad data costs sound but never ends a session.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

struct mpg123_handle_struct;

namespace corvelin {

/// The library, shared with the decoders that it opened.
class MpegLibrary {
 public:
  bool load();
  void unload() { entries_.reset(); }
  [[nodiscard]] bool is_loaded() const { return entries_ != nullptr; }

 private:
  friend class MpegDecoder;
  struct Entries;

  std::shared_ptr<const Entries> entries_;
};

enum class MpegStep { produced, needs_input, failed };

/// One session of decoding, with memory of the frames before.
class MpegDecoder {
 public:
  MpegDecoder() = default;
  ~MpegDecoder();
  MpegDecoder(const MpegDecoder&) = delete;
  MpegDecoder& operator=(const MpegDecoder&) = delete;

  /// Begins anew. Whatever the frames have, what comes out has `channels` (1 or 2).
  bool open(const MpegLibrary& library, int channels);
  void close();
  [[nodiscard]] bool is_open() const { return handle_ != nullptr; }

  /// Puts whole frames in the queue.
  bool feed(std::span<const std::uint8_t> frames);

  /// Writes the 16-bit samples of at most one frame to `out` and how many bytes to `done`. What has
  /// no room comes with the next call; without any room the queue waits.
  MpegStep next(std::span<std::uint8_t> out, std::size_t& done);

 private:
  std::shared_ptr<const MpegLibrary::Entries> mpg123_;
  mpg123_handle_struct* handle_ = nullptr;
  std::span<const std::uint8_t> ready_;  // of the last frame, in the library's buffer
};

}  // namespace corvelin

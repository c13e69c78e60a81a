// SPDX-License-Identifier: GPL-2.0-or-later
// The MP3 encoder: LAME, looked up when an encoder is opened, so a machine without it only can't
// encode. Owns the stream and, when that is closed, its header frame until it has been written.
// Several encoders work beside each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace corvelin {

enum class EncoderChannels { two, joint, one };

/// How the encoder spends bits: the same for each frame, on average, or as each frame needs.
enum class BitrateMethod { constant, average, variable, old_variable };

/// How much care and time the encoder takes.
enum class EncoderQuality { low, normal, high, very_high };

/// What an encoder is opened with. Bit rates are in kbit/s.
struct Mp3Form {
  std::uint32_t samples_per_sec = 44100;         // Hz, of the samples that come in
  std::uint32_t stream_samples_per_sec = 44100;  // Hz, of the MP3 stream
  EncoderChannels mode = EncoderChannels::joint;
  BitrateMethod method = BitrateMethod::constant;
  std::uint32_t bitrate = 128;  // the lowest one of a variable stream
  std::uint32_t bitrate_max = 128;
  std::uint32_t bitrate_average = 128;
  std::uint32_t variable_quality = 4;  // 0 best to 9 smallest
  EncoderQuality quality = EncoderQuality::normal;
  bool is_original = false;
  bool separate = false;  // no frame borrows room from those before it, so each stands by itself
  bool writes_header = false;  // the first frame holds the place of a VBR/Info header
};

/// Why an encoder can't be opened. The numbers are those by which encoders of MP3 tell it.
enum class EncoderFault {
  none = 0,
  refused = 2,    // the library takes no such rates or modes
  no_memory = 3,  // for a stream
  no_library,     // it isn't there, or lacks an entry
};

class Mp3Encoder {
 public:
  Mp3Encoder();
  ~Mp3Encoder();
  Mp3Encoder(Mp3Encoder&&) noexcept;
  Mp3Encoder& operator=(Mp3Encoder&&) noexcept;

  /// The library's version and that of its engine: "3.100" and "1.0" as four numbers. Nothing but
  /// zeros where it isn't there.
  struct Version {
    bool is_found = false;
    unsigned library_major = 0;
    unsigned library_minor = 0;
    unsigned engine_major = 0;
    unsigned engine_minor = 0;
  };
  static Version version();

  EncoderFault open(const Mp3Form& form);
  [[nodiscard]] bool is_open() const { return stream_ != nullptr; }

  /// How many 16-bit samples, of both channels together, one call of `encode` takes best, and the
  /// bytes that these may come to.
  [[nodiscard]] std::uint32_t samples_per_call() const { return samples_per_call_; }
  [[nodiscard]] std::uint32_t room_per_call() const { return room_per_call_; }

  /// Encodes samples, interleaved where there are two channels, and returns how many bytes of `out`
  /// that is: 0 while the encoder still collects, and after a failure.
  std::size_t encode(std::span<const std::int16_t> pcm, std::span<std::uint8_t> out);

  /// Fetches the last frames, which the encoder holds until it knows that nothing follows.
  std::size_t flush(std::span<std::uint8_t> out);

  /// Closes the stream. Its header frame is kept for `write_header`.
  void close();

  /// Writes the header frame of the stream that was closed last to `offset` of the finished file,
  /// which is where the stream's first frame was put to hold its place. Nothing is written for a
  /// stream without a header.
  [[nodiscard]] std::error_code write_header(const std::string& path, std::uint64_t offset) const;

 private:
  struct Library;
  struct Stream;

  std::unique_ptr<const Library> library_;
  std::unique_ptr<Stream> stream_;
  std::uint32_t samples_per_call_ = 0;
  std::uint32_t room_per_call_ = 0;
  std::vector<std::uint8_t> header_;
};

}  // namespace corvelin

// The MP3 encoder: LAME behind the entry points by which the audio engine knows an encoder library
// (`beInitStream` and its kin). The library is looked up when it is first wanted, so a machine
// without it only can't encode. Owns the stream and, when that is closed, its header frame until it
// has been written.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <system_error>

namespace corvelin {

/// What an encoder stream is opened with. Rates are in hertz, bit rates in kbit/s where their name
/// doesn't say otherwise.
struct BeConfig {
  std::uint32_t dwSampleRate = 44100;    // of the samples that come in
  std::uint32_t dwReSampleRate = 44100;  // of the MP3 stream
  std::uint32_t nMode = 1;               // 0 stereo, 1 joint stereo, 3 mono
  std::uint32_t dwBitrate = 128;         // the lowest one in VBR
  std::uint32_t dwMaxBitrate = 128;
  std::uint32_t nPreset = 0;  // 0 normal quality, 1 low, 2 high, 3 voice, 5 very high
  bool bOriginal = false;
  bool bNoRes = false;  // no frame borrows room from those before it, so that each stands by itself
  bool bWriteVBRHeader = false;
  bool bEnableVBR = false;
  std::uint32_t nVBRQuality = 4;   // 0 best to 9 smallest
  std::uint32_t dwVbrAbr_bps = 0;  // bit/s, the average of an ABR stream
  std::int32_t nVbrMethod = -1;    // -1 CBR, 4 ABR, any other value VBR
};

/// The results of the calls. 0 is success.
enum BeError : std::uint32_t {
  be_successful = 0,
  be_invalid_format = 1,  // the library takes no such rates or modes
  be_invalid_format_parameters = 2,
  be_no_more_handles = 3,  // no memory for a stream
  be_invalid_handle = 4,   // no stream is open
  be_buffer_too_small = 5,
};

struct BeVersion {
  unsigned library_major = 0;
  unsigned library_minor = 0;
  unsigned engine_major = 0;
  unsigned engine_minor = 0;
};

class LameEnc {
 public:
  LameEnc();
  ~LameEnc();
  LameEnc(LameEnc&&) noexcept;
  LameEnc& operator=(LameEnc&&) noexcept;

  /// Looks the library up, unless it is loaded. False when it isn't there or lacks an entry.
  bool load();
  [[nodiscard]] bool is_loaded() const;

  [[nodiscard]] BeVersion beVersion() const;

  [[nodiscard]] bool is_open() const;  // whether a stream is

  /// Opens the stream. `samples` tells how many 16-bit samples, of both channels together, one
  /// `beEncodeChunk` takes best; `mp3_buffer_size` the bytes that a chunk may come to.
  std::uint32_t beInitStream(const BeConfig& config, std::uint32_t& samples,
                             std::uint32_t& mp3_buffer_size);

  /// Encodes samples, interleaved where there are two channels. `out_bytes` tells how much of `out`
  /// is filled: 0 while the encoder still collects, and after a failure.
  std::uint32_t beEncodeChunk(std::span<const std::int16_t> pcm, std::span<std::uint8_t> out,
                              std::uint32_t& out_bytes);

  /// Fetches the last frames, which the encoder holds until it knows that nothing follows.
  std::uint32_t beDeinitStream(std::span<std::uint8_t> out, std::uint32_t& out_bytes);

  /// Closes the stream. Its header frame is kept for `beWriteVBRHeader`.
  std::uint32_t beCloseStream();

  /// Writes the header frame of the stream that was closed last to `offset` of the finished file,
  /// which is where the stream's first frame was put to hold its place. Nothing is written for a
  /// stream without a header.
  std::error_code beWriteVBRHeader(const std::string& path, std::uint64_t offset);

 private:
  struct Library;
  struct Stream;
  std::unique_ptr<Library> library_;
  std::unique_ptr<Stream> stream_;
};

}  // namespace corvelin

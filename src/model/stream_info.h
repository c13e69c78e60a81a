// SPDX-License-Identifier: GPL-2.0-or-later
// What is known of the open stream beside its parts: the summary that the probe made of the first
// source file, the kind of all its frames, and the header bits that a save gives them. Refusals,
// grey states, codecs and headers go by the kind, which stays the same for the document's life.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "frames/frame_header.h"

namespace corvelin {

/// The values of `StreamInfo::vbr`. Anything but `constant` means a variable bitrate.
enum VbrState : std::uint8_t {
  vbr_constant = 0,
  vbr_seen = 1,        // a change of bitrate was seen in the frames
  vbr_header = 2,      // a "Xing" header was read
  vbr_toc_usable = 4,  // bit value: and it had a seek table
};

constexpr std::uint8_t no_xing_quality = 255;  // there is no header, or it tells none

/// An ID3v1 tag, or what stands at a file's end in its place.
using Id3v1Record = std::array<std::uint8_t, 128>;

/// The summary of the open stream.
struct StreamInfo {
  std::uint32_t xing_frames = 0;  // frame count of a VBR/Info header, 0 if none
  /// `toc[i]` is the place, in 1/256 of the audio size, of the point at `i` per cent of the time.
  std::array<std::uint8_t, 100> toc = {};
  std::uint8_t xing_quality = no_xing_quality;  // low byte of the header's quality
  /// The 28 bytes behind a VBR/Info header that its encoder signed; the rest is zero.
  std::array<std::uint8_t, 40> encoder_tag = {};
  std::uint32_t first_audio = 0;  // file offset of the first audio frame
  std::uint32_t audio_end = 0;    // file offset behind the audio as the probe found it
  std::uint32_t id3v2_size = 0;  // bytes of the tag at the file's start, header included; 0 if none
  Id3v1Record id3v1 = {};        // the file's last 128 bytes, tag or not
  std::uint8_t vbr = vbr_constant;
  std::uint32_t is_aac = 0;           // 1: ADTS, by the extension of the first file's name
  std::uint32_t has_info_header = 0;  // the file starts with an "Info" header
  float avg_bitrate = 0;              // bits per second
  float avg_frame_size = 0;           // bytes
  std::uint32_t ape_size = 0;         // bytes of the APE tag cut off the audio's end, 0 if none
};

/// How the headers of the stream's frames are read.
FrameFormat frame_format(const StreamInfo& stream);

/// Makes the stream a variable one when the bitrate of a frame that was added to it is another than
/// the average, by more than 2 kbit/s.
void take_in_bitrate(StreamInfo& stream, const FrameInfo& frame);

/// What all frames of a document have in common; only their bitrates and lengths may differ. Fixed
/// by the probe, after the first frame of the stream. The fields are those of `FrameInfo`.
struct StreamKind {
  std::uint8_t version = 0;  // 0 without a document
  std::uint8_t layer = 0;    // 2 or 3; 0 for ADTS
  std::uint32_t sample_rate = 0;
  std::uint8_t channel_mode = 0;
  std::uint8_t channels = 0;
  bool has_crc = false;

  bool operator==(const StreamKind&) const = default;
};

/// The header bits that the user wants written, while `rewrite_header` is set.
struct HeaderRewrite {
  bool rewrite_header = false;
  std::uint32_t rewrite_copyright = 0;  // 0 or 1 each
  std::uint32_t rewrite_original = 0;
  std::uint32_t rewrite_private = 0;
  bool operator==(const HeaderRewrite&) const = default;
};

StreamKind kind_of(const FrameInfo& frame);

/// "MPEG 1 Layer III, 44100 Hz, joint stereo, CRC: no".
std::string text_of(const StreamKind& kind);

}  // namespace corvelin

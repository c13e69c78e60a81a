// SPDX-License-Identifier: GPL-2.0-or-later
// Where the fields of a VBR/Info header stand in its frame, counted from the marker "Xing" or
// "Info" on. The form is the one that decoders commonly read; there is no standard of it. Numbers
// are big-endian.
#pragma once

#include <cstddef>
#include <cstdint>

namespace corvelin {

constexpr std::size_t vbr_flags_place = 4;      // 4 bytes
constexpr std::size_t vbr_frames_place = 8;     // 4 bytes, without this frame
constexpr std::size_t vbr_bytes_place = 12;     // 4 bytes, from this frame on
constexpr std::size_t vbr_toc_place = 16;       // 100 bytes
constexpr std::size_t vbr_quality_place = 119;  // the low byte of four
constexpr std::size_t vbr_tag_place = 120;      // the encoder's own data
constexpr std::size_t vbr_tag_size = 28;
constexpr std::size_t vbr_tag_length_place = 28;  // in the tag: bytes of the audio
constexpr std::size_t vbr_kept_tag_size = 32;     // the tag with that length
constexpr std::size_t vbr_header_size = 156;

// Bits of the flags.
constexpr std::uint32_t vbr_has_frames = 1;
constexpr std::uint32_t vbr_has_bytes = 2;
constexpr std::uint32_t vbr_has_toc = 4;
constexpr std::uint32_t vbr_has_quality = 8;

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// How much of a file's two ends is tags and not audio: ID3v2 in front (id3.org, ID3v2 3.1), ID3v1
// and APE (APEv2 footer) behind. Tags are measured here, not read.
#pragma once

#include <cstdint>

#include "platform/files/file.h"

namespace corvelin {

constexpr std::uint32_t id3v1_size = 128;  // bytes

/// Bytes of the ID3v2 tag at the file's start, its header included and a footer not; 0 without a
/// tag.
///
/// A size byte counts whole, its top bit too, as some writers fill it; so the result can be
/// larger than the file.
std::uint32_t id3v2_tag_size(const InputFile& file);

/// Bytes of the tag that begins at `offset`, which may be anywhere in a file that was put together
/// of others: ID3v1, ID3v2, or APE with its header. 0 without one. The size is the tag's own word.
std::uint32_t tag_size_at(const InputFile& file, std::uint64_t offset);

/// Bytes of the APE tag that ends at `audio_end`; 0 without one.
///
/// Sizes are kept in 16 bits and wrap, so of a larger tag only the rest modulo 65536 is known. A
/// tag that would begin before the file is not believed, and only its footer of 32 bytes counts.
std::uint32_t ape_tag_size(const InputFile& file, std::uint32_t audio_end);

}  // namespace corvelin

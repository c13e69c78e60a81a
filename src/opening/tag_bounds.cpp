// SPDX-License-Identifier: GPL-2.0-or-later
// Measuring of tags.
#include "opening/tag_bounds.h"

#include <array>
#include <span>

#include "platform/text/bytes.h"

namespace corvelin {

namespace {

std::uint32_t id3v2_size(std::span<const std::uint8_t> head) {
  constexpr std::uint32_t tag_header_size = 10;
  return tag_header_size + (std::uint32_t{head[6]} << 21) + (std::uint32_t{head[7]} << 14) +
         (std::uint32_t{head[8]} << 7) + head[9];
}

}  // namespace

std::uint32_t id3v2_tag_size(const InputFile& file) {
  std::array<std::uint8_t, 20> head = {};
  file.read_at(0, head);
  return stands_at(head, 0, "ID3") ? id3v2_size(head) : 0;
}

std::uint32_t tag_size_at(const InputFile& file, std::uint64_t offset) {
  constexpr std::uint32_t ape_header_size = 32;
  std::array<std::uint8_t, ape_header_size> head = {};
  if (file.read_at(offset, head) < head.size()) return 0;
  if (stands_at(head, 0, "TAG")) return id3v1_size;
  if (stands_at(head, 0, "ID3")) return id3v2_size(head);
  if (stands_at(head, 0, "APETAGEX")) return ape_header_size + little_endian_u32(head, 12);
  return 0;
}

std::uint32_t ape_tag_size(const InputFile& file, std::uint32_t audio_end) {
  constexpr std::uint32_t footer_size = 32;
  constexpr std::uint8_t has_header = 0x80;  // in byte 23, the top of the flags
  if (audio_end < footer_size) return 0;
  std::array<std::uint8_t, footer_size> footer = {};
  file.read_at(audio_end - footer_size, footer);
  if (!stands_at(footer, 0, "APETAGEX")) return 0;
  std::uint32_t size = little_endian_u32(footer, 12);
  if ((footer[23] & has_header) != 0) size += footer_size;
  const auto kept = static_cast<std::uint16_t>(size);  // wraps
  return kept <= audio_end ? kept : footer_size;
}

}  // namespace corvelin

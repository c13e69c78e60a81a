// SPDX-License-Identifier: GPL-2.0-or-later
// Reading and writing of numbers and marks in byte blocks. Callers have made sure that the bytes
// are there, but for `stands_at`, which looks itself.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace corvelin {

inline std::uint32_t big_endian_u32(std::span<const std::uint8_t> bytes, std::size_t at) {
  return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
         std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

inline std::uint32_t little_endian_u32(std::span<const std::uint8_t> bytes, std::size_t at) {
  return std::uint32_t{bytes[at + 3]} << 24 | std::uint32_t{bytes[at + 2]} << 16 |
         std::uint32_t{bytes[at + 1]} << 8 | bytes[at];
}

inline void put_big_endian_u32(std::span<std::uint8_t> bytes, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i)
    bytes[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

/// Whether the letters of `mark` stand at `at`.
inline bool stands_at(std::span<const std::uint8_t> bytes, std::size_t at, std::string_view mark) {
  if (at > bytes.size() || mark.size() > bytes.size() - at) return false;
  return std::equal(
      mark.begin(), mark.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
      [](char letter, std::uint8_t byte) { return static_cast<std::uint8_t>(letter) == byte; });
}

inline void put_mark(std::span<std::uint8_t> bytes, std::size_t at, std::string_view mark) {
  for (std::size_t i = 0; i < mark.size(); ++i) bytes[at + i] = static_cast<std::uint8_t>(mark[i]);
}

}  // namespace corvelin

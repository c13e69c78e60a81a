// SPDX-License-Identifier: GPL-2.0-or-later
// The arithmetic of levels and CRCs in frames.
#include "frames/frame_gain.h"

#include <algorithm>

namespace corvelin {

namespace {

constexpr std::uint16_t crc_bits = 16;  // of the CRC word between header and side information

// MPEG 1 has two granules of 59 bits a channel, MPEG 2 and 2.5 one of 63 bits a channel.
GainPositions positions_without_crc(const FrameInfo& info) {
  const bool is_mono = info.channel_mode == mono;
  if (info.version == 1) return is_mono ? GainPositions{71, 130} : GainPositions{73, 132, 191, 250};
  return is_mono ? GainPositions{62} : GainPositions{63, 126};
}

// Entry [n][b] is the CRC of the byte b with n zeros behind it. A CRC is linear, so that many
// bytes can be looked up at once, none waiting for the one before. Bit by bit it would be the
// greater part of a save.
constexpr std::size_t bytes_at_once = 16;
using CrcTables = std::array<std::array<std::uint16_t, 256>, bytes_at_once>;

constexpr std::uint16_t crc_of_bits(std::uint16_t crc, unsigned count) {
  constexpr unsigned polynomial = 0x8005;
  unsigned value = crc;
  for (; count > 0; --count) value = value << 1 ^ ((value & 0x8000) != 0 ? polynomial : 0);
  return static_cast<std::uint16_t>(value);
}

constexpr CrcTables make_crc_tables() {
  CrcTables tables = {};
  for (unsigned byte = 0; byte < 256; ++byte) {
    auto crc = static_cast<std::uint16_t>(byte << 8);
    for (auto& table : tables) table[byte] = crc = crc_of_bits(crc, 8);
  }
  return tables;
}

constexpr CrcTables crc_tables = make_crc_tables();

}  // namespace

GainPositions gain_positions(const FrameInfo& info) {
  if (info.layer != 3) return {};
  GainPositions positions = positions_without_crc(info);
  if (info.has_crc == 0) return positions;
  for (std::uint16_t& position : positions)
    if (position != 0) position = static_cast<std::uint16_t>(position + crc_bits);
  return positions;
}

void apply_gain(std::span<std::uint8_t> frame, const GainPositions& positions, int delta) {
  for (const std::uint16_t position : positions) {
    const std::size_t at = position / 8u;
    if (position == 0 || at + 1 >= frame.size()) continue;
    // The field lies across two bytes, its lowest bit `shift` bits up from the end of the second.
    const unsigned shift = 8 - position % 8u;
    const unsigned word = frame[at] * 256u + frame[at + 1];
    const int old_gain = static_cast<int>(word >> shift & 0xFF);
    const auto new_gain = static_cast<unsigned>(std::clamp(old_gain + delta, 0, 255));
    const unsigned changed = (word & ~(0xFFu << shift)) | new_gain << shift;
    frame[at] = static_cast<std::uint8_t>(changed >> 8);
    frame[at + 1] = static_cast<std::uint8_t>(changed);
  }
}

std::uint16_t crc16_step(std::uint16_t crc, std::uint8_t byte) {
  return static_cast<std::uint16_t>(crc << 8 ^ crc_tables[0][crc >> 8 ^ byte]);
}

std::uint16_t crc16(std::uint16_t crc, std::span<const std::uint8_t> bytes) {
  for (; bytes.size() >= bytes_at_once; bytes = bytes.subspan(bytes_at_once)) {
    unsigned next = crc_tables[bytes_at_once - 1][bytes[0] ^ crc >> 8] ^
                    crc_tables[bytes_at_once - 2][bytes[1] ^ (crc & 0xFF)];
    for (std::size_t i = 2; i < bytes_at_once; ++i)
      next ^= crc_tables[bytes_at_once - 1 - i][bytes[i]];
    crc = static_cast<std::uint16_t>(next);
  }
  for (const std::uint8_t byte : bytes) crc = crc16_step(crc, byte);
  return crc;
}

void recompute_frame_crc(std::span<std::uint8_t> frame, const FrameInfo& info) {
  constexpr std::size_t crc_place = 4;
  constexpr std::size_t side_info = 6;
  const std::size_t end = side_info + side_info_size(info);
  if (end > frame.size()) return;
  std::uint16_t crc = crc16(0xFFFF, frame.subspan(2, 2));
  crc = crc16(crc, frame.subspan(side_info, end - side_info));
  frame[crc_place] = static_cast<std::uint8_t>(crc >> 8);
  frame[crc_place + 1] = static_cast<std::uint8_t>(crc);
}

}  // namespace corvelin

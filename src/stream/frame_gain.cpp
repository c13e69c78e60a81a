// The arithmetic of levels and CRCs in frames.
#include "stream/frame_gain.h"

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
  constexpr unsigned polynomial = 0x8005;
  unsigned value = crc;
  unsigned bits = byte * 256u;
  for (int i = 0; i < 8; ++i) {
    const bool differ = ((value ^ bits) & 0x8000) != 0;
    value = value << 1 ^ (differ ? polynomial : 0);
    bits <<= 1;
  }
  return static_cast<std::uint16_t>(value);
}

void recompute_frame_crc(std::span<std::uint8_t> frame, const FrameInfo& info) {
  constexpr std::size_t crc_place = 4;
  constexpr std::size_t side_info = 6;
  const std::size_t end = side_info + side_info_size(info);
  if (end > frame.size()) return;
  std::uint16_t crc = 0xFFFF;
  crc = crc16_step(crc, frame[2]);
  crc = crc16_step(crc, frame[3]);
  for (std::size_t i = side_info; i < end; ++i) crc = crc16_step(crc, frame[i]);
  frame[crc_place] = static_cast<std::uint8_t>(crc >> 8);
  frame[crc_place + 1] = static_cast<std::uint8_t>(crc);
}

}  // namespace corvelin

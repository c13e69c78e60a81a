// SPDX-License-Identifier: GPL-2.0-or-later
// The walk from box to box.
#include "exchange/mp4_boxes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/text/bytes.h"

namespace corvelin {

namespace {

constexpr int most_boxes = 1'000'000;  // more than a film in fragments has

bool holds_audio(std::span<const std::uint8_t> box) {
  return stands_at(box, 4, "mdat") || stands_at(box, 4, "moov") || stands_at(box, 4, "moof");
}

}  // namespace

bool breaks_off(const InputFile& file) {
  const std::uint64_t end = file.facts().size;
  std::uint64_t pos = 0;
  for (int count = 0; count < most_boxes; ++count) {
    std::array<std::uint8_t, 16> box = {};
    const std::size_t got = file.read_at(pos, box);
    if (got < 8) return false;
    std::uint64_t size = big_endian_u32(box, 0);
    if (size == 1) size = std::uint64_t{big_endian_u32(box, 8)} << 32 | big_endian_u32(box, 12);
    if (size > end - pos) return holds_audio(box);
    if (size < 8) return false;  // 0 is up to the file's end
    pos += size;
  }
  return false;
}

}  // namespace corvelin

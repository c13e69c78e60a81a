// SPDX-License-Identifier: GPL-2.0-or-later
// Sums over the parts.
#include "model/exact_time.h"

#include <algorithm>
#include <cmath>

#include "model/frame_walk.h"

namespace corvelin {

namespace {

const FrameIndex& index_of(const Document& document, const Part& part) {
  const SourceFile& file = document.files[part.part_file];
  return file.index.of(*file.handle, frame_format(document.stream), file.first_audio,
                       file.audio_end);
}

// What the first `bytes` of a part take.
std::uint64_t ticks_in(const Document& document, const Part& part, std::uint32_t bytes) {
  if (bytes == 0) return 0;
  const FrameIndex& index = index_of(document, part);
  const std::uint64_t begin = index.at_offset(part.part_filepos).ticks;
  return std::max(index.at_offset(part.part_filepos + bytes).ticks, begin) - begin;
}

// The first frame of a part that begins `ticks` or more behind its start.
EditPosition place_in_part(const Document& document, const Part& part, std::uint64_t ticks) {
  const FrameIndex& index = index_of(document, part);
  const std::uint64_t begin = index.at_offset(part.part_filepos).ticks;
  const std::uint32_t offset = index.at_ticks(begin + ticks).offset;
  const std::uint32_t bytes = offset - std::min(offset, part.part_filepos);
  return part.part_beg + std::min(bytes, part.part_size);
}

}  // namespace

double exact_seconds(const Document& document, EditPosition pos) {
  std::uint64_t ticks = 0;
  for (const Part& part : document.parts) {
    if (part.part_beg >= pos) break;
    ticks += ticks_in(document, part, std::min(pos - part.part_beg, part.part_size));
  }
  return static_cast<double>(ticks) / static_cast<double>(ticks_per_second);
}

EditPosition exact_place(const Document& document, double seconds) {
  constexpr double allowed = 1e-6;  // seconds
  constexpr double longest = 1e9;
  const double wanted = std::clamp(seconds - allowed, 0.0, longest);
  auto ticks = static_cast<std::uint64_t>(std::ceil(wanted * double{ticks_per_second}));
  for (const Part& part : document.parts) {
    const std::uint64_t length = ticks_in(document, part, part.part_size);
    if (ticks < length) return place_in_part(document, part, ticks);
    ticks -= length;
  }
  return document.total_size;
}

}  // namespace corvelin

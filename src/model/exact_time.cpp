// Sums over the parts.
#include "model/exact_time.h"

#include <algorithm>
#include <cmath>

#include "model/frame_walk.h"

namespace corvelin {

namespace {

FrameIndex& index_of(SourceFile& file) {
  if (!file.index.is_built()) file.index.build(file.handle, file.first_audio, file.audio_end);
  return file.index;
}

IndexPlace place_in_file(const Part& part, std::uint32_t bytes_of_part) {
  SourceFile& file = document.files[part.part_file];
  return index_of(file).at_offset(file.handle, part.part_filepos + bytes_of_part);
}

// What the first `bytes` of a part take.
std::uint64_t ticks_in(const Part& part, std::uint32_t bytes) {
  if (bytes == 0) return 0;
  const std::uint64_t begin = place_in_file(part, 0).ticks;
  return std::max(place_in_file(part, bytes).ticks, begin) - begin;
}

// The first frame of a part that begins `ticks` or more behind its start.
EditPosition place_in_part(const Part& part, std::uint64_t ticks) {
  SourceFile& file = document.files[part.part_file];
  const std::uint64_t begin = place_in_file(part, 0).ticks;
  const std::uint32_t offset = index_of(file).at_ticks(file.handle, begin + ticks).offset;
  const std::uint32_t bytes = offset - std::min(offset, part.part_filepos);
  return part.part_beg + std::min(bytes, part.part_size);
}

}  // namespace

double exact_seconds(EditPosition pos) {
  std::uint64_t ticks = 0;
  for (const Part& part : document.parts) {
    if (part.part_beg >= pos) break;
    ticks += ticks_in(part, std::min(pos - part.part_beg, part.part_size));
  }
  return static_cast<double>(ticks) / static_cast<double>(ticks_per_second);
}

EditPosition exact_place(double seconds) {
  constexpr double allowed = 1e-6;  // seconds
  constexpr double longest = 1e9;
  const double wanted = std::clamp(seconds - allowed, 0.0, longest);
  auto ticks = static_cast<std::uint64_t>(std::ceil(wanted * double{ticks_per_second}));
  for (const Part& part : document.parts) {
    const std::uint64_t length = ticks_in(part, part.part_size);
    if (ticks < length) return place_in_part(part, ticks);
    ticks -= length;
  }
  return document.total_size;
}

}  // namespace corvelin

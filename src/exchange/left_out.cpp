// SPDX-License-Identifier: GPL-2.0-or-later
// The sum of what was left out.
#include "exchange/left_out.h"

#include <fmt/format.h>

#include <algorithm>

#include "model/document.h"
#include "model/exact_time.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "opening/tag_bounds.h"
#include "platform/text/numbers.h"

namespace corvelin {

namespace {

double bytes_a_second(const Document& document) {
  return std::max(double{document.stream.avg_bitrate}, 8.0) / 8;
}

double usual_loss(const Document& document) {
  return std::max(bytes_a_second(document) / 10, double{document.stream.avg_frame_size} * 2);
}

bool is_at_joint(const Document& document, EditPosition begin, EditPosition end) {
  return begin == 0 || end >= document.total_size ||
         part_at(document, begin - 1) != part_at(document, end);
}

// Up to `end`, in bytes.
std::uint32_t tags_at(const Document& document, EditPosition begin, EditPosition end) {
  const PartIndex part = part_at(document, begin);
  const InputFile& file = *document.files[document.parts[part].part_file].handle;
  EditPosition pos = begin;
  while (pos < end) {
    const std::uint32_t size = tag_size_at(file, file_pos_of(document, part, pos));
    if (size == 0) break;
    pos += std::min(size, end - pos);
  }
  return pos - begin;
}

}  // namespace

void LeftOut::add(const Document& document, EditPosition begin, EditPosition end,
                  std::uint32_t frame_length) {
  if (begin >= end) return;
  if (begin != end_) {
    settle(document);
    begin_ = begin;
  }
  end_ = end;
  frame_length_ = frame_length;
}

void LeftOut::settle(const Document& document) {
  if (begin_ >= end_) return;
  const std::uint32_t bytes = end_ - begin_ - tags_at(document, begin_, end_);
  const bool is_usual = is_at_joint(document, begin_, end_) &&
                        bytes <= std::max(usual_loss(document), static_cast<double>(frame_length_));
  if (bytes != 0 && !is_usual) {
    missing_ += bytes;
    first_ = std::min(first_, begin_);
  }
  begin_ = end_;
}

std::string LeftOut::text(const Document& document) {
  settle(document);
  if (static_cast<double>(missing_) <= usual_loss(document)) return {};
  constexpr double milliseconds = 1000;
  const std::uint32_t place = whole_part(exact_seconds(document, first_) * milliseconds);
  return fmt::format("{:.1f} seconds are missing, the first of them at {}.",
                     static_cast<double>(missing_) / bytes_a_second(document),
                     format_time(place, 8 * milliseconds));
}

}  // namespace corvelin

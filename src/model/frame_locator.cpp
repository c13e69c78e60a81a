// SPDX-License-Identifier: GPL-2.0-or-later
// The search for frames.
#include "model/frame_locator.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "frames/frame_header.h"

namespace corvelin {

namespace {

constexpr std::size_t first_look_size = 2048;  // holds an MPEG frame and the next header

bool is_other_rate(const FrameInfo& frame, std::uint32_t rate_before) {
  return rate_before != any_sample_rate && frame.sample_rate != rate_before;
}

// Most searches begin at a frame, and then the first part of the block tells the same as the whole.
std::optional<FrameInfo> frame_at_start(std::span<const std::uint8_t> block, FrameFormat format,
                                        std::uint32_t rate_before) {
  FrameInfo frame;
  const bool is_frame = has_sync(block, 0) && decode_frame_header(frame, block, format) &&
                        is_followed(block, 0, frame.frame_length) &&
                        !is_other_rate(frame, rate_before);
  return is_frame ? std::optional(frame) : std::nullopt;
}

// Where a search in vain ends, which has come to `searched_to`.
EditPosition end_of_search(const Document& document, PartIndex part, EditPosition searched_to,
                           bool is_file_end) {
  if (is_file_end) {
    const PartIndex reached = part_at(document, searched_to);
    return reached > part ? document.parts[reached].part_beg : no_position;
  }
  return searched_to >= part_end(document, part) ? part_end(document, part) : no_position;
}

EditPosition remember(const FramePlace& place, FrameInfo& last_found) {
  if (place.frame.version != 0) last_found = place.frame;
  return place.pos;
}

}  // namespace

std::optional<FramePlace> find_frame_in_block(std::span<const std::uint8_t> block,
                                              std::size_t usable, FrameFormat format,
                                              std::uint32_t rate_before) {
  const auto seen = block.first(std::min<std::size_t>(block.size(), search_block_size));
  for (std::size_t i = find_sync(block, 0, usable); i < usable;
       i = find_sync(block, i + 1, usable)) {
    FrameInfo frame;
    if (!decode_frame_header(frame, block.subspan(i), format)) continue;
    const FramePlace place = {.pos = static_cast<EditPosition>(i), .frame = frame};
    if (!is_followed(seen, i, frame.frame_length)) {
      // The last frame of a file has nothing behind it. Its length alone lets it pass, when that is
      // all that is left: so a search that begins at its first byte finds it.
      if (frame.frame_length == usable) return place;
    } else if (is_other_rate(frame, rate_before)) {
      rate_before = frame.sample_rate;
    } else {
      return place;
    }
  }
  return std::nullopt;
}

FramePlace find_frame(const Document& document, PartIndex part, EditPosition pos,
                      std::uint32_t rate_before) {
  if (part >= document.parts.size()) return {};
  if (document.parts[part].part_file >= document.files.size()) return {};
  const SourceFile& file = document.files[document.parts[part].part_file];
  if (pos > highest_position) pos = 0;
  if (pos >= document.total_size) return {.pos = document.total_size};

  const std::uint32_t offset = file_pos_of(document, part, pos);
  const std::uint32_t audio_left = file.audio_end > offset ? file.audio_end - offset : 0;
  const FrameFormat format = frame_format(document.stream);
  std::array<std::uint8_t, search_read_size> buffer;  // filled as far as it is looked at
  const std::span<std::uint8_t> block(buffer);
  std::size_t got = file.handle->read_at(offset, block.first(first_look_size));
  if (got == first_look_size) {
    if (audio_left > 0) {
      const auto frame = frame_at_start(block.first(got), format, rate_before);
      if (frame) return {.pos = pos, .frame = *frame};
    }
    got += file.handle->read_at(offset + std::uint64_t{first_look_size},
                                block.subspan(first_look_size));
  }

  const std::uint32_t in_block = std::min(static_cast<std::uint32_t>(got), search_block_size);
  const std::uint32_t usable = std::min(in_block, audio_left);
  const auto found = find_frame_in_block(block.first(got), usable, format, rate_before);
  if (found) return {.pos = pos + found->pos, .frame = found->frame};
  const bool is_file_end = offset + std::uint64_t{usable} >= file.audio_end;
  return {.pos = end_of_search(document, part, pos + usable, is_file_end)};
}

FramePlace find_frame_forward(const Document& document, PartIndex part, EditPosition pos,
                              std::uint32_t rate_before) {
  constexpr int most_blocks = 1000;
  for (int i = 0; i < most_blocks; ++i, pos += search_block_size) {
    const FramePlace found = find_frame(document, part, pos, rate_before);
    if (found.pos != no_position) return found;
  }
  return {};
}

EditPosition locate_frame(const Document& document, PartIndex part, EditPosition pos,
                          FrameInfo& last_found) {
  return remember(find_frame(document, part, pos, last_found.sample_rate), last_found);
}

EditPosition frame_at(const Document& document, EditPosition pos, FrameInfo& last_found) {
  return locate_frame(document, part_at(document, pos), pos, last_found);
}

EditPosition next_frame_in(const Document& document, PartIndex part, EditPosition frame,
                           FrameInfo& last_found) {
  constexpr std::uint32_t step = 8;  // bytes: no frame is shorter
  const FramePlace here = find_frame(document, part, frame);
  if (here.pos == frame && here.frame.version != 0) {
    // The last frame of a file is only found by a search that begins at it.
    const EditPosition end = frame + here.frame.frame_length;
    const FramePlace next = find_frame(document, part, end, last_found.sample_rate);
    if (next.pos == end && next.frame.version != 0) return remember(next, last_found);
  }
  return locate_frame(document, part, frame + step, last_found);
}

EditPosition frame_before(const Document& document, EditPosition pos, FrameInfo& last_found) {
  constexpr std::uint32_t way_back = 2 * frame_unit;
  // Wraps near the start, which searches from 0.
  EditPosition frame = frame_at(document, pos - way_back, last_found);
  if (frame == no_position) return pos;
  for (EditPosition next = frame; next < pos;
       next = next_frame_in(document, part_at(document, frame), frame, last_found))
    frame = next;
  return frame;
}

EditPosition scan_forward(const Document& document, PartIndex part, EditPosition pos,
                          FrameInfo& last_found) {
  return remember(find_frame_forward(document, part, pos, last_found.sample_rate), last_found);
}

}  // namespace corvelin

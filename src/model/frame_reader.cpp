// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of frames in edited order.
#include "model/frame_reader.h"

#include <algorithm>

#include "frames/frame_gain.h"
#include "model/fade.h"
#include "model/frame_locator.h"

namespace corvelin {

namespace {

constexpr std::uint32_t beyond_part = longest_adts_frame + 1;  // bytes, more than any frame has

void put_bit(std::uint8_t& byte, unsigned bit, std::uint32_t value) {
  const unsigned mask = 1u << bit;
  byte = static_cast<std::uint8_t>(value != 0 ? byte | mask : byte & ~mask);
}

void rewrite_header_bits(const HeaderRewrite& bits, std::span<std::uint8_t> frame) {
  put_bit(frame[3], 3, bits.rewrite_copyright);
  put_bit(frame[3], 2, bits.rewrite_original);
  put_bit(frame[2], 0, bits.rewrite_private);
}

// Levels lie in Layer III alone, the header bits in every MPEG frame. An AAC frame has other things
// in these places and is left as it is.
void apply_edits(const Document& document, std::span<std::uint8_t> frame, const FrameInfo& info,
                 EditPosition pos, PartIndex part) {
  const bool changes_level = info.layer == 3 && part_has_gain(document, part);
  const bool changes_header = info.layer != 0 && document.header_rewrite.rewrite_header;
  if (changes_level) apply_gain(frame, gain_positions(info), gain_at(document, pos, part));
  if (changes_header) rewrite_header_bits(document.header_rewrite, frame);
  if ((changes_level || changes_header) && info.has_crc != 0 && info.layer == 3)
    recompute_frame_crc(frame, info);
}

void go_to_next_part(const Document& document, FrameCursor& cursor) {
  const std::size_t next = cursor.part + std::size_t{1};
  if (next < document.parts.size()) {
    cursor.part = static_cast<PartIndex>(next);
    cursor.pos = document.parts[next].part_beg;
  } else {
    cursor.pos = document.total_size;
  }
}

// Moves to the next true frame, or to the end of the stream when there is none in reach.
void resync(const Document& document, FrameCursor& cursor) {
  const FramePlace found =
      find_frame_forward(document, cursor.part, cursor.pos, cursor.frame.sample_rate);
  if (found.frame.version != 0) cursor.frame = found.frame;
  cursor.pos = std::min(found.pos, document.total_size);
  if (found.pos != no_position) cursor.part = part_at(document, cursor.pos);
}

}  // namespace

FrameCursor frame_cursor_at(const Document& document, EditPosition pos) {
  return {.pos = pos, .part = part_at(document, pos)};
}

FrameCursor edit_cursor(const Document& document, const Selection& selection) {
  return {.pos = selection.cursor, .part = document.current_part, .frame = selection.current_frame};
}

void put_edit_cursor(Document& document, Selection& selection, const FrameCursor& place) {
  selection.cursor = place.pos;
  document.current_part = place.part;
  selection.current_frame = place.frame;
}

FramesRead read_frames(const Document& document, std::span<std::uint8_t> block, FrameCursor& cursor,
                       EditPosition end, std::uint32_t max_frames) {
  FramesRead read;
  if (cursor.part >= document.parts.size()) return read;
  const EditPosition this_end = part_end(document, cursor.part);
  if (cursor.pos < document.parts[cursor.part].part_beg || cursor.pos > this_end) return read;
  // No further behind the part's end than it takes to see the frame there.
  const std::size_t in_reach = this_end - cursor.pos + std::size_t{beyond_part};
  const FrameFormat format = frame_format(document.stream);
  const std::size_t wanted =
      std::min({block.size(), std::size_t{max_frames} * longest_frame(format), in_reach});
  const SourceFile& file = document.files[document.parts[cursor.part].part_file];
  const std::size_t got =
      file.handle->read_at(file_pos_of(document, cursor.part, cursor.pos), block.first(wanted));
  block = block.first(got);

  std::size_t& off = read.size;
  while (read.frames < max_frames) {
    const bool may_go_on = off > 0 && got == wanted;  // the block ended here, not the file
    if (may_go_on && off + header_size > got) break;
    if (off + 2 > got) {
      resync(document, cursor);
      break;
    }
    FrameInfo frame;
    const bool is_synced = has_sync(block, off);
    if (!is_synced || !decode_frame_header(frame, block.subspan(off), format)) {
      resync(document, cursor);
      if (!is_synced || off + 4 < got) read.resync_count = 1;
      break;
    }
    if (off + frame.frame_length > got) {
      if (!may_go_on) resync(document, cursor);
      break;
    }
    cursor.frame = frame;
    if (cursor.pos >= end) break;
    if (frame.frame_length > this_end - cursor.pos) {
      go_to_next_part(document, cursor);
      break;
    }
    apply_edits(document, block.subspan(off, frame.frame_length), frame, cursor.pos, cursor.part);
    cursor.pos += frame.frame_length;
    off += frame.frame_length;
    ++read.frames;
    if (cursor.pos >= end) break;
  }
  return read;
}

}  // namespace corvelin

// Reading of frames in edited order.
#include "model/frame_reader.h"

#include <algorithm>

#include "model/fade.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "stream/frame_gain.h"

namespace corvelin {

namespace {

constexpr std::uint32_t beyond_part = longest_adts_frame + 1;  // bytes, more than any frame has

void put_bit(std::uint8_t& byte, unsigned bit, std::uint32_t value) {
  const unsigned mask = 1u << bit;
  byte = static_cast<std::uint8_t>(value != 0 ? byte | mask : byte & ~mask);
}

void rewrite_header_bits(std::span<std::uint8_t> frame) {
  put_bit(frame[3], 3, header_rewrite.rewrite_copyright);
  put_bit(frame[3], 2, header_rewrite.rewrite_original);
  put_bit(frame[2], 0, header_rewrite.rewrite_private);
}

// Levels lie in Layer III alone, the header bits in every MPEG frame. An AAC frame has other things
// in these places and is left as it is.
void apply_edits(std::span<std::uint8_t> frame, const FrameInfo& info, EditPosition pos,
                 PartIndex part) {
  const bool changes_level = info.layer == 3 && part_has_gain(part);
  const bool changes_header = info.layer != 0 && header_rewrite.rewrite_header;
  if (changes_level) apply_gain(frame, gain_positions(info), gain_at(pos, part));
  if (changes_header) rewrite_header_bits(frame);
  if ((changes_level || changes_header) && info.has_crc != 0 && info.layer == 3)
    recompute_frame_crc(frame, info);
}

void go_to_next_part(FrameCursor& cursor) {
  const std::size_t next = cursor.part + std::size_t{1};
  if (next < document.parts.size()) {
    cursor.part = static_cast<PartIndex>(next);
    cursor.pos = document.parts[next].part_beg;
  } else {
    cursor.pos = document.total_size;
  }
}

// Moves to the next true frame, or to the end of the stream when there is none in reach.
void resync(FrameCursor& cursor) {
  const FramePlace found = find_frame_forward(cursor.part, cursor.pos, cursor.frame.sample_rate);
  if (found.frame.version != 0) cursor.frame = found.frame;
  cursor.pos = std::min(found.pos, document.total_size);
  if (found.pos != no_position) cursor.part = part_at(cursor.pos);
}

}  // namespace

HeaderRewrite header_rewrite;
std::array<std::uint8_t, 64000> frame_block;

FrameCursor frame_cursor_at(EditPosition pos) { return {.pos = pos, .part = part_at(pos)}; }

FramesRead read_frames(std::span<std::uint8_t> block, FrameCursor& cursor, EditPosition end,
                       std::uint32_t max_frames) {
  FramesRead read;
  if (cursor.part >= document.parts.size()) return read;
  const EditPosition this_end = part_end(cursor.part);
  if (cursor.pos < document.parts[cursor.part].part_beg || cursor.pos > this_end) return read;
  // No further behind the part's end than it takes to see the frame there.
  const std::size_t in_reach = this_end - cursor.pos + std::size_t{beyond_part};
  const FrameFormat format = frame_format();
  const std::size_t wanted =
      std::min({block.size(), std::size_t{max_frames} * longest_frame(format), in_reach});
  const SourceFile& file = document.files[document.parts[cursor.part].part_file];
  const std::size_t got =
      file.handle.read_at(file_pos_of(cursor.part, cursor.pos), block.first(wanted));
  block = block.first(got);

  std::size_t& off = read.size;
  while (read.frames < max_frames) {
    const bool may_go_on = off > 0 && got == wanted;  // the block ended here, not the file
    if (may_go_on && off + header_size > got) break;
    if (off + 2 > got) {
      resync(cursor);
      break;
    }
    FrameInfo frame;
    const bool is_synced = has_sync(block, off);
    if (!is_synced || !decode_frame_header(frame, block.subspan(off), format)) {
      resync(cursor);
      if (!is_synced || off + 4 < got) read.resync_count = 1;
      break;
    }
    if (off + frame.frame_length > got) {
      if (!may_go_on) resync(cursor);
      break;
    }
    cursor.frame = frame;
    if (cursor.pos >= end) break;
    if (frame.frame_length > this_end - cursor.pos) {
      go_to_next_part(cursor);
      break;
    }
    apply_edits(block.subspan(off, frame.frame_length), frame, cursor.pos, cursor.part);
    cursor.pos += frame.frame_length;
    off += frame.frame_length;
    ++read.frames;
    if (cursor.pos >= end) break;
  }
  return read;
}

FramesRead read_frames_at_edit_cursor(std::span<std::uint8_t> block, EditPosition end,
                                      std::uint32_t max_frames) {
  FrameCursor cursor = {
      .pos = selection.cursor, .part = document.current_part, .frame = stream.current_frame};
  const FramesRead read = read_frames(block, cursor, end, max_frames);
  selection.cursor = cursor.pos;
  ++selection_revision;
  document.current_part = cursor.part;
  stream.current_frame = cursor.frame;
  return read;
}

}  // namespace corvelin

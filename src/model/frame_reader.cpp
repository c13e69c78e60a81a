// Reading of frames in edited order.
#include "model/frame_reader.h"

#include <algorithm>

#include "model/fade.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "stream/frame_gain.h"

namespace corvelin {

namespace {

constexpr std::uint32_t beyond_part = 8192;  // bytes, more than any frame has

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

void go_to_next_part(EditPosition& pos, PartIndex& part) {
  const std::size_t next = part + std::size_t{1};
  if (next < document.parts.size()) {
    part = static_cast<PartIndex>(next);
    pos = document.parts[next].part_beg;
  } else {
    pos = document.total_size;
  }
}

}  // namespace

HeaderRewrite header_rewrite;
std::uint16_t resync_count = 0;
std::array<std::uint8_t, 64000> frame_block;

void resync(EditPosition& pos, PartIndex& part) {
  const EditPosition frame = scan_forward(part, pos);
  if (frame == no_position) {
    pos = document.total_size;
    return;
  }
  pos = frame;
  part = part_at(pos);
}

std::size_t read_frames(std::span<std::uint8_t> dest, std::uint32_t max_frames, EditPosition& pos,
                        PartIndex& part, std::uint32_t* frames_out, EditPosition end) {
  if (part >= document.parts.size() || pos < document.parts[part].part_beg || pos > part_end(part))
    return 0;
  // No further behind the part's end than it takes to see the frame there.
  const std::size_t in_reach = part_end(part) - pos + std::size_t{beyond_part};
  const std::size_t wanted =
      std::min({dest.size(), std::size_t{max_frames} * frame_unit, in_reach});
  const SourceFile& file = document.files[document.parts[part].part_file];
  const std::size_t got = file.handle.read_at(file_pos_of(part, pos), dest.first(wanted));
  const std::span<std::uint8_t> block = dest.first(got);

  std::size_t off = 0;
  for (std::uint32_t round = 0; round < max_frames; ++round) {
    const bool may_go_on = off > 0 && got == wanted;  // the block ended here, not the file
    if (may_go_on && off + header_size > got) break;
    if (off + 2 > got) {
      resync(pos, part);
      break;
    }
    if (!has_sync(block, off)) {
      resync(pos, part);
      ++resync_count;
      break;
    }
    FrameInfo info;
    if (!decode_frame_header(info, block.subspan(off), frame_format())) {
      resync(pos, part);
      if (off + 4 < got) ++resync_count;
      break;
    }
    if (off + info.frame_length > got) {
      if (!may_go_on) resync(pos, part);
      break;
    }
    stream.current_frame = info;
    if (pos >= end) break;
    if (info.frame_length > part_end(part) - pos) {
      go_to_next_part(pos, part);
      break;
    }
    apply_edits(block.subspan(off, info.frame_length), info, pos, part);
    pos += info.frame_length;
    off += info.frame_length;
    if (frames_out != nullptr) ++*frames_out;
    if (pos >= end) break;
  }
  return off;
}

}  // namespace corvelin

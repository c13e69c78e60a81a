// The search for frames.
#include "model/frame_locator.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "stream/frame_header.h"

namespace corvelin {

namespace {

constexpr std::size_t first_look_size = 2048;  // holds an MPEG frame and the next header

std::array<std::uint8_t, search_block_size> search_block;
FrameInfo saved_frame;  // `stream.current_frame` before the search

bool is_other_rate(const FrameInfo& frame) {
  return saved_frame.version != 0 && saved_frame.sample_rate != frame.sample_rate;
}

// The offset of the first frame in `block` that can be believed, or the block's size. `usable`
// bytes of it are audio; the following header may lie behind them.
std::size_t find_frame(std::span<const std::uint8_t> block, std::size_t usable) {
  FrameInfo& frame = stream.current_frame;
  for (std::size_t i = 0; i < usable; ++i) {
    const void* const found = std::memchr(block.data() + i, 0xFF, usable - i);
    if (found == nullptr) break;
    i = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - block.data());
    if (!has_sync(block, i)) continue;
    if (!decode_frame_header(frame, block.subspan(i))) continue;
    if (!is_followed(block, i, frame.frame_length)) {
      // The last frame of a file has nothing behind it. Its length alone lets it pass, when that is
      // all that is left: so a search that begins at its first byte finds it.
      if (frame.frame_length == usable) return i;
      continue;
    }
    if (is_other_rate(frame)) {
      saved_frame = frame;
      continue;
    }
    return i;
  }
  return block.size();
}

// Most searches begin at a frame, and then the first part of the block tells the same as the whole.
bool begins_with_frame(std::span<const std::uint8_t> block) {
  FrameInfo& frame = stream.current_frame;
  return has_sync(block, 0) && decode_frame_header(frame, block) &&
         is_followed(block, 0, frame.frame_length) && !is_other_rate(frame);
}

// Nothing was found in the `usable` bytes at `pos`.
EditPosition result_of_failure(PartIndex part, EditPosition pos, std::uint32_t usable,
                               bool is_file_end) {
  const EditPosition searched_to = pos + usable;
  if (is_file_end) {
    stream.current_frame = saved_frame;
    const PartIndex reached = part_at(searched_to);
    return reached > part ? document.parts[reached].part_beg : no_position;
  }
  return searched_to >= part_end(part) ? part_end(part) : no_position;
}

}  // namespace

EditPosition locate_frame(PartIndex part, EditPosition pos) {
  if (part >= document.parts.size()) return no_position;
  if (document.parts[part].part_file >= document.files.size()) return no_position;
  const SourceFile& file = document.files[document.parts[part].part_file];
  if (!file.handle.is_open()) return no_position;
  if (pos > highest_position) pos = 0;
  if (pos >= document.total_size) return document.total_size;

  saved_frame = stream.current_frame;
  const std::uint32_t offset = file_pos_of(part, pos);
  const std::uint32_t audio_left = file.audio_end > offset ? file.audio_end - offset : 0;
  const std::span<std::uint8_t> block(search_block);

  std::size_t got = file.handle.read_at(offset, block.first(first_look_size));
  if (got == first_look_size && audio_left > 0 && begins_with_frame(block.first(got))) return pos;
  if (got == first_look_size)
    got += file.handle.read_at(offset + std::uint64_t{first_look_size},
                               block.subspan(first_look_size));

  const std::size_t usable = std::min<std::size_t>(got, audio_left);
  stream.current_frame = saved_frame;
  const std::size_t found = find_frame(block.first(got), usable);
  if (found < got) return pos + static_cast<std::uint32_t>(found);

  const auto searched = static_cast<std::uint32_t>(usable);
  return result_of_failure(part, pos, searched, offset + std::uint64_t{searched} >= file.audio_end);
}

EditPosition frame_at(EditPosition pos) { return locate_frame(part_at(pos), pos); }

EditPosition frame_before(EditPosition pos) {
  constexpr std::uint32_t way_back = 2 * frame_unit;
  constexpr int most_frames = 300;
  EditPosition frame = frame_at(pos - way_back);  // wraps near the start, which searches from 0
  if (frame == no_position) return pos;
  for (int i = 0; i < most_frames; ++i) {
    const EditPosition next = frame_at(frame + next_frame_step);
    if (next >= pos) break;
    frame = next;
  }
  return frame;
}

EditPosition scan_forward(PartIndex part, EditPosition pos) {
  constexpr int most_blocks = 1000;
  for (int i = 0; i < most_blocks; ++i, pos += search_block_size) {
    const EditPosition frame = locate_frame(part, pos);
    if (frame != no_position) return frame;
  }
  return no_position;
}

}  // namespace corvelin

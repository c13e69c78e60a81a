// Turns the part table into a stream of frames, in edited order across part borders and files, with
// all that an edit means inside a frame already applied. Saving, playback, measuring and
// verification read through it, so what is heard is what is saved.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "model/document.h"

namespace corvelin {

/// The header bits that the user wants written, while `rewrite_header` is set.
struct HeaderRewrite {
  bool rewrite_header = false;
  std::uint32_t rewrite_copyright = 0;  // 0 or 1 each
  std::uint32_t rewrite_original = 0;
  std::uint32_t rewrite_private = 0;
};

extern HeaderRewrite header_rewrite;

/// How often `read_frames` found no frame where one had to begin. A caller zeroes it before a run.
extern std::uint16_t resync_count;

/// The common input block of those who read frames and keep none; at most `frame_block_limit` bytes
/// are read at a time.
constexpr std::size_t frame_block_limit = 62000;
constexpr std::uint32_t any_frame_count = 0xFFFFFFFF;  // no limit but that of the bytes
extern std::array<std::uint8_t, 64000> frame_block;

/// Moves to the next true frame, or to the end of the stream when there is none in reach.
void resync(EditPosition& pos, PartIndex& part);

/// Reads whole frames into `dest`, at most `max_frames`, from `pos` in `part` up to `end`, and
/// moves `pos` and `part` on. Returns how many bytes are good, and adds the frames to `frames_out`
/// if given.
///
/// A short result or 0 is normal: the call ends at a part's border, at bad data and at a frame that
/// didn't fit. The caller calls again until `pos` has reached its end. A frame that would run
/// over the end of its part is left out.
std::size_t read_frames(std::span<std::uint8_t> dest, std::uint32_t max_frames, EditPosition& pos,
                        PartIndex& part, std::uint32_t* frames_out, EditPosition end);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Frames from a place on, a few at a time, while the file is read in larger blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/document.h"
#include "model/frame_reader.h"

namespace corvelin {

/// Some whole frames.
struct Frames {
  std::span<const std::uint8_t> bytes;
  std::uint32_t count = 0;
};

class FrameFeed {
 public:
  /// Up to `most` frames, no further than to `end`, good until the next call. The cursor moves on
  /// as by `read_frames`, and none is given where that gives none. What was read ahead is dropped
  /// when the cursor was moved or the document changed.
  Frames take(const Document& document, FrameCursor& cursor, std::uint32_t most, EditPosition end);

  /// How often no frame stood where one had to begin.
  [[nodiscard]] std::uint32_t resyncs() const { return resyncs_; }

  /// How many bytes of frames were given; it wraps.
  [[nodiscard]] std::uint32_t bytes() const { return bytes_; }

 private:
  [[nodiscard]] bool stands_at(const Document& document, EditPosition pos, EditPosition end) const;
  void read_block(const Document& document, const FrameCursor& cursor, EditPosition end);
  Frames next_frames(FrameFormat format, std::uint32_t most);

  std::vector<std::uint8_t> block_;
  std::size_t begin_ = 0;  // of the next frame in the block
  std::size_t size_ = 0;   // of all frames in it
  FrameCursor next_;       // at that frame
  FrameCursor behind_;     // where the reading goes on
  EditPosition end_ = 0;
  std::uint32_t bytes_ = 0;
  std::uint32_t resyncs_ = 0;
  std::uint32_t resyncs_ahead_ = 0;  // behind what was read ahead, which is read again at times
  std::uint64_t revision_ = 0;       // of the document
};

}  // namespace corvelin

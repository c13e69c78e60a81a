// SPDX-License-Identifier: GPL-2.0-or-later
// The frames that were sampled for the graph, kept in the order of the files so that the next
// sampling has to read only what is new. Each is known by the place that the search for it began
// at, which is where the frame before it ended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "frames/frame_loudness.h"
#include "model/document.h"
#include "platform/files/file.h"

namespace corvelin {

/// A frame of a source file, or that a search from a place found none (`frame_length` 0).
struct SampledFrame {
  std::uint32_t searched_from = 0;  // file offset
  std::uint32_t begin = 0;          // file offset of the frame
  std::uint16_t file = 0;
  std::uint16_t frame_length = 0;
  std::uint16_t bitrate = 0;
  FrameLoudness loudness;
};

class SampledFrames {
 public:
  /// A sampling begins: of frames with the version and sample rate of the document's. Forgets what
  /// is known of another kind.
  void begin(const Document& document);

  /// Where the loudness is looked at, as in `measure_loudness`.
  void look_at(std::uint16_t gain_bit);

  /// The first frame at or behind an offset of a source file. No true search: the frame need not be
  /// followed by another, and the search gives up where the locator does.
  SampledFrame frame_from(const Document& document, std::uint16_t file, std::uint32_t offset);

  /// The sampling is over: puts what was read with what is known.
  void end();

 private:
  void check_file(const InputFile& handle, std::uint16_t file);
  void forget();
  [[nodiscard]] SampledFrame search(const InputFile& handle, std::uint16_t file,
                                    std::uint32_t offset);
  std::span<const std::uint8_t> block_at(const InputFile& handle, std::uint16_t file,
                                         std::uint64_t offset);

  StreamKind kind_;
  FrameFormat format_ = FrameFormat::mpeg;
  std::uint16_t gain_bit_ = 0;
  std::vector<FileFacts> files_;     // as they were when their frames were read
  std::vector<bool> checked_;        // of these, in this sampling
  std::vector<SampledFrame> known_;  // ordered by file and `searched_from`
  std::vector<SampledFrame> new_;    // in this sampling
  std::size_t next_ = 0;             // in `known_`: the likely next one
  std::size_t asked_ = 0;            // frames in this sampling

  std::vector<std::uint8_t> block_;  // of `block_file_` from `block_begin_` on
  std::size_t block_size_ = 0;
  std::uint64_t block_begin_ = 0;
  std::uint16_t block_file_ = 0;
};

}  // namespace corvelin

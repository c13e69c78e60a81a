// SPDX-License-Identifier: GPL-2.0-or-later
// The frame at the start of an MPEG file that carries no audio but describes it: "Xing" for a
// variable bitrate, with a seek table, "Info" for a constant one. It goes out as a placeholder in
// front of the audio, and its fields are filled in when the audio is written. The form is the one
// that decoders commonly read; there is no standard of it.
#pragma once

#include <cstdint>
#include <span>
#include <system_error>
#include <vector>

#include "model/document.h"
#include "model/stream_info.h"
#include "platform/files/file.h"

namespace corvelin {

/// The placeholder, shaped after `frame`. Empty when there is none: for AAC, for no frame, and for
/// a bitrate so low that a frame can't hold the two counts.
std::vector<std::uint8_t> make_vbr_frame(const Document& document, const FrameInfo& frame);

/// The fields of a placeholder.
struct VbrHeaderFields {
  std::error_code error;  // of the file
  // False: the walk for the seek table met a bad frame, and there is no table.
  bool is_complete = true;
  std::uint64_t place = 0;  // of the fields in the file
  std::vector<std::uint8_t> fields;
};

/// A frame whose place in the target is known.
struct FrameMark {
  std::uint32_t frame;   // how many frames lie in front of it, the VBR/Info frame included
  std::uint64_t offset;  // in the file, bytes
};

/// The quality that the header tells, which is one encoder's word about one file: none for several.
std::uint8_t header_quality(const Document& document);

/// What a placeholder that was written at `offset` of the target, which now ends with the audio, is
/// filled in with. `frame_count` is the number of frames behind it.
///
/// The seek table takes a walk over the frames. It starts anew at each of `marks`, which are in
/// ascending order, so that with a mark a megabyte only a part of a long file is looked at.
VbrHeaderFields make_vbr_header(const Document& document, const OutputFile& target,
                                std::uint64_t offset, std::uint32_t frame_count,
                                std::span<const FrameMark> marks = {});

}  // namespace corvelin

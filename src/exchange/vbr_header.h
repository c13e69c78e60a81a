// The frame at the start of an MPEG file that carries no audio but describes it: "Xing" for a
// variable bitrate, with a seek table, "Info" for a constant one. It goes out as a placeholder in
// front of the audio, and its fields are filled in when the audio is written. The form is the one
// that decoders commonly read; there is no standard of it.
#pragma once

#include <cstdint>
#include <span>
#include <system_error>

#include "model/stream_info.h"
#include "platform/file.h"

namespace corvelin {

/// Writes the placeholder at the target's end, shaped after `frame`, and keeps its length in
/// `stream.vbr_frame_size`: 0 when no such frame was written, for AAC, for no frame, and for a
/// bitrate so low that a frame can't hold the two counts.
std::error_code write_vbr_frame(OutputFile& target, const FrameInfo& frame);

struct VbrHeaderResult {
  std::error_code error;  // of the file
  bool is_complete =
      true;  // false: the walk for the seek table met a bad frame, and there is no table
};

/// A frame whose place in the target is known.
struct FrameMark {
  std::uint32_t frame;   // how many frames lie in front of it, the VBR/Info frame included
  std::uint64_t offset;  // in the file, bytes
};

/// Fills in the placeholder at `offset` of the target, which now ends with the audio. `frame_count`
/// is the number of frames behind it. Does nothing where none was written.
///
/// The seek table takes a walk over the frames. It starts anew at each of `marks`, which are in
/// ascending order, so that with a mark a megabyte only a part of a long file is looked at.
VbrHeaderResult finish_vbr_header(OutputFile& target, std::uint64_t offset,
                                  std::uint32_t frame_count, std::span<const FrameMark> marks = {});

}  // namespace corvelin

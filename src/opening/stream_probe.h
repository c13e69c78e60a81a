// SPDX-License-Identifier: GPL-2.0-or-later
// The probe: what kind of stream a file holds. Finds the first frame and the end of the audio,
// reads a VBR/Info header, and samples the frames for the averages and for whether the bitrate
// varies. It looks at the file's ends and at most 5,000,000 bytes between, so that its time doesn't
// grow with the file.
#pragma once

#include <cstdint>

#include "model/stream_info.h"
#include "platform/files/file.h"

namespace corvelin {

/// Probes a file whose candidate audio ends at `size`, and fills `stream`, of which `is_aac` is
/// set. `last_frame` is the last one that was looked at. Returns the first audio frame's offset, or
/// `no_position` when there is no audio.
std::uint32_t probe_stream(const InputFile& file, std::uint32_t size, StreamInfo& stream,
                           FrameInfo& last_frame);

/// Reads the VBR/Info header in the MPEG frame at `first` into `info`, whose `audio_end` is the
/// file's size without tags. Returns where the audio begins: behind that frame if another follows
/// it, else `first`.
std::uint32_t read_vbr_header(const InputFile& file, std::uint32_t first, StreamInfo& info);

/// The end of the audio: `end`, or the offset of the last frame of this kind when that is cut off.
std::uint32_t trim_to_last_frame(const InputFile& file, FrameFormat format, std::uint32_t end,
                                 const StreamKind& kind);

}  // namespace corvelin

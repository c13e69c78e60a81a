// The times of cue sheets: minutes, seconds and frames of 1/75 s, and the places in the edited
// stream that they stand for. At a constant bitrate, and in AAC, the average rate tells the place.
// In MPEG audio of a variable bitrate the frames have to be counted: a walk that goes once through
// the file for a whole sheet, however many cues it has.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/document.h"
#include "model/frame_walk.h"

namespace corvelin {

/// Where a walk over the frames stands. It begins at the start of the stream and only goes
/// forwards.
///
/// It reads the first source file from its first audio frame on: the times of a sheet are times of
/// that file, whatever has been cut since. So a place in the edited stream is taken for as many
/// bytes of that file.
struct VbrWalk {
  std::uint32_t frame_count = 0;     // frames in front of `position`
  EditPosition position = 0;         // `no_position` once no frame was found any more
  std::optional<FrameWalk> in_file;  // one frame ahead
  bool goes_on_in_file = false;      // there is such a frame
};

/// Whether the open stream needs the walk.
bool needs_vbr_walk();

/// The bytes that a time takes at the average bitrate. An empty text stands for the total size.
///
/// Frames and seconds are what stands behind a colon, counted from the end, and the rest is
/// minutes: "3:30" is 3 minutes and 30 frames, "3" is 3 minutes. Fractions are allowed, and no
/// field has a limit.
std::uint32_t cue_time_to_bytes(std::string_view time);

/// Moves the walk to the frame at `time` and returns its place; `no_position` when no frame is
/// found there, a place at or behind `total_size` for a time behind the end.
EditPosition vbr_walk_to_time(VbrWalk& walk, std::string_view time);

/// Moves the walk to the first frame at or behind `target` and returns its time in seconds.
double vbr_walk_to_position(VbrWalk& walk, EditPosition target);

/// The time as a sheet has it, "mm:ss:ff". Cut, never rounded. From 100 minutes on the minutes have
/// more digits.
std::string format_cue_time(double seconds);

}  // namespace corvelin

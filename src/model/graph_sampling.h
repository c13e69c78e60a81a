// SPDX-License-Identifier: GPL-2.0-or-later
// What the graph shows of the frames round a place: a slot for each frame, with its height and all
// that is marked there. Reads the source files itself, in large blocks and without the locator's
// look at the following frame, because it runs on every redraw: a false frame costs one slot in the
// picture and nothing else. What was read stays known, as numbers, while the view moves over it.
#pragma once

#include <cstdint>
#include <vector>

#include "model/document.h"
#include "model/sampled_frames.h"
#include "model/selection.h"

namespace corvelin {

/// The bits of `sample_flags`.
enum SampleFlag : std::uint8_t {
  sample_is_cut = 0x01,       // the border here is a plain cut
  sample_is_cue = 0x02,       // it is a cue
  sample_is_current = 0x04,   // it belongs to the current part
  sample_is_selected = 0x08,  // the frame lies in the selection
  sample_at_cursor = 0x10,    // the listener is at this frame
  sample_has_gain = 0x20,     // the level of the frame's part is changed
  sample_is_border = 0x40,    // a part begins here
  sample_is_outside = 0x80,   // in front of the stream or behind it
};

/// One slot of the graph: a frame, or a blank place outside of the stream.
struct FrameSlot {
  std::uint8_t sample_height = 0;    // 0 to 255
  std::uint8_t sample_flags = 0;     // `SampleFlag`s
  std::uint16_t sample_bitrate = 0;  // kbit/s; 1 behind the stream's end, 0 in front of its start
  EditPosition sample_pos = 0;       // of the frame, or of the end of the stream next to a blank
  std::int32_t sample_handle = 0;    // at a border the height of its level from 192 down to 0
  std::uint32_t sample_second = 0;   // the time where a new second begins, else 0

  bool operator==(const FrameSlot&) const = default;
};

/// What was sampled last. The frame at the cursor is in the middle.
struct GraphSamples {
  std::vector<FrameSlot> slots;  // one more than the graph has frames
  EditPosition view_first_pos = 0;
  EditPosition view_last_pos = 0;  // behind the last frame
  SampledFrames frames;
};

/// Samples `view_frames` frames round `centre`, of which `fold` share a column, by the settings
/// `graph_level` and `time_marks`.
void sample_frames(GraphSamples& samples, const Document& document, const Selection& selection,
                   EditPosition centre, std::uint32_t view_frames, std::uint32_t fold);

}  // namespace corvelin

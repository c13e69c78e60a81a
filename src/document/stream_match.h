// Whether audio from elsewhere fits the open stream. A document stays one format: all that is
// added to it has the parameters of its frames. Only the bitrate may differ.
#pragma once

#include "stream/frame_header.h"

namespace corvelin {

/// The frame whose parameters stand for the stream: `stream.current_frame`, or the document's first
/// one when a search has left nothing there.
FrameInfo stream_frame();

/// Whether two frames agree in channel mode, sample rate, MPEG version, layer and CRC flag.
bool have_same_parameters(const FrameInfo& a, const FrameInfo& b);

/// Makes the stream a variable one when the bitrate of a frame that was added to it is another than
/// the average, by more than 2 kbit/s.
void take_in_bitrate(const FrameInfo& frame);

}  // namespace corvelin

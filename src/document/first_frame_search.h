// The search for the first frame of a file that begins with something else.
#pragma once

#include "model/frame_locator.h"

namespace corvelin {

/// The first frame of a document that is one part over its whole file, searched from `from` in
/// steps of 20 bytes with `find_frame`, at most to the end of the file's first mebibyte.
/// None if none. Looks at each byte of the junk only once or twice.
FramePlace find_first_frame(EditPosition from);

}  // namespace corvelin

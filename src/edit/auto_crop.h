// SPDX-License-Identifier: GPL-2.0-or-later
// Auto crop: takes the silence off both ends of the stream.
#pragma once

namespace corvelin {

struct Editor;

/// Takes out what lies in front of the first block of frames that is louder than `lowest_gain`, and
/// what is silent up to the end behind the last such block. Looks at no more than the first 3000
/// frames for the head. Clears the selection. False when nothing can be measured, which is told.
bool auto_crop(Editor& editor);

/// The same with another level for silence than `lowest_gain`, in dB below full scale.
bool auto_crop_below(Editor& editor, unsigned bottom);

}  // namespace corvelin

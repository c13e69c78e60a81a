// SPDX-License-Identifier: GPL-2.0-or-later
// Auto crop: takes the silence off both ends of the stream.
#pragma once

#include <cstdint>

namespace corvelin {

struct Editor;

/// In a batch run: the level that counts as silence, in dB below full scale. 0 takes the setting
/// `lowest_gain`.
extern std::uint8_t batch_bottom;

/// Takes out what lies in front of the first block of frames that is louder than `lowest_gain`, and
/// what is silent up to the end behind the last such block. Looks at no more than the first 3000
/// frames for the head. Clears the selection. False when nothing can be measured, which is told.
bool auto_crop(Editor& editor);

}  // namespace corvelin

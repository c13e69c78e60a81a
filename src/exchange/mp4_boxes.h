// SPDX-License-Identifier: GPL-2.0-or-later
// The outermost boxes of an MP4 file (ISO/IEC 14496-12, 4.2), of which no more is looked at than
// how far they reach.
#pragma once

#include "platform/files/file.h"

namespace corvelin {

/// Whether the file ends before a box of audio, or of the tables for it, does: a download that
/// broke off. What isn't such a box, a tag behind the last one for instance, doesn't count.
bool breaks_off(const InputFile& file);

}  // namespace corvelin

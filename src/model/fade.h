// SPDX-License-Identifier: GPL-2.0-or-later
// The level between two borders: every part fades from its own gain to that of the border behind
// it.
#pragma once

#include "model/document.h"

namespace corvelin {

/// The gain in steps at `pos` inside a part: a quarter of a cosine from the part's own gain to that
/// of the border behind it. A rise comes up early, a fall stays up long; both miss their ends by a
/// few hundredths of the difference.
int gain_at(const Document& document, EditPosition pos, PartIndex part);

}  // namespace corvelin

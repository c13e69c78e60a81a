// SPDX-License-Identifier: GPL-2.0-or-later
// The document that the process works on, and the places in it, for those who are not yet handed
// theirs as arguments. Nothing below `document` sees them.
#pragma once

#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

extern Document document;
extern Selection selection;

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The names of the open document.
#include "document/open_state.h"

namespace corvelin {

bool batch_active = false;

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The one document of the process.
#include "model/the_document.h"

namespace corvelin {

Document document;
Selection selection;

}  // namespace corvelin

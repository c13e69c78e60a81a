// SPDX-License-Identifier: GPL-2.0-or-later
// The edit state as JSON, with the field names of the records as keys: what scripts read.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace corvelin {

struct Editor;

/// One line of JSON without a line end. `messages` are the boxes to report in it.
std::string state_as_json(const Editor& editor, const std::vector<MessageBox>& messages);

}  // namespace corvelin

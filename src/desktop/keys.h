// SPDX-License-Identifier: GPL-2.0-or-later
// The accelerators: each key of the command table runs its command wherever the focus is in the
// window, but in its time fields.
#pragma once

#include <QKeySequence>
#include <string_view>
#include <vector>

#include "desktop/controls.h"

namespace corvelin {

void make_shortcuts(QWidget* window, const RunCommand& run);

/// What the user presses for keys as the table names them: "Ctrl+5, Alt+Left".
std::vector<QKeySequence> key_sequences(std::string_view keys);

}  // namespace corvelin

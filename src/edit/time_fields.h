// SPDX-License-Identifier: GPL-2.0-or-later
// The two fields of the status display in which the user can type times. A field whose labels or
// separators are gone is ignored: the next refresh writes it anew.
#pragma once

#include <string_view>

namespace corvelin {

struct Editor;

/// The field "Total … Now TIME (PERCENT%)": moves the cursor to the time, or, when that was left as
/// it is, to the percentage.
void apply_now_field(Editor& editor, std::string_view text);

/// The field "Selection BEGIN - END (LENGTH)": sets the ends that were changed. A changed length
/// wins over a changed end.
void apply_selection_field(Editor& editor, std::string_view text);

}  // namespace corvelin

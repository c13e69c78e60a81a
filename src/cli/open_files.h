// SPDX-License-Identifier: GPL-2.0-or-later
// Opening and joining of the files that a line or the command line names.
#pragma once

#include <span>
#include <string>

#include "cli/edit_line.h"

namespace corvelin {

struct Editor;

/// Opens the first file in the place of the document and joins the others to it.
Refusal open_paths(Editor& editor, std::span<const std::string> paths);

/// Joins files to the end of the document, as one step: all of them or, when one doesn't fit, none.
Refusal append_to_document(Editor& editor, std::span<const std::string> paths);

}  // namespace corvelin

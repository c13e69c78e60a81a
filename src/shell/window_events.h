// SPDX-License-Identifier: GPL-2.0-or-later
// What the window's own events mean for the document: files that are dropped, and the thumb of the
// position scroll bar.
#pragma once

#include <span>
#include <string>

namespace corvelin {

struct Editor;

/// Files came by drag and drop. Into the band of the graph of an open document they are appended,
/// if the user wishes so; else the first is opened and the others are appended to it.
void drop_files(Editor& editor, std::span<const std::string> names, bool in_graph);

/// The thumb was dragged to a position, 0 to `scroll_end`.
void scroll_to(Editor& editor, int position);

}  // namespace corvelin

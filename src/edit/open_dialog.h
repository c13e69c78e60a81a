// SPDX-License-Identifier: GPL-2.0-or-later
// The Open command's question for files, and the opening of what was chosen.
#pragma once

namespace corvelin {

struct Editor;

/// Asks for one or more files. A choice replaces the document: the first file is opened, the others
/// are appended until one fails. What can't be opened or appended is told. Returns whether a
/// document was opened; a cancel leaves the one that was there.
bool open_file_dialog(Editor& editor);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The encoding that the texts of a cue sheet are in. A sheet without a mark may have been read in
// the wrong one; its texts can be read anew in the other.
#pragma once

namespace corvelin {

struct Editor;

/// Sets the encoding. If there are texts the user is asked whether they are converted, which is one
/// undo step. Nothing when it is set already.
void text_is_ansi(Editor& editor);
void text_is_utf8(Editor& editor);

}  // namespace corvelin

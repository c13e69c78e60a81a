// SPDX-License-Identifier: GPL-2.0-or-later
// Whether the document has been edited since it was opened or something of it was saved: what a
// run that ends like that has done for nothing.
#pragma once

namespace corvelin {

struct Editor;

/// The document as it stands has just been opened, or saved.
void remember_saved(const Editor& editor);

/// Tells, if the document is another one by now, that nothing saved it. Steps that were taken back
/// leave nothing to be saved.
void tell_unsaved_edits(const Editor& editor);

}  // namespace corvelin

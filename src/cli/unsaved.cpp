// SPDX-License-Identifier: GPL-2.0-or-later
// Comparing of the document with what was saved last.
#include "cli/unsaved.h"
#include "cli/messages.h"
#include "model/document.h"

namespace corvelin {

SavedContent content_of(const Document& document) {
  return {.parts = document.parts,
          .end_gain = document.end_gain,
          .sheet_title = document.sheet_title,
          .sheet_artist = document.sheet_artist,
          .header_bits = document.header_rewrite,
          .id3v1 = document.stream.id3v1};
}

void tell_unsaved_edits(const Document& document, const SavedContent& saved) {
  if (document.parts.empty() || content_of(document) == saved) return;
  complain("nothing saved the edited document; -o PATH does, or the line save PATH");
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Comparing of the document with what was saved last.
#include "cli/unsaved.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/messages.h"
#include "edit/editor.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"

namespace corvelin {

SavedContent content_of(const Editor& editor) {
  return {.parts = editor.document.parts,
          .end_gain = editor.document.end_gain,
          .sheet_title = editor.document.sheet_title,
          .sheet_artist = editor.document.sheet_artist,
          .header_bits = editor.document.header_rewrite,
          .id3v1 = editor.document.stream.id3v1};
}

void tell_unsaved_edits(const Editor& editor, const SavedContent& saved) {
  if (editor.document.parts.empty() || content_of(editor) == saved) return;
  complain("nothing saved the edited document; -o PATH does, or the line save PATH");
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Closing of documents.
#include "opening/close_stream.h"

#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"

namespace corvelin {

void close_stream(Document& document, Selection& selection, OpenState& open_state) {
  close_document(document);
  selection = {};
  open_state.project_name.clear();
  open_state.document_modified = false;
}

void reset_state(Document& document, Selection& selection, OpenState& open_state,
                 ResetLevel level) {
  selection = {};
  document.stream = {};
  document.kind = {};
  open_state.document_modified = false;
  document.sheet_title.clear();
  document.sheet_artist.clear();
  if (level == ResetLevel::no_name) open_state.audio_name.clear();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// What happens around the opening of documents.
#include "edit/open_files.h"

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/transport.h"
#include "edit/undo.h"
#include "exchange/open_document.h"
#include "opening/close_stream.h"

namespace corvelin {

void close_all(Editor& editor) {
  fall_silent(editor);
  close_stream(editor.document, editor.selection, editor.open_state);
  undo_clear(editor);
}

Joined open_files(Editor& editor, std::span<const std::string> names) {
  fall_silent(editor);
  undo_clear(editor);
  Joined joined = open_documents(editor.document, editor.selection, editor.open_state, names);
  if (!editor.document.parts.empty()) device_keepalive(editor.playback, true);
  return joined;
}

bool open_file(Editor& editor, const std::string& path) {
  return open_files(editor, {&path, 1}).count != 0;
}

}  // namespace corvelin

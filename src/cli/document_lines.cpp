// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines that open, join and close documents.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include "cli/headless_host.h"
#include "cli/open_files.h"
#include "cli/unsaved.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "platform/text/path.h"

namespace corvelin {

namespace {

Refusal open_line(Editor& editor, Arguments words, HeadlessHost& host) {
  tell_unsaved_edits(editor.document, host.saved);
  Refusal refusal = open_paths(editor, words);
  host.saved = content_of(editor.document);
  return refusal;
}

Refusal append_line(Editor& editor, Arguments words, HeadlessHost&) {
  return append_to_document(editor, words);
}

Refusal load_cue_line(Editor& editor, Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  const bool is_loaded =
      dispatch_command(editor, command::load_cue_sheet_over_audio) == DispatchResult::done;
  return is_loaded ? no_refusal : fmt::format("{} was not loaded", words[0]);
}

Refusal close_line(Editor& editor, Arguments, HeadlessHost& host) {
  tell_unsaved_edits(editor.document, host.saved);
  close_all(editor);
  return no_refusal;
}

constexpr EditLine table[] = {
    {"open", "PATH …", "opens a document; several audio files become one", 1, any_count, false,
     open_line},
    {"append", "PATH …", "joins audio files to the end", 1, any_count, true, append_line},
    {"load_cue", "PATH", "sets the cues and names of a sheet in the open audio", 1, 1, true,
     load_cue_line},
    {"close", "", "closes the document", 0, 0, true, close_line},
};

}  // namespace

std::span<const EditLine> document_lines() { return table; }

}  // namespace corvelin

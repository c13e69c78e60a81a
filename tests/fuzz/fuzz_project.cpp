// SPDX-License-Identifier: GPL-2.0-or-later
// Reads any bytes as a project over two files that exist. What opens must be sound, and its own
// text must read back to the same.
#include <cstdint>
#include <string>
#include <string_view>

#include "edit/editor.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/soundness.h"
#include "support/test_folder.h"

using namespace corvelin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  static const test::TestFolder folder;
  static const std::string a = folder.file("a.mp3", test::Mp3Builder{}.frames(20).bytes());
  static const std::string b = folder.file("b.mp3", test::Mp3Builder{}.frames(10).bytes());
  start_up(editor, std::nullopt);
  editor.open_state.project_name = folder.path("p.cvp");
  const bool is_whole = parse_project(editor.document, editor.selection, editor.open_state,
                                      {reinterpret_cast<const char*>(data), size})
                            .cause.empty();
  test::require_sound_document(editor);
  if (is_whole && !editor.document.parts.empty()) {
    const std::string text =
        project_text(editor.document, editor.selection, editor.selection.cursor);
    close_document(editor.document);
    test::require(
        parse_project(editor.document, editor.selection, editor.open_state, text).cause.empty() &&
        project_text(editor.document, editor.selection, editor.selection.cursor) == text);
  }
  shut_down(editor);
  return 0;
}

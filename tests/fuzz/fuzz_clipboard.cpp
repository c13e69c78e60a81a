// SPDX-License-Identifier: GPL-2.0-or-later
// Pastes any bytes over a selection of a document. What stands then must be sound, and what was
// pasted must copy and paste again. "$" in the text is the folder with the files.
#include <cstdint>
#include <string>

#include "edit/clipboard.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/soundness.h"
#include "support/test_folder.h"

using namespace corvelin;

namespace {

std::string content;

struct ClipboardHost : Host {
  bool set_clipboard_text(std::string_view text) override { return content = text, true; }
  ClipboardContent get_clipboard_text(std::string& text) override {
    return text = content, ClipboardContent::text;
  }
};

void require_sound_paste(Editor& editor) {
  test::require_sound_document(editor);
  for (const SourceFile& file : editor.document.files)
    test::require(file.first_audio < file.audio_end);
}

std::string with_folder(std::string text, const std::string& folder) {
  for (std::size_t at = text.find('$'); at != std::string::npos; at = text.find('$', at + 1))
    text.replace(at, 1, folder);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  static const test::TestFolder folder;
  static const std::string a = folder.file("a.mp3", test::Mp3Builder{}.frames(20).bytes());
  static const std::string b = folder.file("b.mp3", test::Mp3Builder{}.frames(10).bytes());
  static ClipboardHost host;
  install_host(&host);
  start_up(editor, std::nullopt);
  test::require(open_file(editor, a));
  set_sel_begin(editor.document, editor.selection, 417);
  set_sel_end(editor.document, editor.selection, 834);
  content = with_folder({reinterpret_cast<const char*>(data), size}, folder.path(""));
  const PasteResult result = paste_from_clipboard(editor);
  if (result != PasteResult::foreign_text) require_sound_paste(editor);
  if (result == PasteResult::pasted && editor.document.parts.size() < most_parts / 2 &&
      copy(editor).result == Result::done) {
    test::require(paste_from_clipboard(editor) == PasteResult::pasted);
    require_sound_paste(editor);
  }
  shut_down(editor);
  return 0;
}

// SPDX-License-Identifier: GPL-2.0-or-later
// Opens any bytes as an audio file, reads every frame of it with levels and header bits changed,
// appends it to itself, draws it, and saves it. The first byte chooses between MPEG and AAC and
// what is done to the stream.
#include <cstdint>
#include <span>
#include <string>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "edit/save_audio.h"
#include "exchange/id3v2_texts.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "opening/append.h"
#include "opening/open_state.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "shell/editor_view.h"
#include "shell/start_up.h"
#include "support/plain_picture.h"
#include "support/soundness.h"
#include "support/test_folder.h"
#include "unattended/save_unattended.h"

using namespace corvelin;

namespace {

constexpr std::uint8_t is_aac = 1;
constexpr std::uint8_t changes_level = 2;
constexpr std::uint8_t changes_header = 4;
constexpr std::uint8_t keeps_date = 8;

// From the start, the middle and the end, at each zoom.
void draw(Editor& editor) {
  test::PlainPicture picture(60, 40);
  EditorView view;
  for (std::uint16_t zoom = 1; zoom <= 32; zoom = static_cast<std::uint16_t>(zoom * 2)) {
    settings.zoom = zoom;
    lay_out_view(view, 60, 40, 1);
    for (const EditPosition pos :
         {0U, editor.document.total_size / 2, editor.document.total_size}) {
      move_cursor(editor.document, editor.selection, pos);
      view_redraw(editor, view, picture);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  if (size == 0) return 0;
  const std::uint8_t choices = data[0];
  static const test::TestFolder folder;
  const std::string name =
      folder.file((choices & is_aac) != 0 ? "a.aac" : "a.mp3", std::span(data, size).subspan(1));
  settings = default_settings();
  if (open_file(editor, name)) {
    if ((choices & changes_level) != 0) editor.document.end_gain = -40;
    editor.document.header_rewrite.rewrite_header = (choices & changes_header) != 0;
    settings.keep_date = (choices & keeps_date) != 0 ? 3 : 0;
    for (EditPosition pos = editor.document.total_size;
         pos > 0 && pos <= editor.document.total_size;) {
      const EditPosition before =
          frame_before(editor.document, pos, editor.selection.current_frame);
      if (before >= pos) break;
      pos = pos - before > 100000 ? before : before / 2;
    }
    id3v2_texts(editor.document);
    append_file(editor.document, name);
    draw(editor);
    move_cursor(editor.document, editor.selection, editor.document.total_size / 2);
    save_unattended(editor, false);
  }
  test::require_sound_document(editor);
  close_all(editor);
  return 0;
}

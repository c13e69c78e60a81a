// SPDX-License-Identifier: GPL-2.0-or-later
// Reads any bytes as a cue sheet: once with the audio that it names, once over audio of a variable
// bitrate. What is open then is written as a sheet, which has to read.
#include <cstdint>
#include <string>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "exchange/cue_sheet.h"
#include "model/document.h"
#include "opening/open_audio_file.h"
#include "opening/open_state.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/soundness.h"
#include "support/test_folder.h"

using namespace corvelin;

namespace {

void check_round_trip(Editor& editor, const test::TestFolder& folder) {
  if (editor.document.parts.empty()) return;
  editor.open_state.project_name = folder.path("out.cue");
  std::string reason;
  test::require(
      save_cue_sheet(editor.document, editor.open_state, editor.open_state.project_name, reason));
  // Cues are read back a little in front of where they were, as borders of their own.
  test::require(
      editor.document.parts.size() >= most_parts / 2 ||
      load_cue_sheet(editor.document, editor.selection, editor.open_state, true).cause.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  static const test::TestFolder folder;
  static const std::string audio = folder.file(
      "a.mp3", test::Mp3Builder{}.frames(100).shape({.bitrate = 64}).frames(300).bytes());
  const std::string sheet = folder.file("s.cue", {data, size});
  for (const bool over_current_audio : {false, true}) {
    settings = default_settings();
    test::require(
        !over_current_audio ||
        open_audio_file(editor.document, editor.selection, editor.open_state, audio).empty());
    editor.open_state.project_name = sheet;
    load_cue_sheet(editor.document, editor.selection, editor.open_state, over_current_audio);
    test::require_sound_document(editor);
    check_round_trip(editor, folder);
    close_all(editor);
  }
  return 0;
}

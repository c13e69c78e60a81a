// SPDX-License-Identifier: GPL-2.0-or-later
// Reads any bytes as a playlist, in both encodings, beside two files, a list that is fine and
// itself.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "model/document.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/test_folder.h"

using namespace corvelin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  static const test::TestFolder folder;
  static const std::string a = folder.file("a.mp3", test::Mp3Builder{}.frames(20).bytes());
  static const std::string b = folder.file("b.mp3", test::Mp3Builder{}.frames(10).bytes());
  static const std::string inner = folder.file("i.m3u", "a.mp3\nb.mp3\n");
  start_up(editor, std::nullopt);
  for (const std::string_view name : {"l.m3u", "l.m3u8"})
    if (open_file(editor, folder.file(name, std::span(data, size))) ==
        editor.document.parts.empty())
      std::abort();
  shut_down(editor);
  return 0;
}

// SPDX-License-Identifier: GPL-2.0-or-later
// Reads any bytes as a project over two files that exist. What opens must be sound, and its own
// text must read back to the same.
#include <cstdint>
#include <string>
#include <string_view>

#include "document/open_state.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "model/the_document.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/soundness.h"
#include "support/test_folder.h"

using namespace corvelin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::TestFolder folder;
  static const std::string a = folder.file("a.mp3", test::Mp3Builder{}.frames(20).bytes());
  static const std::string b = folder.file("b.mp3", test::Mp3Builder{}.frames(10).bytes());
  start_up(std::nullopt);
  open_state.project_name = folder.path("p.cvp");
  const bool is_whole = parse_project({reinterpret_cast<const char*>(data), size}).cause.empty();
  test::require_sound_document();
  if (is_whole && !document.parts.empty()) {
    const std::string text = project_text(selection.cursor);
    close_document(document);
    test::require(parse_project(text).cause.empty() && project_text(selection.cursor) == text);
  }
  shut_down();
  return 0;
}

// SPDX-License-Identifier: GPL-2.0-or-later
// Fuzzes the reading of a language file, and the use of a row that holds whatever it likes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "edit/editor.h"
#include "text/language_file.h"
#include "text/ui_text.h"

using namespace corvelin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ui_text_free();
  parse_language_file(text);
  menu_text_plain(text, true);
  format_row(text);
  format_row(text, 7);
  format_row(text, 2.5);
  format_row(text, "text");
  format_row(text, "text", 1234567, -1);
  return 0;
}

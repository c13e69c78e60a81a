// SPDX-License-Identifier: GPL-2.0-or-later
// Reads any bytes as a settings file. What was read must come back the same from what is written.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "edit/editor.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "shell/start_up.h"

using namespace corvelin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  settings = default_settings();
  parse_settings({reinterpret_cast<const char*>(data), size});
  const std::string written = format_settings();
  if (written.size() > settings_file_limit) return 0;  // more than is read back

  settings = default_settings();
  parse_settings(written);
  const std::string again = format_settings();
  settings = default_settings();
  parse_settings(again);
  if (format_settings() != again) std::abort();
  return 0;
}

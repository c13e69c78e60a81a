// SPDX-License-Identifier: GPL-2.0-or-later
// The settings as a text file: "key=value" lines ended by CR LF behind a header. Unknown keys, any
// order and missing keys are taken in their stride; a number out of its range is taken as it
// stands.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace corvelin {

/// How much of a settings file is read. Keys behind it keep their values.
constexpr std::size_t settings_file_limit = 20000;

/// Fills `settings` from the file. An error when it can't be read or holds something else; then
/// nothing has changed, and no settings may be stored there. One that isn't there changes nothing
/// either.
std::error_code read_settings(const std::string& path);

/// The same from the text of a file. False when it holds no line end.
bool parse_settings(std::string_view text);

/// The text of a file with all settings.
std::string format_settings();

/// Writes all settings, where no file stands or one of settings. The old one stands until the new
/// one is complete.
std::error_code write_settings(const std::string& path);

}  // namespace corvelin

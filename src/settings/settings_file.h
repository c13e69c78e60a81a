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

/// Whether the settings may be kept in this file: it isn't there, is empty, or holds settings that
/// can be read.
bool may_hold_settings(const std::string& path);

/// Fills `settings` from the file. False when it can't be opened or holds no line end; then nothing
/// has changed.
bool read_settings(const std::string& path);

/// The same from the text of a file.
bool parse_settings(std::string_view text);

/// The text of a file with all settings.
std::string format_settings();

/// Writes all settings. The old file stands until the new one is complete.
std::error_code write_settings(const std::string& path);

}  // namespace corvelin

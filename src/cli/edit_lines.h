// The commands of the headless program's edit lines: what the desktop does by a click, by a word.
#pragma once

#include <string>
#include <string_view>

#include "cli/headless_host.h"
#include "settings/setting_table.h"

namespace corvelin {

/// Runs one edit line. Returns why it was refused, or an empty text when it was done. An empty line
/// or a comment does nothing.
std::string run_edit_line(std::string_view line, HeadlessHost& host);

/// The words for a setting that was not set, or an empty text.
std::string set_refusal(SetResult result, std::string_view key, std::string_view value);

}  // namespace corvelin

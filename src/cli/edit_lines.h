// SPDX-License-Identifier: GPL-2.0-or-later
// The commands of the headless program's edit lines: what the desktop does by a click, by a word.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/edit_line.h"
#include "cli/headless_host.h"
#include "settings/setting_table.h"

namespace corvelin {

struct Editor;

/// All kinds of lines, a table a subject.
std::span<const std::span<const EditLine>> line_tables();

/// The row of a name, or null.
const EditLine* find_line(std::string_view name);

/// Runs one edit line. An empty line or a comment does nothing.
Refusal run_edit_line(Editor& editor, std::string_view line, HeadlessHost& host);

/// The same for a line that is words already.
Refusal run_edit_words(Editor& editor, const std::vector<std::string>& words, HeadlessHost& host);

/// The words for a setting that was not set, or an empty text.
Refusal set_refusal(SetResult result, std::string_view key, std::string_view value);

}  // namespace corvelin

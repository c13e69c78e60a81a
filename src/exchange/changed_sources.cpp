// SPDX-License-Identifier: GPL-2.0-or-later
// The look at the sources before a save.
#include "exchange/changed_sources.h"

#include <algorithm>
#include <string_view>

#include "model/document.h"
#include "platform/files/file.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Some network file systems give a file another identity from time to time; that alone says nothing
// of its bytes.
bool has_other_bytes(const FileFacts& opened, const FileFacts& now) {
  if (!now.found) return false;
  FileFacts same_file = now;
  same_file.identity = opened.identity;
  return !is_unchanged(opened, same_file);
}

// What a save would hold of a source. Nothing for one that is what it was. One that was removed is
// read as before.
std::optional<TextRow> change_of(const SourceFile& file, bool is_replaced) {
  const FileFacts& opened = file.handle->facts_at_open();
  if (!is_replaced && has_other_bytes(opened, file.handle->facts())) return row::source_written_to;
  if (!is_replaced && has_other_bytes(opened, file_facts(file.file_name)))
    return row::source_put_aside;
  if (file.is_unlike_project) return row::source_unlike_project;
  return std::nullopt;
}

bool has_parts(const Document& document, std::uint16_t file) {
  return std::ranges::find(document.parts, file, &Part::part_file) != document.parts.end();
}

}  // namespace

std::string changes_of_sources(const Document& document, std::optional<std::uint16_t> replaced) {
  std::string changes;
  for (std::uint16_t i = 0; i < file_count(document); ++i) {
    const SourceFile& file = document.files[i];
    const auto change = has_parts(document, i) ? change_of(file, replaced == i) : std::nullopt;
    if (!change) continue;
    if (!changes.empty()) changes += "\n\n";
    changes += format_row(ui_text(*change), file.file_name);
  }
  return changes;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The tables of source files and parts.
#include "model/document.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/text/path.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

void touch(Document& document) {
  static std::atomic<std::uint64_t> last_revision = 0;  // of any document in the process
  document.revision = ++last_revision;
}

std::uint16_t part_count(const Document& document) {
  return static_cast<std::uint16_t>(document.parts.size());
}
std::uint16_t file_count(const Document& document) {
  return static_cast<std::uint16_t>(document.files.size());
}

std::optional<std::uint16_t> add_source_file(Document& document, const std::string& name,
                                             std::string* cause) {
  const auto refuse = [cause](std::string text) {
    if (cause != nullptr) *cause = std::move(text);
    return std::nullopt;
  };
  if (document.files.size() >= most_files)
    return refuse(fmt::format("A document can have {} files.", most_files));
  const auto known = std::ranges::find(document.files, name, &SourceFile::file_name);
  if (known != document.files.end())
    return static_cast<std::uint16_t>(known - document.files.begin());
  const auto handle = std::make_shared<InputFile>();
  if (const std::error_code error = handle->open(name)) return refuse(error.message());
  document.files.push_back({.handle = handle, .file_name = name});
  return static_cast<std::uint16_t>(document.files.size() - 1);
}

void remove_last_source_file(Document& document) {
  if (document.files.empty()) return;
  const std::size_t last = document.files.size() - 1;
  const bool is_used = std::ranges::any_of(
      document.parts, [last](const Part& part) { return part.part_file == last; });
  if (!is_used) document.files.pop_back();
}

std::uint32_t permissions_of_sources(const Document& document) {
  constexpr std::uint32_t own = 0600;
  std::uint32_t permissions = usual_permissions;
  for (const SourceFile& file : document.files)
    permissions &= own | file.handle->facts_at_open().permissions;
  return permissions;
}

std::string read_fault(const Document& document) {
  for (const SourceFile& file : document.files)
    if (const std::error_code error = file.handle->read_error())
      return file.file_name + "\n" + error.message();
  return {};
}

std::string shrunk_source(const Document& document, EditPosition begin, EditPosition end) {
  for (const Part& part : document.parts) {
    if (part.part_beg >= end || part.part_beg + part.part_size <= begin) continue;
    const SourceFile& file = document.files[part.part_file];
    const std::uint64_t used_to =
        std::uint64_t{part.part_filepos} + std::min(end - part.part_beg, part.part_size);
    if (file.handle->facts().size < std::min<std::uint64_t>(used_to, file.audio_end))
      return format_row(ui_text(row::file_is_shorter), file.file_name);
  }
  return {};
}

PartIndex add_part(Document& document, EditPosition pos, std::uint16_t file, std::uint32_t file_pos,
                   std::uint32_t size) {
  if (file >= document.files.size() || document.parts.size() >= most_parts) return no_part;
  const auto place = std::ranges::find_if(document.parts,
                                          [pos](const Part& part) { return part.part_beg >= pos; });
  const auto added = document.parts.insert(
      place, Part{.part_file = file, .part_filepos = file_pos, .part_size = size, .part_beg = pos});
  const auto index = static_cast<PartIndex>(added - document.parts.begin());
  renumber_parts(document);
  recompute_total(document);
  return index;
}

PartIndex remove_part(Document& document, PartIndex index) {
  if (index >= document.parts.size()) return no_part;
  document.parts.erase(document.parts.begin() + index);
  renumber_parts(document);
  const auto last = static_cast<PartIndex>(document.parts.empty() ? 0 : document.parts.size() - 1);
  document.current_part = std::min(document.current_part, last);
  return std::min(index, last);
}

PartIndex part_at(const Document& document, EditPosition pos) {
  const auto holds = [pos](const Part& part) {
    return pos >= part.part_beg && pos - part.part_beg < part.part_size;
  };
  const auto found = std::ranges::find_if(document.parts, holds);
  if (found != document.parts.end()) return static_cast<PartIndex>(found - document.parts.begin());
  const bool is_end = pos == document.total_size && !document.parts.empty();
  return static_cast<PartIndex>(is_end ? document.parts.size() - 1 : 0);
}

EditPosition part_end(const Document& document, PartIndex index) {
  const Part& part = document.parts[index];
  return part.part_beg + part.part_size;
}

std::uint32_t file_pos_of(const Document& document, PartIndex index, EditPosition pos) {
  const Part& part = document.parts[index];
  const bool has_wrapped = pos > highest_position && pos > document.total_size;
  const bool is_before = pos < part.part_beg || has_wrapped;
  return is_before ? part.part_filepos : part.part_filepos + (pos - part.part_beg);
}

void recompute_total(Document& document) {
  document.total_size = 0;
  for (const Part& part : document.parts) document.total_size += part.part_size;
  touch(document);
}

void renumber_parts(Document& document) {
  EditPosition pos = 0;
  for (Part& part : document.parts) {
    part.part_beg = pos;
    pos += part.part_size;
  }
  touch(document);
}

bool part_has_gain(const Document& document, PartIndex index) {
  return document.parts[index].part_gainbeg != 0 || gain_behind(document, index) != 0;
}

std::int16_t gain_behind(const Document& document, PartIndex index) {
  const std::size_t next = index + std::size_t{1};
  return next < document.parts.size() ? document.parts[next].part_gainbeg : document.end_gain;
}

void name_parts_from_files(Document& document) {
  constexpr std::size_t longest_name = 96;
  if (document.files.size() < 2) return;
  for (Part& part : document.parts) {
    if (!part.part_title.empty()) continue;
    const std::string_view name = name_of(document.files[part.part_file].file_name);
    part.part_title = cut_to_units(bytes_to_wide(name, true), longest_name);
  }
}

void close_document(Document& document) {
  document = {};
  touch(document);
}

}  // namespace corvelin

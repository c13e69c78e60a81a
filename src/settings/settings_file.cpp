// SPDX-License-Identifier: GPL-2.0-or-later
// Reader and writer of the settings file, both driven by the table of keys.
#include "settings/settings_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "platform/files/file.h"
#include "platform/files/replacing_file.h"
#include "platform/processes/program.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

constexpr std::string_view header = "[Corvelin]";

// The other form of a path: its UTF-16 bytes in hexadecimal digits.
bool is_stored_in_hex(std::string_view key, std::string_view value) {
  const bool may_be = key == "file_recent" || key == "file_savepath" || key == "working_dir";
  return may_be && !value.empty() && value.front() >= '0' && value.front() <= '9';
}

// Takes a value into the field of its key. One overload a kind of field.
struct ValueReader {
  const SettingKey& row;
  std::string_view value;
  bool utf8;

  [[nodiscard]] std::string path() const {
    std::string path(value);
    if (is_stored_in_hex(row.key, value)) {
      path = wide_to_bytes(hex_to_wide(value), true);
    } else if (!utf8) {
      path = wide_to_bytes(bytes_to_wide(value, false), true);
    }
    return std::string(cut_to_units(path, longest_setting));
  }

  template <typename Number>
  void operator()(Number Settings::*field) const {
    settings.*field = static_cast<Number>(leading_number(value));
  }
  void operator()(std::string Settings::*field) const { settings.*field = path(); }
  void operator()(std::u16string Settings::*field) const {
    const auto most = static_cast<std::size_t>(row.allowed.highest);
    settings.*field = cut_to_units(bytes_to_wide(value, utf8), most);
  }
  void operator()(std::vector<std::string> Settings::*field) const {
    if (field == &Settings::file_recent) return read_recent();
    if (std::cmp_less((settings.*field).size(), row.allowed.highest))
      (settings.*field).emplace_back(value);
  }
  // `max_recent` as it stands now: the recent files come first in the file, so it is the default.
  void read_recent() const {
    const std::size_t most = std::min<std::size_t>(settings.max_recent, most_recent_files);
    if (settings.file_recent.size() < most && !value.empty())
      settings.file_recent.push_back(path());
  }
};

// A value that holds a line end can't be written as a line: it is left out, not cut.
bool fits_a_line(std::string_view value) {
  return value.find_first_of(std::string_view("\n\0", 2)) == std::string_view::npos &&
         !value.ends_with('\r');
}

// Appends the lines of a key. One overload a kind of field.
struct ValueWriter {
  std::string& text;
  std::string_view key;

  void line(std::string_view value) const {
    if (fits_a_line(value)) fmt::format_to(std::back_inserter(text), "{}={}\r\n", key, value);
  }

  template <typename Number>
  void operator()(Number Settings::*field) const {
    line(fmt::format("{}", static_cast<std::int32_t>(settings.*field)));
  }
  // What begins with a digit would be read as such digits, so it is written in them.
  void operator()(std::string Settings::*field) const {
    const std::string& path = settings.*field;
    line(is_stored_in_hex(key, path) ? wide_to_hex(bytes_to_wide(path, true)) : path);
  }
  void operator()(std::u16string Settings::*field) const {
    line(field == &Settings::version ? program_version : wide_to_bytes(settings.*field, true));
  }
  void operator()(std::vector<std::string> Settings::*field) const {
    std::span<const std::string> lines = settings.*field;
    if (field == &Settings::file_recent)
      lines = lines.first(std::min<std::size_t>(lines.size(), settings.max_recent));
    for (const std::string& value : lines)
      if (!value.empty()) line(value);
  }
};

std::string read_text(const InputFile& file) {
  std::string text(settings_file_limit, '\0');
  text.resize(file.read_at(0, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()}));
  return text;
}

bool is_setting_line(std::string_view line) {
  const std::size_t equal = line.find('=');
  return equal != std::string_view::npos && find_setting(line.substr(0, equal)) != nullptr;
}

// Some editors put the mark in front, and who writes such a file by hand may have another first
// line, which is not read.
bool is_settings_text(std::string_view head) {
  if (head.starts_with(utf8_mark)) head.remove_prefix(utf8_mark.size());
  if (head.starts_with(header)) return true;
  std::string_view line;
  if (head.find('\0') != std::string_view::npos || !take_line(head, line)) return false;
  while (take_line(head, line))
    if (is_setting_line(line)) return true;
  return false;
}

}  // namespace

std::error_code read_settings(const std::string& path) {
  const std::error_code kind_error = check_kind(path, is_settings_text);
  if (kind_error || !file_facts(path).found) return kind_error;
  InputFile file;
  if (const std::error_code error = file.open(path)) return error;
  const std::string text = read_text(file);
  if (!file.read_error()) parse_settings(text);
  return file.read_error();
}

bool parse_settings(std::string_view text) {
  text = text.substr(0, settings_file_limit);
  text = text.substr(0, text.find('\0'));
  std::string_view line;
  if (!take_line(text, line)) return false;  // the first line is the header, whatever it says

  bool utf8 = false;
  while (take_line(text, line)) {
    const std::size_t equal = line.find('=');
    if (equal == std::string_view::npos) continue;
    const std::string_view key = line.substr(0, equal);
    const std::string_view value = line.substr(equal + 1);
    if (key == "utf8") {
      utf8 = leading_number(value) != 0;
      continue;
    }
    const SettingKey* const row = find_setting(key);
    if (row != nullptr) std::visit(ValueReader{*row, value, utf8}, row->field);
  }
  return true;
}

std::string format_settings() {
  std::string text = fmt::format("{}\r\nutf8=1\r\n", header);
  for (const SettingKey& row : setting_keys()) std::visit(ValueWriter{text, row.key}, row.field);
  return text;
}

std::error_code write_settings(const std::string& path) {
  // Of instances that end at one moment the last one counts, too.
  constexpr int tries = 20;
  const std::string text = format_settings();
  std::error_code error = FileError::changed;
  for (int i = 0; i < tries && error == FileError::changed; ++i)
    error = replace_text(path, text, is_settings_text);
  return error;
}

}  // namespace corvelin

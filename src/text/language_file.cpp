// SPDX-License-Identifier: GPL-2.0-or-later
// Finding and reading of a language file.
#include "text/language_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/files/file.h"
#include "platform/processes/system.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::string_view line_end = "\r\n";

// The first lan*.ini in the folder, by name, so that the choice doesn't hang on the order in which
// the file system lists it. Empty when there is none.
std::string language_file_in(const std::string& folder) {
  std::string first;
  std::error_code error;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with("lan") || !name.ends_with(".ini")) continue;
    if (!first.empty() && first < name) continue;
    std::error_code ignored;  // what can't be looked at is no file
    if (entry->is_regular_file(ignored)) first = name;
  }
  return first.empty() ? first : folder + first;
}

std::optional<TextSection> section_called(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, TextSection>, 7> sections = {{{"men", men},
                                                                                 {"win", win},
                                                                                 {"ttp", ttp},
                                                                                 {"msg", msg},
                                                                                 {"cfg", cfg},
                                                                                 {"dlg", dlg},
                                                                                 {"ext", ext}}};
  const auto* const found =
      std::ranges::find(sections, name, &decltype(sections)::value_type::first);
  if (found == sections.end()) return {};
  return found->second;
}

std::string_view without_leading_blanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

// Whether `line` begins with `word`; then the text behind it is about the translation itself.
bool take_translation_data(std::string_view line, std::string_view word, std::uint32_t number) {
  if (!line.starts_with(word)) return false;
  set_ui_text(dlg, number, std::string(without_leading_blanks(line.substr(word.size()))));
  return true;
}

// A line such as "msg012=Text". False for any other.
bool take_row(std::string_view line) {
  constexpr std::size_t name_length = 3;
  const std::size_t equal = line.find('=');
  if (equal == std::string_view::npos || equal < name_length) return false;
  const std::optional<TextSection> section = section_called(line.substr(0, name_length));
  if (!section) return false;
  const std::string_view digits =
      without_leading_blanks(line.substr(name_length, equal - name_length));
  std::uint32_t number = 0;
  if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc{})
    return false;
  std::string text(line.substr(equal + 1));
  std::ranges::replace(text, '#', '\n');
  return set_ui_text(*section, number, std::move(text));
}

// False for a line that means nothing.
bool take_in(std::string_view line, bool& utf8) {
  const std::string_view word = without_leading_blanks(line);
  if (word.starts_with("UTF-8=1")) {
    utf8 = true;
    return true;
  }
  return line.empty() || line.starts_with("Native:") ||  // the list of languages reads that one
         take_translation_data(word, "Language:", translation_language) ||
         take_translation_data(line, "Composer:", translation_composer) ||
         take_translation_data(line, "Version:", translation_version) || take_row(line);
}

}  // namespace

bool ui_text_load(const std::string& program_folder, std::string_view language) {
  ui_text_free();
  const std::string path = language.empty()
                               ? language_file_in(program_folder)
                               : program_folder + "Languages/lan" + std::string(language) + ".ini";
  InputFile file;
  if (path.empty() || file.open(path)) return false;
  std::array<std::uint8_t, language_file_limit> bytes;
  const std::size_t size = file.read_at(0, bytes);
  if (file.read_error()) return false;
  return parse_language_file({reinterpret_cast<const char*>(bytes.data()), size});
}

std::string language_home() { return std::string(folder_of(program_file("Languages"))); }

bool load_ui_text(std::string_view language) {
  if (!language.empty()) return ui_text_load(language_home(), language);
  return ui_text_load(std::string(folder_of(program_path())), {}) ||
         ui_text_load(language_home(), english_language);
}

bool parse_language_file(std::string_view text, std::vector<std::string>* passed_over) {
  text = text.substr(0, language_file_limit);
  text = text.substr(0, text.find('\0'));
  bool utf8 = text.starts_with(utf8_mark);
  std::size_t end = text.find(line_end);
  if (end == std::string_view::npos || end + line_end.size() == text.size()) return false;
  while (true) {
    text.remove_prefix(end + line_end.size());  // the first line, then each that was read
    end = text.find(line_end);
    if (end == std::string_view::npos) return true;
    const std::string whole_line = wide_to_bytes(bytes_to_wide(text.substr(0, end), utf8), true);
    const std::string_view line = cut_to_units(whole_line, language_line_limit);
    if (!take_in(line, utf8) && passed_over != nullptr) passed_over->emplace_back(line);
  }
}

}  // namespace corvelin

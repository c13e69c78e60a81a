// SPDX-License-Identifier: GPL-2.0-or-later
// Language files by name, and languages by locale.
#include "text/language_list.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/files/file.h"
#include "platform/text/text.h"
#include "text/language_file.h"

namespace corvelin {

namespace {

constexpr std::string_view english = "English (default, no language file)";
constexpr std::string_view separator = "  /  ";
constexpr std::size_t head_size = 498;  // bytes of a file that are looked at

std::string head_of(const std::string& path) {
  InputFile file;
  if (file.open(path)) return {};
  std::array<std::uint8_t, head_size> bytes;
  const std::size_t size = file.read_at(0, bytes);
  return {reinterpret_cast<const char*>(bytes.data()), size};
}

// The text of the line "Native:", which may be the first one.
std::string native_name(std::string_view head) {
  constexpr std::string_view word = "Native:";
  for (std::string_view line; take_line(head, line);) {
    if (!line.starts_with(word)) continue;
    line = line.substr(0, line.find('\r'));
    line.remove_prefix(word.size());
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return std::string(line);
  }
  return {};
}

std::optional<Language> language_in(const std::filesystem::path& path) {
  constexpr std::string_view prefix = "lan";
  constexpr std::string_view ending = ".ini";
  const std::string file = path.filename().string();
  if (file.size() < prefix.size() + ending.size() || !file.starts_with(prefix) ||
      !file.ends_with(ending))
    return std::nullopt;
  std::string head = head_of(path.string());
  if (!says_utf8(head)) return std::nullopt;
  if (head.starts_with(utf8_mark)) head.erase(0, utf8_mark.size());
  return Language{.name = file.substr(prefix.size(), file.size() - prefix.size() - ending.size()),
                  .native = native_name(head)};
}

struct LocaleName {
  std::string_view locale;  // it begins so
  std::string_view name;
};

// The longer one of two that fit stands first.
constexpr LocaleName locale_names[] = {
    {"zh_CN", "ChineseSimp"}, {"zh_SG", "ChineseSimp"}, {"zh", "ChineseTrad"}, {"be", "Belarusian"},
    {"ca", "Catalan"},        {"cs", "Czech"},          {"da", "Danish"},      {"de", "German"},
    {"es", "Spanish"},        {"fi", "Finnish"},        {"fr", "French"},      {"he", "Hebrew"},
    {"iw", "Hebrew"},         {"hr", "Croatian"},       {"hu", "Hungarian"},   {"id", "Indonesian"},
    {"it", "Italian"},        {"ja", "Japanese"},       {"ko", "Korean"},      {"nl", "Dutch"},
    {"pl", "Polish"},         {"pt", "PortugueseBr"},   {"ru", "Russian"},     {"sr", "Serbian"},
    {"sv", "Swedish"},        {"tr", "Turkish"},        {"uk", "Ukrainian"},
};

}  // namespace

std::string Language::entry() const {
  if (name.empty()) return std::string(english);
  return native.empty() ? name : name + std::string(separator) + native;
}

std::vector<Language> language_list(const std::string& program_folder) {
  std::vector<Language> list;
  std::error_code error;
  std::filesystem::directory_iterator entry(program_folder + "Languages", error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
    if (auto language = language_in(entry->path());
        language && language->name != english_language)  // that is the first entry's
      list.push_back(std::move(*language));
  std::ranges::sort(list, {}, &Language::name);
  list.insert(list.begin(), Language{});
  return list;
}

bool says_utf8(std::string_view text) {
  return text.starts_with(utf8_mark) ||
         text.substr(0, head_size).find("UTF-8=1") != std::string_view::npos;
}

std::string language_of_entry(std::string_view entry) {
  if (entry.starts_with("English")) return {};
  return std::string(entry.substr(0, entry.find(separator)));
}

std::string language_of_locale(std::string_view locale) {
  const auto* const known = std::ranges::find_if(locale_names, [locale](const LocaleName& row) {
    const std::string_view rest = locale.substr(std::min(row.locale.size(), locale.size()));
    return locale.starts_with(row.locale) && (rest.empty() || !std::isalpha(rest.front()));
  });
  return known == std::end(locale_names) ? std::string() : std::string(known->name);
}

std::string locale_of_language(std::string_view name) {
  const auto* const known = std::ranges::find(locale_names, name, &LocaleName::name);
  return known == std::end(locale_names) ? std::string() : std::string(known->locale);
}

std::string language_by_user_default() {
  for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return language_of_locale(value);
  }
  return {};
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The languages that the user may choose from, and the one that fits the user's system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

/// One language: "German" with its file's name for itself, if it tells one.
struct Language {
  std::string name;    // as the setting `language` holds it; empty for English
  std::string native;  // "Deutsch"; empty if the file tells none

  /// The entry of a list: "German  /  Deutsch".
  [[nodiscard]] std::string entry() const;
};

/// English first, then a language for each file in the folder `Languages` of `program_folder`, in
/// the order of their names. A file that does not say that it is UTF-8 is left out.
std::vector<Language> language_list(const std::string& program_folder);

/// Whether the start of a language file's text says that it is UTF-8.
bool says_utf8(std::string_view text);

/// The setting for an entry that was chosen: empty for English.
std::string language_of_entry(std::string_view entry);

/// The language of a locale as the system names it ("de_AT.UTF-8"): empty for English, and for one
/// that there is no name for.
std::string language_of_locale(std::string_view locale);

/// The other way round: the locale of a language, by its name; empty for English and for one that
/// is not known.
std::string locale_of_language(std::string_view name);

/// The language of the user's locale.
std::string language_by_user_default();

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Reads a translator's language file into the text table. A file may name any part of the rows: the
// others stay English.
//
// The file is text in lines ended by CR LF, in UTF-8 if it begins with a byte order mark or from a
// line "UTF-8=1" on, in the ANSI code page before that:
//
//   the first line is for people, whatever it says
//   UTF-8=1
//   Language: German
//   Composer: who translated it
//   Version: 2.40
//   men010=&Open...	Ctrl+O
//   msg005=A number sign ends a line#and begins the next
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

/// How much of a language file is read, and of each of its lines.
constexpr std::size_t language_file_limit = 40000;  // bytes
constexpr std::size_t language_line_limit = 999;    // UTF-16 code units

/// Sets the table to English and then to what the language file supplies.
///
/// The file is Languages/lan<language>.ini below `program_folder`, which ends in "/". With an empty
/// `language` it is the first lan*.ini, by name, in the folder itself. False when there is no such
/// file or it is no language file: the table is English then.
bool ui_text_load(const std::string& program_folder, std::string_view language);

/// The folder, with its "/", in which `Languages` lies for the program that runs: its own, or that
/// of its installed files.
std::string language_home();

/// The file of English: the few rows that this platform has other words for.
constexpr std::string_view english_language = "English";

/// The same for the program that runs: from `language_home`, without a `language` from right beside
/// the program, and where nothing lies there, by the file of English.
bool load_ui_text(std::string_view language);

/// Lays the rows of a language file's text over the table. False, and nothing changed, without a
/// line end that has anything behind it. Lines that mean nothing are passed over, and told to who
/// asks for them.
bool parse_language_file(std::string_view text, std::vector<std::string>* passed_over = nullptr);

}  // namespace corvelin

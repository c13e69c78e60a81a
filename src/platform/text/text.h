// SPDX-License-Identifier: GPL-2.0-or-later
// Text between its three forms: UTF-16 for names with a limit in characters, UTF-8 and the ANSI
// code page (Windows-1252, which cue sheets and ID3v1 tags found in the wild are written in).
// Bad text is no error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvelin {

/// The bytes that some programs put in front of UTF-8 text.
constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// Decodes `text` as UTF-8 (with `utf8`) or as Windows-1252. A byte that means nothing becomes
/// U+FFFD.
std::u16string bytes_to_wide(std::string_view text, bool utf8);

/// Encodes `text` as UTF-8 (with `utf8`), a lone surrogate becoming U+FFFD, or as Windows-1252,
/// where a character that the code page lacks becomes "?".
std::string wide_to_bytes(std::u16string_view text, bool utf8);

/// Decodes the form of a path in digits: two hexadecimal ones per byte of its little-endian
/// UTF-16 text. Ends at the first pair that is no number and at a last, incomplete character.
std::u16string hex_to_wide(std::string_view digits);

/// The way back.
std::string wide_to_hex(std::u16string_view text);

/// The leading part of `utf8_text` that fills at most `limit` UTF-16 code units; never half a
/// character.
std::string_view cut_to_units(std::string_view utf8_text, std::size_t limit);

std::u16string cut_to_units(std::u16string text, std::size_t limit);

/// The same with a limit in bytes.
std::string_view cut_to_bytes(std::string_view utf8_text, std::size_t limit);

/// The character at the start of a text, or the byte that is none; the text is not empty.
std::string_view first_character(std::string_view utf8_text);

/// How many UTF-16 code units the text fills.
std::size_t count_units(std::string_view utf8_text);

/// The number at the start of `text`: blanks, a sign, decimal digits, and whatever follows them
/// unread. 0 when there is none; a number beyond 32 bits stays at the nearest limit.
std::int32_t leading_number(std::string_view text);

/// The decimal number at the start of `text`: blanks, a sign, digits, a point and digits. What
/// follows is unread, and so is everything beyond 300 characters. 0 when there is none.
double leading_decimal(std::string_view text);

/// Takes the next line off `text`, without its line feed and a carriage return in front of that.
/// False when no line is complete.
bool take_line(std::string_view& text, std::string_view& line);

/// `text` with blanks for line ends and zeros, so that it fills one line of a file and no more.
std::string on_one_line(std::string text);

/// `text` with `sign` for control characters other than line feeds. Names come from files and may
/// hold what a terminal takes for commands.
std::string printable(std::string text, char sign = '?');

/// Whether two texts are equal but for the case of the letters A to Z.
bool equal_ignoring_case(std::string_view a, std::string_view b);

}  // namespace corvelin

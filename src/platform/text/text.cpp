// SPDX-License-Identifier: GPL-2.0-or-later
// The text conversions.
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace corvelin {

namespace {

constexpr char16_t replacement = 0xFFFD;

// Windows-1252 where it differs from Latin-1: bytes 0x80 to 0x9F, 0 for those that it leaves
// undefined.
constexpr std::array<char16_t, 32> code_page_high = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

struct CodePoint {
  char32_t value = replacement;
  std::size_t bytes = 1;  // how many bytes of the text it took
};

CodePoint decode_utf8(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {};
  char32_t value = lead & (0x7F >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return {};
    value = value << 6 | (byte(at + i) & 0x3F);
  }
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (overlong || surrogate || value > 0x10FFFF) return {};
  return {value, length};
}

std::size_t units_of(const CodePoint& point) { return point.value < 0x10000 ? 1 : 2; }

void append_wide(std::u16string& wide, char32_t value) {
  if (value < 0x10000) {
    wide += static_cast<char16_t>(value);
    return;
  }
  wide += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
  wide += static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
}

void append_utf8(std::string& bytes, char32_t value) {
  const auto put = [&](char32_t byte) { bytes += static_cast<char>(byte); };
  if (value < 0x80) {
    put(value);
  } else if (value < 0x800) {
    put(0xC0 | value >> 6);
    put(0x80 | (value & 0x3F));
  } else if (value < 0x10000) {
    put(0xE0 | value >> 12);
    put(0x80 | (value >> 6 & 0x3F));
    put(0x80 | (value & 0x3F));
  } else {
    put(0xF0 | value >> 18);
    put(0x80 | (value >> 12 & 0x3F));
    put(0x80 | (value >> 6 & 0x3F));
    put(0x80 | (value & 0x3F));
  }
}

char16_t from_code_page(unsigned char byte) {
  if (byte < 0x80 || byte > 0x9F) return byte;
  const char16_t value = code_page_high[byte - 0x80u];
  return value != 0 ? value : replacement;
}

char to_code_page(char32_t value) {
  if (value < 0x80 || (value >= 0xA0 && value <= 0xFF)) return static_cast<char>(value);
  const auto* const found = std::find(code_page_high.begin(), code_page_high.end(), value);
  if (found == code_page_high.end()) return '?';
  return static_cast<char>(0x80 + (found - code_page_high.begin()));
}

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

}  // namespace

std::u16string bytes_to_wide(std::string_view text, bool utf8) {
  std::u16string wide;
  wide.reserve(text.size());
  if (!utf8) {
    for (const char c : text) wide += from_code_page(static_cast<unsigned char>(c));
    return wide;
  }
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint point = decode_utf8(text, at);
    append_wide(wide, point.value);
    at += point.bytes;
  }
  return wide;
}

std::string wide_to_bytes(std::u16string_view text, bool utf8) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    char32_t value = text[at];
    if (value >= 0xD800 && value <= 0xDFFF) {
      const bool pair = value < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 &&
                        text[at + 1] <= 0xDFFF;
      value = pair ? 0x10000 + ((value - 0xD800) << 10) + (text[at + 1] - 0xDC00u) : replacement;
      if (pair) ++at;
    }
    if (utf8) {
      append_utf8(bytes, value);
    } else {
      bytes += to_code_page(value);
    }
  }
  return bytes;
}

std::u16string hex_to_wide(std::string_view digits) {
  std::u16string wide;
  for (std::size_t at = 0; at + 4 <= digits.size(); at += 4) {
    const int d0 = hex_digit(digits[at]);
    const int d1 = hex_digit(digits[at + 1]);
    const int d2 = hex_digit(digits[at + 2]);
    const int d3 = hex_digit(digits[at + 3]);
    if (d0 < 0 || d1 < 0 || d2 < 0 || d3 < 0) break;
    const int unit = d0 * 16 + d1 + (d2 * 16 + d3) * 256;
    if (unit == 0) break;
    wide += static_cast<char16_t>(unit);
  }
  return wide;
}

std::string wide_to_hex(std::u16string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string hex;
  for (const char16_t unit : text)
    for (const int shift : {4, 0, 12, 8})
      hex += digits[static_cast<std::size_t>(unit >> shift & 15)];
  return hex;
}

std::string_view cut_to_units(std::string_view utf8_text, std::size_t limit) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < utf8_text.size();) {
    const CodePoint point = decode_utf8(utf8_text, at);
    units += units_of(point);
    if (units > limit) return utf8_text.substr(0, at);
    at += point.bytes;
  }
  return utf8_text;
}

std::u16string cut_to_units(std::u16string text, std::size_t limit) {
  if (text.size() <= limit) return text;
  const bool parts_a_pair = limit > 0 && text[limit - 1] >= 0xD800 && text[limit - 1] <= 0xDBFF;
  text.resize(parts_a_pair ? limit - 1 : limit);
  return text;
}

std::string_view cut_to_bytes(std::string_view utf8_text, std::size_t limit) {
  std::size_t at = 0;
  while (at < utf8_text.size()) {
    const std::size_t next = at + decode_utf8(utf8_text, at).bytes;
    if (next > limit) break;
    at = next;
  }
  return utf8_text.substr(0, at);
}

std::string_view first_character(std::string_view utf8_text) {
  return utf8_text.substr(0, decode_utf8(utf8_text, 0).bytes);
}

std::size_t count_units(std::string_view utf8_text) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < utf8_text.size();) {
    const CodePoint point = decode_utf8(utf8_text, at);
    units += units_of(point);
    at += point.bytes;
  }
  return units;
}

std::int32_t leading_number(std::string_view text) {
  std::size_t at = 0;
  const auto is_blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  while (at < text.size() && is_blank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  constexpr std::int64_t beyond = std::int64_t{1} << 32;
  std::int64_t value = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
    value = std::min(value * 10 + (text[at] - '0'), beyond);
  if (negative) value = -value;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

double leading_decimal(std::string_view text) {
  constexpr std::size_t longest = 300;  // a number of so few digits is in the range of a double
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return 0;
  text = text.substr(begin, longest);
  const bool negative = text.front() == '-';
  if (negative || text.front() == '+') text.remove_prefix(1);
  if (text.find_first_of("0123456789.") != 0) return 0;  // a second sign, or "inf"
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  return negative ? -value : value;
}

bool take_line(std::string_view& text, std::string_view& line) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) return false;
  line = text.substr(0, end);
  if (line.ends_with('\r')) line.remove_suffix(1);
  text.remove_prefix(end + 1);
  return true;
}

std::string on_one_line(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  return text;
}

std::string printable(std::string text, char sign) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // The second range of controls, U+0080 to U+009F, has two bytes.
    const bool is_long =
        byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (is_long) text.erase(i + 1, 1);
    if (is_long || (byte < ' ' && byte != '\n') || byte == 0x7F) text[i] = sign;
  }
  return text;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The text table and its formatter.
#include "text/ui_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/text/text.h"

namespace corvelin {

namespace {

// `ui_text_rows` for what is no row.
constexpr std::size_t row_index(TextSection section, std::uint32_t number) {
  const std::size_t end = section == ext ? ui_text_rows : static_cast<std::size_t>(ext);
  const std::size_t row = static_cast<std::size_t>(section) + number;
  return row < end ? row : ui_text_rows;
}

struct EnglishRow {
  std::string_view text;
  bool is_set = false;  // else `text`, if any, belongs to a control
};

constexpr std::array<EnglishRow, ui_text_rows> english = [] {
  std::array<EnglishRow, ui_text_rows> rows;
#define TEXT(section, number, text) rows[row_index(section, number)] = {text, true};
#define LABEL(section, number, text) rows[row_index(section, number)] = {text, false};
#include "text/ui_text_rows.inc"
#undef TEXT
#undef LABEL
  return rows;
}();

std::array<std::optional<std::string>, ui_text_rows> translated;

constexpr std::size_t longest_plain_text = 198;  // UTF-16 code units

// No text of the program asks for more; a row that does would only make a box unreadable.
constexpr std::size_t widest_field = 500;

// One "%..." of a row.
struct Specifier {
  bool left = false;
  bool zeros = false;
  bool plus = false;
  std::size_t width = 0;
  std::optional<std::size_t> precision;
  char conversion = 0;
};

bool take(std::string_view& text, char c) {
  if (!text.starts_with(c)) return false;
  text.remove_prefix(1);
  return true;
}

// The digits at the start of `text`, 0 without any, or nothing above the widest field.
std::optional<std::size_t> take_size(std::string_view& text) {
  std::size_t size = 0;
  while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
    size = size * 10 + static_cast<std::size_t>(text.front() - '0');
    if (size > widest_field) return {};
    text.remove_prefix(1);
  }
  return size;
}

// The specifier at the start of `text`, its "%" taken already.
std::optional<Specifier> take_specifier(std::string_view& text) {
  Specifier specifier;
  for (;; text.remove_prefix(1)) {
    if (text.starts_with('-')) {
      specifier.left = true;
    } else if (text.starts_with('0')) {
      specifier.zeros = true;
    } else if (text.starts_with('+')) {
      specifier.plus = true;
    } else {
      break;
    }
  }
  const std::optional<std::size_t> width = take_size(text);
  if (!width) return {};
  specifier.width = *width;
  if (take(text, '.')) {
    specifier.precision = take_size(text);
    if (!specifier.precision) return {};
  }
  text.remove_prefix(std::min(text.find_first_not_of("hlLjzt"), text.size()));
  if (text.empty()) return {};
  specifier.conversion = text.front();
  text.remove_prefix(1);
  return specifier;
}

std::string in_field(const Specifier& specifier, std::string text) {
  const std::size_t length = count_units(text);
  if (length >= specifier.width) return text;
  text.insert(specifier.left ? text.size() : 0, specifier.width - length, ' ');
  return text;
}

std::string number_in_field(const Specifier& specifier, bool negative, std::string digits,
                            bool zeros) {
  const std::string_view sign = negative ? "-" : specifier.plus ? "+" : "";
  const std::size_t length = sign.size() + digits.size();
  if (zeros && !specifier.left && length < specifier.width)
    digits.insert(0, specifier.width - length, '0');
  return in_field(specifier, std::string(sign).append(digits));
}

// The argument in the specifier's form, or nothing when it is of another kind. One overload a kind
// of argument.
struct Formatter {
  const Specifier& specifier;

  std::optional<std::string> operator()(std::int64_t value) const {
    const auto bits = static_cast<std::uint64_t>(value);
    const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;
    std::string digits;
    switch (specifier.conversion) {
      case 'd':
      case 'i':
      case 'u':
        digits = fmt::format("{}", magnitude);
        break;
      case 'x':
        digits = fmt::format("{:x}", magnitude);
        break;
      case 'X':
        digits = fmt::format("{:X}", magnitude);
        break;
      case 'c':
        return in_field(specifier,
                        wide_to_bytes(std::u16string(1, static_cast<char16_t>(value)), true));
      default:
        return {};
    }
    const std::size_t least = specifier.precision.value_or(1);
    if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
    return number_in_field(specifier, value < 0, std::move(digits),
                           specifier.zeros && !specifier.precision);
  }

  std::optional<std::string> operator()(double value) const {
    if (specifier.conversion != 'f') return {};
    return number_in_field(
        specifier, std::signbit(value),
        fmt::format("{:.{}f}", std::fabs(value), specifier.precision.value_or(6)),
        specifier.zeros && std::isfinite(value));
  }

  std::optional<std::string> operator()(std::string_view text) const {
    if (specifier.conversion != 's') return {};
    if (specifier.precision) text = cut_to_units(text, *specifier.precision);
    return in_field(specifier, std::string(text));
  }
};

// The row with its specifiers filled in, or nothing when they and the arguments don't fit.
std::optional<std::string> filled_in(std::string_view row,
                                     std::initializer_list<RowArgument> arguments) {
  std::string text;
  const auto* next = arguments.begin();
  while (true) {
    const std::size_t percent = row.find('%');
    text += row.substr(0, percent);
    if (percent == std::string_view::npos) break;
    row.remove_prefix(percent + 1);
    if (take(row, '%')) {
      text += '%';
      continue;
    }
    const std::optional<Specifier> specifier = take_specifier(row);
    if (!specifier || next == arguments.end()) return {};
    const std::optional<std::string> field = std::visit(Formatter{*specifier}, *next++);
    if (!field) return {};
    text += *field;
  }
  if (next != arguments.end()) return {};
  return text;
}

}  // namespace

std::string_view ui_text(TextRow row) { return ui_text(row.section, row.number); }

std::string_view ui_text(TextSection section, std::uint32_t number) {
  const std::size_t row = row_index(section, number);
  if (row >= ui_text_rows) return {};
  if (translated[row]) return *translated[row];
  return english[row].is_set ? english[row].text : std::string_view{};
}

bool has_ui_text(TextSection section, std::uint32_t number) {
  const std::size_t row = row_index(section, number);
  return row < ui_text_rows && (translated[row] || english[row].is_set);
}

std::string_view label_text(TextRow row) {
  return is_translated(row.section, row.number) ? ui_text(row)
                                                : english_text(row.section, row.number);
}

std::string_view english_text(TextSection section, std::uint32_t number) {
  const std::size_t row = row_index(section, number);
  return row < ui_text_rows ? english[row].text : std::string_view{};
}

bool is_translated(TextSection section, std::uint32_t number) {
  const std::size_t row = row_index(section, number);
  return row < ui_text_rows && translated[row].has_value();
}

bool set_ui_text(TextSection section, std::uint32_t number, std::string text) {
  const std::size_t row = row_index(section, number);
  if (row >= ui_text_rows) return false;
  translated[row] = std::move(text);
  return true;
}

void ui_text_free() { translated = {}; }

std::string menu_text_plain(std::string_view text, bool with_key) {
  if (text.empty()) return " ";
  std::string plain(text.substr(0, text.find_first_of("\t.")));
  std::erase(plain, '&');
  plain = cut_to_units(plain, longest_plain_text);
  const std::size_t tab = text.rfind('\t');
  if (!with_key || tab == std::string_view::npos) return plain;
  return fmt::format("{}   [{}]", plain, text.substr(tab + 1));
}

std::string format_row_with(std::string_view row, std::initializer_list<RowArgument> arguments) {
  return filled_in(row, arguments).value_or(std::string(row));
}

}  // namespace corvelin

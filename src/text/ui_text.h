// SPDX-License-Identifier: GPL-2.0-or-later
// The table of all texts that the user reads, and the ways to put one into words. Each row has its
// English text; a language file lays a translation over it. Reading that file is language_file's
// business.
//
// Texts are UTF-8 with lines parted by "\n". A translated row comes from outside, so its length and
// its format specifiers are whatever the translator wrote.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace corvelin {

/// The sections of the table. A row is named by its section and a number, as in ui_text(msg, 8);
/// the value of a section is its first row.
enum class TextSection : std::uint16_t {
  men = 0,    // menu titles and entries
  win = 80,   // labels of the main window and the status
  ttp = 120,  // tooltips
  msg = 160,  // captions and messages
  cfg = 220,  // the configuration dialog
  dlg = 310,  // all other dialogs
  ext = 413,  // what windows and their readers need beside
};
using enum TextSection;

/// A row of the table, for tables whose rows have a text.
struct TextRow {
  TextSection section;
  std::uint32_t number;
};

constexpr std::size_t ui_text_rows = 413 + 140;

/// Rows of `dlg` that hold what a language file tells of itself; never set without one.
constexpr std::uint32_t translation_language = 100;
constexpr std::uint32_t translation_composer = 101;
constexpr std::uint32_t translation_version = 102;

/// The text of a row, or an empty one while the row is not set. Good until the language changes.
std::string_view ui_text(TextRow row);
std::string_view ui_text(TextSection section, std::uint32_t number);

/// Whether a row is set. A language file can set a row to an empty text.
bool has_ui_text(TextSection section, std::uint32_t number);

/// The text of a dialog's control: the row if it is set, else the English text that the control has
/// of its own.
std::string_view label_text(TextRow row);

/// The English text of a row or of its control, whatever lies over it; empty for a row without one.
std::string_view english_text(TextSection section, std::uint32_t number);

/// Whether a translation lies over a row.
bool is_translated(TextSection section, std::uint32_t number);

/// Lays a translation over a row. A number that runs over the end of its section means a row of the
/// next, but for `ext`; false, and nothing done, for what is no row.
bool set_ui_text(TextSection section, std::uint32_t number, std::string text);

/// Drops all translations: what is left is the English table.
void ui_text_free();

/// A menu text in plain words, for undo labels, captions, log lines and tooltips: at most 198
/// characters up to a tab or full stop, without any "&". "Nor&malize...\tCtrl+M" gives "Normalize",
/// and with `with_key` "Normalize   [Ctrl+M]". An empty text gives " ".
std::string menu_text_plain(std::string_view text, bool with_key = false);

/// What a format specifier of a row can stand for.
using RowArgument = std::variant<std::int64_t, double, std::string_view>;

template <typename Argument>
RowArgument row_argument(const Argument& argument) {
  if constexpr (std::integral<Argument>) {
    return static_cast<std::int64_t>(argument);
  } else if constexpr (std::floating_point<Argument>) {
    return static_cast<double>(argument);
  } else {
    return std::string_view(argument);
  }
}

/// `format_row` below with its arguments in one list.
std::string format_row_with(std::string_view row, std::initializer_list<RowArgument> arguments);

/// Fills in the specifiers of a row as printf does: %d %i %u %x %X %c take an integer, %f a
/// floating-point number, %s a text (UTF-8), each with the flags "-+0", a width and a precision;
/// length modifiers (%ld, %ls, %hs) say nothing, because each argument knows its own type. %% is
/// "%".
///
/// A negative number keeps its sign in %u and %x. When the specifiers and the arguments don't fit
/// in number or kind, or something else follows a "%", the row is given back as it stands.
template <typename... Arguments>
std::string format_row(std::string_view row, const Arguments&... arguments) {
  return format_row_with(row, {row_argument(arguments)...});
}

}  // namespace corvelin

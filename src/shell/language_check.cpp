// SPDX-License-Identifier: GPL-2.0-or-later
// Row by row and menu by menu.
#include "shell/language_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "edit/command_table.h"
#include "edit/editor.h"
#include "platform/processes/program.h"
#include "platform/text/text.h"
#include "shell/menu_tree.h"
#include "text/language_file.h"
#include "text/language_list.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

struct Section {
  TextSection section;
  std::string_view name;
  std::uint32_t rows;
};

constexpr Section sections[] = {{men, "men", 80},
                                {win, "win", 40},
                                {ttp, "ttp", 40},
                                {msg, "msg", 60},
                                {cfg, "cfg", 90},
                                {dlg, "dlg", 100},
                                {ext, "ext", ui_text_rows - 413}};

// A row in the form of the file.
std::string in_file_form(std::string_view text) {
  std::string line(text);
  std::ranges::replace(line, '\n', '#');
  return line;
}

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The specifiers and variables of a row: each "%" with what follows it up to a letter. The order
// counts where the program fills them in, which it does for those in small letters.
std::vector<std::string> specifiers(std::string_view text) {
  std::vector<std::string> list;
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
    const std::size_t end = text.find_first_not_of("-+0123456789.hl", at + 1);
    if (end == std::string_view::npos || !is_letter(text[end])) continue;
    list.emplace_back(text.substr(at, end - at + 1));
  }
  const bool are_filled_in =
      std::ranges::any_of(list, [](const std::string& one) { return one.back() >= 'a'; });
  if (are_filled_in) return list;
  const std::set<std::string> names(list.begin(), list.end());
  return {names.begin(), names.end()};
}

class LanguageCheck {
 public:
  std::vector<std::string> run(std::string_view text) {
    check_file(text);
    ui_text_free();
    std::vector<std::string> passed_over;
    if (!parse_language_file(text, &passed_over)) {
      faults_ = {"This is no language file: it needs lines that end in CR LF"};
      return std::move(faults_);
    }
    for (const std::string& line : passed_over) fault("\"{}\" means nothing", line);
    for (const Section& section : sections)
      for (std::uint32_t number = 0; number < section.rows; ++number) check_row(section, number);
    check_bar();
    ui_text_free();
    return std::move(faults_);
  }

 private:
  template <typename... Arguments>
  void fault(fmt::format_string<Arguments...> form, Arguments&&... arguments) {
    faults_.push_back(fmt::format(form, std::forward<Arguments>(arguments)...));
  }

  void check_file(std::string_view text) {
    if (text.size() > language_file_limit)
      fault("Only the first {} bytes are read, and the file has {}", language_file_limit,
            text.size());
    if (!says_utf8(text)) fault("No line \"UTF-8=1\" at the start: the list leaves the file out");
  }

  void check_row(const Section& section, std::uint32_t number) {
    const std::string name = fmt::format("{}{:03}", section.name, number);
    const std::string_view english = english_text(section.section, number);
    if (!is_translated(section.section, number)) {
      if (!english.empty()) fault("{} is missing: {}", name, in_file_form(english));
      return;
    }
    if (english.empty()) return fault("{} is no row of this version", name);
    const std::string_view text = ui_text(section.section, number);
    if (specifiers(text) != specifiers(english))
      fault("{} needs {}", name, fmt::join(specifiers(english), " "));
    if ((text.find('\t') == std::string_view::npos) !=
        (english.find('\t') == std::string_view::npos))
      fault("{} needs the key behind a tab as in: {}", name, in_file_form(english));
  }

  void check_bar() {
    std::vector<std::string_view> titles;
    for (const Menu* const menu : menu_bar()) {
      titles.push_back(ui_text(men, menu->title));
      check_menu(*menu);
    }
    check_letters("The menu bar", titles);
  }

  void check_menu(const Menu& menu) {
    std::vector<std::string_view> texts;
    for (const MenuRow& row : menu.rows) {
      if (row.menu != nullptr) {
        texts.push_back(ui_text(men, row.menu->title));
        check_menu(*row.menu);
      } else if (row.command != 0) {
        texts.push_back(text_of(*command_of(editor_, row.command)));
      }
    }
    check_letters(menu_text_plain(ui_text(men, menu.title)), texts);
  }

  void check_letters(std::string_view menu, const std::vector<std::string_view>& texts) {
    std::map<char16_t, std::string_view> taken;
    for (const std::string_view text : texts) {
      const std::u16string wide = bytes_to_wide(text, true);
      const std::size_t at = wide.find(u'&');
      if (at == std::u16string::npos || at + 1 == wide.size()) continue;
      const auto [entry, is_new] = taken.emplace(small_letter(wide[at + 1]), text);
      if (!is_new)
        fault(R"({}: one letter for "{}" and "{}")", menu, before_key(entry->second),
              before_key(text));
    }
  }

  static std::string_view before_key(std::string_view text) {
    return text.substr(0, text.find('\t'));
  }

  static char16_t small_letter(char16_t letter) {
    const bool is_capital =
        (letter >= u'A' && letter <= u'Z') || (letter >= 0xC0 && letter <= 0xDE && letter != 0xD7);
    return is_capital ? static_cast<char16_t>(letter + 0x20) : letter;
  }

  const Editor editor_{};  // the menus of a window with nothing open
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> check_language(std::string_view text) { return LanguageCheck().run(text); }

}  // namespace corvelin

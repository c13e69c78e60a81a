// SPDX-License-Identifier: GPL-2.0-or-later
// The choice of what a line does.
#include "cli/edit_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "cli/edit_line.h"
#include "cli/listings.h"
#include "cli/nearest_word.h"
#include "cli/play_lines.h"
#include "cli/words.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "model/document.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

std::vector<std::string_view> known_settings() {
  std::vector<std::string_view> keys;
  for (const SettingKey& row : setting_keys()) keys.push_back(row.key);
  return keys;
}

// A command of the table, by number or name.
Refusal run_command(Editor& editor, const std::string& name, std::size_t argument_count) {
  const auto number = parse_whole<CommandId>(name);
  const auto id = number ? number : find_command(name);
  if (!id) {
    return fmt::format("there is no line or command \"{}\"{}", name,
                       did_you_mean(name, known_lines()));
  }
  if (argument_count != 0) return fmt::format("{} takes no arguments", name);
  switch (dispatch_command(editor, *id)) {
    case DispatchResult::unknown:
      return fmt::format("there is no command {}", name);
    case DispatchResult::no_document:
      return "no document is open";
    case DispatchResult::not_now:
      return "not while audio plays";
    case DispatchResult::nothing:
      return fmt::format("{} found nothing to do", name);
    case DispatchResult::busy:
      return fmt::format("{} has to wait for the command before it", name);
    case DispatchResult::refused:
      return fmt::format("{} was refused", name);
    case DispatchResult::done:
      break;
  }
  return wait_for_play(editor);  // nobody could stop it later
}

Refusal run_words(Editor& editor, const std::vector<std::string>& words, HeadlessHost& host) {
  const std::string& name = words.front();
  const EditLine* const line = find_line(name);
  if (line == nullptr) return run_command(editor, name, words.size() - 1);
  const Arguments arguments = Arguments(words).subspan(1);
  if (arguments.size() < line->fewest || arguments.size() > line->most)
    return fmt::format("the line is: {} {}", name, line->arguments);
  if (line->needs_document && editor.document.parts.empty()) return "no document is open";
  return line->run(editor, arguments, host);
}

}  // namespace

std::span<const std::span<const EditLine>> line_tables() {
  static const std::span<const EditLine> tables[] = {
      document_lines(), cut_lines(),  selection_lines(), name_lines(),
      level_lines(),    save_lines(), play_lines(),      run_lines()};
  return tables;
}

const EditLine* find_line(std::string_view name) {
  for (const auto& table : line_tables()) {
    const auto line = std::ranges::find(table, name, &EditLine::name);
    if (line != table.end()) return &*line;
  }
  return nullptr;
}

Refusal set_refusal(SetResult result, std::string_view key, std::string_view value) {
  const SettingKey* const row = find_setting(key);
  switch (result) {
    case SetResult::done:
      return no_refusal;
    case SetResult::unknown_key:
      return fmt::format("there is no setting \"{}\"{}", key, did_you_mean(key, known_settings()));
    case SetResult::not_settable:
      return fmt::format("{} can't be set ({})", key, row->meaning);
    case SetResult::not_a_number:
    case SetResult::not_allowed:
      return fmt::format("{} takes {}, not \"{}\" ({})", key, allowed_text(*row), value,
                         row->meaning);
    case SetResult::too_long:
      return fmt::format("the value of {} is too long", key);
  }
  return no_refusal;
}

Refusal run_edit_words(Editor& editor, const std::vector<std::string>& words, HeadlessHost& host) {
  Refusal refusal = run_words(editor, words, host);
  host.set_next_path(std::nullopt);  // a line that was refused before it asked
  host.set_next_dialog(nullptr);
  return refusal;
}

Refusal run_edit_line(Editor& editor, std::string_view line, HeadlessHost& host) {
  const auto words = split_words(line);
  if (!words) return "a quote is left open";
  return words->empty() ? no_refusal : run_edit_words(editor, *words, host);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Part list and grey state.
#include "edit/menu_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

std::string part_entry(const Document& document, PartIndex index) {
  constexpr std::size_t longest_title = 50;  // characters
  const Part& part = document.parts[index];
  const std::string time = shown_time(document, part.part_beg);
  std::string text = fmt::format("{:02}  ({}) ", index + 1, time.substr(0, time.rfind('.')));
  if (part.part_iscue != 0) text += fmt::format(" {}", ui_text(row::cue));
  if (has_gap(document, index)) text += fmt::format(" {}", ui_text(row::cut));
  if (part.part_gainbeg != 0) text += fmt::format(" {}", ui_text(row::level));
  text += '\t';
  if (!part.part_title.empty())
    text += " " + wide_to_bytes(cut_to_units(part.part_title, longest_title), true);
  return text;
}

bool is_live(const Editor& editor, const Command& command) {
  const bool has_document = !editor.document.files.empty();
  const bool is_armed = editor.recorder.is_armed;
  if (command.has(rule::live_when_stopped)) return !editor.playback.is_playing && !is_armed;
  if (command.has(rule::live_with_levels)) return has_document && editor.document.kind.layer == 3;
  if (command.has(rule::live_with_undo)) return !editor.undo_stack.empty();
  if (command.has(rule::live_with_transport)) return has_document || is_armed;
  return has_document || !command.has(rule::on_document);
}

}  // namespace

std::vector<std::string> part_list(const Document& document) {
  constexpr std::size_t most_entries = last_part_command - first_part_command;
  std::vector<std::string> list;
  for (PartIndex i = 0; i < std::min(document.parts.size(), most_entries); ++i)
    list.push_back(part_entry(document, i));
  return list;
}

std::vector<MenuEntry> recent_entries() {
  constexpr std::size_t longest_entry = 62;  // characters
  constexpr std::size_t most_entries = last_recent_command - first_recent_command + 1;
  std::vector<MenuEntry> entries;
  const std::vector<std::string>& files = settings.file_recent;
  const std::size_t count =
      std::min({files.size(), std::size_t{settings.max_recent}, most_entries});
  for (std::size_t i = 0; i < count; ++i) {
    if (folder_of(files[i]).empty()) continue;  // nothing that could be found again
    std::string text = fmt::format("&{} {}", i + 1, name_of(files[i]));
    const std::string_view shown = cut_to_units(text, longest_entry);
    if (shown.size() < text.size()) text = std::string(shown) + " ...";
    entries.push_back({static_cast<CommandId>(first_recent_command + i), std::move(text)});
  }
  return entries;
}

bool is_command_enabled(const Editor& editor, CommandId id) {
  if (id >= first_part_command && id <= last_part_command)
    return id - std::size_t{first_part_command} < editor.document.parts.size();
  if (id >= first_recent_command && id <= last_recent_command)
    return id - std::size_t{first_recent_command} < settings.file_recent.size();
  const Command* const command = command_of(editor, id);
  return command != nullptr && is_live(editor, *command);
}

std::uint8_t state_bit(const Command& command) {
  if (command.has(rule::live_when_stopped)) return stopped_states;
  if (command.has(rule::live_with_undo)) return undo_states;
  if (command.has(rule::live_with_transport)) return transport_states;
  return command.has(rule::on_document) ? document_states : 0;
}

bool is_checked(const Command& command) {
  const CheckMark& mark = command.mark;
  if (mark.bits == 0) return false;
  const std::uint32_t value =
      std::visit([](auto field) { return std::uint32_t{settings.*field}; }, mark.setting);
  return mark.is_radio ? (value & mark.bits) == mark.value : (value & mark.bits) != 0;
}

}  // namespace corvelin

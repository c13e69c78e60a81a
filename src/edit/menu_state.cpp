// Part list and grey state.
#include "edit/menu_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "edit/undo.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/document.h"
#include "platform/path.h"
#include "platform/text.h"
#include "stream/frame_header.h"
#include "stream/time_mapping.h"

namespace corvelin {

namespace {

// Layer III alone has levels to change.
constexpr CommandId level_commands[] = {1019, 1021, 1025, 1047, 1074};
constexpr CommandId undo_command = 1022;
// These open another document or arm a recording.
constexpr CommandId stopped_commands[] = {1010, 1043, 1071, 1077};
// These are for a document and for a recording.
constexpr CommandId playing_and_recording_commands[] = {134, 135, 154, 163};

std::string part_entry(PartIndex index) {
  constexpr std::size_t longest_title = 50;  // characters
  const Part& part = document.parts[index];
  const std::string time = format_time(to_time_scale(part.part_beg), double{stream.avg_bitrate});
  std::string text = fmt::format("{:02}  ({}) ", index + 1, time.substr(0, time.rfind('.')));
  if (part.part_iscue != 0) text += fmt::format(" {}", ui_text(men, 53));
  if (has_gap(index)) text += fmt::format(" {}", ui_text(men, 51));
  if (part.part_gainbeg != 0) text += fmt::format(" {}", ui_text(men, 52));
  text += '\t';
  if (!part.part_title.empty())
    text +=
        " " + wide_to_bytes(std::u16string_view(part.part_title).substr(0, longest_title), true);
  return text;
}

bool contains(std::span<const CommandId> ids, CommandId id) {
  return std::ranges::find(ids, id) != ids.end();
}

}  // namespace

std::vector<std::string> part_list() {
  constexpr std::size_t most_entries = last_part_command - first_part_command;
  std::vector<std::string> list;
  for (PartIndex i = 0; i < std::min(document.parts.size(), most_entries); ++i)
    list.push_back(part_entry(i));
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

bool is_command_enabled(CommandId id) {
  const bool has_document = !document.files.empty();
  if (id == undo_command) return !undo_stack.empty();
  if (contains(stopped_commands, id))
    return !audio_activity.is_playing && !audio_activity.is_recording_armed;
  if (contains(playing_and_recording_commands, id))
    return has_document || audio_activity.is_recording_armed;
  if (contains(level_commands, id)) return has_document && stream.current_frame.layer == 3;
  if (id >= first_part_command && id <= last_part_command)
    return id - std::size_t{first_part_command} < document.parts.size();
  if (id >= first_recent_command && id <= last_recent_command)
    return id - std::size_t{first_recent_command} < settings.file_recent.size();
  const auto command = std::ranges::find(command_table(), id, &Command::id);
  if (command == command_table().end()) return false;
  return command->needs == CommandNeeds::anytime || has_document;
}

}  // namespace corvelin

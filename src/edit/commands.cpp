// The dispatcher, and the small commands.
#include "edit/commands.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "edit/auto_crop.h"
#include "edit/auto_cue_dialog.h"
#include "edit/clipboard.h"
#include "edit/cue_commands.h"
#include "edit/cut_commands.h"
#include "edit/file_info_dialog.h"
#include "edit/level_commands.h"
#include "edit/level_dialog.h"
#include "edit/mute_cut.h"
#include "edit/names_dialog.h"
#include "edit/navigation.h"
#include "edit/normalize_dialog.h"
#include "edit/open_dialog.h"
#include "edit/pause_dialog.h"
#include "edit/resync_check.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "edit/selection_commands.h"
#include "edit/split_dialog.h"
#include "edit/trim_commands.h"
#include "edit/undo.h"
#include "exchange/cue_sheet.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/file.h"
#include "platform/host.h"
#include "platform/process.h"
#include "platform/text.h"
#include "settings/setting_table.h"
#include "text/boxes.h"

namespace corvelin {

namespace {

template <auto Setting>
void toggle() {
  change_setting(Setting, settings.*Setting == 0 ? 1 : 0);
}

template <std::uint16_t Bit>
void toggle_keep_date() {
  change_setting(&Settings::keep_date, static_cast<std::uint16_t>(settings.keep_date ^ Bit));
}

constexpr auto toggle_use_mpglib = toggle<&Settings::use_mpglib>;
constexpr auto toggle_keep_id3v2 = toggle<&Settings::keep_id3v2>;
constexpr auto toggle_save_id3v1 = toggle<&Settings::save_id3v1>;
constexpr auto toggle_big_timer = toggle<&Settings::big_timer>;
constexpr auto toggle_show_milisec = toggle<&Settings::show_milisec>;
constexpr auto toggle_db_scale = toggle<&Settings::db_scale>;
constexpr auto toggle_margin = toggle<&Settings::margin>;
constexpr auto toggle_bitrate_graph = toggle<&Settings::bitrate_graph>;
constexpr auto toggle_big_relative = toggle<&Settings::big_relative>;
constexpr auto toggle_use_toc = toggle<&Settings::use_toc>;
constexpr auto toggle_time_marks = toggle<&Settings::time_marks>;
constexpr auto toggle_map_names = toggle<&Settings::map_names>;
constexpr auto toggle_big_total = toggle<&Settings::big_total>;
constexpr auto toggle_keep_date_of_source = toggle_keep_date<keep_date_of_source>;
constexpr auto toggle_keep_date_on_new = toggle_keep_date<keep_date_on_new>;

void change_volume(int step) {
  const int volume = std::clamp(settings.volume + step, 0, 100);
  change_setting(&Settings::volume, static_cast<std::uint16_t>(volume));
}

void volume_up() { change_volume(4); }
void volume_down() { change_volume(-4); }

constexpr int graph_step = 20;  // per cent

void set_graph_level(int level) {
  change_setting(&Settings::graph_level, static_cast<std::uint16_t>(level));
}

void graph_higher() {
  if (settings.graph_level < 200) set_graph_level(settings.graph_level + graph_step);
}

void graph_lower() {
  if (settings.graph_level >= graph_step) set_graph_level(settings.graph_level - graph_step);
}

void graph_default() { set_graph_level(100); }

// Operations whose own form takes arguments.
bool cut_or_cue_command() { return cut_or_cue(false); }
void move_cue_left() { move_cue(CueMove::left); }
void move_cue_right() { move_cue(CueMove::right); }
bool save_complete() { return save_audio() == SaveOutcome::saved; }
bool save_selected() { return save_selection() == SaveOutcome::saved; }
bool save_project_or_sheet() { return save_project(false, false); }
bool save_project_as() { return save_project(true, false); }

template <typename Record>
bool run_dialog() {
  Record dialog;
  return show_dialog(dialog);
}
constexpr auto split_dialog = run_dialog<SplitDialog>;
constexpr auto file_info_dialog = run_dialog<FileInfoDialog>;
constexpr auto names_dialog = run_dialog<NamesDialog>;

bool open_by_dialog() { return confirm_discard_changes() && open_file_dialog(); }

bool close() {
  if (!confirm_discard_changes()) return false;
  close_all();
  return true;
}

bool load_cue_sheet_over_audio() {
  return choose_and_load_cue_sheet([] { undo_push(true, ui_text(men, 45)); });
}

// Opens a file in the place of the document, without a question.
bool reopen(std::string path) {
  close_all();
  reset_state(ResetLevel::new_stream);
  open_state.audio_name = std::move(path);
  if (open_document()) return true;
  close_all();
  return false;
}

// Saves the cues as a sheet, hands it to the user's editor, and reads back what became of it.
bool edit_cue_sheet() {
  if (!save_project(true, true) || !file_facts(open_state.project_name).found) return false;
  if (const std::error_code error = open_in_viewer(open_state.project_name)) {
    show_error("xdg-open: " + error.message());
    return false;
  }
  const BoxAnswer answer = host().show_message_box({.caption = "Corvelin",
                                                    .text = std::string(ui_text(msg, 26)),
                                                    .icon = BoxIcon::question,
                                                    .buttons = BoxButtons::yes_no,
                                                    .default_answer = BoxAnswer::yes});
  return answer != BoxAnswer::yes || reopen(open_state.project_name);
}

bool has_texts() {
  const auto is_named = [](const Part& part) {
    return !part.part_title.empty() || !part.part_artist.empty();
  };
  return std::ranges::any_of(document.parts, is_named) || !document.sheet_title.empty() ||
         !document.sheet_artist.empty();
}

// Reads all names back to bytes in the encoding that they were taken for, and those bytes in the
// other.
void convert_texts(bool to_utf8) {
  const auto convert = [to_utf8](std::u16string& text) {
    text = bytes_to_wide(wide_to_bytes(text, !to_utf8), to_utf8);
  };
  for (Part& part : document.parts) {
    convert(part.part_title);
    convert(part.part_artist);
  }
  convert(document.sheet_title);
  convert(document.sheet_artist);
}

void set_encoding(bool to_utf8) {
  if (settings.char_enc == (to_utf8 ? 1 : 0)) return;
  change_setting(&Settings::char_enc, to_utf8 ? 1 : 0);
  if (!has_texts()) return;
  std::string caption(ui_text(men, 74));
  std::erase(caption, '&');
  const BoxAnswer answer = host().show_message_box({.caption = caption,
                                                    .text = std::string(ui_text(msg, 46)),
                                                    .icon = BoxIcon::question,
                                                    .buttons = BoxButtons::yes_no,
                                                    .default_answer = BoxAnswer::yes});
  if (answer != BoxAnswer::yes) return;
  undo_push(true, ui_text(men, 74));
  convert_texts(to_utf8);
}

void text_is_ansi() { set_encoding(false); }
void text_is_utf8() { set_encoding(true); }

// An operation that can't be refused is always done.
template <auto Operation>
bool outcome_of() {
  if constexpr (std::is_void_v<decltype(Operation())>) {
    Operation();
    return true;
  } else {
    return Operation();
  }
}

#define COMMAND(id, section, row, keys, needs, stop, live, name, operation) \
  {id,                                                                      \
   name,                                                                    \
   section,                                                                 \
   row,                                                                     \
   keys,                                                                    \
   CommandNeeds::needs,                                                     \
   StopRule::stop,                                                          \
   LiveWhen::live,                                                          \
   outcome_of<operation>},
#define LATER(id, section, row, keys, needs, stop, live, name) \
  {id, name, section, row, keys, CommandNeeds::needs, StopRule::stop, LiveWhen::live, nullptr},
constexpr Command table[] = {
#include "edit/command_table.inc"
};
#undef COMMAND
#undef LATER

// Opens an entry of the recent list. When that fails, all entries whose files are gone leave the
// list.
bool open_recent(std::size_t index) {
  if (index >= settings.file_recent.size()) return true;  // no such entry
  if (!ensure_stopped() || !confirm_discard_changes()) return false;
  if (reopen(settings.file_recent[index])) return true;
  std::erase_if(settings.file_recent,
                [](const std::string& name) { return static_cast<bool>(InputFile().open(name)); });
  return false;
}

void go_to_part(std::size_t index) {
  if (index >= document.parts.size()) return;
  document.current_part = static_cast<PartIndex>(index);
  seek_to(document.parts[index].part_beg);
}

DispatchResult outcome(bool is_done) {
  return is_done ? DispatchResult::done : DispatchResult::refused;
}

DispatchResult run(const Command& command) {
  if (command.needs == CommandNeeds::a_document && document.parts.empty())
    return DispatchResult::no_document;
  if (command.stop == StopRule::not_playing && playback.is_playing) return DispatchResult::not_now;
  if (command.stop == StopRule::stopped && !ensure_stopped()) return DispatchResult::refused;
  if (command.run == nullptr) {
    show_refusal("This command is not available yet.");
    return DispatchResult::missing;
  }
  return outcome(command.run());
}

}  // namespace

std::span<const Command> command_table() { return table; }

DispatchResult dispatch_command(CommandId id) {
  if (id >= first_recent_command && id <= last_recent_command) {
    return outcome(open_recent(id - std::size_t{first_recent_command}));
  }
  if (id >= first_part_command && id <= last_part_command) {
    if (document.parts.empty()) return DispatchResult::no_document;
    go_to_part(id - std::size_t{first_part_command});
    return DispatchResult::done;
  }
  const auto* const command = std::ranges::find(table, id, &Command::id);
  return command == std::end(table) ? DispatchResult::unknown : run(*command);
}

std::optional<CommandId> find_command(std::string_view name) {
  const auto* const command = std::ranges::find(table, name, &Command::name);
  if (command == std::end(table)) return std::nullopt;
  return command->id;
}

bool ensure_stopped() {
  if (!playback.is_playing && !playback.is_recording_armed) return true;
  show_refusal(ui_text(msg, 17));
  return false;
}

}  // namespace corvelin

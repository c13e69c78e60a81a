// SPDX-License-Identifier: GPL-2.0-or-later
// The rows of the table.
#include "edit/command_table.h"

#include <algorithm>
#include <type_traits>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/auto_crop.h"
#include "edit/auto_cue_dialog.h"
#include "edit/clipboard.h"
#include "edit/config_dialog.h"
#include "edit/cue_commands.h"
#include "edit/cut_commands.h"
#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/file_info_dialog.h"
#include "edit/level_commands.h"
#include "edit/level_dialog.h"
#include "edit/mute_cut.h"
#include "edit/names_dialog.h"
#include "edit/navigation.h"
#include "edit/normalize_dialog.h"
#include "edit/pause_dialog.h"
#include "edit/record_commands.h"
#include "edit/requirements.h"
#include "edit/resync_check.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "edit/selection_commands.h"
#include "edit/setting_commands.h"
#include "edit/speed_dialog.h"
#include "edit/split_dialog.h"
#include "edit/text_encoding.h"
#include "edit/transport.h"
#include "edit/trim_commands.h"
#include "edit/undo.h"
#include "edit/window_commands.h"
#include "model/selection.h"

namespace corvelin {

namespace {

using namespace rule;

// What groups of commands have in common.
constexpr std::uint32_t moving = on_document | refreshes_places;
constexpr std::uint32_t selecting = on_document | undo_selection | refreshes_places;
constexpr std::uint32_t editing = on_document | undo_document | relists | refreshes_places;
constexpr std::uint32_t trimming = editing | recuts | modifies | repeats | steps_by_run;
constexpr std::uint32_t opening = while_stopped | reopens;
constexpr std::uint32_t saving = on_document | reopens;
constexpr std::uint32_t prelistening = on_document | while_silent;

constexpr TextRow selection_label = {win, 22};
constexpr TextRow cue_flags_label = {men, 35};

void forget_margin(Editor& editor) { margin_reset(editor.level_meter); }

// An operation in the form of the table. One that can't be refused is done; of a bool, false means
// refused, which has been told.
template <auto Operation>
Outcome run(Editor& editor) {
  const auto operate = [&] {
    if constexpr (std::is_invocable_v<decltype(Operation), Editor&>) {
      return Operation(editor);
    } else {
      return Operation();
    }
  };
  using Value = decltype(operate());
  if constexpr (std::is_void_v<Value>) {
    operate();
    return Result::done;
  } else if constexpr (std::is_same_v<Value, bool>) {
    return operate() ? Result::done : Result::refused;
  } else {
    return operate();
  }
}

template <typename Record>
Outcome show(Editor& editor) {
  Record dialog(editor);
  return show_dialog(dialog) ? Result::done : Result::refused;
}

bool show_about() {
  AboutDialog dialog;
  return show_dialog(dialog);
}

template <PrelistenMode Mode>
Outcome prelisten(Editor& editor) {
  return request_prelisten(editor, Mode);
}

constexpr std::uint32_t all_bits = 0xFFFFFFFF;

// A command that turns a setting over, or one bit of it.
template <auto Setting>
constexpr Command toggle(CommandId id, std::string_view name, TextRow text,
                         std::string_view keys = {}, std::uint32_t rules = 0) {
  return {id,      name,    text,
          keys,    rules,   run<toggle_setting<Setting>>,
          nullptr, unnamed, {Setting, all_bits}};
}

template <std::uint16_t Bit>
constexpr Command toggle_keep_date(CommandId id, std::string_view name, TextRow text) {
  return {id,      name,    text,
          "",      0,       run<toggle_date_bit<Bit>>,
          nullptr, unnamed, {&Settings::keep_date, Bit}};
}

// One of the two encodings of texts.
constexpr Command encoding(CommandId id, std::string_view name, Outcome (*set)(Editor& editor),
                           std::uint32_t value) {
  return {id,
          name,
          unnamed,
          "",
          editing | by_dialog,
          set,
          nullptr,
          {men, 74},
          {&Settings::char_enc, all_bits, value, true}};
}

// clang-format off
constexpr Command table[] = {
    {command::skip_back_large, "skip_back_large", {ttp, 0}, "Page Up", moving | repeats, run<skip_back_large>},
    {command::skip_back_small, "skip_back_small", {ttp, 1}, "Left", moving | repeats, run<skip_back_small>},
    {command::skip_forward_small, "skip_forward_small", {ttp, 2}, "Right", moving | repeats, run<skip_forward_small>},
    {command::skip_forward_large, "skip_forward_large", {ttp, 3}, "Page Down", moving | repeats, run<skip_forward_large>},
    {command::go_to_previous_range, "go_to_previous_range", {ttp, 4}, "Ctrl+Left", moving | repeats, run<go_to_previous_range>},
    {command::go_to_next_range, "go_to_next_range", {ttp, 5}, "Ctrl+Right", moving | repeats, run<go_to_next_range>},
    {command::go_to_selection_begin, "go_to_selection_begin", {ttp, 6}, "Up", moving, run<go_to_selection_begin>, need_selection},
    {command::go_to_selection_end, "go_to_selection_end", {ttp, 7}, "Down", moving, run<go_to_selection_end>, need_selection},
    {command::zoom_in, "zoom_in", {ttp, 8}, "I, Shift+Up", moving | repeats, run<zoom_in>},
    {command::zoom_out, "zoom_out", {ttp, 9}, "O, Shift+Down", moving | repeats, run<zoom_out>},
    {command::go_to_track_end, "go_to_track_end", {ttp, 27}, "End", moving, run<go_to_track_end>},
    {command::prelisten_to_begin, "prelisten_to_begin", {ttp, 15}, "F5", prelistening, prelisten<prelisten_to_begin>},
    {command::prelisten_from_begin, "prelisten_from_begin", {ttp, 16}, "F6", prelistening, prelisten<prelisten_from_begin>},
    {command::prelisten_to_end, "prelisten_to_end", {ttp, 17}, "F7", on_document, prelisten<prelisten_to_end>},
    {command::prelisten_from_end, "prelisten_from_end", {ttp, 18}, "F8", on_document, prelisten<prelisten_from_end>},
    {command::prelisten_as_cut, "prelisten_as_cut", {ttp, 19}, "F9", prelistening, prelisten<prelisten_as_cut>},
    {command::rewind, "rewind", {ttp, 20}, "Home", moving, run<rewind>},
    {command::play, "play", {ttp, 22}, "P", live_with_transport, run<play>},
    {command::stop, "stop", {ttp, 21}, "S", live_with_transport, run<stop>},
    {command::play_or_stop, "play_or_stop", unnamed, "Space", 0, run<play_or_stop>},
    {command::initialize_recording, "initialize_recording", {ttp, 23}, "R", while_silent | while_unarmed, run<initialize_recording>},
    {command::margin_button, "margin_button", {ttp, 24}, "", refreshes_places, run<forget_margin>},
    {command::cut_or_cue, "cut_or_cue", {win, 5}, "Del, C", editing | recuts | modifies | follows_cursor | names_parts, run<cut_or_cue>, need_selection},
    {command::edit_restore, "edit_restore", {win, 7}, "E", editing | recuts | modifies | names_parts, run<edit_restore>},
    {command::set_begin, "set_recording_cue", {win, 8}, "", on_writing | live_with_transport, run<add_recording_cue>},
    {command::set_begin, "set_begin", {win, 8}, "B", selecting | live_with_transport, run<set_begin>},
    {command::set_end, "set_end", {win, 9}, "N", selecting, run<set_end>},
    {command::begin_selection_for_field, "begin_selection_for_field", unnamed, "", moving, run<begin_selection_for_field>},
    {command::margin_reset, "margin_reset", {ttp, 26}, "Backspace", live_with_transport | refreshes_places, run<forget_margin>},
    {command::frame_back, "frame_back", unnamed, "Shift+Left", moving | while_silent | repeats, run<frame_back>},
    {command::frame_forward, "frame_forward", unnamed, "Shift+Right", moving | while_silent | repeats, run<frame_forward>},
    {command::focus_now_field, "focus_now_field", unnamed, "Ctrl+P", on_document, run<focus_now_field>},
    {command::focus_selection_field, "focus_selection_field", unnamed, "Ctrl+L", on_document, run<focus_selection_field>},
    {command::part_level_up, "part_level_up", unnamed, "Ctrl+Up", on_document | modifies | relists | refreshes_places | repeats, run<part_level_up>},
    {command::part_level_down, "part_level_down", unnamed, "Ctrl+Down", on_document | modifies | relists | refreshes_places | repeats, run<part_level_down>},
    {command::toggle_cue, "toggle_cue", unnamed, "Ctrl+Q", on_document | modifies | relists | refreshes_places, run<toggle_cue>},
    {command::trim_left_out, "trim_left_out", {ttp, 34}, "Ctrl+1", trimming, run<trim_left_out>},
    {command::trim_left_in, "trim_left_in", {ttp, 35}, "Ctrl+2", trimming, run<trim_left_in>},
    {command::trim_right_in, "trim_right_in", {ttp, 36}, "Ctrl+3", trimming, run<trim_right_in>},
    {command::trim_right_out, "trim_right_out", {ttp, 37}, "Ctrl+4", trimming, run<trim_right_out>},
    {command::move_cue_left, "move_cue_left", {ttp, 38}, "Ctrl+5, Alt+Left", trimming, run<move_cue_left>},
    {command::move_cue_right, "move_cue_right", {ttp, 39}, "Ctrl+6, Alt+Right", trimming, run<move_cue_right>},
    toggle<&Settings::use_mpglib>(command::toggle_use_mpglib, "toggle_use_mpglib", unnamed, "Ctrl+D", on_document | while_silent),
    toggle<&Settings::keep_id3v2>(command::toggle_keep_id3v2, "toggle_keep_id3v2", {dlg, 66}, "Ctrl+J", on_document),
    toggle<&Settings::save_id3v1>(command::toggle_save_id3v1, "toggle_save_id3v1", {dlg, 21}, "", on_document),
    {command::volume_up, "volume_up", {ttp, 25}, "Alt+Up, .", repeats, run<volume_up>},
    {command::volume_down, "volume_down", {ttp, 25}, "Alt+Down, ,", repeats, run<volume_down>},
    {command::select_to_start, "select_to_start", unnamed, "Ctrl+Home", selecting, run<select_to_start>, nullptr, selection_label},
    {command::select_to_end, "select_to_end", unnamed, "Ctrl+End", selecting, run<select_to_end>, nullptr, selection_label},
    {command::debug_window, "debug_window", unnamed, "Ctrl+Shift+Alt+D", 0, run<debug_window>},
    {command::configure_encoder, "configure_encoder", unnamed, "F12", 0, configure_encoder},
    {command::open_by_dialog, "open_by_dialog", {men, 10}, "Ctrl+O", opening | live_when_stopped, run<open_by_dialog>},
    {command::close, "close", {men, 11}, "Ctrl+F4", opening | on_document, run<close>},
    {command::save_complete, "save_complete", {men, 12}, "Ctrl+W", saving, run<save_complete>},
    {command::save_selected, "save_selected", {men, 13}, "Ctrl+E", saving, run<save_selected>},
    {command::split_dialog, "split_dialog", {men, 15}, "Ctrl+T", on_document, show<SplitDialog>},
    {command::save_project_or_sheet, "save_project_or_sheet", {men, 16}, "Ctrl+S", on_document | refreshes_all, run<save_project_or_sheet>},
    {command::save_project_as, "save_project_as", {men, 17}, "", on_document | refreshes_all, run<save_project_as>},
    {command::exit_program, "exit_program", {men, 18}, "Alt+F4", 0, run<request_close>},
    {command::simple_fade, "simple_fade", {men, 19}, "Ctrl+F", editing | modifies | live_with_levels | follows_cursor, run<simple_fade>, need_fade},
    {command::remove_edit_points, "remove_edit_points", {men, 20}, "", editing | recuts, run<remove_edit_points>, need_selection},
    {command::level_dialog, "level_dialog", {men, 21}, "Ctrl+G", editing | modifies | live_with_levels | follows_cursor | by_dialog, run<level_dialog>},
    {command::undo, "undo", {men, 23}, "Ctrl+Z", on_document | live_with_undo | relists | refreshes_places | repeats, run<undo_pop>, need_undo_step},
    {command::remove_selection, "remove_selection", {men, 24}, "Ctrl+R", selecting, run<remove_selection>, nullptr, selection_label},
    {command::select_all, "select_all", {men, 25}, "Ctrl+A", selecting, run<select_all>},
    {command::normalize_dialog, "normalize_dialog", {men, 26}, "Ctrl+M", editing | modifies | while_stopped | live_with_levels | follows_cursor | by_dialog, run<normalize_dialog>},
    {command::pause_detection_dialog, "pause_detection_dialog", {men, 27}, "Ctrl+Shift+P", on_document | while_stopped | relists | refreshes_places, run<pause_dialog>},
    {command::file_info_dialog, "file_info_dialog", {men, 22}, "Ctrl+I", on_document | modifies | refreshes_all | by_dialog, show<FileInfoDialog>},
    {command::names_dialog, "names_dialog", {men, 34}, "Ctrl+N", editing | modifies | by_dialog, show<NamesDialog>},
    {command::crop, "crop", {men, 28}, "Ctrl+H", editing | recuts | modifies | follows_cursor, run<crop>, need_range},
    {command::edit_cue_sheet, "edit_cue_sheet", {men, 43}, "", on_document | reopens, run<edit_cue_sheet>},
    {command::cut_clipboard, "cut_clipboard", {men, 30}, "Ctrl+X", editing | recuts | modifies | follows_cursor | names_parts, run<cut_clipboard>},
    {command::copy, "copy", {men, 31}, "Ctrl+C", moving, run<copy>},
    {command::paste, "paste", {men, 32}, "Ctrl+V", editing | recuts | modifies | follows_cursor | names_parts, run<paste>},
    {command::select_current_part, "select_current_part", {men, 33}, "Ctrl+K", selecting, run<select_current_part>},
    {command::cue_pure_splits, "cue_pure_splits", {men, 35}, "", editing, run<cue_pure_splits>},
    {command::move_begin_left, "move_begin_left", {ttp, 28}, "1", selecting | repeats, run<move_begin_left>, nullptr, selection_label},
    {command::move_begin_right, "move_begin_right", {ttp, 29}, "2", selecting | repeats, run<move_begin_right>, nullptr, selection_label},
    {command::move_end_left, "move_end_left", {ttp, 30}, "3", selecting | repeats, run<move_end_left>, nullptr, selection_label},
    {command::move_end_right, "move_end_right", {ttp, 31}, "4", selecting | repeats, run<move_end_right>, nullptr, selection_label},
    {command::move_selection_left, "move_selection_left", {ttp, 32}, "5", selecting | repeats, run<move_selection_left>, nullptr, selection_label},
    {command::move_selection_right, "move_selection_right", {ttp, 33}, "6", selecting | repeats, run<move_selection_right>, nullptr, selection_label},
    {command::auto_cue_dialog, "auto_cue_dialog", {men, 42}, "Ctrl+Shift+A", editing | modifies | follows_cursor | by_dialog, run<auto_cue_dialog>},
    {command::recording_speed_dialog, "recording_speed_dialog", {men, 44}, "", while_silent | while_unarmed | live_when_stopped, run<record_at_other_speed>},
    {command::load_cue_sheet_over_audio, "load_cue_sheet_over_audio", {men, 45}, "", editing | recuts | follows_cursor | refreshes_all | by_dialog, run<load_cue_sheet_over_audio>},
    {command::loop_play, "loop_play", {men, 49}, "F4", prelistening, prelisten<loop_selection>},
    {command::auto_crop, "auto_crop", {men, 36}, "Ctrl+Shift+C", editing | while_stopped | recuts | modifies_by_cuts | follows_cursor, run<auto_crop>},
    {command::two_stage_fade, "two_stage_fade", {men, 46}, "Ctrl+Shift+F", editing | modifies | live_with_levels | follows_cursor, run<two_stage_fade>, need_fade},
    {command::set_cue_flags, "set_cue_flags", {men, 38}, "", editing, run<set_cue_flags>, nullptr, cue_flags_label},
    {command::remove_cue_flags, "remove_cue_flags", {men, 39}, "", editing, run<remove_cue_flags>, nullptr, cue_flags_label},
    {command::configuration_dialog, "configuration_dialog", {men, 54}, "F11", 0, configuration_dialog},
    toggle<&Settings::big_timer>(command::toggle_big_timer, "toggle_big_timer", {men, 55}),
    toggle<&Settings::show_milisec>(command::toggle_show_milisec, "toggle_show_milisec", {men, 56}),
    toggle<&Settings::db_scale>(command::toggle_db_scale, "toggle_db_scale", {men, 57}),
    toggle_keep_date<keep_date_of_source>(command::toggle_keep_date_of_source, "toggle_keep_date_of_source", {men, 63}),
    toggle<&Settings::margin>(command::toggle_margin, "toggle_margin", {men, 59}),
    toggle<&Settings::bitrate_graph>(command::toggle_bitrate_graph, "toggle_bitrate_graph", {men, 60}),
    toggle<&Settings::big_relative>(command::toggle_big_relative, "toggle_big_relative", {men, 61}),
    toggle<&Settings::use_toc>(command::toggle_use_toc, "toggle_use_toc", {men, 67}),
    toggle<&Settings::time_marks>(command::toggle_time_marks, "toggle_time_marks", {men, 58}),
    toggle<&Settings::map_names>(command::toggle_map_names, "toggle_map_names", {men, 76}),
    {command::graph_higher, "graph_higher", {men, 71}, "Num +", repeats, run<graph_higher>},
    {command::graph_lower, "graph_lower", {men, 72}, "Num -", repeats, run<graph_lower>},
    {command::graph_default, "graph_default", {men, 73}, "Num *", 0, run<graph_default>},
    toggle_keep_date<keep_date_on_new>(command::toggle_keep_date_on_new, "toggle_keep_date_on_new", {men, 37}),
    toggle<&Settings::big_total>(command::toggle_big_total, "toggle_big_total", {men, 62}),
    {command::cues_at_selection_ends, "cues_at_selection_ends", {men, 40}, "Ctrl+Shift+E", editing | modifies, run<cues_at_selection_ends>, need_two_ends},
    {command::new_window, "new_window", {men, 68}, "", 0, run<new_window>},
    {command::batch_dialog, "batch_dialog", {men, 69}, "Ctrl+B", live_when_stopped | opening, run<batch>},
    {command::check_resyncs, "check_resyncs", {men, 29}, "", editing | while_stopped | modifies_by_cuts | follows_cursor, run<check_resyncs>},
    {command::save_reencoded, "save_reencoded", {men, 14}, "", saving, run<save_encoded_anew>},
    {command::mute_cut, "mute_cut", {men, 47}, "Ctrl+Shift+M", editing | modifies | live_with_levels, run<mute_cut>, need_mutable_cut},
    encoding(command::text_is_ansi, "text_is_ansi", run<text_is_ansi>, 0),
    encoding(command::text_is_utf8, "text_is_utf8", run<text_is_utf8>, 1),
    {command::level_activated_recording, "level_activated_recording", {cfg, 73}, "Shift+R", while_silent | while_unarmed | live_when_stopped, run<level_activated_recording>},
    {command::manual, "manual", {men, 64}, "F1", 0, run<manual>},
    {command::faq, "faq", {men, 65}, "", 0, run<faq>},
    {command::about, "about", {men, 66}, "", 0, run<show_about>},
};

// clang-format on

bool counts_now(const Editor& editor, const Command& command) {
  return !command.has(on_writing) || editor.recorder.rec_writing;
}

}  // namespace

const Command open_change = {0, "open", unnamed, "", opening, nullptr};
const Command append_change = {
    0, "append", {msg, 1}, "", editing | modifies | names_parts | steps_if_done, nullptr};
constexpr std::uint32_t cutting = editing | recuts | modifies | follows_cursor | names_parts;
const Command cut_change = {0, "cut", {win, 5}, "", cutting, nullptr};
const Command keep_change = {0, "keep", {men, 28}, "", cutting, nullptr};
const Command cue_change = {0, "cue", {win, 5}, "", editing | modifies | follows_cursor, nullptr};
const Command selection_change = {0, "select", selection_label, "", selecting, nullptr};
// A drag takes its step when it begins.
constexpr std::uint32_t dragging = on_document | relists | refreshes_places | modifies;
const Command level_change = {0, "level", {men, 52}, "", dragging, nullptr};
const Command border_change = {0, "border", {men, 47}, "", dragging, nullptr};

std::span<const Command> command_table() { return table; }

const Command* command_of(const Editor& editor, CommandId id) {
  const auto* const command = std::ranges::find_if(
      table, [id, &editor](const Command& row) { return row.id == id && counts_now(editor, row); });
  return command == std::end(table) ? nullptr : command;
}

std::optional<CommandId> find_command(std::string_view name) {
  const auto* const command = std::ranges::find(table, name, &Command::name);
  if (command == std::end(table)) return std::nullopt;
  return command->id;
}

std::string_view text_of(const Command& command) {
  if (command.id == command::text_is_ansi) return "&ANSI";
  if (command.id == command::text_is_utf8) return "&UTF-8";
  return ui_text(command.text);
}

}  // namespace corvelin

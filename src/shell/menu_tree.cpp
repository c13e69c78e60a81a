// SPDX-License-Identifier: GPL-2.0-or-later
// The entries of each menu.
#include "shell/menu_tree.h"

#include "shell/window_layout.h"

namespace corvelin {

namespace {

using namespace command;

constexpr MenuRow line = {};

constexpr MenuRow encoding_rows[] = {{text_is_ansi}, {text_is_utf8}};
constexpr Menu encoding_menu = {74, encoding_rows};

constexpr MenuRow graph_level_rows[] = {{graph_higher}, {graph_lower}, {graph_default}};
constexpr Menu graph_level_menu = {70, graph_level_rows};

constexpr MenuRow file_rows[] = {{open_by_dialog},
                                 {close},
                                 line,
                                 {save_complete},
                                 {save_selected},
                                 {save_reencoded},
                                 {split_dialog},
                                 line,
                                 {save_project_or_sheet},
                                 {save_project_as},
                                 {.menu = &encoding_menu},
                                 line,
                                 {batch_dialog},
                                 {new_window},
                                 {exit_program}};
constexpr MenuRow edit_rows[] = {{file_info_dialog},
                                 line,
                                 {undo},
                                 line,
                                 {cut_clipboard},
                                 {copy},
                                 {paste},
                                 line,
                                 {select_all},
                                 {select_current_part},
                                 {remove_selection},
                                 line,
                                 {simple_fade},
                                 {two_stage_fade},
                                 {normalize_dialog},
                                 {level_dialog},
                                 line,
                                 {crop},
                                 {names_dialog}};
constexpr MenuRow special_rows[] = {{auto_cue_dialog},
                                    {pause_detection_dialog},
                                    {auto_crop},
                                    line,
                                    {mute_cut},
                                    {check_resyncs},
                                    line,
                                    {cues_at_selection_ends},
                                    {remove_edit_points},
                                    {set_cue_flags},
                                    {remove_cue_flags},
                                    {cue_pure_splits},
                                    line,
                                    {load_cue_sheet_over_audio},
                                    {edit_cue_sheet},
                                    line,
                                    {level_activated_recording},
                                    {recording_speed_dialog},
                                    {loop_play}};
constexpr MenuRow settings_rows[] = {{configuration_dialog},
                                     line,
                                     {toggle_big_timer},
                                     {toggle_big_relative},
                                     {toggle_big_total},
                                     {toggle_show_milisec},
                                     {toggle_time_marks},
                                     line,
                                     {toggle_map_names},
                                     {toggle_db_scale},
                                     {toggle_bitrate_graph},
                                     {toggle_use_toc},
                                     line,
                                     {toggle_keep_date_of_source},
                                     {toggle_keep_date_on_new},
                                     line,
                                     {toggle_margin},
                                     {.menu = &graph_level_menu}};
constexpr MenuRow help_rows[] = {{manual}, {faq}, line, {about}};

constexpr Menu edit_menu = {1, edit_rows};
constexpr Menu special_menu = {2, special_rows};
constexpr Menu settings_menu = {4, settings_rows};
constexpr Menu help_menu = {5, help_rows};

}  // namespace

constexpr Menu file_menu = {0, file_rows};
constexpr Menu list_menu = {3, {}};

std::span<const Menu* const> menu_bar() {
  static constexpr const Menu* menus[] = {&file_menu, &edit_menu,     &special_menu,
                                          &list_menu, &settings_menu, &help_menu};
  return menus;
}

// Looped play has a button of its own where buttons have symbols.
bool has_entry(const MenuRow& row) {
  return row.command != loop_play || has_text_buttons(panel_form());
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The numbers of the commands. Edit lines, settings and other programs may name a command by its
// number, so none ever changes.
#pragma once

#include <cstdint>

namespace corvelin {

using CommandId = std::uint16_t;

namespace command {

constexpr CommandId border = 0;
constexpr CommandId skip_back_large = 112;
constexpr CommandId skip_back_small = 113;
constexpr CommandId skip_forward_small = 114;
constexpr CommandId skip_forward_large = 115;
constexpr CommandId go_to_previous_range = 116;
constexpr CommandId go_to_next_range = 117;
constexpr CommandId go_to_selection_begin = 118;
constexpr CommandId go_to_selection_end = 119;
constexpr CommandId zoom_in = 120;
constexpr CommandId zoom_out = 121;
constexpr CommandId go_to_track_end = 122;
constexpr CommandId prelisten_to_begin = 126;
constexpr CommandId prelisten_from_begin = 127;
constexpr CommandId prelisten_to_end = 128;
constexpr CommandId prelisten_from_end = 129;
constexpr CommandId prelisten_as_cut = 131;
constexpr CommandId rewind = 133;
constexpr CommandId play = 134;
constexpr CommandId stop = 135;
constexpr CommandId play_or_stop = 136;
constexpr CommandId initialize_recording = 137;
constexpr CommandId margin_button = 138;  // the forms with words show the margin on it
constexpr CommandId cut_or_cue = 152;
constexpr CommandId edit_restore = 153;
constexpr CommandId set_begin = 154;  // while a recording writes, a cue in it
constexpr CommandId set_end = 155;
constexpr CommandId begin_selection_for_field = 160;
constexpr CommandId margin_reset = 163;
constexpr CommandId frame_back = 167;
constexpr CommandId frame_forward = 168;
constexpr CommandId focus_now_field = 200;
constexpr CommandId focus_selection_field = 201;
constexpr CommandId part_level_up = 202;
constexpr CommandId part_level_down = 203;
constexpr CommandId toggle_cue = 204;
constexpr CommandId trim_left_out = 205;
constexpr CommandId trim_left_in = 206;
constexpr CommandId trim_right_in = 207;
constexpr CommandId trim_right_out = 208;
constexpr CommandId move_cue_left = 209;
constexpr CommandId move_cue_right = 210;
constexpr CommandId toggle_use_mpglib = 211;
constexpr CommandId toggle_keep_id3v2 = 212;
constexpr CommandId toggle_save_id3v1 = 213;
constexpr CommandId volume_up = 214;
constexpr CommandId volume_down = 215;
constexpr CommandId select_to_start = 216;
constexpr CommandId select_to_end = 217;
constexpr CommandId debug_window = 230;
constexpr CommandId configure_encoder = 901;
constexpr CommandId open_by_dialog = 1010;
constexpr CommandId close = 1011;
constexpr CommandId save_complete = 1012;
constexpr CommandId save_selected = 1013;
constexpr CommandId split_dialog = 1014;
constexpr CommandId save_project_or_sheet = 1016;
constexpr CommandId save_project_as = 1017;
constexpr CommandId exit_program = 1018;
constexpr CommandId simple_fade = 1019;
constexpr CommandId remove_edit_points = 1020;
constexpr CommandId level_dialog = 1021;
constexpr CommandId undo = 1022;
constexpr CommandId remove_selection = 1023;
constexpr CommandId select_all = 1024;
constexpr CommandId normalize_dialog = 1025;
constexpr CommandId pause_detection_dialog = 1026;
constexpr CommandId file_info_dialog = 1027;
constexpr CommandId names_dialog = 1028;
constexpr CommandId crop = 1029;
constexpr CommandId edit_cue_sheet = 1030;
constexpr CommandId cut_clipboard = 1031;
constexpr CommandId copy = 1032;
constexpr CommandId paste = 1033;
constexpr CommandId select_current_part = 1034;
constexpr CommandId cue_pure_splits = 1035;
constexpr CommandId move_begin_left = 1036;
constexpr CommandId move_begin_right = 1037;
constexpr CommandId move_end_left = 1038;
constexpr CommandId move_end_right = 1039;
constexpr CommandId move_selection_left = 1040;
constexpr CommandId move_selection_right = 1041;
constexpr CommandId auto_cue_dialog = 1042;
constexpr CommandId recording_speed_dialog = 1043;
constexpr CommandId load_cue_sheet_over_audio = 1044;
constexpr CommandId loop_play = 1045;
constexpr CommandId auto_crop = 1046;
constexpr CommandId two_stage_fade = 1047;
constexpr CommandId set_cue_flags = 1048;
constexpr CommandId remove_cue_flags = 1049;
constexpr CommandId configuration_dialog = 1050;
constexpr CommandId toggle_big_timer = 1051;
constexpr CommandId toggle_show_milisec = 1052;
constexpr CommandId toggle_db_scale = 1053;
constexpr CommandId toggle_keep_date_of_source = 1054;
constexpr CommandId toggle_margin = 1055;
constexpr CommandId toggle_bitrate_graph = 1056;
constexpr CommandId toggle_big_relative = 1057;
constexpr CommandId toggle_use_toc = 1058;
constexpr CommandId toggle_time_marks = 1059;
constexpr CommandId toggle_map_names = 1060;
constexpr CommandId graph_higher = 1061;
constexpr CommandId graph_lower = 1062;
constexpr CommandId graph_default = 1063;
constexpr CommandId toggle_keep_date_on_new = 1064;
constexpr CommandId toggle_big_total = 1065;
constexpr CommandId cues_at_selection_ends = 1066;
constexpr CommandId new_window = 1070;
constexpr CommandId batch_dialog = 1071;
constexpr CommandId check_resyncs = 1072;
constexpr CommandId save_reencoded = 1073;
constexpr CommandId mute_cut = 1074;
constexpr CommandId text_is_ansi = 1075;
constexpr CommandId text_is_utf8 = 1076;
constexpr CommandId level_activated_recording = 1077;
constexpr CommandId manual = 1080;
constexpr CommandId faq = 1081;
constexpr CommandId about = 1082;

}  // namespace command

}  // namespace corvelin

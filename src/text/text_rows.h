// The rows of the text table that code shows by itself, by name. Those that belong to a command, a
// setting or a control stand in the tables of these.
#pragma once

#include "text/ui_text.h"

namespace corvelin::row {

constexpr TextRow open_file = {msg, 1};
constexpr TextRow create_audio_file = {msg, 2};
constexpr TextRow save_project_or_sheet = {msg, 4};
constexpr TextRow record_base_filename = {msg, 5};
constexpr TextRow error = {msg, 6};
constexpr TextRow warning = {msg, 7};
constexpr TextRow not_possible = {msg, 8};
constexpr TextRow please_note = {msg, 9};
constexpr TextRow file_open_failed = {msg, 10};
constexpr TextRow audio_file = {msg, 11};
constexpr TextRow project_file = {msg, 12};
constexpr TextRow could_not_write = {msg, 13};
constexpr TextRow could_not_replace = {msg, 14};
constexpr TextRow resyncs_while_saving = {msg, 15};
constexpr TextRow selection_invalid = {msg, 16};
constexpr TextRow stop_first = {msg, 17};
constexpr TextRow unsupported_type = {msg, 18};
constexpr TextRow changes_unsaved = {msg, 19};
constexpr TextRow selection_too_short = {msg, 20};
constexpr TextRow close_and_replace = {msg, 21};
constexpr TextRow no_level_of_layer_2 = {msg, 22};
constexpr TextRow too_many_files = {msg, 23};
constexpr TextRow reload_cue_sheet = {msg, 26};
constexpr TextRow restart_program = {msg, 27};
constexpr TextRow mpglib_installation = {msg, 30};
constexpr TextRow no_wave_device = {msg, 31};
constexpr TextRow lame_installation = {msg, 32};
constexpr TextRow note_on_projects = {msg, 34};
constexpr TextRow note_on_graph = {msg, 35};
constexpr TextRow parameters_do_not_match = {msg, 37};
constexpr TextRow note_on_vbr_sheets = {msg, 38};
constexpr TextRow note_on_batch = {msg, 39};
constexpr TextRow adapted_cues_differ = {msg, 41};
constexpr TextRow aac_installation = {msg, 43};
constexpr TextRow append_files = {msg, 44};
constexpr TextRow note_on_reencoding = {msg, 45};
constexpr TextRow convert_characters = {msg, 46};
constexpr TextRow different_parameters = {msg, 47};
constexpr TextRow append_failed = {msg, 48};
constexpr TextRow invalid_filename = {msg, 49};
constexpr TextRow no_sync_found = {msg, 50};
constexpr TextRow really_delete_settings = {msg, 51};
constexpr TextRow settings_removed = {msg, 52};
constexpr TextRow could_not_remove_settings = {msg, 53};

constexpr TextRow zoom_in = {win, 3};
constexpr TextRow zoom_out = {win, 4};
constexpr TextRow cut_or_cue = {win, 5};
constexpr TextRow edit = {win, 7};
constexpr TextRow set_begin = {win, 8};
constexpr TextRow set_end = {win, 9};
constexpr TextRow rewind = {win, 10};
constexpr TextRow stop = {win, 11};
constexpr TextRow play = {win, 12};
constexpr TextRow record = {win, 13};
constexpr TextRow margin = {win, 14};
constexpr TextRow total = {win, 20};
constexpr TextRow now = {win, 21};
constexpr TextRow selection = {win, 22};
constexpr TextRow part = {win, 23};
constexpr TextRow limited_graph_of_layer_2 = {win, 25};
constexpr TextRow recording_time = {win, 26};
constexpr TextRow press_play_to_record = {win, 28};
constexpr TextRow writing = {win, 29};
constexpr TextRow press_begin_for_cues = {win, 30};
constexpr TextRow fast_play = {win, 31};
constexpr TextRow save_tag = {win, 32};
constexpr TextRow keep_tag = {win, 33};
constexpr TextRow play_decoder = {win, 34};
constexpr TextRow no_level_of_aac = {win, 35};

constexpr TextRow file_menu = {men, 0};
constexpr TextRow save_reencoded = {men, 14};
constexpr TextRow save_split = {men, 15};
constexpr TextRow file_info = {men, 22};
constexpr TextRow undo = {men, 23};
constexpr TextRow pause_detection = {men, 27};
constexpr TextRow check_resyncs = {men, 29};
constexpr TextRow part_names = {men, 34};
constexpr TextRow edit_cue_sheet = {men, 43};
constexpr TextRow high_speed_recording = {men, 44};
constexpr TextRow mute_cut = {men, 47};
constexpr TextRow cut = {men, 51};
constexpr TextRow level = {men, 52};
constexpr TextRow cue = {men, 53};
constexpr TextRow about = {men, 66};
constexpr TextRow character_encoding = {men, 74};

constexpr TextRow wave_buffer_size = {cfg, 13};
constexpr TextRow frames_a_buffer = {cfg, 14};
constexpr TextRow user_presets = {cfg, 16};
constexpr TextRow use = {cfg, 25};
constexpr TextRow not_found = {cfg, 26};
constexpr TextRow skips = {cfg, 29};
constexpr TextRow frames = {cfg, 35};
constexpr TextRow level_activated_recording = {cfg, 73};
constexpr TextRow threshold = {cfg, 74};
constexpr TextRow pause_after = {cfg, 75};

constexpr TextRow yes = {dlg, 3};
constexpr TextRow no = {dlg, 4};
constexpr TextRow defaults = {dlg, 5};
constexpr TextRow settings = {dlg, 8};
constexpr TextRow split_variables = {dlg, 11};
constexpr TextRow file_info_labels = {dlg, 30};
constexpr TextRow peak_found = {dlg, 38};
constexpr TextRow level_change = {dlg, 39};
constexpr TextRow from = {dlg, 41};
constexpr TextRow to = {dlg, 42};
constexpr TextRow found = {dlg, 55};
constexpr TextRow dialog_part = {dlg, 63};
constexpr TextRow overwrite_originals = {dlg, 81};
constexpr TextRow processing_file = {dlg, 82};
constexpr TextRow clipboard_error = {dlg, 83};
constexpr TextRow open_failed = {dlg, 84};
constexpr TextRow file_exists = {dlg, 85};
constexpr TextRow user_stopped = {dlg, 86};
constexpr TextRow split_aborted = {dlg, 87};
constexpr TextRow written = {dlg, 92};
constexpr TextRow ape_tag = {dlg, 95};

}  // namespace corvelin::row

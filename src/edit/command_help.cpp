// SPDX-License-Identifier: GPL-2.0-or-later
// The lines of help.
#include "edit/command_help.h"

#include <algorithm>
#include <iterator>

#include "edit/editor.h"

namespace corvelin {

namespace {

struct Help {
  std::string_view name;
  std::string_view text;
};

// clang-format off
constexpr Help table[] = {
    {"skip_back_large", "moves the cursor back by frameskiphi frames"},
    {"skip_back_small", "moves the cursor back by frameskiplo frames"},
    {"skip_forward_small", "moves the cursor on by frameskiplo frames"},
    {"skip_forward_large", "moves the cursor on by frameskiphi frames"},
    {"go_to_previous_range", "moves the cursor to the start of the current part, then of the one before"},
    {"go_to_next_range", "moves the cursor to the start of the next part"},
    {"go_to_selection_begin", "moves the cursor to the begin of the selection"},
    {"go_to_selection_end", "moves the cursor to the end of the selection"},
    {"zoom_in", "doubles the setting zoom"},
    {"zoom_out", "halves the setting zoom"},
    {"go_to_track_end", "moves the cursor to the end of the stream"},
    {"prelisten_to_begin", "plays up to the begin of the selection"},
    {"prelisten_from_begin", "plays from the begin of the selection"},
    {"prelisten_to_end", "plays up to the end of the selection"},
    {"prelisten_from_end", "plays from the end of the selection"},
    {"prelisten_as_cut", "plays over the selection as if it were cut out"},
    {"rewind", "moves the cursor to the start of the stream"},
    {"play", "plays from the cursor"},
    {"stop", "stops playback or recording"},
    {"play_or_stop", "plays, or stops what plays"},
    {"initialize_recording", "makes ready for a recording"},
    {"margin_button", "marks the loudest level so far"},
    {"cut_or_cue", "cuts the selection out; one without length becomes a cue"},
    {"edit_restore", "brings back what was cut at the start of the current part, or takes its cue away"},
    {"set_recording_cue", "sets a cue in the recording that is running"},
    {"set_begin", "begins the selection at the cursor"},
    {"set_end", "ends the selection at the cursor"},
    {"begin_selection_for_field", "without a selection makes one without length at the cursor"},
    {"margin_reset", "forgets the loudest level"},
    {"frame_back", "moves the cursor back by a frame"},
    {"frame_forward", "moves the cursor on by a frame"},
    {"focus_now_field", "goes to the field of the cursor's time"},
    {"focus_selection_field", "goes to the field of the selection's times"},
    {"part_level_up", "makes the current part louder by a step of 1.5 dB"},
    {"part_level_down", "makes the current part softer by a step of 1.5 dB"},
    {"toggle_cue", "makes the current part's start a cue, or a plain cut again"},
    {"trim_left_out", "takes a frame back that was cut in front of the current part's start"},
    {"trim_left_in", "cuts a frame more in front of the current part's start"},
    {"trim_right_in", "cuts a frame more behind the current part's start"},
    {"trim_right_out", "takes a frame back that was cut behind the current part's start"},
    {"move_cue_left", "moves the cue at the current part's start back by a frame"},
    {"move_cue_right", "moves the cue at the current part's start on by a frame"},
    {"toggle_use_mpglib", "switches the setting use_mpglib"},
    {"toggle_keep_id3v2", "switches the setting keep_id3v2: whether a save carries the ID3v2 tag along"},
    {"toggle_save_id3v1", "switches the setting save_id3v1: whether a save writes the ID3v1 tag"},
    {"volume_up", "raises the setting volume"},
    {"volume_down", "lowers the setting volume"},
    {"select_to_start", "selects from the start of the stream to the cursor"},
    {"select_to_end", "selects from the cursor to the end of the stream"},
    {"debug_window", "shows what the program does inside"},
    {"configure_encoder", "chooses the encoder of recordings"},
    {"open_by_dialog", "asks for files to open; here see the line open"},
    {"close", "closes the document"},
    {"save_complete", "asks for a name and saves; here see the line save"},
    {"save_selected", "asks for a name and saves the selection; here see the line save_selection"},
    {"split_dialog", "saves a file a track beside the audio; see the line split"},
    {"save_project_or_sheet", "saves the project or cue sheet under the name that it has"},
    {"save_project_as", "asks for the name of a project or cue sheet; here see the line save_project"},
    {"exit_program", "ends the run"},
    {"simple_fade", "fades over the selection"},
    {"remove_edit_points", "takes all edit points out of the selection, and brings back what was cut there"},
    {"level_dialog", "asks for a change of the level; here see the line level"},
    {"undo", "takes the last step back"},
    {"remove_selection", "selects nothing"},
    {"select_all", "selects the whole stream"},
    {"normalize_dialog", "asks how to normalize; here see the line normalize"},
    {"pause_detection_dialog", "finds pauses; see the line pause_detection"},
    {"file_info_dialog", "shows and edits tags; here see the lines tag and header_bits"},
    {"names_dialog", "edits names; here see the line names"},
    {"crop", "cuts out all but the selection"},
    {"edit_cue_sheet", "hands the cue sheet to an editor, and reads it back"},
    {"cut_clipboard", "copies the selection and cuts it out"},
    {"copy", "copies the selection, or everything"},
    {"paste", "puts the clipboard in the place of the selection, or at the cursor"},
    {"select_current_part", "selects the current part"},
    {"cue_pure_splits", "makes a cue of each edit point without a gap and a level, and of no other"},
    {"move_begin_left", "moves the begin of the selection back by a frame"},
    {"move_begin_right", "moves the begin of the selection on by a frame"},
    {"move_end_left", "moves the end of the selection back by a frame"},
    {"move_end_right", "moves the end of the selection on by a frame"},
    {"move_selection_left", "moves the selection back by a frame"},
    {"move_selection_right", "moves the selection on by a frame"},
    {"auto_cue_dialog", "sets cues at equal distances; see the line auto_cue"},
    {"recording_speed_dialog", "sets the speed that a recording is corrected by"},
    {"load_cue_sheet_over_audio", "asks for a cue sheet; here see the line load_cue"},
    {"loop_play", "plays the selection again and again"},
    {"auto_crop", "cuts the silence off both ends"},
    {"two_stage_fade", "fades over the selection in two stages"},
    {"set_cue_flags", "makes cues of all edit points in the selection, or of all"},
    {"remove_cue_flags", "makes plain cuts of all cues in the selection, or of all"},
    {"configuration_dialog", "edits the settings; here see the line set"},
    {"toggle_big_timer", "switches the setting big_timer"},
    {"toggle_show_milisec", "switches the setting show_milisec: times with milliseconds"},
    {"toggle_db_scale", "switches the setting db_scale"},
    {"toggle_keep_date_of_source", "switches bit 1 of keep_date: a replaced source keeps its date"},
    {"toggle_margin", "switches the setting margin"},
    {"toggle_bitrate_graph", "switches the setting bitrate_graph"},
    {"toggle_big_relative", "switches the setting big_relative"},
    {"toggle_use_toc", "switches the setting use_toc"},
    {"toggle_time_marks", "switches the setting time_marks"},
    {"toggle_map_names", "switches the setting map_names"},
    {"graph_higher", "raises the setting graph_level"},
    {"graph_lower", "lowers the setting graph_level"},
    {"graph_default", "sets the setting graph_level to 100"},
    {"toggle_keep_date_on_new", "switches bit 2 of keep_date: a new file gets the date of its source"},
    {"toggle_big_total", "switches the setting big_total"},
    {"cues_at_selection_ends", "sets cues at both ends of the selection"},
    {"new_window", "starts the desktop program once more"},
    {"batch_dialog", "works on many files; here see --batch"},
    {"check_resyncs", "sets a cue at each place where frames don't follow one another"},
    {"save_reencoded", "saves the stream encoded anew; see the line of that name"},
    {"mute_cut", "lets the level fall and climb back around the current cut"},
    {"text_is_ansi", "takes all names for Windows-1252 text"},
    {"text_is_utf8", "takes all names for UTF-8 text"},
    {"level_activated_recording", "records when there is something to hear"},
    {"manual", "opens the manual"},
    {"faq", "opens the questions and answers"},
    {"about", "tells the version"},
};
// clang-format on

}  // namespace

std::string_view command_help(std::string_view name) {
  const auto* const row = std::ranges::find(table, name, &Help::name);
  return row == std::end(table) ? std::string_view{} : row->text;
}

}  // namespace corvelin

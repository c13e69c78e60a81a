// SPDX-License-Identifier: GPL-2.0-or-later
// Pressed buttons and their words.
#include "shell/panel_buttons.h"

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "shell/window_layout.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// The command that plays so.
CommandId command_of(PrelistenMode mode) {
  switch (mode) {
    case plain_play:
      return command::play;
    case prelisten_as_cut:
      return command::prelisten_as_cut;
    case prelisten_to_begin:
      return command::prelisten_to_begin;
    case prelisten_from_begin:
      return command::prelisten_from_begin;
    case prelisten_to_end:
      return command::prelisten_to_end;
    case prelisten_from_end:
      return command::prelisten_from_end;
    case loop_selection:
      return command::loop_play;
  }
  return 0;
}

// A play that is about to start counts already.
bool is_on(const Editor& editor) {
  return editor.playback.is_playing || editor.playback.is_requested;
}

}  // namespace

bool is_button_pressed(const Editor& editor, CommandId id) {
  if (id == command::initialize_recording) return editor.recorder.is_armed;
  if (id == command::play && editor.recorder.rec_writing) return true;
  if (!is_on(editor)) return false;
  const bool is_pair =
      editor.playback.prelisten_mode == loop_selection && has_text_buttons(panel_form());
  if (is_pair) return id == command::prelisten_from_begin || id == command::prelisten_to_end;
  return id == command_of(editor.playback.prelisten_mode);
}

bool has_fast_labels(const Editor& editor) {
  return is_on(editor) && editor.playback.prelisten_mode == plain_play;
}

std::string_view panel_label(CommandId id, bool has_fast_labels) {
  switch (id) {
    case command::skip_back_large:
      return "<<";
    case command::skip_back_small:
      return "<";
    case command::skip_forward_small:
      return ">";
    case command::skip_forward_large:
      return ">>";
    case command::go_to_previous_range:
      return "|<";
    case command::go_to_next_range:
      return ">|";
    case command::go_to_selection_begin:
      return "[<";
    case command::go_to_selection_end:
      return ">]";
    case command::zoom_in:
      return label_text(row::zoom_in);
    case command::zoom_out:
      return label_text(row::zoom_out);
    case command::prelisten_to_begin:
      return "=> I..";
    case command::prelisten_from_begin:
      return "I => ..";
    case command::prelisten_to_end:
      return has_fast_labels ? ">> -" : "..=>I";
    case command::prelisten_from_end:
      return has_fast_labels ? ">> +" : "..I=>";
    case command::prelisten_as_cut:
      return "=> I...I =>";
    case command::rewind:
      return label_text(row::rewind);
    case command::play:
      return label_text(row::play);
    case command::stop:
      return label_text(row::stop);
    case command::initialize_recording:
      return label_text(row::record);
    case command::margin_button:
      return label_text(row::margin);
    case command::cut_or_cue:
      return label_text(row::cut_or_cue);
    case command::edit_restore:
      return label_text(row::edit);
    case command::set_begin:
      return label_text(row::set_begin);
    case command::set_end:
      return label_text(row::set_end);
    default:
      return {};
  }
}

}  // namespace corvelin

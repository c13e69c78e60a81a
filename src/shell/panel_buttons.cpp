// Pressed buttons and their words.
#include "shell/panel_buttons.h"

#include "audio/playback.h"
#include "audio/recorder.h"
#include "shell/window_layout.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// The command that plays so.
CommandId command_of(PrelistenMode mode) {
  switch (mode) {
    case plain_play:
      return 134;
    case prelisten_as_cut:
      return 131;
    case prelisten_to_begin:
      return 126;
    case prelisten_from_begin:
      return 127;
    case prelisten_to_end:
      return 128;
    case prelisten_from_end:
      return 129;
    case loop_selection:
      return 1045;
  }
  return 0;
}

// A play that is about to start counts already.
bool is_on() { return playback.is_playing || playback.is_requested; }

}  // namespace

bool is_button_pressed(CommandId id) {
  if (id == 137) return playback.is_recording_armed;
  if (id == 134 && recorder.rec_writing) return true;
  if (!is_on()) return false;
  const bool is_pair = playback.prelisten_mode == loop_selection && has_text_buttons(panel_form());
  if (is_pair) return id == 127 || id == 128;
  return id == command_of(playback.prelisten_mode);
}

bool has_fast_labels() { return is_on() && playback.prelisten_mode == plain_play; }

std::string_view panel_label(CommandId id, bool has_fast_labels) {
  switch (id) {
    case 112:
      return "<<";
    case 113:
      return "<";
    case 114:
      return ">";
    case 115:
      return ">>";
    case 116:
      return "|<";
    case 117:
      return ">|";
    case 118:
      return "[<";
    case 119:
      return ">]";
    case 120:
      return label_text(row::zoom_in);
    case 121:
      return label_text(row::zoom_out);
    case 126:
      return "=> I..";
    case 127:
      return "I => ..";
    case 128:
      return has_fast_labels ? ">> -" : "..=>I";
    case 129:
      return has_fast_labels ? ">> +" : "..I=>";
    case 131:
      return "=> I...I =>";
    case 133:
      return label_text(row::rewind);
    case 134:
      return label_text(row::play);
    case 135:
      return label_text(row::stop);
    case 137:
      return label_text(row::record);
    case 138:
      return label_text(row::margin);
    case 152:
      return label_text(row::cut_or_cue);
    case 153:
      return label_text(row::edit);
    case 154:
      return label_text(row::set_begin);
    case 155:
      return label_text(row::set_end);
    default:
      return {};
  }
}

}  // namespace corvelin

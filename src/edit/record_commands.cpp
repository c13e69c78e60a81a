// Recording as the user sees it.
#include "edit/record_commands.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "audio/recorder.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "edit/save_project.h"
#include "exchange/open_document.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "platform/file.h"
#include "platform/host.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void show_write_failure(std::error_code error) {
  show_error(fmt::format("{}\n{}\n{}", ui_text(msg, 13), recorder.rec_file_name, error.message()));
}

// Device events. A handler that ends the recording is the last that touches it.
void take_buffer(WaveHeader& header) {
  switch (record_buffer_done(header)) {
    case RecordStep::done:
      host().refresh_view(Refresh::recording);
      break;
    case RecordStep::new_file:
    case RecordStep::cue:
      host().refresh_view(Refresh::recording_state);
      break;
    case RecordStep::limit_reached:
    case RecordStep::write_failed:
      stop_recording();
      break;
  }
}

void lose_device() {
  stop_recording();
  show_error("The input device is gone. What was recorded until then is kept.");
}

bool arm(bool by_level) {
  if (!confirm_discard_changes()) return false;
  close_all();
  reset_state(ResetLevel::no_name);
  recorder.rec_level_on = by_level || settings.rec_level_act != 0;
  const bool is_armed = record_arm({.buffer_done = take_buffer, .lost = lose_device});
  host().rebuild_part_list();
  host().update_menu_state(all_states);
  host().show_transport();
  host().refresh_view(is_armed ? Refresh::recording_state : Refresh::no_document);
  return is_armed;
}

// A name that the settings chose may be that of an earlier recording.
bool may_write(std::string& name) {
  const bool goes_on = settings.rec_appenddata != 0 || settings.rec_adddate != 0;
  if (goes_on || !is_name_taken(name)) return true;
  if (batch_active) {
    name = free_recording_name(name);
    host().show_message_box({.caption = std::string(ui_text(msg, 9)),
                             .text = fmt::format("{}: {}", ui_text(win, 29), name),
                             .icon = BoxIcon::information});
    return true;
  }
  return host().show_message_box({.caption = std::string(ui_text(msg, 7)),
                                  .text = fmt::format("{}\n\n{}", ui_text(dlg, 85), name),
                                  .icon = BoxIcon::warning,
                                  .buttons = BoxButtons::ok_cancel,
                                  .default_answer = BoxAnswer::cancel}) == BoxAnswer::ok;
}

void set_cues() {
  for (const RecordingCue& cue : recorder.rec_cues) {
    const EditPosition pos = frame_at(cue.position);
    const PartIndex part = pos < document.total_size ? split_at(pos) : no_part;
    if (part == no_part) continue;
    document.parts[part].part_iscue = 1;
    if (!cue.name.empty()) document.parts[part].part_title = bytes_to_wide(cue.name, true);
  }
  open_state.document_modified = !recorder.rec_cues.empty();
}

void tell_end(const RecordingEnd& end) {
  if (end.error) show_write_failure(end.error);
  if (end.lost_seconds > 0)
    show_error(fmt::format("{:.2f} seconds of sound were lost, as the system was too busy.",
                           end.lost_seconds));
}

}  // namespace

bool initialize_recording() { return arm(false); }

bool level_activated_recording() { return arm(true); }

bool start_recording() {
  if (settings.rec_adddate != 0) recorder.rec_file_name = recording_name();
  if (!may_write(recorder.rec_file_name)) return true;
  const std::error_code error = record_start_writing();
  if (!error) {
    open_state.audio_name = recorder.rec_file_name;
    host().update_menu_state(all_states);
    host().show_transport();
    host().refresh_view(Refresh::recording_state);
    return true;
  }
  record_stop();
  host().update_menu_state(all_states);
  host().show_transport();
  host().refresh_view(Refresh::no_document);
  show_write_failure(error);
  return false;
}

void stop_recording() {
  const bool was_writing = recorder.rec_writing;
  const RecordingEnd end = record_stop();
  host().update_menu_state(all_states);
  host().show_transport();
  if (was_writing && end.has_file) open_recording();
  if (!was_writing || !end.has_file) host().refresh_view(Refresh::no_document);
  tell_end(end);
}

void add_recording_cue() {
  if (record_add_cue()) host().refresh_view(Refresh::recording_state);
}

bool open_recording() {
  close_all();
  open_state.audio_name = recorder.rec_file_name;
  const bool is_open = open_document();
  if (is_open) {
    set_cues();
  } else {
    close_all();
  }
  host().rebuild_part_list();
  host().update_menu_state(all_states);
  host().show_transport();
  host().refresh_view(is_open ? Refresh::all : Refresh::no_document);
  return is_open;
}

}  // namespace corvelin

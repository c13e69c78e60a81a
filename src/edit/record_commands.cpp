// SPDX-License-Identifier: GPL-2.0-or-later
// Recording as the user sees it.
#include "edit/record_commands.h"

#include <fmt/format.h>

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "edit/save_project.h"
#include "exchange/project_file.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "opening/close_stream.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/long_run.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void show_recorder() {
  host().update_menu_state(all_states);
  host().show_transport();
}

// The icon tells a file that could not be begun from one that breaks off.
void show_write_failure(const Editor& editor, std::error_code error, BoxIcon icon) {
  host().show_message_box({.caption = std::string(ui_text(row::error)),
                           .text = fmt::format("{}\n{}\n{}", ui_text(row::could_not_write),
                                               editor.recorder.rec_file_name, error.message()),
                           .icon = icon});
}

// Device events. A handler that ends the recording is the last that touches it.
void take_buffer(Editor& editor, WaveHeader& header) {
  switch (record_buffer_done(editor.recorder, editor.level_meter, header)) {
    case RecordStep::done:
      host().refresh_view(Refresh::recording);
      break;
    case RecordStep::new_file:
    case RecordStep::cue:
      host().refresh_view(Refresh::recording_state);
      break;
    case RecordStep::limit_reached:
    case RecordStep::write_failed:
      stop_recording(editor);
      break;
  }
}

void lose_device(Editor& editor) {
  stop_recording(editor);
  editor.recorder.has_failed = true;
  show_error(std::string(ui_text(row::input_is_gone)));
}

bool arm(Editor& editor, bool by_level) {
  if (!confirm_discard_changes(editor)) return false;
  close_all(editor);
  reset_state(editor.document, editor.selection, editor.open_state, ResetLevel::no_name);
  editor.recorder.rec_level_on = by_level || settings.rec_level_act != 0;
  const bool is_armed =
      record_arm(editor.recorder, editor.level_meter,
                 {.buffer_done = [&editor](WaveHeader& header) { take_buffer(editor, header); },
                  .lost = [&editor] { lose_device(editor); }});
  host().rebuild_part_list();
  show_recorder();
  host().refresh_view(is_armed ? Refresh::recording_state : Refresh::no_document);
  return is_armed;
}

// A name that the settings chose may be that of an earlier recording.
bool may_replace(const std::string& name) {
  return host().show_message_box({.caption = std::string(ui_text(row::warning)),
                                  .text = fmt::format("{}\n\n{}", ui_text(row::file_exists), name),
                                  .icon = BoxIcon::warning,
                                  .buttons = BoxButtons::ok_cancel,
                                  .default_answer = BoxAnswer::cancel}) == BoxAnswer::ok;
}

// Ends what was armed when it fails.
bool begin_file(Editor& editor, std::error_code error = {}) {
  if (!error) error = record_start_writing(editor.recorder);
  if (error) record_stop(editor.recorder, editor.level_meter);
  show_recorder();
  host().refresh_view(error ? Refresh::no_document : Refresh::recording_state);
  if (error) {
    show_write_failure(editor, error, BoxIcon::warning);
  } else {
    editor.open_state.audio_name = editor.recorder.rec_file_name;
  }
  return !error;
}

// What follows the last dot and begins with a digit is a date or a number, and no kind of file.
std::string recording_path(const std::string& path) {
  const std::string_view extension = extension_of(path);
  const bool is_kind = extension.size() > 1 && (extension[1] < '0' || extension[1] > '9');
  return in_current_folder(is_kind ? with_extension(path, ".mp3") : path + ".mp3");
}

void set_cues(Editor& editor, const std::vector<RecordingCue>& cues) {
  for (const RecordingCue& cue : cues) {
    const EditPosition pos =
        frame_at(editor.document, cue.position, editor.selection.current_frame);
    const PartIndex part =
        pos < editor.document.total_size ? split_at(editor.document, pos) : no_part;
    if (part == no_part) continue;
    editor.document.parts[part].part_iscue = 1;
    if (!cue.name.empty()) editor.document.parts[part].part_title = bytes_to_wide(cue.name, true);
  }
  editor.open_state.document_modified = !cues.empty();
}

// A document of its own for the time of writing the project.
bool keep_cues_of(Editor& editor, const FinishedRecording& finished) {
  if (!open_file(editor, finished.name)) return false;
  set_cues(editor, finished.cues);
  return !keep_recording_project(editor).empty();
}

void keep_cues_of_finished_files(Editor& editor) {
  std::size_t count = 0;
  for (const FinishedRecording& finished : std::exchange(editor.recorder.finished_files, {}))
    if (!finished.cues.empty() && keep_cues_of(editor, finished)) ++count;
  if (count == 0) return;
  host().show_message_box({.caption = std::string(ui_text(row::please_note)),
                           .text = format_row(ui_text(row::cues_are_beside), count),
                           .icon = BoxIcon::information});
}

// Waits for the disk, which may be far behind. It can't be cancelled: the sound is there.
class FinishRun : public LongRun {
 public:
  explicit FinishRun(Editor& editor) : editor_(editor) {}

  bool step() override { return !editor_.recorder.rec_file->is_idle(slice_patience); }
  void cancel() override { editor_.recorder.rec_file->wait(); }
  bool try_cancel() override { return !step(); }
  [[nodiscard]] int percent_done() const override { return 0; }
  [[nodiscard]] std::string progress_text() const override {
    return fmt::format("{} '{}'", ui_text(row::writing), editor_.recorder.rec_file_name);
  }
  [[nodiscard]] std::string report() const override { return {}; }

 private:
  Editor& editor_;
};

void wait_for_disk(Editor& editor) {
  constexpr std::chrono::milliseconds unnoticed(200);
  if (!editor.recorder.rec_file || editor.recorder.rec_file->is_idle(unnoticed)) return;
  FinishRun run(editor);
  drive(run);
}

void tell_end(Editor& editor, const RecordingEnd& end) {
  if (end.error) editor.recorder.has_failed = true;
  if (end.error) show_write_failure(editor, end.error, BoxIcon::error);
  if (end.lost_seconds > 0) show_error(format_row(ui_text(row::seconds_lost), end.lost_seconds));
}

}  // namespace

bool initialize_recording(Editor& editor) { return arm(editor, false); }

bool level_activated_recording(Editor& editor) { return arm(editor, true); }

bool start_recording(Editor& editor) {
  std::string& name = editor.recorder.rec_file_name;
  if (settings.rec_adddate != 0) name = free_recording_name(recording_name());
  if (settings.rec_appenddata != 0 || !is_name_taken(name)) return begin_file(editor);
  if (!may_replace(name)) return true;
  return begin_file(editor, remove_file(name));
}

bool start_recording_unattended(Editor& editor, const std::string& path) {
  const std::string wanted = path.empty() ? recording_name() : recording_path(path);
  editor.recorder.is_name_given = !path.empty();
  editor.recorder.rec_file_name =
      settings.rec_appenddata != 0 ? wanted : free_recording_name(wanted);
  if (!begin_file(editor)) return false;
  if (editor.recorder.rec_file_name != wanted)
    host().show_message_box({.caption = std::string(ui_text(row::please_note)),
                             .text = format_row(ui_text(row::recording_goes_into), wanted,
                                                editor.recorder.rec_file_name),
                             .icon = BoxIcon::information});
  return true;
}

void stop_recording(Editor& editor) {
  const bool was_writing = editor.recorder.rec_writing;
  record_end_input(editor.recorder, editor.level_meter);
  wait_for_disk(editor);
  const RecordingEnd end = record_stop(editor.recorder, editor.level_meter);
  show_recorder();
  keep_cues_of_finished_files(editor);
  if (was_writing && end.has_file) open_recording(editor);
  if (!was_writing || !end.has_file) host().refresh_view(Refresh::no_document);
  tell_end(editor, end);
}

void add_recording_cue(Editor& editor) {
  if (record_add_cue(editor.recorder)) host().refresh_view(Refresh::recording_state);
}

std::string keep_recording_project(Editor& editor) {
  std::string name = free_recording_name(with_extension(editor.open_state.audio_name, ".cvp"));
  if (const std::error_code error =
          write_project(editor.document, editor.selection, editor.open_state, name,
                        play_position(editor.playback))) {
    editor.recorder.has_failed = true;
    show_error(fmt::format("{}\n{}", error.message(), name));
    return {};
  }
  editor.open_state.project_name = name;
  return name;
}

bool open_recording(Editor& editor) {
  const bool is_open = open_file(editor, editor.recorder.rec_file_name);
  if (is_open) {
    set_cues(editor, editor.recorder.rec_cues);
  } else {
    editor.recorder.has_failed = true;
  }
  host().rebuild_part_list();
  show_recorder();
  host().refresh_view(is_open ? Refresh::all : Refresh::no_document);
  return is_open;
}

}  // namespace corvelin

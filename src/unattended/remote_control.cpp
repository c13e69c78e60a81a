// SPDX-License-Identifier: GPL-2.0-or-later
// The commands of the remote control file, and the status.
#include "unattended/remote_control.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "edit/transport.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/quiet_host.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "unattended/remote_text.h"

namespace corvelin {

namespace {

// Empty without a folder for recordings.
std::string remote_file() {
  const std::string folder(folder_of(settings.file_savepath));
  return folder.empty() ? folder : folder + "corvlremote.txt";
}

// The first bytes of the file; empty when it can't be read, and for a link.
std::string head_of(const std::string& path) {
  InputFile file;
  if (behind_links(path) != path || file.open(path)) return {};
  std::string head(remote_head_size, '\0');
  head.resize(file.read_at(0, {reinterpret_cast<std::uint8_t*>(head.data()), head.size()}));
  return head;
}

// Nothing may have the name. What is left of a write that failed goes, so that the next scan makes
// the file again.
void write_state(const std::string& path, std::string_view state) {
  const std::string text = remote_file_text(state);
  OutputFile file;
  if (file.create_new(path)) return;
  std::error_code error =
      file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  if (const std::error_code close_error = file.close()) error = close_error;
  if (error) remove_file(path);
}

std::string recording_state(const Editor& editor) {
  const auto length = static_cast<std::uint32_t>(std::min<std::uint64_t>(
      recorded_length(editor.recorder), std::numeric_limits<std::uint32_t>::max()));
  return fmt::format("Recording{}\n\nFile: {}\nLength: {}",
                     editor.recorder.rec_level_on ? " (level activated)" : "",
                     editor.recorder.rec_file_name, format_time(length, editor.recorder.rec_rate));
}

std::string state_text(const Editor& editor) {
  if (editor.recorder.rec_writing) return recording_state(editor);
  if (editor.recorder.is_armed) return "Recording prepared";
  if (!editor.playback.is_playing) return "Idle";
  return fmt::format("Playing\n\nFile (1st): {}\nPosition: {}", editor.open_state.audio_name,
                     shown_time(editor.document, play_position(editor.playback)));
}

std::string said_in(const std::vector<MessageBox>& boxes) {
  std::string text;
  for (const MessageBox& box : boxes)
    text += fmt::format("\n\n{}: {}{}{}", box.caption, box.text, box.cause.empty() ? "" : "\n",
                        box.cause);
  return text;
}

// Nobody can be asked about edits that are not saved, so they are kept in a project of their own.
bool keep_edits(Editor& editor) {
  if (editor.document.parts.empty() || !editor.open_state.document_modified) return true;
  return !keep_recording_project(editor).empty();
}

void start_to_record(Editor& editor, bool by_level) {
  if (editor.playback.is_playing || editor.playback.is_requested || editor.recorder.rec_writing)
    return;
  if (editor.recorder.is_armed) {
    editor.recorder.rec_level_on = editor.recorder.rec_level_on || by_level;
  } else if (!keep_edits(editor) ||
             !(by_level ? level_activated_recording(editor) : initialize_recording(editor))) {
    return;
  }
  start_recording_unattended(editor, {});
}

void save(Editor& editor, const std::string& path) {
  if (editor.recorder.is_armed || editor.document.parts.empty()) return;
  const std::string& audio = editor.open_state.audio_name;
  const std::string name = (audio.empty() ? path : audio) + ".cvp";
  if (const std::error_code error =
          write_project(editor.document, editor.selection, editor.open_state, name,
                        play_position(editor.playback)))
    return show_error(fmt::format("{}\n{}", name, error.message()));
  editor.open_state.project_name = name;
  host().refresh_view(Refresh::all);
}

// False when there are edits that could not be kept: then the program goes on.
bool quit(Editor& editor) {
  stop(editor);
  if (!keep_edits(editor)) return false;
  request_close();
  return true;
}

// Whether the program goes on.
bool carry_out(Editor& editor, RemoteCommand command, const std::string& path) {
  switch (command) {
    case RemoteCommand::record:
    case RemoteCommand::record_by_level:
      start_to_record(editor, command == RemoteCommand::record_by_level);
      break;
    case RemoteCommand::stop:
      stop(editor);
      break;
    case RemoteCommand::save:
      save(editor, path);
      break;
    case RemoteCommand::quit:
      return !quit(editor);
  }
  return true;
}

}  // namespace

bool is_remote_command_there(const Editor& editor) {
  return editor.remote_control_on && remote_command(head_of(remote_file())).has_value();
}

std::vector<MessageBox> remote_scan(Editor& editor) {
  const std::string path = remote_file();
  if (!editor.remote_control_on || path.empty()) return {};
  if (!is_name_taken(path)) {
    write_state(path, state_text(editor));
    return {};
  }
  const std::optional<RemoteCommand> command = remote_command(head_of(path));
  if (!command || is_busy() || remove_file(path)) return {};
  const Busy busy;
  QuietHost quiet;
  const bool goes_on = carry_out(editor, *command, path);
  std::vector<MessageBox> boxes = quiet.take_boxes();
  if (goes_on) write_state(path, state_text(editor) + said_in(boxes));
  return boxes;
}

void end_remote_control(const Editor& editor) {
  const std::string path = remote_file();
  if (!editor.remote_control_on || path.empty()) return;
  if (is_name_taken(path) && (!is_remote_file(head_of(path)) || remove_file(path))) return;
  write_state(path, "Program finished");
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The loop of a recording.
#include "cli/record_run.h"

#include <fmt/format.h>
#include <poll.h>

#include <chrono>
#include <csignal>

#include "audio/recorder.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "cli/times.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "platform/devices/wave_device.h"
#include "platform/host.h"
#include "platform/processes/interruption.h"
#include "platform/processes/user_signals.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "unattended/remote_control.h"

namespace corvelin {

namespace {

// What `length` stands for, in the unit of the recorded time.
double seconds_of(const Editor& editor, double length) {
  return length * 8 / editor.recorder.rec_rate;
}

std::string level_text(const Editor& editor) {
  if (!editor.recorder.rec_level_on) return {};
  return editor.recorder.rec_active ? ", sound" : ", waiting for a sound";
}

std::string status_text(const Editor& editor) {
  std::string text = fmt::format(
      "{}: {}, {:.1f} MB", name_of(editor.recorder.rec_file_name),
      time_text(seconds_of(editor, static_cast<double>(recorded_length(editor.recorder)))),
      static_cast<double>(editor.recorder.rec_file_bytes) / 1e6);
  if (settings.rec_time != 0)
    text += fmt::format(
        ", {} left",
        time_text(seconds_of(editor, static_cast<double>(editor.recorder.rec_remaining))));
  if (!editor.recorder.rec_cues.empty())
    text += fmt::format(", cues: {}", editor.recorder.rec_cues.size());
  return text + level_text(editor);
}

void wait_for_event() {
  pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN, .revents = 0};
  ::poll(&due, 1, static_cast<int>(wave_look_interval.count()));
}

void serve_signals(Editor& editor) {
  if (take_user_signal(SIGUSR1)) add_recording_cue(editor);
  if (take_user_signal(SIGUSR2)) tell(printable(status_text(editor)));
}

// Calls the scan when it is due: at first, and then in its interval.
class RemoteClock {
 public:
  explicit RemoteClock(Editor& editor) : editor_(editor) {}

  void look() {
    if (Clock::now() < next_) return;
    next_ = Clock::now() + remote_scan_interval;
    for (const MessageBox& box : remote_scan(editor_)) host().show_message_box(box);
  }

 private:
  using Clock = std::chrono::steady_clock;
  Editor& editor_;
  Clock::time_point next_ = Clock::now();
};

// A signal ends the recording and nothing else. The next one ends the run that goes on with it.
void wait_for_end(Editor& editor) {
  ProgressLine line;
  RemoteClock remote(editor);
  while (editor.recorder.rec_writing) {
    if (!deliver_wave_events()) wait_for_event();
    if (!editor.recorder.rec_writing) break;
    serve_signals(editor);
    if (line.is_due()) line.show(status_text(editor));
    if (take_interruption() != 0) stop_recording(editor);
    remote.look();
  }
}

bool keep_cues(Editor& editor) {
  if (!editor.open_state.document_modified) return true;  // there are none
  const std::string project = keep_recording_project(editor);
  if (project.empty()) return false;
  tell("The cues are in " + printable(project));
  return true;
}

}  // namespace

bool record_unattended(Editor& editor, const std::string& path) {
  catch_user_signals();
  outlive_readers();
  if (!initialize_recording(editor) || !start_recording_unattended(editor, path)) return false;
  wait_for_end(editor);
  if (editor.document.parts.empty() && !editor.recorder.has_failed) tell("Nothing was recorded.");
  const bool are_cues_kept = keep_cues(editor);
  return are_cues_kept && !editor.recorder.has_failed && !editor.document.parts.empty();
}

}  // namespace corvelin

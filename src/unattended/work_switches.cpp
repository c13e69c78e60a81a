// SPDX-License-Identifier: GPL-2.0-or-later
// The table of work switches, and the work.
#include "unattended/work_switches.h"

#include "edit/auto_crop.h"
#include "edit/editor.h"
#include "edit/requirements.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "unattended/dialog_runs.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

SaveOutcome save(Editor& editor, const WorkRequest& request) {
  return save_unattended(editor, request.overwrite);
}

SaveOutcome normalize(Editor& editor, const WorkRequest& request) {
  return normalize_whole_stream(editor) ? save_unattended(editor, request.overwrite)
                                        : SaveOutcome::not_started;
}

SaveOutcome crop(Editor& editor, const WorkRequest& request) {
  const std::uint32_t size_before = editor.document.total_size;
  if (!auto_crop(editor)) return SaveOutcome::not_started;
  if (editor.document.total_size == size_before) {
    show_refusal(ui_text(row::nothing_to_crop));
    return SaveOutcome::not_started;
  }
  return save_unattended(editor, request.overwrite);
}

SaveOutcome split(Editor& editor, const WorkRequest& request) {
  const SaveOutcome outcome = split_unattended(editor, request.folder);
  if (outcome == SaveOutcome::saved) editor.open_state.document_modified = false;
  return outcome;
}

SaveOutcome split_by_clock(Editor& editor, const WorkRequest& request) {
  return cue_by_clock(editor) ? split(editor, request) : SaveOutcome::not_started;
}

SaveOutcome split_at_pauses(Editor& editor, const WorkRequest& request) {
  return cue_pauses_of_whole_stream(editor) ? split(editor, request) : SaveOutcome::not_started;
}

constexpr WorkSwitch table[] = {
    {"save", "Save beside the file: song.mp3 gives song.mp3.mp3", false, true, false, save},
    {"normalize", "Bring the level to full scale, and save", false, true, true, normalize},
    {"autocrop", "Cut the silence off both ends, and save", false, true, false, crop},
    {"autocue", "Split by the clock, into FOLDER or beside the audio", true, false, false,
     split_by_clock},
    {"pausesplit", "Split at the pauses, into FOLDER or beside the audio", true, false, false,
     split_at_pauses},
    {"split", "Save a file a track, in FOLDER or beside the audio", true, false, false, split},
};

}  // namespace

std::span<const WorkSwitch> work_switches() { return table; }

SaveOutcome do_work(Editor& editor, const WorkSwitch& work, const WorkRequest& request) {
  editor.batch_active = true;
  const bool can_run =
      !work.needs_levels || need_level_control(editor.document).result == Result::done;
  return can_run ? work.run(editor, request) : SaveOutcome::not_started;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Start, opening and end of a run.
#include "shell/start_up.h"

#include <fmt/format.h>

#include <memory>
#include <new>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/auto_crop.h"
#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/normalize_dialog.h"
#include "edit/open_files.h"
#include "exchange/id3v1.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/processes/process.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"
#include "settings/settings_file.h"
#include "settings/settings_storage.h"
#include "text/boxes.h"
#include "text/language_file.h"
#include "text/ui_text.h"
#include "unattended/batch_dialog.h"

namespace corvelin {

namespace {

void apply_priority() { set_high_priority(settings.high_pri != 0); }

}  // namespace

void connect_levels(Editor& editor) {
  editor.open_batch_dialog = [job = BatchJob()](Editor& shown) mutable {
    return batch_dialog(shown, job);
  };
  setting_listeners = {
      {"save_id3v1", [&editor] { keep_id3v1_as_set(editor.document, editor.open_state); }},
      {"volume", apply_volume},
      {"high_pri", apply_priority},
      {"max_recent", [] { host().rebuild_recent_menu(); }},
      {"use_toc", [] { host().rebuild_part_list(); }}};  // its times change
}

bool start_up(Editor& editor, const std::optional<std::string>& path) {
  connect_levels(editor);
  settings = default_settings();
  settings_path = path.value_or(std::string());
  const std::error_code error = path ? read_settings(*path) : std::error_code{};
  complete_settings();
  if (settings.high_pri != 0) apply_priority();
  if (!error) return true;
  settings_storage = SettingsStorage::removed;
  show_error(fmt::format("The settings can't be read, so none will be stored:\n\n{}\n{}", *path,
                         error.message()));
  return false;
}

void load_language() {
  if (!load_ui_text(wide_to_bytes(settings.language, true))) settings.language.clear();
}

void shut_down(Editor& editor) {
  if (settings.high_pri != 0) set_high_priority(false);
  record_stop(editor.recorder, editor.level_meter);  // what was recorded is in its file, whole
  close_all(editor);
  setting_listeners.clear();
  ui_text_free();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Closing of documents.
#include "document/close_all.h"

#include "document/open_state.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "settings/setting_table.h"

namespace corvelin {

CloseHooks close_hooks;

void stop_users_of_document() {
  for (void (*const stop)() : close_hooks.before) stop();
}

void close_all() {
  stop_users_of_document();
  close_document(document);
  selection = {};
  open_state.project_name.clear();
  open_state.document_modified = false;
  for (void (*const forget)() : close_hooks.behind) forget();
}

void reset_state(ResetLevel level) {
  if (level == ResetLevel::start) close_all();
  selection = {};
  document.stream = {};
  document.kind = {};
  open_state.document_modified = false;
  document.sheet_title.clear();
  document.sheet_artist.clear();
  if (level == ResetLevel::new_stream) return;

  open_state.audio_name.clear();
  if (level == ResetLevel::no_name) return;

  open_state = {};
  document.header_rewrite = {};
  batch_active = false;
  settings = default_settings();
  for (void (*const reset)() : close_hooks.at_start) reset();
}

}  // namespace corvelin

// Closing of documents.
#include "document/close_all.h"

#include "document/open_state.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "settings/setting_table.h"

namespace corvelin {

CloseHooks close_hooks;

void close_all() {
  for (void (*const stop)() : close_hooks.before) stop();
  close_document();
  selection = {};
  for (void (*const forget)() : close_hooks.behind) forget();
}

void reset_state(ResetLevel level) {
  frame_block.fill(0);
  selection = {};
  stream = {};
  stream_kind = {};
  open_state.document_modified = false;
  document.sheet_title.clear();
  document.sheet_artist.clear();
  if (level == ResetLevel::new_stream) return;

  open_state.audio_name.clear();
  if (level == ResetLevel::no_name) return;

  document = {};
  open_state = {};
  header_rewrite = {};
  batch_active = false;
  settings = default_settings();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// What happens around the opening of documents.
#include "edit/open_files.h"

#include "audio/playback.h"
#include "audio/the_player.h"
#include "document/close_stream.h"
#include "edit/transport.h"
#include "edit/undo.h"
#include "exchange/open_document.h"
#include "model/the_document.h"

namespace corvelin {

void close_all() {
  fall_silent();
  close_stream();
  undo_clear();
}

Joined open_files(std::span<const std::string> names) {
  fall_silent();
  undo_clear();
  Joined joined = open_documents(names);
  if (!document.parts.empty()) device_keepalive(playback, true);
  return joined;
}

bool open_file(const std::string& path) { return open_files({&path, 1}).count != 0; }

}  // namespace corvelin

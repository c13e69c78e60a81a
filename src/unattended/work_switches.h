// SPDX-License-Identifier: GPL-2.0-or-later
// The switches of the command line that name a piece of work for the document that it opens: one
// row and one function each. Both programs have them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "edit/save_audio.h"

namespace corvelin {

struct Editor;

/// What is given with the switch.
struct WorkRequest {
  std::string folder;      // empty: that of the audio
  bool overwrite = false;  // the source is replaced
};

struct WorkSwitch {
  std::string_view name;  // of /save and --save
  std::string_view help;
  bool takes_folder;
  bool saves;         // one file, which may be the source with /overwrite
  bool needs_levels;  // has nothing to do where the level can't be changed
  SaveOutcome (*run)(Editor& editor, const WorkRequest& request);
};

std::span<const WorkSwitch> work_switches();

/// Does the work of one, without a question. It is not started where it needs levels and the stream
/// has none.
SaveOutcome do_work(Editor& editor, const WorkSwitch& work, const WorkRequest& request);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// What belongs to the open document beside its parts: the names it goes by, and what a save will
// do.
#pragma once

#include <string>

namespace corvelin {

struct OpenState {
  std::string audio_name;         // the audio file being opened; empty for none
  std::string project_name;       // the project file or cue sheet of the document; empty for none
  std::string save_name;          // of the last audio save, or the last piece of a split
  std::string split_dest_folder;  // of the last split, with its "/"; it outlives the document
  bool keep_id3v1 =
      false;  // the tag in `document.stream.id3v1` goes behind the audio of the next save
  bool document_modified = false;  // since the last saved project
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog of split save: where the pieces go, how they are called and what they get, and the run
// behind its OK, which a host steps.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "exchange/split_save.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct SplitDialog : Dialog {
  Editor& editor;

  explicit SplitDialog(Editor& opened_for) : editor(opened_for) {}

  std::string cues_text;  // "Cues: 12": how many pieces there will be
  std::string folder;
  std::u16string pattern;
  std::uint16_t first_number = 1;  // "%N begins with:"
  bool creates_id3v11 = false;
  bool copies_id3v2 = false;
  bool overlaps = false;
  std::uint8_t overlap_seconds = 0;  // 0 to 127
  std::unique_ptr<SplitRun> run;     // the one under way, or the last one

  /// Takes the settings, and the folder of the run before, the working folder or that of the audio.
  void begin() override;

  /// Stores the fields, ends a run that is under way, and starts one anew from the first region.
  /// False, and nothing started, when the folder is none. One that isn't there is made if the user
  /// wants that.
  bool accept() override;

  /// Stores the fields and ends a run that is under way between two regions.
  void cancel() override;

  /// Asks, and resets all but the folder.
  void restore_defaults();

 private:
  void store() const;
};

}  // namespace corvelin

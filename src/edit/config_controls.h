// SPDX-License-Identifier: GPL-2.0-or-later
// The controls of the configuration dialog, page by page: which setting each one is bound to, what
// it says, when it is live and what a change pulls along. A host builds its pages from this table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/encoder_settings.h"
#include "settings/setting_table.h"
#include "text/ui_text.h"

namespace corvelin {

struct ConfigDialog;

enum class ControlKind : std::uint8_t {
  group,    // a frame round the controls that follow
  words,    // a text to be read
  box,      // to be checked
  radio,    // one of those with the same key
  number,   // a field for a whole number
  line,     // a field for a text
  slider,   // its text tells its value
  list,     // to choose from
  presets,  // the same, with a name that can be typed
  colour,   // a button with a sample of the colour
  button,
};

struct ConfigControl {
  ControlKind kind;
  SettingPage page;
  std::string_view name;  // for outside programs, unique on its page; that of a setting is its key
  std::string_view key = {};  // of the setting; empty without one
  TextRow row = no_label;
  std::string_view english = {};  // what it says where there is no row for it
  std::int64_t value = 1;         // of a radio button; the bits of a box
  std::int64_t lowest = 0;        // of a slider
  std::int64_t highest = 0;
  std::string_view behind = {};   // the words behind a number,
  TextRow behind_row = no_label;  // or their row

  // What the table can't tell by itself; null where it can.
  std::string (*text)(const ConfigDialog& dialog) = nullptr;
  bool (*is_live)(const ConfigDialog& dialog) = nullptr;
  std::int64_t (*get)(const ConfigDialog& dialog) = nullptr;
  void (*set)(ConfigDialog& dialog, std::int64_t value) = nullptr;  // of a button: press
  void (*then)(ConfigDialog& dialog) = nullptr;                     // behind a change
  std::vector<EncoderChoice> (*choices)(const ConfigDialog& dialog) = nullptr;
};

/// All controls, those of a page together and in the order of reading.
std::span<const ConfigControl> config_controls();

}  // namespace corvelin

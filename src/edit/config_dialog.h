// SPDX-License-Identifier: GPL-2.0-or-later
// The configuration: seven pages of controls that change the settings at once. There is no Apply
// and no Cancel; the settings reach their file when the program ends. What the controls are stands
// in config_controls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "audio/encoder_bridge.h"
#include "edit/config_controls.h"
#include "edit/outcome.h"
#include "platform/host.h"
#include "text/language_list.h"

namespace corvelin {

struct Editor;

struct ConfigDialog : Dialog {
  Editor& editor;

  explicit ConfigDialog(Editor& opened_for) : editor(opened_for) {}

  static constexpr std::size_t page_count = 7;

  SettingPage page = SettingPage::operation;
  bool offers_restart = false;  // a setting was changed that takes a new start
  bool restarts = false;        // the user wants it now

  // What the page in sight found when it was opened.
  std::vector<Language> languages;
  std::vector<std::string> outputs;
  std::vector<std::string> inputs;
  EncoderProbe lame;
  EncoderProbe codec_manager;
  bool is_portable = false;

  std::size_t preset = 0;   // the chosen one of the encoder's presets from 1 on, 0 for none
  std::string preset_name;  // as typed

  /// Opens the page of the last time.
  void begin() override;

  void open_page(SettingPage which);

  /// "&Close", and any other way to close the window.
  bool accept() override;
  void cancel() override { accept(); }

  /// Asks, and gives the settings of the page in sight their defaults.
  void restore_defaults();

  /// "&Restart": asks about unsaved changes; false when the user stays.
  bool restart();

  [[nodiscard]] static std::string title();
  [[nodiscard]] static std::string_view page_title(SettingPage which);
  [[nodiscard]] static std::string restart_label();

  // A control as it is to be shown.
  [[nodiscard]] std::string label_of(const ConfigControl& control) const;
  [[nodiscard]] static std::string_view words_behind(const ConfigControl& control);
  [[nodiscard]] bool is_live(const ConfigControl& control) const;
  [[nodiscard]] std::int64_t value_of(const ConfigControl& control) const;
  [[nodiscard]] std::string text_of(const ConfigControl& control) const;  // of a line

  // What the user makes of it. Nothing while the control isn't live; a number out of its limits
  // becomes the nearest one in them.
  void set(const ConfigControl& control, std::int64_t value);
  void set_text(const ConfigControl& control, std::string_view text);
  void press(const ConfigControl& control) { set(control, 1); }

 private:
  void bring_into_limits();
};

/// The command; and the same opened on the page of the encoder.
Outcome configuration_dialog(Editor& editor);
Outcome configure_encoder(Editor& editor);

}  // namespace corvelin

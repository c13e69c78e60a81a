// SPDX-License-Identifier: GPL-2.0-or-later
// Values, changes and defaults of the configuration.
#include "edit/config_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <variant>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "edit/save_project.h"
#include "platform/devices/wave_device.h"
#include "platform/text/text.h"
#include "settings/settings_storage.h"
#include "text/boxes.h"
#include "text/language_file.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_restart_label = 48;  // characters

// Of a setting that is no number it is 0.
std::int64_t number_in(const SettingField& field) {
  return std::visit(
      []<typename Value>(Value Settings::*member) -> std::int64_t {
        if constexpr (std::is_integral_v<Value>) return settings.*member;
        return 0;
      },
      field);
}

void change_number(const SettingField& field, std::int64_t value) {
  std::visit(
      [value]<typename Value>(Value Settings::*member) {
        if constexpr (std::is_integral_v<Value>) change_setting(member, static_cast<Value>(value));
      },
      field);
}

void change_to_default(const SettingKey& row, const Settings& defaults) {
  std::visit([&defaults](auto member) { change_setting(member, defaults.*member); }, row.field);
}

// What a Defaults button leaves as it is.
bool keeps_its_value(const SettingKey& row) {
  return row.key == "language" || row.key == "enc_lam_preset";
}

// Defaults that would disturb what is going on.
bool is_in_use(const Editor& editor, SettingPage page) {
  const bool is_playing = editor.playback.is_playing || editor.playback.is_requested;
  switch (page) {
    case SettingPage::devices:
      return is_playing || editor.recorder.is_armed;
    case SettingPage::decoder:
      return is_playing;
    case SettingPage::encoder:
      return editor.recorder.is_armed;
    default:
      return false;
  }
}

void drop_unknown_language(const std::vector<Language>& languages) {
  const std::string name = wide_to_bytes(settings.language, true);
  if (std::ranges::find(languages, name, &Language::name) == languages.end())
    settings.language.clear();
}

}  // namespace

void ConfigDialog::begin() {
  open_page(static_cast<SettingPage>(std::min<std::size_t>(settings.tabsel, page_count - 1)));
}

void ConfigDialog::open_page(SettingPage which) {
  page = which;
  settings.tabsel = static_cast<std::uint16_t>(which);
  if (page == SettingPage::operation) {
    languages = language_list(language_home());
    drop_unknown_language(languages);
  }
  if (page == SettingPage::devices) {
    outputs = wave_device_names(WaveDirection::output);
    inputs = wave_device_names(WaveDirection::input);
  }
  if (page == SettingPage::encoder) {
    lame = encoder_probe_lame();
    codec_manager = encoder_probe_codec_manager();
    correct_lame_settings();
  }
  if (page == SettingPage::folders) is_portable = local_marker(MarkerOperation::test);
  bring_into_limits();
}

// A file of settings may hold any number.
void ConfigDialog::bring_into_limits() {
  for (const ConfigControl& control : config_controls())
    if (control.page == page &&
        (control.kind == ControlKind::number || control.kind == ControlKind::slider))
      set(control, value_of(control));
}

bool ConfigDialog::accept() { return true; }

void ConfigDialog::restore_defaults() {
  if (is_in_use(editor, page)) return host().beep();
  if (!confirm_defaults()) return;
  const Settings defaults = default_settings();
  for (const SettingKey& row : setting_keys()) {
    if (row.page != page || keeps_its_value(row)) continue;
    const Settings before = settings;
    change_to_default(row, defaults);
    if (row.effect == SettingEffect::restart &&
        get_setting(row.key, before) != get_setting(row.key))
      offers_restart = true;
  }
  complete_settings();  // the name of recordings
  if (page == SettingPage::layout) offers_restart = true;
  open_page(page);
  host().refresh_view(Refresh::all);
}

bool ConfigDialog::restart() {
  restarts = confirm_discard_changes(editor);
  return restarts;
}

std::string ConfigDialog::title() {
  constexpr std::string_view standard = "Configuration";
  return fmt::format("Corvelin - {}", has_ui_text(dlg, 8) ? ui_text(row::settings) : standard);
}

std::string_view ConfigDialog::page_title(SettingPage which) {
  constexpr std::uint32_t rows[page_count] = {2, 7, 4, 1, 5, 6, 3};
  return ui_text(cfg, rows[static_cast<std::size_t>(which)]);
}

// "Restart program?" as a command. Some languages have a question mark in front, too.
std::string ConfigDialog::restart_label() {
  std::string text(cut_to_units(ui_text(row::restart_program), longest_restart_label));
  if (text.ends_with('?')) text.pop_back();
  constexpr std::string_view inverted = "\xC2\xBF";
  if (text.starts_with(inverted)) text.replace(0, inverted.size(), " ");
  if (text.starts_with('?')) text.front() = ' ';
  return text;
}

std::string ConfigDialog::label_of(const ConfigControl& control) const {
  if (control.text != nullptr) return control.text(*this);
  if (!control.english.empty()) return std::string(control.english);
  const std::string_view text = label_text(control.row);
  return std::string(text.substr(0, text.find('\t')));
}

std::string_view ConfigDialog::words_behind(const ConfigControl& control) {
  if (!control.behind.empty()) return control.behind;
  return label_text(control.behind_row);
}

bool ConfigDialog::is_live(const ConfigControl& control) const {
  return control.is_live == nullptr || control.is_live(*this);
}

std::int64_t ConfigDialog::value_of(const ConfigControl& control) const {
  if (control.get != nullptr) return control.get(*this);
  const SettingKey* const row = find_setting(control.key);
  if (row == nullptr) return 0;
  const std::int64_t value = number_in(row->field);
  if (control.kind == ControlKind::box) return (value & control.value) != 0 ? 1 : 0;
  if (control.kind == ControlKind::radio) return value == control.value ? 1 : 0;
  return value;
}

std::string ConfigDialog::text_of(const ConfigControl& control) const {
  if (control.kind == ControlKind::presets) return preset_name;
  return get_setting(control.key).value_or(std::string());
}

void ConfigDialog::set(const ConfigControl& control, std::int64_t value) {
  if (!is_live(control)) return;
  const SettingKey* const row = find_setting(control.key);
  const std::int64_t before = row == nullptr ? 0 : number_in(row->field);
  if (control.set != nullptr) {
    control.set(*this, value);
  } else if (row != nullptr) {
    if (control.kind == ControlKind::box)
      value = value != 0 ? before | control.value : before & ~control.value;
    if (control.kind == ControlKind::radio) value = control.value;
    const AllowedValues& allowed = row->allowed;
    change_number(row->field, std::clamp(value, allowed.lowest, allowed.highest));
    if (row->effect == SettingEffect::restart && number_in(row->field) != before)
      offers_restart = true;
  }
  if (control.then != nullptr) control.then(*this);
}

void ConfigDialog::set_text(const ConfigControl& control, std::string_view text) {
  if (control.kind == ControlKind::presets) {
    preset_name = text;
    return;
  }
  if (is_live(control)) set_setting(control.key, cut_to_units(text, longest_setting));
}

Outcome configuration_dialog(Editor& editor) {
  ConfigDialog dialog(editor);
  const bool is_shown = show_dialog(dialog);
  if (dialog.restarts) host().restart();
  return is_shown ? Result::done : Result::refused;
}

Outcome configure_encoder(Editor& editor) {
  settings.tabsel = static_cast<std::uint16_t>(SettingPage::encoder);
  return configuration_dialog(editor);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The table of all settings: what each may be, its default, where the user finds it, and what a
// change of it brings about. Whoever changes a setting while the program runs does it through here,
// so that an edit line, a menu entry and a dialog do the same.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "settings/settings.h"
#include "text/ui_text.h"

namespace corvelin {

/// The page of the configuration on which a setting stands.
enum class SettingPage : std::uint8_t {
  operation,
  layout,
  devices,
  decoder,
  encoder,
  folders,
  misc,
  elsewhere,  // in a menu or in another dialog
};

/// What a changed setting asks of the window.
enum class SettingEffect : std::uint8_t {
  none,
  refresh,   // what is shown is drawn anew
  relayout,  // the same, and the window is laid out anew
  restart,   // the same as `refresh`, and all of the change comes with the next start
};

using SettingField =
    std::variant<std::uint8_t Settings::*, std::uint16_t Settings::*, std::uint32_t Settings::*,
                 std::int32_t Settings::*, std::string Settings::*, std::u16string Settings::*,
                 std::vector<std::string> Settings::*>;

/// The values that a setting may be given: for a number one of `list`, or else one from `lowest` to
/// `highest`, in steps, that passes `fits`; for a text at most `highest` UTF-16 code units, for a
/// list of lines at most `highest` of them.
struct AllowedValues {
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
  std::int64_t step = 1;
  std::span<const std::int32_t> list = {};
  bool (*fits)(std::int64_t value) = nullptr;
};

/// One row of the table.
struct SettingKey {
  std::string_view key;
  SettingField field;
  std::int64_t standard;  // default of a number; texts and lists begin empty
  AllowedValues allowed;
  SettingPage page;
  SettingEffect effect;
  TextRow label;  // of the control; `no_label` where it has none
  std::string_view meaning;
};

constexpr TextRow no_label = {.section = cfg, .number = 0};

/// The table, in the order of the file.
std::span<const SettingKey> setting_keys();

/// The row of a key, or null.
const SettingKey* find_setting(std::string_view key);

/// The values that a first start has. Some depend on `display`.
Settings default_settings();

/// Whether a number is among the values that the setting may be given.
bool is_allowed(const SettingKey& row, std::int64_t value);

/// These values in words: "0 to 100", "1, 2, 4, 8, 16 or 32".
std::string allowed_text(const SettingKey& row);

enum class SetResult { done, unknown_key, not_settable, not_a_number, not_allowed, too_long };

/// Sets one setting from a text, as a person would type it: a number (colours also as 0xBBGGRR), a
/// path or a text, if it is among its allowed values. A list of lines can't be set so, nor can the
/// version.
SetResult set_setting(std::string_view key, std::string_view value);

/// The value in the form that `set_setting` takes; nothing for an unknown key and a list of lines.
std::optional<std::string> get_setting(std::string_view key);
std::optional<std::string> get_setting(std::string_view key, const Settings& from);

/// What else follows from a change of one setting, wherever it comes from.
struct SettingListener {
  std::string_view key;
  std::function<void()> changed;
};
extern std::vector<SettingListener> setting_listeners;

/// Runs the listeners and has the host do what the effect asks for.
void setting_changed(const SettingField& field);

/// Gives a setting a value and has what follows from that done, if it is a new one. Whether it is
/// an allowed one is the caller's business.
template <typename Value>
void change_setting(Value Settings::*field, const std::type_identity_t<Value>& value) {
  if (settings.*field == value) return;
  settings.*field = value;
  setting_changed(field);
}

}  // namespace corvelin

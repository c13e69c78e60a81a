// SPDX-License-Identifier: GPL-2.0-or-later
// The table of settings, and changes by key or by field.
#include "settings/setting_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "platform/host.h"
#include "platform/processes/system.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

using S = Settings;
using enum SettingPage;
using enum SettingEffect;

constexpr std::int32_t zooms[] = {1, 2, 4, 8, 16, 32};
constexpr std::int32_t layouts[] = {0, 1, 2, 3, 4, 5, 16, 17, 18};
constexpr std::int32_t sample_rates[] = {8000,  11025, 12000, 16000, 22050,
                                         24000, 32000, 44100, 48000};
constexpr std::int32_t lame_sample_rates[] = {16000, 22050, 24000, 32000, 44100, 48000};
constexpr std::int32_t lame_modes[] = {0, 1, 3};
constexpr std::int32_t lame_qualities[] = {0, 1, 2, 3, 5};
constexpr std::int32_t bitrates[] = {8,  16,  24,  32,  40,  48,  56,  64,  80,
                                     96, 112, 128, 144, 160, 192, 224, 256, 320};
constexpr std::int64_t white = 0xFFFFFF;

bool is_threshold_and_pause(std::int64_t value) {
  const std::int64_t threshold = value & 0xFF;
  const std::int64_t pause = value >> 8;
  return threshold >= 1 && threshold <= 64 && pause >= 1 && pause <= 30;
}

constexpr AllowedValues between(std::int64_t lowest, std::int64_t highest) {
  return {.lowest = lowest, .highest = highest};
}

constexpr AllowedValues in_steps(std::int64_t lowest, std::int64_t highest, std::int64_t step) {
  return {.lowest = lowest, .highest = highest, .step = step};
}

constexpr AllowedValues one_of(std::span<const std::int32_t> list) {
  return {.lowest = list.front(), .highest = list.back(), .list = list};
}

constexpr AllowedValues any_number =
    between(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());

template <typename Number>
constexpr SettingKey number(std::string_view key, Number S::*field, std::int64_t standard,
                            AllowedValues allowed, SettingPage page, SettingEffect effect,
                            TextRow label, std::string_view meaning) {
  return {key, field, standard, allowed, page, effect, label, meaning};
}

constexpr SettingKey flag(std::string_view key, std::uint32_t S::*field, std::int64_t standard,
                          SettingPage page, SettingEffect effect, TextRow label,
                          std::string_view meaning) {
  return number(key, field, standard, between(0, 1), page, effect, label, meaning);
}

constexpr SettingKey colour(std::string_view key, std::uint32_t S::*field, std::int64_t standard,
                            SettingPage page, SettingEffect effect, TextRow label,
                            std::string_view meaning) {
  return number(key, field, standard, between(0, white), page, effect, label, meaning);
}

// A text or a list of lines.
template <typename Text>
constexpr SettingKey text(std::string_view key, Text S::*field, std::size_t most, SettingPage page,
                          SettingEffect effect, TextRow label, std::string_view meaning) {
  const AllowedValues allowed = between(0, static_cast<std::int64_t>(most));
  return {key, field, 0, allowed, page, effect, label, meaning};
}

constexpr SettingKey table[] = {
#include "settings/setting_rows.inc"
};

// A window measure, in logical pixels, grows with the font scale of the display, but no more than
// the screen has room for.
std::int32_t window_default(std::int32_t measure, int screen, int least_screen) {
  const double room = static_cast<double>(screen) / least_screen;
  return static_cast<std::int32_t>(measure * std::min<double>(display.scale / display.ratio, room));
}

void fit_to_display(Settings& defaults) {
  constexpr float large_scale = 1.5F;
  defaults.window_x = window_default(defaults.window_x, display.width, 900);
  defaults.window_y = window_default(defaults.window_y, display.height, 640);
  defaults.window_w = window_default(defaults.window_w, display.width, 900);
  defaults.window_h = window_default(defaults.window_h, display.height, 640);
  defaults.timer_height =
      static_cast<std::uint16_t>(static_cast<float>(defaults.timer_height) * display.scale);
  defaults.large_symbols = display.scale >= large_scale ? 1 : 0;
}

bool is_colour(const SettingKey& row) { return row.allowed.highest == white; }

bool parse_number(std::string_view text, std::int64_t& value) {
  const bool is_hex = text.starts_with("0x") || text.starts_with("0X");
  if (is_hex) text.remove_prefix(2);
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, is_hex ? 16 : 10);
  return error == std::errc{} && stop == end && !text.empty();
}

// Sets the field of a row from a text. One overload a kind of field.
struct Setter {
  const SettingKey& row;
  std::string_view text;

  template <typename Number>
  SetResult operator()(Number S::*field) const {
    std::int64_t value = 0;
    if (!parse_number(text, value)) return SetResult::not_a_number;
    if (!is_allowed(row, value)) return SetResult::not_allowed;
    change_setting(field, static_cast<Number>(value));
    return SetResult::done;
  }
  SetResult operator()(std::string S::*field) const {
    if (is_too_long(count_units(text))) return SetResult::too_long;
    change_setting(field, std::string(text));
    return SetResult::done;
  }
  SetResult operator()(std::u16string S::*field) const {
    const std::u16string value = bytes_to_wide(text, true);
    if (is_too_long(value.size())) return SetResult::too_long;
    if (field == &S::version) return SetResult::not_settable;
    change_setting(field, value);
    return SetResult::done;
  }
  SetResult operator()(std::vector<std::string> S::*) const { return SetResult::not_settable; }

  [[nodiscard]] bool is_too_long(std::size_t units) const {
    return std::cmp_greater(units, row.allowed.highest);
  }
};

struct Getter {
  const SettingKey& row;
  const Settings& from;

  using Answer = std::optional<std::string>;
  template <typename Number>
  Answer operator()(Number S::*field) const {
    const auto value = static_cast<std::int64_t>(from.*field);
    return is_colour(row) ? fmt::format("0x{:06X}", value) : fmt::format("{}", value);
  }
  Answer operator()(std::string S::*field) const { return from.*field; }
  Answer operator()(std::u16string S::*field) const { return wide_to_bytes(from.*field, true); }
  Answer operator()(std::vector<std::string> S::*) const { return std::nullopt; }
};

}  // namespace

std::vector<SettingListener> setting_listeners;

std::span<const SettingKey> setting_keys() { return table; }

const SettingKey* find_setting(std::string_view key) {
  const auto* const row = std::ranges::find(table, key, &SettingKey::key);
  return row == std::end(table) ? nullptr : row;
}

Settings default_settings() {
  Settings defaults;
  for (const SettingKey& row : table) {
    const auto set = [&]<typename Value>(Value S::*field) {
      if constexpr (std::is_integral_v<Value>) defaults.*field = static_cast<Value>(row.standard);
    };
    std::visit(set, row.field);
  }
  fit_to_display(defaults);
  return defaults;
}

bool is_allowed(const SettingKey& row, std::int64_t value) {
  const AllowedValues& allowed = row.allowed;
  if (!allowed.list.empty()) return std::ranges::find(allowed.list, value) != allowed.list.end();
  if (value < allowed.lowest || value > allowed.highest) return false;
  if ((value - allowed.lowest) % allowed.step != 0) return false;
  return allowed.fits == nullptr || allowed.fits(value);
}

std::string allowed_text(const SettingKey& row) {
  const AllowedValues& allowed = row.allowed;
  if (std::holds_alternative<std::string S::*>(row.field)) return "a path";
  if (std::holds_alternative<std::u16string S::*>(row.field))
    return fmt::format("a text of up to {} characters", allowed.highest);
  if (std::holds_alternative<std::vector<std::string> S::*>(row.field))
    return fmt::format("up to {} lines in the settings file", allowed.highest);
  if (is_colour(row)) return "0x000000 to 0xFFFFFF";
  if (!allowed.list.empty())
    return fmt::format("{} or {}", fmt::join(allowed.list.first(allowed.list.size() - 1), ", "),
                       allowed.list.back());
  if (allowed.highest - allowed.lowest == 1)
    return fmt::format("{} or {}", allowed.lowest, allowed.highest);
  const std::string range = fmt::format("{} to {}", allowed.lowest, allowed.highest);
  return allowed.step == 1 ? range : fmt::format("{} in steps of {}", range, allowed.step);
}

SetResult set_setting(std::string_view key, std::string_view value) {
  const SettingKey* const row = find_setting(key);
  return row == nullptr ? SetResult::unknown_key : std::visit(Setter{*row, value}, row->field);
}

std::optional<std::string> get_setting(std::string_view key, const Settings& from) {
  const SettingKey* const row = find_setting(key);
  return row == nullptr ? std::nullopt : std::visit(Getter{*row, from}, row->field);
}

std::optional<std::string> get_setting(std::string_view key) { return get_setting(key, settings); }

void setting_changed(const SettingField& field) {
  const auto* const row = std::ranges::find(table, field, &SettingKey::field);
  for (const SettingListener& listener : setting_listeners)
    if (listener.key == row->key) listener.changed();
  if (row->effect == relayout) host().lay_out();
  if (row->effect != none) host().refresh_view(Refresh::all);
  if (row->effect == restart) host().offer_restart();
}

}  // namespace corvelin

// The table of settings made from its rows, and what is done to single ones.
#include "settings/settings.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "platform/system.h"
#include "platform/text.h"

namespace corvelin {

namespace {

constexpr std::int64_t any_low = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t any_high = std::numeric_limits<std::int32_t>::max();

constexpr SettingKey table[] = {
#define PATHS(key, most, meaning) {#key, PathsKey{&Settings::key, most}, meaning},
#define PATH(key, meaning) {#key, PathKey{&Settings::key}, meaning},
#define TEXT(key, most, meaning) {#key, TextKey{&Settings::key, most}, meaning},
#define NUMBER(type, key, standard, lowest, highest, meaning) \
  {#key, NumberKey<type>{&Settings::key, lowest, highest}, meaning},
#define LINES(key, most, meaning) {#key, LinesKey{&Settings::key, most}, meaning},
#include "settings/settings_keys.inc"
#undef PATHS
#undef PATH
#undef TEXT
#undef NUMBER
#undef LINES
};

// A window measure grows with the scale of the display, but no more than the screen has room for.
std::int32_t window_default(int measure, int screen, int least_screen) {
  const double room = static_cast<double>(screen) / least_screen;
  return static_cast<std::int32_t>(measure * std::min<double>(display.scale, room));
}

std::uint16_t scaled(int value) {
  return static_cast<std::uint16_t>(static_cast<float>(value) * display.scale);
}

bool parse_number(std::string_view text, std::int64_t& value) {
  const bool is_hex = text.starts_with("0x") || text.starts_with("0X");
  if (is_hex) text.remove_prefix(2);
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, is_hex ? 16 : 10);
  return error == std::errc{} && stop == end && !text.empty();
}

// One overload a kind of key.
struct Setter {
  std::string_view text;

  template <typename Number>
  SetResult operator()(const NumberKey<Number>& key) const {
    std::int64_t value = 0;
    if (!parse_number(text, value)) return SetResult::not_a_number;
    if (value < key.lowest || value > key.highest) return SetResult::out_of_range;
    settings.*key.field = static_cast<Number>(value);
    return SetResult::done;
  }
  SetResult operator()(const PathKey& key) const {
    if (cut_to_units(text, longest_setting).size() < text.size()) return SetResult::too_long;
    settings.*key.field = text;
    return SetResult::done;
  }
  SetResult operator()(const TextKey& key) const {
    std::u16string value = bytes_to_wide(text, true);
    if (value.size() > key.most) return SetResult::too_long;
    settings.*key.field = std::move(value);
    return SetResult::done;
  }
  SetResult operator()(const PathsKey&) const { return SetResult::unknown_key; }
  SetResult operator()(const LinesKey&) const { return SetResult::unknown_key; }
};

}  // namespace

Settings settings;

std::span<const SettingKey> setting_keys() { return table; }

Settings default_settings() {
  Settings defaults;
#define PATHS(key, most, meaning)
#define PATH(key, meaning)
#define TEXT(key, most, meaning)
#define NUMBER(type, key, standard, lowest, highest, meaning) defaults.key = standard;
#define LINES(key, most, meaning)
#include "settings/settings_keys.inc"
#undef PATHS
#undef PATH
#undef TEXT
#undef NUMBER
#undef LINES
  return defaults;
}

SetResult set_setting(std::string_view key, std::string_view value) {
  const auto row = std::ranges::find(setting_keys(), key, &SettingKey::key);
  if (row == setting_keys().end()) return SetResult::unknown_key;
  return std::visit(Setter{value}, row->value);
}

std::string_view setting_meaning(std::string_view key) {
  const auto row = std::ranges::find(setting_keys(), key, &SettingKey::key);
  return row == setting_keys().end() ? std::string_view{} : row->meaning;
}

void complete_settings() {
  if (settings.file_savepath.empty()) settings.file_savepath = documents_folder() + "/Recording";
  if (settings.split_pattern.empty()) settings.split_pattern = default_split_pattern;
}

void add_recent(const std::string& path) {
  std::vector<std::string>& list = settings.file_recent;
  if (settings.max_recent == 0 || std::ranges::find(list, path) != list.end()) return;
  list.insert(list.begin(), path);
  if (list.size() > settings.max_recent) list.resize(settings.max_recent);
}

void remove_recent(const std::string& path) {
  std::vector<std::string>& list = settings.file_recent;
  const auto found = std::ranges::find(list, path);
  if (found != list.end()) list.erase(found);
}

}  // namespace corvelin

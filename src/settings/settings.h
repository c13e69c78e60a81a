// All user choices: one flat record that the code reads when it needs a value, and the table of its
// keys. The file form is in settings_file, the choice of the file in settings_storage.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvelin {

// A field a key of settings_keys.inc, in its order.
struct Settings {
#define PATHS(key, most, meaning) std::vector<std::string> key;
#define PATH(key, meaning) std::string key;
#define TEXT(key, most, meaning) std::u16string key;
#define NUMBER(type, key, standard, lowest, highest, meaning) type key = 0;
#define LINES(key, most, meaning) std::vector<std::string> key;
#include "settings/settings_keys.inc"
#undef PATHS
#undef PATH
#undef TEXT
#undef NUMBER
#undef LINES
};

extern Settings settings;

/// Bits of the setting `keep_date`.
constexpr std::uint16_t keep_date_of_source = 1;
constexpr std::uint16_t keep_date_on_new = 2;

/// Bits of the setting `warn`.
constexpr std::uint16_t warn_of_unsaved_changes = 1;
constexpr std::uint16_t warn_of_replacing = 2;

constexpr std::u16string_view default_split_pattern = u"%F Track %N";

/// The longest path or text of a setting, in UTF-16 code units.
constexpr std::size_t longest_setting = 400;

struct PathsKey {
  std::vector<std::string> Settings::*field;
  std::size_t most;
};
struct PathKey {
  std::string Settings::*field;
};
struct TextKey {
  std::u16string Settings::*field;
  std::size_t most;  // UTF-16 code units
};
template <typename Number>
struct NumberKey {
  Number Settings::*field;
  std::int64_t lowest;
  std::int64_t highest;
};
struct LinesKey {
  std::vector<std::string> Settings::*field;
  std::size_t most;
};

/// One row of the table.
struct SettingKey {
  std::string_view key;
  std::variant<PathsKey, PathKey, TextKey, NumberKey<std::uint8_t>, NumberKey<std::uint16_t>,
               NumberKey<std::uint32_t>, NumberKey<std::int32_t>, LinesKey>
      value;
  std::string_view meaning;
};

/// The table, in the order of the file.
std::span<const SettingKey> setting_keys();

/// The values that a first start has. Depends on `display`.
Settings default_settings();

enum class SetResult { done, unknown_key, not_a_number, out_of_range, too_long };

/// Sets one setting from a text, as a person would type it: a number in its range (colours also as
/// 0xBBGGRR), a path or a text. The keys with several lines have no such form.
SetResult set_setting(std::string_view key, std::string_view value);

/// What a setting is for and which values it takes, for the user.
std::string_view setting_meaning(std::string_view key);

/// The documents folder's "Recording" and "%F Track %N" where a name is still empty.
void complete_settings();

/// Puts a file on top of the recent list, unless it stands there anywhere already.
void add_recent(const std::string& path);

void remove_recent(const std::string& path);

}  // namespace corvelin

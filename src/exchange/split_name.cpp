// Expansion of the name pattern.
#include "exchange/split_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "document/open_state.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_path = 250;  // characters; the last step may go beyond
constexpr std::size_t longest_name = 255;  // bytes, as common file systems have it

// What file systems of this and other platforms refuse in a name. Further control characters are
// left as they are.
constexpr std::string_view refused_characters("\\/:*?\"<>|\t\0", 11);

struct Piece {
  std::uint32_t number;
  std::uint32_t last_number;
  int digits;
  const Part& part;
};

std::string name_of_source() {
  const std::string_view name = name_of(open_state.audio_name);
  return std::string(name.substr(0, name.size() - extension_of(name).size()));
}

// With an apostrophe behind the hours too: a colon is no character for a name.
std::string start_time(const Part& part) {
  std::string time = format_time(to_time_scale(part.part_beg), stream.avg_bitrate);
  if (const std::size_t colon = time.find(':'); colon != std::string::npos) time[colon] = '\'';
  return time;
}

// What "%" and this letter stand for; nothing when that is no variable.
std::optional<std::string> variable(char letter, const Piece& piece) {
  switch (letter) {
    case 'N':
      return fmt::format("{:0{}}", piece.number, piece.digits);
    case 'M':
      return fmt::format("{:0{}}", piece.last_number, piece.digits);
    case 'T':
      return wide_to_bytes(piece.part.part_title, true);
    case 'A':
      return wide_to_bytes(piece.part.part_artist, true);
    case 'C':
      return wide_to_bytes(document.sheet_title, true);
    case 'D':
      return wide_to_bytes(document.sheet_artist, true);
    case 'F':
      return name_of_source();
    case 'S':
      return start_time(piece.part);
    default:
      return std::nullopt;
  }
}

// Takes a variable or a character off the pattern.
std::string take_step(std::string_view& pattern, const Piece& piece) {
  if (pattern.size() > 1 && pattern[0] == '%') {
    if (std::optional<std::string> text = variable(pattern[1], piece)) {
      pattern.remove_prefix(2);
      return *std::move(text);
    }
  }
  std::string character(first_character(pattern));
  pattern.remove_prefix(character.size());
  return character;
}

}  // namespace

void make_split_name(std::string& path, std::uint16_t done, std::uint16_t first_number,
                     std::uint16_t total, PartIndex part) {
  const std::uint32_t numbers = std::uint32_t{total} + first_number;
  const Piece piece = {.number = std::uint32_t{done} + first_number - 1,
                       .last_number = numbers - 1,
                       .digits = numbers >= 101 ? 3 : 2,
                       .part = document.parts[part]};
  path.resize(folder_of(path).size());
  const std::string whole_pattern = wide_to_bytes(settings.split_pattern, true);
  std::string_view pattern = whole_pattern;
  std::string name;
  for (std::size_t length = count_units(path); !pattern.empty() && length <= longest_path;) {
    const std::string step = take_step(pattern, piece);
    length += count_units(step);
    name += step;
  }
  std::ranges::replace_if(
      name, [](char c) { return refused_characters.find(c) != std::string_view::npos; }, '_');
  const std::string_view extension = extension_of(name_of(open_state.audio_name));
  const std::size_t room = longest_name - std::min(longest_name, extension.size());
  path.append(cut_to_bytes(name, room)).append(extension);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Expansion of the name pattern.
#include "exchange/split_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "model/document.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_path = 250;  // characters; the last step may go beyond
constexpr std::size_t longest_name = 255;  // bytes, as common file systems have it

// What file systems of this and other platforms refuse in a name, beside control characters.
constexpr std::string_view refused_characters = "\\/:*?\"<>|\n";

struct Piece {
  std::uint32_t number;
  std::uint32_t last_number;
  int digits;
  const Part& part;
  std::string_view source;  // name of the source file, without its extension
};

// What a step of the pattern adds to the name.
struct Step {
  std::string text;
  bool can_be_shorter = false;  // a text of the document, not a number and not the pattern's own
};

// With an apostrophe behind the hours too: a colon is no character for a name.
std::string start_time(const Document& document, const Part& part) {
  std::string time = shown_time(document, part.part_beg);
  if (const std::size_t colon = time.find(':'); colon != std::string::npos) time[colon] = '\'';
  return time;
}

Step text_of(const std::u16string& text) { return {wide_to_bytes(text, true), true}; }

// What "%" and this letter stand for; nothing when that is no variable.
std::optional<Step> variable(const Document& document, char letter, const Piece& piece) {
  switch (letter) {
    case 'N':
      return Step{fmt::format("{:0{}}", piece.number, piece.digits)};
    case 'M':
      return Step{fmt::format("{:0{}}", piece.last_number, piece.digits)};
    case 'T':
      return text_of(piece.part.part_title);
    case 'A':
      return text_of(piece.part.part_artist);
    case 'C':
      return text_of(document.sheet_title);
    case 'D':
      return text_of(document.sheet_artist);
    case 'F':
      return Step{std::string(piece.source), true};
    case 'S':
      return Step{start_time(document, piece.part)};
    default:
      return std::nullopt;
  }
}

// Takes a variable or a character off the pattern.
Step take_step(const Document& document, std::string_view& pattern, const Piece& piece) {
  if (pattern.size() > 1 && pattern[0] == '%') {
    if (std::optional<Step> step = variable(document, pattern[1], piece)) {
      pattern.remove_prefix(2);
      return *std::move(step);
    }
  }
  Step character = {std::string(first_character(pattern))};
  pattern.remove_prefix(character.text.size());
  return character;
}

// The steps behind one another, in at most so many bytes: no text is longer than all of them may
// be.
std::string join(const std::vector<Step>& steps, std::size_t most) {
  const auto part_of = [](const Step& step, std::size_t limit) {
    return step.can_be_shorter ? cut_to_bytes(step.text, limit) : std::string_view(step.text);
  };
  const auto size_with = [&](std::size_t limit) {
    std::size_t size = 0;
    for (const Step& step : steps) size += part_of(step, limit).size();
    return size;
  };
  std::size_t limit = most;
  while (limit > 0 && size_with(limit) > most) --limit;
  std::string name;
  for (const Step& step : steps) name += part_of(step, limit);
  return std::string(cut_to_bytes(name, most));
}

}  // namespace

void make_split_name(const Document& document, std::string& path, std::uint16_t done,
                     std::uint16_t first_number, std::uint16_t total, PartIndex part,
                     const std::string& audio_name) {
  const std::uint32_t numbers = std::uint32_t{total} + first_number;
  const std::string_view source = name_of(audio_name);
  const std::string_view extension = extension_of(source);
  const Piece piece = {.number = std::uint32_t{done} + first_number - 1,
                       .last_number = numbers - 1,
                       .digits = numbers >= 101 ? 3 : 2,
                       .part = document.parts[part],
                       .source = source.substr(0, source.size() - extension.size())};
  path.resize(folder_of(path).size());
  const std::string whole_pattern = wide_to_bytes(settings.split_pattern, true);
  std::string_view pattern = whole_pattern;
  std::vector<Step> steps;
  for (std::size_t length = count_units(path); !pattern.empty() && length <= longest_path;) {
    steps.push_back(take_step(document, pattern, piece));
    length += count_units(steps.back().text);
  }
  std::string name = join(steps, longest_name - std::min(longest_name, extension.size()));
  name = printable(std::move(name), '_');
  std::ranges::replace_if(
      name, [](char c) { return refused_characters.find(c) != std::string_view::npos; }, '_');
  if (const std::size_t last = name.find_last_not_of(' '); last != std::string::npos)
    name.resize(last + 1);  // where nothing is known for the pattern's last variable
  path.append(name).append(extension);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of places.
#include "cli/place.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>

#include "cli/times.h"
#include "cli/words.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

bool is_digits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool is_decimal(std::string_view text) {
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) return is_digits(text);
  return is_digits(text.substr(0, point)) && is_digits(text.substr(point + 1));
}

// Bytes as the state tells them; what no stream has is as good as any place behind the end.
std::optional<std::uint64_t> typed_bytes(std::string_view word) {
  if (!word.ends_with('b') && word != "0") return std::nullopt;
  if (word.ends_with('b')) word.remove_suffix(1);
  if (!is_digits(word)) return std::nullopt;
  return parse_whole<std::uint64_t>(word).value_or(longest_stream + 1);
}

// What is wrong with a word behind `front` ("end-" or nothing) that is no distance.
Refusal no_place(std::string_view front, std::string_view word) {
  if (is_digits(word))
    return fmt::format("{0}{1} has no unit: {0}{1}s are seconds, {0}{1}b are bytes", front, word);
  if (is_decimal(word)) return fmt::format("{0}{1} has no unit: {0}{1}s are seconds", front, word);
  return fmt::format(
      "\"{}{}\" is no place: give a time (65.5s, 1:05.50), one from the end (end, end-7s), bytes "
      "(123456b), or - for none",
      front, word);
}

Refusal outside_stream(const Document& document, std::string_view front, std::string_view word) {
  return fmt::format("{}{} is {}: the stream takes {} or {}b", front, word,
                     front.empty() ? "behind the end" : "in front of the start",
                     time_text(total_seconds(document)), document.total_size);
}

Place place_in_bytes(const Document& document, std::uint64_t bytes, std::string_view front,
                     std::string_view word) {
  if (bytes > document.total_size) return {.refusal = outside_stream(document, front, word)};
  const auto distance = static_cast<EditPosition>(bytes);
  return {front.empty() ? distance : document.total_size - distance};
}

Place place_in_seconds(const Document& document, double seconds, std::string_view front,
                       std::string_view word) {
  const auto pos = place_at(document, front.empty() ? seconds : total_seconds(document) - seconds);
  return pos ? Place{*pos} : Place{.refusal = outside_stream(document, front, word)};
}

}  // namespace

const std::string_view place_forms =
    "  65.5s  90s                   seconds\n"
    "  1:05  1:05.5  1'05.50        minutes and seconds\n"
    "  1:02:05.50  1:02'05.50       hours, minutes and seconds\n"
    "  end  end-7s  end-1:30        from the end\n"
    "  123456b  0                   bytes, as the state tells them\n"
    "  -                            none\n";

std::optional<double> typed_seconds(std::string_view word) {
  constexpr double minute = 60;
  constexpr double hour = 3600;
  if (word.ends_with('s')) {
    word.remove_suffix(1);
    return is_decimal(word) ? std::optional(leading_decimal(word)) : std::nullopt;
  }
  const std::size_t mark = word.find_last_of(":'");
  if (mark == std::string_view::npos) return std::nullopt;
  const std::string_view seconds = word.substr(mark + 1);
  std::string_view minutes = word.substr(0, mark);
  std::string_view hours = "0";
  if (const std::size_t colon = minutes.find(':'); colon != std::string_view::npos) {
    hours = minutes.substr(0, colon);
    minutes.remove_prefix(colon + 1);
  }
  if (!is_digits(hours) || !is_digits(minutes) || !is_decimal(seconds)) return std::nullopt;
  if (leading_decimal(seconds) > minute) return std::nullopt;  // 59.999 s are shown as 60.00
  return leading_decimal(hours) * hour + leading_decimal(minutes) * minute +
         leading_decimal(seconds);
}

Place read_place(const Document& document, std::string_view word) {
  constexpr std::string_view from_end = "end-";
  if (word == "-") return {};
  if (word == "end") return {document.total_size};
  const std::string_view front = word.starts_with(from_end) ? from_end : std::string_view{};
  word.remove_prefix(front.size());
  if (const auto bytes = typed_bytes(word)) return place_in_bytes(document, *bytes, front, word);
  if (const auto seconds = typed_seconds(word))
    return place_in_seconds(document, *seconds, front, word);
  return {.refusal = no_place(front, word)};
}

Place read_position(Editor& editor, std::string_view word) {
  Place place = read_place(editor.document, word);
  if (place.pos == no_position) return place;
  place.pos = frame_at(editor.document, place.pos, editor.selection.current_frame);
  if (place.pos == no_position) place.refusal = fmt::format("there is no frame at {}", word);
  return place;
}

}  // namespace corvelin

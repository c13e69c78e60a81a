// Reading of places.
#include "cli/place.h"

#include <fmt/format.h>

#include "cli/words.h"
#include "model/frame_locator.h"
#include "model/time_mapping.h"

namespace corvelin {

std::optional<EditPosition> parse_place(std::string_view text) {
  if (text == "-") return no_position;
  if (text == "end") return document.total_size;
  if (const auto seconds = whole_time(text)) return from_time_scale(time_to_position(*seconds));
  return parse_whole<EditPosition>(text);
}

std::optional<EditPosition> parse_position(std::string_view text) {
  const std::optional<EditPosition> place = parse_place(text);
  if (!place || *place == no_position) return place;
  return frame_at(*place);
}

std::string no_place(std::string_view text) {
  return fmt::format("\"{}\" is no place: give bytes (5000), a time (1'05.50), end, or -", text);
}

}  // namespace corvelin

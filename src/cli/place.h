// Places in the edited stream as a person types them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/document.h"

namespace corvelin {

/// A place: a number of bytes, a time, "end", or "-" for none. Nothing for any other text.
std::optional<EditPosition> parse_place(std::string_view text);

/// The frame at a place, as a typed time finds it.
std::optional<EditPosition> parse_position(std::string_view text);

/// The refusal of a text that is no place.
std::string no_place(std::string_view text);

}  // namespace corvelin

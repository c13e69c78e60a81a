// Times of the edited stream, as this program reads and tells them.
#pragma once

#include <optional>
#include <string>

#include "model/document.h"

namespace corvelin {

/// The seconds of the edited stream in front of a place.
double seconds_at(EditPosition pos);

double total_seconds();

/// The place at a time; nothing for one in front of the stream or behind its end. A time that was
/// shown rounded still finds the end.
std::optional<EditPosition> place_at(double seconds);

/// A time as the desktop writes it: 1'05.50 or 1:02'05.50, with milliseconds by the setting
/// `show_milisec`.
std::string time_text(double seconds);

}  // namespace corvelin

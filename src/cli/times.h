// SPDX-License-Identifier: GPL-2.0-or-later
// Times of the edited stream, as this program reads and tells them: exact, from a count of the
// frames in front of a place, or by the scale of the desktop's display.
#pragma once

#include <optional>
#include <string>

#include "model/document.h"

namespace corvelin {

/// Whether the display's scale is what the user asked for.
extern bool uses_display_scale;

/// The seconds of the edited stream in front of a place.
double seconds_at(const Document& document, EditPosition pos);

double total_seconds(const Document& document);

/// The place at a time: that of the first frame that begins then or later, or at most half a
/// millisecond earlier, so that a time that was told leads back to its frame. Nothing for a time in
/// front of the stream or behind its end.
std::optional<EditPosition> place_at(const Document& document, double seconds);

/// A time as minutes and seconds (1'05.507), from one hour on with hours (1:02'05.507).
std::string time_text(double seconds);

}  // namespace corvelin

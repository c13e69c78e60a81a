// SPDX-License-Identifier: GPL-2.0-or-later
// The times of cue sheets as text: minutes, seconds and frames of 1/75 s. They are exact times of
// the edited stream, so that a sheet fits the file that is saved of it.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// The seconds that a text stands for.
///
/// Frames and seconds are what stands behind a colon, counted from the end, and the rest is
/// minutes: "3:30" is 3 minutes and 30 frames, "3" is 3 minutes. Fractions are allowed, and no
/// field has a limit.
double cue_seconds(std::string_view time);

/// The time as a sheet has it, "mm:ss:ff". Cut, never rounded, so that the first frame at or behind
/// it is the one that it was written for. From 100 minutes on the minutes have more digits.
std::string format_cue_time(double seconds);

}  // namespace corvelin

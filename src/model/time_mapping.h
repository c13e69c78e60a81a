// SPDX-License-Identifier: GPL-2.0-or-later
// Time as a view of bytes. The editor measures in bytes of the edited stream, and one average rate
// turns them into seconds: exactly at a constant bitrate, nearly at a variable one. There the seek
// table of the file's "Xing" header can bend the scale so that it runs in step with time. Owns this
// view in both directions and the text form of a time, read and written.
//
// A place on the time scale is a byte count too: the place that a stream of constant rate would
// have at the same time. What is shown is `shown_time(pos)`, and lengths are differences of scaled
// places. A time that was typed goes the way back,
// `from_time_scale(time_to_position(seconds))`, and then through the frame locator, which takes
// care of the few bytes that the truncation here may lose.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/document.h"

namespace corvelin {

/// From a place in the edited stream to the time scale. They differ only while the correction is
/// on: with the setting `use_toc`, a seek table, and one source file. `no_position` stays what it
/// is.
std::uint32_t to_time_scale(const Document& document, EditPosition pos);

/// The way back. At most `highest_position`.
EditPosition from_time_scale(const Document& document, std::uint32_t scaled);

/// How the seconds of a time are written.
enum class SecondsForm {
  display,    // with 2 decimals, or with 3 by the setting `show_milisec`
  recording,  // with 1 decimal, as it changes all the time
};

/// A place on the time scale as minutes and seconds (1'05.50), from one hour on with hours
/// (1:02'05.50). `rate` is in bits per second; at a rate of 0 no time passes.
///
/// Seconds are rounded and nothing is carried, so that the last hundredth before a minute reads
/// 0'60.00.
std::string format_time(std::uint32_t pos, double rate, SecondsForm form = SecondsForm::display);

/// A time in seconds in the same form, as it is displayed.
std::string format_seconds(double seconds);

/// The time of a place in the edited stream as it is shown.
std::string shown_time(const Document& document, EditPosition pos);

/// The number of bytes that `seconds` take at the average rate of the stream: 0 for a negative
/// time, `highest_position` for one beyond all bounds.
std::uint32_t time_to_position(const Document& document, double seconds);

/// Reads a time as `format_time` writes it from the start of `text`, up to `terminator`, and moves
/// `text` behind that. Returns its `time_to_position`.
///
/// Hours end with ":", minutes with "'"; either may be missing. What stands in front of the digits,
/// as a label does, is no part of the time. What is no number counts as 0.
/// Without the terminator the seconds don't count, and stay in `text`.
std::uint32_t parse_time(const Document& document, std::string_view& text, char terminator);

}  // namespace corvelin

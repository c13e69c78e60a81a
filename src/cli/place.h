// SPDX-License-Identifier: GPL-2.0-or-later
// Places in the edited stream as a person types them: times, bytes, "end".
#pragma once

#include <optional>
#include <string_view>

#include "cli/edit_line.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

/// What a place may look like, for the help.
extern const std::string_view place_forms;

/// A place that was typed; with a refusal it is none.
struct Place {
  EditPosition pos = no_position;  // also for "-"
  Refusal refusal;
};

/// The place as it stands, in front of the end or at it.
Place read_place(const Document& document, std::string_view word);

/// The first frame at or behind a place, as a typed time finds it.
Place read_position(Editor& editor, std::string_view word);

/// The seconds of a time: 65.5s, 1:05.5, 1:02:05.5, 1'05.50 or 1:02'05.50. Nothing for another
/// word.
std::optional<double> typed_seconds(std::string_view word);

}  // namespace corvelin

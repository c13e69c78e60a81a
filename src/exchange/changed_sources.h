// SPDX-License-Identifier: GPL-2.0-or-later
// Sources that are not what they were when the parts were made of them: another program wrote to
// one while it is open, or put another file in its place, or a project found one that is not the
// same any more.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/document.h"

namespace corvelin {

/// Tells of every source of the parts that has changed what it is and what a save from it would
/// hold, in paragraphs. Empty when none has.
///
/// The source `replaced`, whose place the save is to take, is looked at for what a project found
/// alone: it is refused, not asked about, when another program wrote to it.
std::string changes_of_sources(const Document& document,
                               std::optional<std::uint16_t> replaced = std::nullopt);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The inner state of a document, for those who look for a fault in the program.
#pragma once

#include <cstdint>
#include <string>

namespace corvelin {

struct Editor;

/// Sizes, places and parts as they are held. At most 1000 bytes: the table of a document with many
/// parts is cut.
std::string debug_text(const Editor& editor);

/// Where in a frame the graph takes its height from, in bits, in the place of the first
/// `global_gain`: 0 for that itself. The view is drawn anew.
void set_gain_bit(Editor& editor, std::uint16_t bit);
constexpr std::uint16_t last_gain_bit = 300;

}  // namespace corvelin

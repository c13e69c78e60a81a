// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that change a setting by a step.
#pragma once

#include <cstdint>

#include "settings/setting_table.h"

namespace corvelin {

template <auto Setting>
void toggle_setting() {
  change_setting(Setting, settings.*Setting == 0 ? 1 : 0);
}

template <std::uint16_t Bit>
void toggle_date_bit() {
  change_setting(&Settings::keep_date, static_cast<std::uint16_t>(settings.keep_date ^ Bit));
}

void volume_up();
void volume_down();

// The height of the graph, in steps of 20 per cent. Any other value that the file of settings had
// is stepped from as it is.
void graph_higher();
void graph_lower();
void graph_default();

}  // namespace corvelin

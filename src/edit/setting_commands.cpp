// SPDX-License-Identifier: GPL-2.0-or-later
// Steps of settings.
#include "edit/setting_commands.h"

#include <algorithm>

namespace corvelin {

namespace {

constexpr int volume_step = 4;  // per cent
constexpr int graph_step = 20;  // per cent

void change_volume(int step) {
  const int volume = std::clamp(settings.volume + step, 0, 100);
  change_setting(&Settings::volume, static_cast<std::uint16_t>(volume));
}

void set_graph_level(int level) {
  change_setting(&Settings::graph_level, static_cast<std::uint16_t>(level));
}

}  // namespace

void volume_up() { change_volume(volume_step); }
void volume_down() { change_volume(-volume_step); }

void graph_higher() {
  if (settings.graph_level < 200) set_graph_level(settings.graph_level + graph_step);
}

void graph_lower() {
  if (settings.graph_level >= graph_step) set_graph_level(settings.graph_level - graph_step);
}

void graph_default() { set_graph_level(100); }

}  // namespace corvelin

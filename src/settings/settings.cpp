// SPDX-License-Identifier: GPL-2.0-or-later
// The record of settings, and what is done to single ones.
#include "settings/settings.h"

#include <algorithm>

#include "platform/host.h"
#include "platform/processes/system.h"

namespace corvelin {

Settings settings;

void complete_settings() {
  if (settings.file_savepath.empty()) settings.file_savepath = documents_folder() + "/Recording";
  if (settings.split_pattern.empty()) settings.split_pattern = default_split_pattern;
}

void add_recent(const std::string& path) {
  std::vector<std::string>& list = settings.file_recent;
  const std::size_t most = std::min<std::size_t>(settings.max_recent, most_recent_files);
  if (most == 0 || std::ranges::find(list, path) != list.end()) return;
  list.insert(list.begin(), path);
  if (list.size() > most) list.resize(most);
  host().rebuild_recent_menu();
}

void remove_recent(const std::string& path) {
  std::vector<std::string>& list = settings.file_recent;
  const auto found = std::ranges::find(list, path);
  if (found != list.end()) list.erase(found);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// What is in a folder.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace corvelin {

struct FolderEntry {
  std::string name;
  bool is_folder = false;
  std::uint64_t size = 0;  // bytes
  std::timespec write_time = {};
};

/// The entries of a folder (with its "/") whose names fit the mask: "*" stands for any characters,
/// "?" for one, the case of the letters doesn't count, and "*.*" fits all names. In no order. A
/// link is what it leads to, and one that leads nowhere is left out. An error, and no entries, when
/// the folder can't be read to its end.
std::error_code list_folder(const std::string& folder, std::string_view mask,
                            std::vector<FolderEntry>& entries);

/// Whether the names in a folder can be read, and the files that have them reached.
bool can_list_folder(const std::string& folder);

}  // namespace corvelin

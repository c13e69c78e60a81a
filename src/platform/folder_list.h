// What is in a folder.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

struct FolderEntry {
  std::string name;
  bool is_folder = false;
  std::uint64_t size = 0;  // bytes
  std::timespec write_time = {};
};

/// The entries of a folder (with its "/") whose names fit the mask: "*" stands for any characters,
/// "?" for one, the case of the letters doesn't count, and "*.*" fits all names. In no order; none
/// when the folder can't be read. A link is what it leads to, and one that leads nowhere is left
/// out.
std::vector<FolderEntry> list_folder(const std::string& folder, std::string_view mask);

/// Whether the names in a folder can be read, and the files that have them reached.
bool can_list_folder(const std::string& folder);

}  // namespace corvelin

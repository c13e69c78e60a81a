// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of playlists.
#include "exchange/playlist.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

#include "model/document.h"
#include "opening/file_kind.h"
#include "platform/files/file.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t largest_list = std::size_t{64} << 20;  // bytes
constexpr std::size_t line_limit = 400;                      // bytes; longer lines don't count
constexpr int deepest_list = 8;                              // of lists in lists
constexpr std::size_t most_lists = 1000;                     // of those that one may lead to

bool names_a_file(std::string_view line) {
  return line.size() < line_limit && !line.starts_with('#') &&
         line.find_first_not_of(" \t") != std::string_view::npos;
}

bool is_beside(const std::string& path, const std::string& other) {
  const auto folder = [](const std::string& file) {
    return file_facts(std::string(folder_of(in_current_folder(file)))).identity;
  };
  return folder(path) == folder(other);
}

bool is_extracted(const std::string& path) {
  return !settings.ffmpeg.empty() && file_kind(path) == FileKind::mp4;
}

class PlaylistReader {
 public:
  explicit PlaylistReader(ExpandedLists& lists) : lists_(lists) {}

  // What is beyond the parts that a document can have is of no use.
  OpenFault take_in(std::span<const std::string> names, int depth = 0) {
    for (const std::string& name : names) {
      if (lists_.files.size() > most_parts) break;
      if (file_kind(name) != FileKind::playlist) {
        lists_.files.push_back(name);
        continue;
      }
      OpenFault fault = read_list(name, depth + 1);
      if (!fault.cause.empty()) return fault;
    }
    return {};
  }

 private:
  OpenFault read_list(const std::string& list, int depth) {
    if (depth > deepest_list || ++lists_read_ > most_lists)
      return {.audio = list, .cause = "It is one of lists that name each other without end."};
    std::vector<std::string> entries;
    if (const std::error_code error = read_entries(list, entries))
      return {.audio = list, .cause = error.message()};
    for (const std::string& entry : entries)
      if (is_extracted(entry) && !is_beside(entry, list))
        return {.audio = entry, .cause = "A playlist opens MP4 files of its own folder alone."};
    if (std::ranges::any_of(entries, is_extracted)) lists_.with_mp4.push_back(list);
    return take_in(entries, depth);
  }

  // The list's text lives no longer than this call: lists that name each other would hold many.
  static std::error_code read_entries(const std::string& list, std::vector<std::string>& entries) {
    std::string text;
    if (const std::error_code error = read_whole_file(list, largest_list, text)) return error;
    const std::size_t zero = text.find('\0');  // no line that holds one counts, nor what follows
    if (zero == std::string::npos)
      text += '\n';  // which the last line may lack
    else
      text.resize(zero);
    std::string_view lines = text;
    if (lines.starts_with(utf8_mark)) lines.remove_prefix(utf8_mark.size());
    for (std::string_view line; entries.size() <= most_parts && take_line(lines, line);)
      if (names_a_file(line))
        entries.push_back(path_from_encoded(line, list.ends_with('8'), folder_of(list)));
    return {};
  }

  ExpandedLists& lists_;
  std::size_t lists_read_ = 0;
};

}  // namespace

ExpandedLists expand_playlists(std::span<const std::string> names) {
  ExpandedLists lists;
  lists.fault = PlaylistReader(lists).take_in(names);
  if (lists.fault.cause.empty() && lists.files.empty())
    lists.fault = {.audio = names.front(), .cause = "It names no audio."};
  return lists;
}

}  // namespace corvelin

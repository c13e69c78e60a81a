// Reading of playlists.
#include "exchange/playlist.h"

#include <string>
#include <string_view>
#include <vector>

#include "document/append.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t largest_list = std::size_t{64} << 20;  // bytes
constexpr std::size_t line_limit = 400;                      // bytes; longer lines don't count
constexpr int deepest_list = 8;                              // of lists in lists

// How many lists are being read, each named by the one before: a list may name another one, and
// so itself.
class Nesting {
 public:
  Nesting() { ++depth; }
  ~Nesting() { --depth; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

  [[nodiscard]] static bool is_outermost() { return depth == 1; }
  [[nodiscard]] static bool is_too_deep() { return depth > deepest_list; }

 private:
  static inline int depth = 0;
};

// The lines that name files. Only those about titles and lengths are known as something else; any
// other line, a blank one too, is a name. Text behind the last line end doesn't count, and what is
// beyond the parts that a document can have is of no use.
std::vector<std::string> entries_of(std::string_view text) {
  std::vector<std::string> entries;
  text = text.substr(0, text.find('\0'));
  for (std::string_view line; take_line(text, line);) {
    if (line.size() >= line_limit || line.starts_with("#EXTINF")) continue;
    entries.emplace_back(line);
    if (entries.size() > most_parts) break;
  }
  return entries;
}

// The list's text lives no longer than this call: lists that name each other would hold many.
bool read_entries(const std::string& list, std::vector<std::string>& entries) {
  std::string text;
  if (read_whole_file(list, largest_list, text)) return false;
  std::string_view lines = text;
  if (lines.starts_with(utf8_mark)) lines.remove_prefix(utf8_mark.size());
  entries = entries_of(lines);
  return true;
}

bool open_first(const std::string& name) {
  if (open_document(name)) return true;
  close_all();
  return false;
}

bool report_failure(const std::string& list) {
  open_state.audio_name = list;
  report_open_failure(OpenFailure::unreadable);
  return false;
}

}  // namespace

bool read_playlist(const std::string& list) {
  const Nesting nesting;
  if (Nesting::is_too_deep()) return report_failure(list);
  std::vector<std::string> entries;
  if (!read_entries(list, entries)) return false;
  close_all();
  reset_state(ResetLevel::no_name);

  const bool utf8 = list.ends_with('8');
  for (const std::string& entry : entries) {
    const std::string name = path_from_encoded(entry, utf8, folder_of(list));
    if (document.total_size == 0) {
      if (!open_first(name)) return false;
    } else if (!append_file_reported(name, nullptr)) {
      break;
    }
  }
  // An empty list in a list is passed over.
  if (document.total_size == 0) return !Nesting::is_outermost() || report_failure(list);

  clear_selection();
  selection.cursor = 0;
  name_parts_from_files();
  add_recent(list);
  return true;
}

}  // namespace corvelin

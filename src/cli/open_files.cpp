// Opening and joining.
#include "cli/open_files.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "cli/unsaved.h"
#include "document/append.h"
#include "document/open_state.h"
#include "edit/undo.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/path.h"
#include "shell/start_up.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::vector<std::string> whole_paths(std::span<const std::string> paths) {
  std::vector<std::string> names;
  for (const std::string& path : paths) names.push_back(in_current_folder(path));
  return names;
}

bool is_mp4(const std::string& path) {
  return has_extension(path, ".mp4") || has_extension(path, ".m4a");
}

}  // namespace

Refusal open_paths(std::span<const std::string> paths) {
  if (is_mp4(paths[0])) return "MP4 files are not available yet";
  if (!open_file(paths[0])) return fmt::format("{} was not opened", paths[0]);
  const std::vector<std::string> others = whole_paths(paths.subspan(1));
  const std::size_t joined = append_files(others);
  if (joined > 0) name_parts_from_files();
  remember_saved();
  if (joined == others.size()) return no_refusal;
  return fmt::format("{} was not joined", paths[joined + 1]);
}

Refusal append_to_document(std::span<const std::string> paths) {
  const std::vector<std::string> names = whole_paths(paths);
  if (!can_append_files(names)) return "nothing was appended";
  undo_push(true, ui_text(msg, 1));
  append_files(names);
  clear_selection();
  selection.cursor = document.total_size;
  document.current_part = part_at(selection.cursor);
  if (names.size() > 1) open_state.document_modified = true;
  name_parts_from_files();
  return no_refusal;
}

}  // namespace corvelin

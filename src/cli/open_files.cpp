// Opening and joining.
#include "cli/open_files.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "cli/unsaved.h"
#include "document/append.h"
#include "document/file_kind.h"
#include "edit/document_commands.h"
#include "exchange/open_document.h"
#include "platform/path.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

std::vector<std::string> whole_paths(std::span<const std::string> paths) {
  std::vector<std::string> names;
  for (const std::string& path : paths) names.push_back(in_current_folder(path));
  return names;
}

// Returns how many of the files make the document.
std::size_t open_all(std::span<const std::string> names) {
  if (names.size() > 1) return open_files(names);
  return open_in_place(names[0]) ? 1 : 0;
}

}  // namespace

Refusal open_paths(std::span<const std::string> paths) {
  if (file_kind(paths[0]) == FileKind::mp4 && settings.ffmpeg.empty())
    return fmt::format("{}: MP4 files open through ffmpeg, which is not installed", paths[0]);
  const std::size_t opened = open_all(whole_paths(paths));
  remember_saved();
  if (opened == paths.size()) return no_refusal;
  return fmt::format("{} was not {}", paths[opened], opened == 0 ? "opened" : "joined");
}

Refusal append_to_document(std::span<const std::string> paths) {
  const std::vector<std::string> names = whole_paths(paths);
  if (!can_append_files(names) || append_in_one_step(names) != names.size())
    return "nothing was appended";
  return no_refusal;
}

}  // namespace corvelin

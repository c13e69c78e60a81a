// SPDX-License-Identifier: GPL-2.0-or-later
// Opening and joining.
#include "cli/open_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "exchange/extract_aac.h"
#include "exchange/open_document.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "opening/file_kind.h"
#include "platform/text/path.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

std::vector<std::string> whole_paths(std::span<const std::string> paths) {
  std::vector<std::string> names;
  for (const std::string& path : paths) names.push_back(in_current_folder(path));
  return names;
}

// As it was named, where it was.
std::string as_given(const std::string& file, std::span<const std::string> paths) {
  const auto given = std::ranges::find_if(
      paths, [&](const std::string& path) { return in_current_folder(path) == file; });
  return given == paths.end() ? file : *given;
}

Refusal missing_program(std::span<const std::string> paths) {
  const auto mp4 = std::ranges::find(paths, FileKind::mp4, file_kind);
  if (mp4 == paths.end() || !settings.ffmpeg.empty()) return no_refusal;
  return fmt::format("{}: MP4 files open through ffmpeg, which is not installed", *mp4);
}

}  // namespace

Refusal open_paths(Editor& editor, std::span<const std::string> paths) {
  if (Refusal missing = missing_program(paths); !missing.empty()) return missing;
  const Joined joined = open_files(editor, paths);
  if (joined.failed.empty()) return no_refusal;
  return fmt::format("{} was not {}", as_given(joined.failed, paths),
                     joined.count == 0 ? "opened" : "joined");
}

Refusal append_to_document(Editor& editor, std::span<const std::string> paths) {
  if (editor.document.stream.is_aac != 0)
    if (Refusal missing = missing_program(paths); !missing.empty()) return missing;
  const std::vector<std::string> names = without_playlists(whole_paths(paths));
  const std::vector<std::string> tracks = extract_tracks(editor.document, names);
  const bool all_fit =
      !names.empty() && tracks.size() == names.size() && can_append_files(editor.document, tracks);
  if (!all_fit || !append_in_one_step(editor, tracks).failed.empty()) return "nothing was appended";
  return no_refusal;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Opening by dialog.
#include "edit/open_dialog.h"

#include <string>
#include <vector>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string start_folder(const Editor& editor) {
  if (!settings.working_dir.empty()) return settings.working_dir;
  if (!editor.open_state.audio_name.empty())
    return std::string(folder_of(editor.open_state.audio_name));
  return settings.file_recent.empty() ? std::string()
                                      : std::string(folder_of(settings.file_recent.front()));
}

std::vector<FileType> file_types() {
  const bool has_mp4 = !settings.ffmpeg.empty();
  const FileType all = {.name = "MP3, AAC, MP2, CVP, CUE, M3U",
                        .pattern = "*.mp3;*.aac;*.mp2;*.mpa;*.cvp;*.cue;*.m3u;*.m3u8"};
  const FileType all_and_mp4 = {
      .name = "MP3, AAC, MP4, MP2, CVP, CUE, M3U",
      .pattern = "*.mp3;*.aac;*.mp4;*.m4a;*.mp2;*.mpa;*.cvp;*.cue;*.m3u;*.m3u8"};
  const FileType aac = {.name = "AAC", .pattern = "*.aac"};
  const FileType aac_and_mp4 = {.name = "AAC, MP4", .pattern = "*.aac;*.mp4;*.m4a"};
  return {has_mp4 ? all_and_mp4 : all,
          {.name = "MP3, MP2", .pattern = "*.mp3;*.mp2;*.mpa"},
          has_mp4 ? aac_and_mp4 : aac,
          {.name = "CUE, M3U", .pattern = "*.cue;*.m3u;*.m3u8"},
          {.name = "CVP", .pattern = "*.cvp"}};
}

}  // namespace

bool open_file_dialog(Editor& editor) {
  const std::vector<std::string> names =
      host().ask_for_existing_files({.title = std::string(ui_text(row::open_file)),
                                     .path = start_folder(editor),
                                     .types = file_types()});
  return !names.empty() && open_files(editor, names).count != 0;
}

}  // namespace corvelin

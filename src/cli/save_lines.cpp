// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines that write files.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "cli/headless_host.h"
#include "cli/unsaved.h"
#include "edit/editor.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "model/stream_info.h"
#include "opening/file_kind.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/text/path.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

Refusal not_saved(const std::string& path) { return fmt::format("{} was not saved", path); }

// The extensions that a file of the stream's kind opens under again.
std::vector<std::string_view> extensions_of_stream(const Document& document) {
  if (document.stream.is_aac != 0) return {".aac"};
  if (document.kind.layer == 2) return {".mp2", ".mpa"};
  return {".mp3", ".mpa"};
}

// Nothing is written under a name that the result would not open under again. Layer II in a file
// called .mp3 is found in the wild, so the name that the audio came by is right, too.
Refusal check_audio_path(const Editor& editor, const std::string& path) {
  const std::vector<std::string_view> extensions = extensions_of_stream(editor.document);
  const bool fits = has_extension(path, extension_of(name_of(editor.open_state.audio_name))) ||
                    std::ranges::any_of(extensions, [&](std::string_view extension) {
                      return has_extension(name_of(path), extension);
                    });
  if (fits) return no_refusal;
  return fmt::format("\"{}\" is no name for this stream, which is saved as *{}", path,
                     extensions.front());
}

Refusal save_to(Editor& editor, const std::string& path, HeadlessHost& host,
                SaveOutcome (*save)(Editor& editor)) {
  host.set_next_path(in_current_folder(path));
  if (save(editor) != SaveOutcome::saved) return not_saved(path);
  host.saved = content_of(editor.document);
  return no_refusal;
}

Refusal save_as(Editor& editor, const std::string& path, HeadlessHost& host,
                SaveOutcome (*save)(Editor& editor)) {
  const Refusal refusal = check_audio_path(editor, path);
  return refusal.empty() ? save_to(editor, path, host, save) : refusal;
}

Refusal save_line(Editor& editor, Arguments words, HeadlessHost& host) {
  return save_as(editor, words[0], host, save_audio);
}

Refusal save_selection_line(Editor& editor, Arguments words, HeadlessHost& host) {
  return save_as(editor, words[0], host, save_selection);
}

Refusal save_reencoded_line(Editor& editor, Arguments words, HeadlessHost& host) {
  if (!has_extension(name_of(words[0]), ".mp3"))
    return fmt::format("\"{}\" is no name for an MP3 file (*.mp3)", words[0]);
  return save_to(editor, words[0], host, save_reencoded);
}

Refusal save_project_line(Editor& editor, Arguments words, HeadlessHost& host) {
  const std::string& path = words[0];
  if (file_kind(path) != FileKind::project && file_kind(path) != FileKind::cue_sheet)
    return fmt::format("\"{}\" is neither a project (*.cvp) nor a cue sheet (*.cue)", path);
  host.set_next_path(in_current_folder(path));
  if (!save_project(editor, true, false) || !file_facts(editor.open_state.project_name).found)
    return not_saved(path);
  host.saved = content_of(editor.document);
  return no_refusal;
}

Refusal split_line(Editor& editor, Arguments words, HeadlessHost& host) {
  if (split_unattended(editor, words[0]) != SaveOutcome::saved) return "the split is not complete";
  host.saved = content_of(editor.document);
  return no_refusal;
}

constexpr EditLine table[] = {
    {"save", "PATH", "saves the edited stream", 1, 1, true, save_line},
    {"save_selection", "PATH", "saves the selection", 1, 1, true, save_selection_line},
    {"save_reencoded", "PATH", "saves the stream encoded anew, as an MP3 file", 1, 1, true,
     save_reencoded_line},
    {"save_project", "PATH", "saves a project (.cvp) or a cue sheet (.cue)", 1, 1, true,
     save_project_line},
    {"split", "FOLDER", "saves a file a track", 1, 1, true, split_line},
};

}  // namespace

std::span<const EditLine> save_lines() { return table; }

}  // namespace corvelin

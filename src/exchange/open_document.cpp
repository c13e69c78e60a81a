// SPDX-License-Identifier: GPL-2.0-or-later
// The choice of a reader, and the box for what didn't open.
#include "exchange/open_document.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "exchange/cue_sheet.h"
#include "exchange/extract_aac.h"
#include "exchange/playlist.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/close_stream.h"
#include "opening/file_fault.h"
#include "opening/file_kind.h"
#include "opening/open_audio_file.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

OpenFault open_audio(Document& document, Selection& selection, OpenState& open_state,
                     const std::string& name) {
  std::string cause = open_audio_file(document, selection, open_state, name);
  if (cause.empty()) add_recent(name);
  return {.audio = name, .cause = std::move(cause)};
}

OpenFault open_description(Document& document, Selection& selection, OpenState& open_state,
                           const std::string& name, FileKind kind) {
  close_stream(document, selection, open_state);
  reset_state(document, selection, open_state, ResetLevel::no_name);
  open_state.project_name = name;
  OpenFault fault = kind == FileKind::project
                        ? read_project(document, selection, open_state)
                        : load_cue_sheet(document, selection, open_state, false);
  if (fault.cause.empty()) add_recent(name);
  open_state.project_name = name;  // also for the message, where the reader has closed all
  return fault;
}

void show_fault(const std::string& description, const OpenFault& fault,
                std::string_view remark = {}) {
  std::string text;
  if (!description.empty())
    text += fmt::format("{}: {}\n\n", ui_text(row::project_file), description);
  if (!fault.audio.empty()) text += fmt::format("{}: {}\n", ui_text(row::audio_file), fault.audio);
  if (!remark.empty()) text += fmt::format("\n\n{}", remark);
  host().show_message_box({.caption = std::string(ui_text(row::file_open_failed)),
                           .text = text,
                           .cause = fault.cause,
                           .icon = BoxIcon::warning});
}

// Of the document to be opened, which leaves the recent list.
void report(OpenState& open_state, const OpenFault& fault, std::string_view remark = {}) {
  show_fault(open_state.project_name, fault, remark);
  remove_recent(open_state.project_name);
  remove_recent(fault.audio);
  open_state.audio_name.clear();
}

bool open_by_kind(Document& document, Selection& selection, OpenState& open_state,
                  const std::string& name) {
  open_state.project_name.clear();
  if (extension_of(name).empty()) {
    report(open_state, {.audio = name, .cause = reading_fault(name)},
           ui_text(row::unsupported_type));
    return false;
  }
  reset_state(document, selection, open_state, ResetLevel::new_stream);
  OpenFault fault;
  const FileKind kind = file_kind(name);
  switch (kind) {
    case FileKind::mp4:
      if (const auto track = extract_aac(document, name)) {
        fault = open_audio(document, selection, open_state, *track);
        break;
      }
      return false;
    case FileKind::mpeg_audio:
    case FileKind::aac:
      fault = open_audio(document, selection, open_state, name);
      break;
    case FileKind::cue_sheet:
    case FileKind::project:
      fault = open_description(document, selection, open_state, name, kind);
      break;
    case FileKind::playlist:
    case FileKind::other:
      fault = {.audio = name, .cause = audio_fault(name)};
      break;
  }
  if (!fault.cause.empty()) report(open_state, fault);
  return fault.cause.empty();
}

// What a list that opened looks like, whatever its first entry left.
void settle_list(Selection& selection, const std::string& list) {
  clear_selection(selection);
  selection.cursor = 0;
  add_recent(list);
}

bool may_extract_for(const std::string& list) {
  return host().show_message_box({.caption = "Corvelin",
                                  .text = format_row(ui_text(row::playlist_names_mp4), list),
                                  .icon = BoxIcon::question,
                                  .buttons = BoxButtons::yes_no,
                                  .default_answer = BoxAnswer::no}) == BoxAnswer::yes;
}

// Opens the first file and appends the others.
Joined open_first_of(Document& document, Selection& selection, OpenState& open_state,
                     std::span<const std::string> names) {
  const std::vector<std::string> files = without_playlists(names);
  if (files.empty()) {
    remove_recent(names.front());
    return {.failed = names.front()};
  }
  if (!open_by_kind(document, selection, open_state, files.front()))
    return {.failed = files.front()};
  Joined joined = append_documents(document, std::span(files).subspan(1));
  ++joined.count;
  if (files.size() > 1) name_parts_from_files(document);
  if (names.size() == 1 && file_kind(names.front()) == FileKind::playlist)
    settle_list(selection, names.front());
  return joined;
}

}  // namespace

std::vector<std::string> without_playlists(std::span<const std::string> names) {
  ExpandedLists lists = expand_playlists(names);
  if (!lists.fault.cause.empty()) {
    show_fault({}, lists.fault);
    return {};
  }
  if (!std::ranges::all_of(lists.with_mp4, may_extract_for)) return {};
  return std::move(lists.files);
}

Joined append_documents(Document& document, std::span<const std::string> files) {
  Joined joined = append_files(document, extract_tracks(document, files));
  if (joined.count < files.size()) joined.failed = files[joined.count];
  return joined;
}

Joined open_documents(Document& document, Selection& selection, OpenState& open_state,
                      std::span<const std::string> names) {
  std::vector<std::string> paths;  // before the close, which may empty the names
  for (const std::string& name : names) paths.push_back(in_current_folder(name));
  close_stream(document, selection, open_state);
  reset_state(document, selection, open_state, ResetLevel::new_stream);
  Joined joined = open_first_of(document, selection, open_state, paths);
  if (joined.count == 0) close_stream(document, selection, open_state);
  return joined;
}

}  // namespace corvelin

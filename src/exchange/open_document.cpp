// The choice of a reader, and the box for what didn't open.
#include "exchange/open_document.h"

#include <fmt/format.h>

#include <string>

#include "audio/playback.h"
#include "document/close_all.h"
#include "document/file_fault.h"
#include "document/file_kind.h"
#include "document/open_audio_file.h"
#include "document/open_state.h"
#include "exchange/cue_sheet.h"
#include "exchange/extract_aac.h"
#include "exchange/playlist.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "platform/host.h"
#include "platform/path.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool open_audio(const std::string& name) {
  if (!open_audio_file(name)) return false;
  add_recent(name);
  return true;
}

// A description that names no audio makes no document, however well it reads.
bool open_description(const std::string& name, bool (*read)()) {
  close_all();
  reset_state(ResetLevel::no_name);
  open_state.project_name = name;
  if (read() && !document.parts.empty()) {
    add_recent(name);
    return true;
  }
  open_state.project_name = name;  // for the message
  return false;
}

// Of a description it is told first whether it can be read at all, then whether its audio can.
std::string cause_of(OpenFailure failure) {
  const std::string& audio = open_state.audio_name;
  const std::string& description = open_state.project_name;
  if (description.empty()) {
    if (failure == OpenFailure::unreadable) return audio_fault(audio);
    return reading_fault(audio);
  }
  std::string fault = reading_fault(description);
  if (!fault.empty()) return fault;
  const bool names_audio = !audio.empty() && audio != description;
  return names_audio ? reading_fault(audio) : "It names no audio.";
}

}  // namespace

void report_open_failure(OpenFailure failure) {
  std::string text;
  if (!open_state.project_name.empty())
    text += fmt::format("{}: {}\n\n", ui_text(row::project_file), open_state.project_name);
  text += fmt::format("{}: {}\n", ui_text(row::audio_file), open_state.audio_name);
  if (failure == OpenFailure::unsupported_type)
    text += fmt::format("\n\n{}", ui_text(row::unsupported_type));
  host().show_message_box({.caption = std::string(ui_text(row::file_open_failed)),
                           .text = text,
                           .cause = cause_of(failure),
                           .icon = BoxIcon::warning});
  remove_recent(open_state.project_name);
  remove_recent(open_state.audio_name);
  open_state.audio_name.clear();
}

namespace {

bool open_by_kind(const std::string& name) {
  open_state.audio_name = name;  // for the message too
  open_state.project_name.clear();
  if (extension_of(name).empty()) {
    report_open_failure(OpenFailure::unsupported_type);
    return false;
  }
  reset_state(ResetLevel::new_stream);
  bool is_open = false;
  switch (file_kind(name)) {
    case FileKind::mp4:
      if (const auto track = extract_aac(name)) {
        is_open = open_audio(*track);
        break;
      }
      return false;
    case FileKind::playlist:
      return read_playlist(name);
    case FileKind::mpeg_audio:
    case FileKind::aac:
      is_open = open_audio(name);
      break;
    case FileKind::cue_sheet:
      is_open = open_description(name, [] { return load_cue_sheet(false); });
      break;
    case FileKind::project:
      is_open = open_description(name, read_project);
      break;
    case FileKind::other:
      break;
  }
  if (!is_open) report_open_failure(OpenFailure::unreadable);
  return is_open;
}

}  // namespace

bool open_document(const std::string& name) {
  if (!open_by_kind(name)) return false;
  if (!document.parts.empty()) device_keepalive(true);
  return true;
}

bool open_in_place(const std::string& path) {
  const std::string name = in_current_folder(path);  // before the close, which may empty `path`
  close_all();
  reset_state(ResetLevel::new_stream);
  if (open_document(name)) return true;
  close_all();
  return false;
}

}  // namespace corvelin

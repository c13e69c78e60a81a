// The save commands.
#include "edit/save_audio.h"

#include <fmt/format.h>

#include <algorithm>

#include "document/open_state.h"
#include "exchange/save_run.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/host.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

FileType type_of_stream() {
  if (stream.is_aac != 0) return {.name = "AAC", .pattern = "*.aac"};
  if (stream_kind.layer == 2) return {.name = "MP2", .pattern = "*.mp2"};
  return {.name = "MP3", .pattern = "*.mp3"};
}

// Two names are one file's when they are the same or lead to the same one, or, where nothing has
// the second name yet, when they differ in case alone. The name of a source stays one when another
// program has put a new file there meanwhile.
bool is_source(const std::string& path) {
  const FileFacts facts = file_facts(path);
  return std::ranges::any_of(document.files, [&](const SourceFile& file) {
    if (file.file_name == path) return true;
    return facts.found ? file.handle.facts().identity == facts.identity
                       : equal_ignoring_case(file.file_name, path);
  });
}

bool may_replace_source(const std::string& path) {
  if ((settings.warn & warn_of_replacing) == 0) return true;
  const MessageBox box = {.caption = std::string(ui_text(msg, 7)),
                          .text = fmt::format("{}\n\n{}", path, ui_text(msg, 21)),
                          .icon = BoxIcon::warning,
                          .buttons = BoxButtons::yes_no,
                          .default_answer = BoxAnswer::no};
  return host().show_message_box(box) == BoxAnswer::yes;
}

SaveOutcome run_save(const std::string& name, bool replaces_source) {
  const bool is_selection = open_state.selection_only;
  SaveRun run(name, replaces_source);
  if (run.begin()) drive(run);
  open_state.selection_only = false;
  const bool is_done = run.result() != 0 && !run.has_failed();
  if (settings.save_quit != 0 && !is_selection && is_done) request_close();
  return run.has_failed() ? SaveOutcome::failed : SaveOutcome::saved;
}

}  // namespace

bool save_complete() { return save_audio() == SaveOutcome::saved; }
bool save_selected() { return save_selection() == SaveOutcome::saved; }

std::string proposed_save_name() {
  const std::string& audio = open_state.audio_name;
  const bool uses_folder =
      settings.workdir_onsave != 0 && !settings.working_dir.empty() && !folder_of(audio).empty();
  return uses_folder ? settings.working_dir + std::string(name_of(audio)) : audio;
}

SaveOutcome save_under_chosen_name(bool overwrite) {
  const std::string& name = open_state.save_name;
  const bool replaces = overwrite || is_source(name);
  if (replaces && !overwrite && !may_replace_source(name)) {
    open_state.selection_only = false;
    return SaveOutcome::not_started;
  }
  return run_save(name, replaces);
}

SaveOutcome save_audio() {
  std::string& name = open_state.save_name;
  if (name.empty() || name.ends_with('/')) name = proposed_save_name();
  const auto answer = host().ask_for_new_file({.title = std::string(ui_text(msg, 2)),
                                               .path = name,
                                               .types = {type_of_stream()},
                                               .warn_existing = settings.warn_existing != 0});
  if (!answer) {
    open_state.selection_only = false;
    return SaveOutcome::not_started;
  }
  name = *answer;
  return save_under_chosen_name(false);
}

SaveOutcome save_selection() {
  if (!has_selected_range()) {
    show_refusal(ui_text(msg, 20));
    return SaveOutcome::not_started;
  }
  open_state.selection_only = true;
  return save_audio();
}

}  // namespace corvelin

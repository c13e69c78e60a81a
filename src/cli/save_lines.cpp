// Edit lines that write files.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <string>

#include "cli/headless_host.h"
#include "document/open_state.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "platform/file.h"
#include "platform/path.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

std::string outcome_text(SaveOutcome outcome, const std::string& path) {
  return outcome == SaveOutcome::saved ? no_refusal : fmt::format("{} was not saved", path);
}

Refusal save_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  return outcome_text(save_audio(), words[0]);
}

Refusal save_selection_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  return outcome_text(save_selection(), words[0]);
}

Refusal save_project_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  const bool is_saved = save_project(true, false) && file_facts(open_state.project_name).found;
  return is_saved ? no_refusal : fmt::format("{} was not saved", words[0]);
}

Refusal split_line(Arguments words, HeadlessHost&) {
  const bool is_saved = split_unattended(words[0]) == SaveOutcome::saved;
  return is_saved ? no_refusal : "the split is not complete";
}

constexpr EditLine table[] = {
    {"save", "PATH", "saves the edited stream", 1, 1, true, save_line},
    {"save_selection", "PATH", "saves the selection", 1, 1, true, save_selection_line},
    {"save_project", "PATH", "saves a project (.cvp) or a cue sheet (.cue)", 1, 1, true,
     save_project_line},
    {"split", "FOLDER", "saves a file a track", 1, 1, true, split_line},
};

}  // namespace

std::span<const EditLine> save_lines() { return table; }

}  // namespace corvelin

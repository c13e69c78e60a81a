// SPDX-License-Identifier: GPL-2.0-or-later
// The save commands.
#include "edit/save_audio.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "edit/editor.h"
#include "edit/open_files.h"
#include "exchange/changed_sources.h"
#include "exchange/save_run.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/note.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::string_view mp3_extension = ".mp3";

bool is_mp3_stream(const Document& document) {
  return document.stream.is_aac == 0 && document.kind.layer == 3;
}

FileType type_of_file(const Document& document, SaveMode mode) {
  if (mode == SaveMode::reencode) return {.name = "MP3", .pattern = "*.mp3"};
  if (document.stream.is_aac != 0) return {.name = "AAC", .pattern = "*.aac"};
  if (document.kind.layer == 2) return {.name = "MP2", .pattern = "*.mp2"};
  return {.name = "MP3", .pattern = "*.mp3"};
}

// Two names are one file's when they are the same or lead to the same one, or, where nothing has
// the second name yet, when they differ in case alone. The name of a source stays one when another
// program has put a new file there meanwhile.
std::optional<std::uint16_t> source_called(const Document& document, const std::string& path) {
  const FileFacts facts = file_facts(path);
  const auto found = std::ranges::find_if(document.files, [&](const SourceFile& file) {
    if (file.file_name == path) return true;
    return facts.found ? file.handle->facts().identity == facts.identity
                       : equal_ignoring_case(file.file_name, path);
  });
  if (found == document.files.end()) return std::nullopt;
  return static_cast<std::uint16_t>(found - document.files.begin());
}

bool may_replace_source(const std::string& path) {
  if ((settings.warn & warn_of_replacing) == 0) return true;
  const MessageBox box = {.caption = std::string(ui_text(row::warning)),
                          .text = fmt::format("{}\n\n{}", path, ui_text(row::close_and_replace)),
                          .icon = BoxIcon::warning,
                          .buttons = BoxButtons::yes_no,
                          .default_answer = BoxAnswer::no};
  return host().show_message_box(box) == BoxAnswer::yes;
}

// What a finished run leaves of the document. One whose source was to be replaced is closed, even
// when that failed: its source is not what it was, or about to be.
void follow_up(Editor& editor, const SaveRun& run, const std::string& name, bool is_selection,
               bool was_source) {
  if (was_source) {
    close_all(editor);
    editor.open_state.save_name = run.has_replaced() ? name : "";
  }
  if (run.has_failed() || is_selection) return;
  editor.open_state.document_modified = false;
  if (!was_source) add_recent(name);
  if (settings.save_quit != 0) request_close();
}

// What a save is of.
struct SaveWish {
  std::optional<EditRange> selection;  // none: of the whole stream
  SaveMode mode = SaveMode::copy;
};

SaveOutcome run_save(Editor& editor, const std::string& name, const SaveWish& wish,
                     std::optional<std::uint16_t> replaced) {
  if (!may_save_from_sources(editor.document, replaced)) return SaveOutcome::not_started;
  editor.open_state.save_name = name;
  SaveRun run(editor.document, editor.selection, editor.open_state, name,
              wish.selection.value_or(whole_stream(editor.document)), replaced, wish.mode);
  if (run.begin()) drive(run);
  if (run.is_written())
    follow_up(editor, run, name, wish.selection.has_value(), replaced.has_value());
  // The next save copies frames, which that name would belie.
  if (wish.mode == SaveMode::reencode && !is_mp3_stream(editor.document))
    editor.open_state.save_name.clear();
  return run.has_failed() ? SaveOutcome::failed : SaveOutcome::saved;
}

SaveOutcome save_as_wished(Editor& editor, const std::string& name, const SaveWish& wish) {
  const auto replaced = source_called(editor.document, name);
  if (replaced && !may_replace_source(name)) return SaveOutcome::not_started;
  return run_save(editor, name, wish, replaced);
}

SaveOutcome ask_and_save(Editor& editor, const SaveWish& wish) {
  std::string proposal = editor.open_state.save_name;
  if (proposal.empty() || proposal.ends_with('/')) proposal = proposed_save_name(editor);
  if (wish.mode == SaveMode::reencode) proposal = with_extension(proposal, mp3_extension);
  const auto name = host().ask_for_new_file({.title = std::string(ui_text(row::create_audio_file)),
                                             .path = proposal,
                                             .types = {type_of_file(editor.document, wish.mode)},
                                             .warn_existing = settings.warn_existing != 0});
  return name ? save_as_wished(editor, *name, wish) : SaveOutcome::not_started;
}

}  // namespace

bool save_complete(Editor& editor) { return save_audio(editor) == SaveOutcome::saved; }
bool save_selected(Editor& editor) { return save_selection(editor) == SaveOutcome::saved; }

bool save_encoded_anew(Editor& editor) {
  show_note_once(Note::reencoded_save);
  return save_reencoded(editor) == SaveOutcome::saved;
}

bool is_source(const Editor& editor, const std::string& name) {
  return source_called(editor.document, name).has_value();
}

std::string proposed_save_name(const Editor& editor) {
  const std::string& audio = editor.open_state.audio_name;
  const bool uses_folder =
      settings.workdir_onsave != 0 && !settings.working_dir.empty() && !folder_of(audio).empty();
  return uses_folder ? in_folder(settings.working_dir, name_of(audio)) : audio;
}

bool may_save_from_sources(const Document& document, std::optional<std::uint16_t> replaced) {
  const std::string changes = changes_of_sources(document, replaced);
  if (changes.empty()) return true;
  const MessageBox box = {.caption = std::string(ui_text(row::warning)),
                          .text = changes + "\n\n" + std::string(ui_text(row::save_all_the_same)),
                          .icon = BoxIcon::warning,
                          .buttons = BoxButtons::yes_no,
                          .default_answer = BoxAnswer::no};
  return host().show_message_box(box) == BoxAnswer::yes;
}

SaveOutcome save_under_name(Editor& editor, const std::string& name) {
  return save_as_wished(editor, name, {});
}

SaveOutcome save_over_source(Editor& editor) {
  const std::string name = editor.open_state.audio_name;
  return run_save(editor, name, {}, source_called(editor.document, name));
}

SaveOutcome save_audio(Editor& editor) { return ask_and_save(editor, {}); }

SaveOutcome save_reencoded(Editor& editor) {
  return ask_and_save(editor, {.mode = SaveMode::reencode});
}

SaveOutcome save_selection(Editor& editor) {
  if (!has_selected_range(editor.selection)) {
    show_refusal(ui_text(row::selection_too_short));
    return SaveOutcome::not_started;
  }
  return ask_and_save(editor, {.selection = EditRange{.begin = editor.selection.sel_beg,
                                                      .end = editor.selection.sel_end}});
}

}  // namespace corvelin

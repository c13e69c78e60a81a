// The table of edit lines and what each does.
#include "cli/edit_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <span>
#include <vector>

#include "cli/state_json.h"
#include "cli/words.h"
#include "document/append.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "edit/commands.h"
#include "edit/names_dialog.h"
#include "edit/save_audio.h"
#include "edit/save_project.h"
#include "edit/selection_commands.h"
#include "edit/undo.h"
#include "exchange/id3v1.h"
#include "exchange/split_save.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "shell/start_up.h"
#include "stream/frame_header.h"
#include "text/ui_text.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

using Arguments = std::span<const std::string>;

const std::string done;  // the answer of a line that was carried out

template <typename Number>
std::optional<Number> parse_whole(std::string_view text) {
  Number value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

// A place in the edited stream: a number of bytes, a time, "end", or "-" for none.
std::optional<EditPosition> parse_place(std::string_view text) {
  if (text == "-") return no_position;
  if (text == "end") return document.total_size;
  if (const auto seconds = whole_time(text)) return from_time_scale(time_to_position(*seconds));
  return parse_whole<EditPosition>(text);
}

// The frame at a place, as a typed time finds it.
std::optional<EditPosition> parse_position(std::string_view text) {
  const std::optional<EditPosition> place = parse_place(text);
  if (!place || *place == no_position) return place;
  return frame_at(*place);
}

std::string no_place(std::string_view text) {
  return fmt::format("\"{}\" is no place: give bytes (5000), a time (1'05.50), end, or -", text);
}

std::string open_line(Arguments words, HeadlessHost&) {
  return open_file(words[0]) ? done : fmt::format("{} was not opened", words[0]);
}

std::string close_line(Arguments, HeadlessHost&) {
  close_all();
  return done;
}

std::string seek_line(Arguments words, HeadlessHost&) {
  const auto place = parse_place(words[0]);
  if (!place) return no_place(words[0]);
  seek_to(*place);
  return done;
}

std::string select_line(Arguments words, HeadlessHost&) {
  const auto begin = parse_position(words[0]);
  const auto end = parse_position(words[1]);
  if (!begin) return no_place(words[0]);
  if (!end) return no_place(words[1]);
  undo_push(false, ui_text(win, 22));
  selection.sel_beg = selection.sel_end = no_position;
  set_sel_begin(*begin);
  set_sel_end(*end);
  return done;
}

std::string set_end_line(Arguments words, void (*set_end)(EditPosition)) {
  const auto pos = parse_position(words[0]);
  if (!pos) return no_place(words[0]);
  undo_push(false, ui_text(win, 22));
  set_end(*pos);
  return done;
}

std::string set_sel_begin_line(Arguments words, HeadlessHost&) {
  return set_end_line(words, set_sel_begin);
}

std::string set_sel_end_line(Arguments words, HeadlessHost&) {
  return set_end_line(words, set_sel_end);
}

std::string clear_selection_line(Arguments, HeadlessHost&) {
  remove_selection();
  return done;
}

std::string part_line(Arguments words, HeadlessHost&) {
  const auto index = parse_whole<PartIndex>(words[0]);
  if (!index || *index >= part_count())
    return fmt::format("there is no part {}; the last is {}", words[0], part_count() - 1);
  document.current_part = *index;
  return done;
}

std::string outcome_text(SaveOutcome outcome, const std::string& path) {
  return outcome == SaveOutcome::saved ? done : fmt::format("{} was not saved", path);
}

std::string save_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  return outcome_text(save_audio(), words[0]);
}

std::string save_selection_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  return outcome_text(save_selection(), words[0]);
}

std::string append_line(Arguments words, HeadlessHost&) {
  const std::vector<std::string> names = {in_current_folder(words[0])};
  return append_files(names) == 1 ? done : fmt::format("{} was not appended", words[0]);
}

std::string load_cue_line(Arguments words, HeadlessHost& host) {
  constexpr CommandId load_cue_sheet = 1044;
  host.set_next_path(in_current_folder(words[0]));
  const bool is_loaded = dispatch_command(load_cue_sheet) == DispatchResult::done;
  return is_loaded ? done : fmt::format("{} was not loaded", words[0]);
}

std::string save_project_line(Arguments words, HeadlessHost& host) {
  host.set_next_path(in_current_folder(words[0]));
  const bool is_saved = save_project(true, false) && file_facts(open_state.project_name).found;
  return is_saved ? done : fmt::format("{} was not saved", words[0]);
}

std::string undo_line(Arguments, HeadlessHost&) {
  if (undo_stack.empty()) return "there is nothing to undo";
  return undo_pop() ? done : "the step can't be taken back: a source file is gone";
}

std::string split_line(Arguments words, HeadlessHost&) {
  const bool is_saved = split_unattended(words[0]) == SaveOutcome::saved;
  return is_saved ? done : "the split is not complete";
}

// A text that KEY=TEXT sets.
struct NamedText {
  std::string_view key;
  std::u16string* text;
};

// Takes each KEY=TEXT in: into one of `texts`, or by `take_other`, which tells whether it is for
// it.
template <typename TakeOther>
std::string take_texts(Arguments words, std::span<const NamedText> texts, TakeOther take_other) {
  if (words.empty()) return "KEY=\"text\" is missing";
  for (const std::string& word : words) {
    const std::size_t equal = word.find('=');
    if (equal == std::string::npos) return fmt::format("\"{}\" is no KEY=TEXT", word);
    const std::string_view key = std::string_view(word).substr(0, equal);
    const std::string_view value = std::string_view(word).substr(equal + 1);
    const auto named = std::ranges::find(texts, key, &NamedText::key);
    if (named != texts.end()) {
      *named->text = bytes_to_wide(value, true);
    } else if (!take_other(key, value)) {
      return fmt::format("\"{}\" can't be set", word);
    }
  }
  return done;
}

// The fields of the ID3v1 tag.
std::string tag_line(Arguments words, HeadlessHost&) {
  if (!can_create_tag()) return "an AAC stream has no such tag";
  TagDialog tag = tag_dialog_load();
  tag.create_tag = true;
  const NamedText texts[] = {{"title", &tag.title},
                             {"artist", &tag.artist},
                             {"album", &tag.album},
                             {"year", &tag.year},
                             {"comment", &tag.comment}};
  std::string refusal = take_texts(words, texts, [&](std::string_view key, std::string_view value) {
    const auto track = parse_whole<std::uint8_t>(value);
    if (key == "track" && track) {
      tag.track = *track;
    } else if (key == "genre" && (value.empty() || genre_index(value))) {
      tag.genre = value;
    } else {
      return false;
    }
    return true;
  });
  if (!refusal.empty()) return refusal;
  tag_dialog_apply(tag);
  open_state.document_modified = true;
  return done;
}

// The names of the current part and of the album.
std::string names_line(Arguments words, HeadlessHost&) {
  NamesDialog names;
  names.begin();
  const NamedText texts[] = {{"part_title", &names.part_title},
                             {"part_artist", &names.part_artist},
                             {"sheet_title", &names.sheet_title},
                             {"sheet_artist", &names.sheet_artist}};
  std::string refusal = take_texts(words, texts, [&](std::string_view key, std::string_view value) {
    if (key != "part_iscue" || (value != "0" && value != "1")) return false;
    names.part_iscue = value == "1";
    return true;
  });
  if (!refusal.empty()) return refusal;
  names.accept();
  return done;
}

std::string header_bits_line(Arguments words, HeadlessHost&) {
  if (stream.is_aac != 0) return "an AAC stream has no such header bits";
  std::array<std::uint32_t, 3> bits = {};
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (words[i] != "0" && words[i] != "1")
      return fmt::format("\"{}\" is neither 0 nor 1", words[i]);
    bits[i] = words[i] == "1" ? 1 : 0;
  }
  header_rewrite = {.rewrite_header = true,
                    .rewrite_copyright = bits[0],
                    .rewrite_original = bits[1],
                    .rewrite_private = bits[2]};
  open_state.document_modified = true;
  return done;
}

std::string set_line(Arguments words, HeadlessHost&) {
  return set_refusal(set_setting(words[0], words[1]), words[0], words[1]);
}

std::string state_line(Arguments, HeadlessHost& host) {
  const std::string state = state_as_json(host.take_messages()) + "\n";
  std::fwrite(state.data(), 1, state.size(), stdout);
  std::fflush(stdout);
  return done;
}

constexpr std::size_t any_count = static_cast<std::size_t>(-1);

struct EditLine {
  std::string_view name;
  std::size_t argument_count;
  bool needs_document;
  std::string (*run)(Arguments words, HeadlessHost& host);  // null: still to come
};

constexpr EditLine edit_lines[] = {
    {"open", 1, false, open_line},
    {"close", 0, true, close_line},
    {"seek", 1, true, seek_line},
    {"select", 2, true, select_line},
    {"set_sel_begin", 1, true, set_sel_begin_line},
    {"set_sel_end", 1, true, set_sel_end_line},
    {"clear_selection", 0, true, clear_selection_line},
    {"part", 1, true, part_line},
    {"save", 1, true, save_line},
    {"save_selection", 1, true, save_selection_line},
    {"append", 1, true, append_line},
    {"load_cue", 1, true, load_cue_line},
    {"save_project", 1, true, save_project_line},
    {"undo", 0, true, undo_line},
    {"names", any_count, true, names_line},
    {"split", 1, true, split_line},
    {"tag", any_count, true, tag_line},
    {"header_bits", 3, true, header_bits_line},
    {"set", 2, false, set_line},
    {"state", 0, false, state_line},
    {"save_reencoded", any_count, false, nullptr},
    {"level", any_count, false, nullptr},
    {"normalize", any_count, false, nullptr},
    {"pause_detection", any_count, false, nullptr},
    {"auto_cue", any_count, false, nullptr},
};

// A command of the table, by number or name.
std::string run_command(const std::string& name, std::size_t argument_count) {
  const auto number = parse_whole<CommandId>(name);
  const auto id = number ? number : find_command(name);
  if (!id) return fmt::format("there is no command \"{}\"", name);
  if (argument_count != 0) return fmt::format("{} takes no arguments", name);
  switch (dispatch_command(*id)) {
    case DispatchResult::unknown:
      return fmt::format("there is no command {}", name);
    case DispatchResult::no_document:
      return "no document is open";
    case DispatchResult::not_now:
      return "not while audio plays";
    case DispatchResult::missing:
      return fmt::format("command {} is not available yet", name);
    case DispatchResult::refused:
      return fmt::format("{} was refused", name);
    case DispatchResult::done:
      break;
  }
  return done;
}

std::string run_words(const std::vector<std::string>& words, HeadlessHost& host) {
  const std::string& name = words.front();
  const auto* const line = std::ranges::find(edit_lines, name, &EditLine::name);
  if (line == std::end(edit_lines)) return run_command(name, words.size() - 1);
  if (line->run == nullptr) return fmt::format("{} is not available yet", name);
  const Arguments arguments = Arguments(words).subspan(1);
  if (line->argument_count != any_count && arguments.size() != line->argument_count)
    return fmt::format("{} takes {} argument(s), not {}", name, line->argument_count,
                       arguments.size());
  if (line->needs_document && document.parts.empty()) return "no document is open";
  return line->run(arguments, host);
}

}  // namespace

std::string set_refusal(SetResult result, std::string_view key, std::string_view value) {
  switch (result) {
    case SetResult::done:
      return done;
    case SetResult::unknown_key:
      return fmt::format("there is no setting \"{}\"", key);
    case SetResult::not_a_number:
      return fmt::format("{} takes a number, not \"{}\"", key, value);
    case SetResult::out_of_range:
      return fmt::format("{} is out of range for {} ({})", value, key, setting_meaning(key));
    case SetResult::too_long:
      return fmt::format("the value of {} is too long", key);
  }
  return done;
}

std::string run_edit_line(std::string_view line, HeadlessHost& host) {
  const auto words = split_words(line);
  if (!words) return "a quote is left open";
  if (words->empty()) return done;
  std::string refusal = run_words(*words, host);
  host.set_next_path(std::nullopt);  // a line that was refused before it asked
  return refusal;
}

}  // namespace corvelin

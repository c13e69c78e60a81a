// SPDX-License-Identifier: GPL-2.0-or-later
// Writer and reader of project texts.
#include "exchange/project_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "exchange/changed_sources.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "opening/close_stream.h"
#include "opening/open_audio_file.h"
#include "opening/open_state.h"
#include "opening/tag_bounds.h"
#include "platform/files/file.h"
#include "platform/files/replacing_file.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::string_view header = "[Corvelin project file]";
constexpr std::size_t largest_project = std::size_t{16} * 1024 * 1024;  // bytes
constexpr std::size_t longest_path = 4096;                              // UTF-16 code units
constexpr std::size_t longest_name = 300;                               // UTF-16 code units

class ProjectWriter {
 public:
  ProjectWriter(const Document& document, const Selection& selection, EditPosition cursor,
                const std::string& folder)
      : document_(document), selection_(selection), cursor_(cursor), folder_(folder) {}

  std::string write() {
    text_ = fmt::format("{}\r\nutf8=1\r\n", header);
    for (const SourceFile& file : document_.files) source(file);
    for (const Part& part : document_.parts) this->part(part);
    number("gainend", document_.end_gain);
    number("position", cursor_);
    number("vbr", document_.stream.vbr);
    if (has_selection(selection_)) {
      number("sel_beg", selection_.sel_beg);
      number("sel_end", selection_.sel_end);
    }
    name("sheet_artist", document_.sheet_artist);
    name("sheet_title", document_.sheet_title);
    return std::move(text_);
  }

 private:
  void line(std::string_view key, std::string_view value) {
    fmt::format_to(std::back_inserter(text_), "{}={}\r\n", key, value);
  }

  // Numbers are written as the signed value of their 32 bits, and read back to the same bits.
  template <typename Number>
  void number(std::string_view key, Number value) {
    line(key, fmt::format_int(static_cast<std::int32_t>(value)).c_str());
  }

  // A name fills the rest of its line, so a line end in it would begin another key.
  void name(std::string_view key, const std::u16string& value) {
    if (!value.empty()) line(key, on_one_line(wide_to_bytes(value, true)));
  }

  void source(const SourceFile& file) {
    number("file_beg", file.first_audio);
    number("file_end", file.audio_end);
    path(file.file_name);
  }

  // A file name may hold a line end. The form of a path in hexadecimal digits has room for it.
  void path(const std::string& file_name) {
    const std::string path =
        folder_.empty() ? in_current_folder(file_name) : relative_to_folder(file_name, folder_);
    if (path.find_first_of("\r\n") == std::string::npos) {
      line("file", path);
    } else {
      number("utf8", 0);
      line("file", wide_to_hex(bytes_to_wide(file_name, true)));
      number("utf8", 1);
    }
  }

  void part(const Part& part) {
    number("part_file", part.part_file);
    number("part_filepos", part.part_filepos);
    if (part.part_gainbeg != 0) number("part_gainbeg", part.part_gainbeg);
    name("part_artist", part.part_artist);
    name("part_title", part.part_title);
    if (part.part_iscue != 0) number("part_iscue", part.part_iscue);
    number("part_size", part.part_size);
    number("part_beg", part.part_beg);  // closes the record
  }

  const Document& document_;
  const Selection& selection_;
  EditPosition cursor_;
  const std::string& folder_;
  std::string text_;
};

class ProjectReader {
 public:
  ProjectReader(Document& document, Selection& selection, OpenState& open_state,
                std::string_view text)
      : document_(document), selection_(selection), open_state_(open_state), text_(text) {}

  OpenFault read() {
    bool is_sound = true;
    for (std::string_view line; is_sound && take_line(text_, line);)
      is_sound = read_line(line.substr(0, line.find('\r')));
    keep_places_in_stream();
    document_.current_part = part_at(document_, selection_.cursor);
    return fault_;
  }

  /// The sources whose audio lies elsewhere than in the text, in lines: their parts were moved.
  [[nodiscard]] const std::string& moved() const { return moved_; }

 private:
  using Action = bool (*)(ProjectReader& reader, std::string_view value);
  struct Key {
    std::string_view name;
    Action read;
  };
  static std::span<const Key> keys();

  bool fail(std::string cause, std::string audio = {}) {
    fault_ = {.audio = std::move(audio), .cause = std::move(cause)};
    return false;
  }

  // False when no document can be made of the line.
  bool read_line(std::string_view line) {
    const std::size_t equal = line.find('=');
    if (equal == std::string_view::npos) return true;
    const auto key = std::ranges::find(keys(), line.substr(0, equal), &Key::name);
    return key == keys().end() || key->read(*this, line.substr(equal + 1));
  }

  // With the flag a path's bytes are taken as they stand, so that a name that is no UTF-8 survives.
  [[nodiscard]] std::string decode_path(std::string_view value) const {
    if (utf8_ != 0) return std::string(value);
    const bool is_hex = !value.empty() && value.front() >= '0' && value.front() <= '9';
    return wide_to_bytes(is_hex ? hex_to_wide(value) : bytes_to_wide(value, false), true);
  }

  // A number in the width of its field.
  template <typename Number>
  static bool take_number(Number& field, std::string_view value) {
    field = static_cast<Number>(leading_number(value));
    return true;
  }

  bool take_name(std::u16string& field, std::string_view value) const {
    field = cut_to_units(bytes_to_wide(value, utf8_ != 0), longest_name);
    return true;
  }

  bool read_file(std::string_view value) {
    const std::string path = decode_path(value);
    if (count_units(path) > longest_path) return fail("The path of a file in it is too long.");
    const std::string name = path_from_outside(path, folder_of(open_state_.project_name));
    return document_.files.empty() ? open_first(name) : add_file(name);
  }

  // The first source is probed afresh: it may have changed. Its parts are those of the text. What
  // is appended or pasted may count an APE tag as audio.
  bool open_first(const std::string& name) {
    std::string cause = open_audio_file(document_, selection_, open_state_, name);
    if (!cause.empty()) return fail(std::move(cause), name);
    document_.parts.clear();
    recompute_total(document_);
    SourceFile& file = document_.files[0];
    if (file_end_ != 0)
      compare_bounds(file, {{file.first_audio, file.audio_end},
                            {file.first_audio, file.audio_end + document_.stream.ape_size}});
    return true;
  }

  // A source that is named twice keeps the bounds that it has.
  bool add_file(const std::string& name) {
    if (file_end_ == 0 || file_beg_ >= file_end_)
      return fail("The project doesn't say where the audio of this file lies.", name);
    const std::size_t known = document_.files.size();
    std::string cause;
    const auto index = add_source_file(document_, name, &cause);
    if (!index) return fail(std::move(cause), name);
    if (*index < known) return true;
    SourceFile& file = document_.files[*index];
    compare_bounds(file, bounds_now(*file.handle));
    file.first_audio = static_cast<std::uint32_t>(file_beg_ + shift_of(*index));
    file.audio_end = static_cast<std::uint32_t>(file_end_ + shift_of(*index));
    return true;
  }

  // Where the audio of a source lies now, as it would be appended, and as it would be opened first.
  std::vector<AudioBounds> bounds_now(const InputFile& file) {
    const auto bounds = find_audio_to_append(document_, file);
    if (!bounds) return {};
    return {*bounds, {bounds->begin, bounds->end - ape_tag_size(file, bounds->end)}};
  }

  // The parts go by the bounds that the source had when the text was made. Where as much audio as
  // then begins elsewhere, the tag in front of it has another length, and the parts go along.
  void compare_bounds(SourceFile& file, const std::vector<AudioBounds>& now) {
    const auto has_length = [&](const AudioBounds& bounds) {
      return bounds.end - bounds.begin == file_end_ - file_beg_;
    };
    const auto found = std::ranges::find_if(now, has_length);
    file.is_unlike_project = found == now.end();
    if (file.is_unlike_project) return;
    shifts_.resize(document_.files.size());
    shifts_.back() = std::int64_t{found->begin} - file_beg_;
    if (shifts_.back() != 0) moved_ += (moved_.empty() ? "" : "\n") + file.file_name;
  }

  // Bytes by which the audio of a source lies behind its place in the text.
  [[nodiscard]] std::int64_t shift_of(std::uint16_t file) const {
    return file < shifts_.size() ? shifts_[file] : 0;
  }

  // Closes a part's record. Parts are sorted by the value; where they lie follows from their sizes.
  bool read_part_beg(std::string_view value) {
    const Part read = std::exchange(part_, {});
    const std::int64_t file_beg = read.part_filepos + shift_of(read.part_file);
    const std::int64_t file_end = file_beg + read.part_size;
    const std::size_t number = document_.parts.size() + 1;
    if (read.part_size == 0) return fail(fmt::format("Part {} of it is empty.", number));
    if (file_beg < 0)
      return fail(fmt::format("Part {} of it begins in front of its file.", number));
    if (file_end > std::int64_t{largest_file} || !has_room_for(document_, read.part_size))
      return fail(fmt::format("Part {} of it runs beyond 4 GB.", number));
    const auto stored = static_cast<EditPosition>(leading_number(value));
    const auto place = std::ranges::find_if(
        stored_begs_, [stored](EditPosition other) { return other >= stored; });
    const bool is_last = place == stored_begs_.end();
    const EditPosition pos =
        is_last ? document_.total_size
                : document_.parts[static_cast<std::size_t>(place - stored_begs_.begin())].part_beg;
    const PartIndex index = add_part(document_, pos, read.part_file,
                                     static_cast<std::uint32_t>(file_beg), read.part_size);
    if (index == no_part)
      return fail(number > most_parts
                      ? fmt::format("It has more than {} parts.", most_parts)
                      : fmt::format("Part {} of it is of a file that it doesn't name.", number));
    stored_begs_.insert(place, stored);
    document_.parts[index].part_iscue = read.part_iscue;
    document_.parts[index].part_gainbeg = read.part_gainbeg;
    document_.parts[index].part_title = read.part_title;
    document_.parts[index].part_artist = read.part_artist;
    return true;
  }

  // A text may name places that its parts don't reach, or one end of a selection alone.
  void keep_places_in_stream() {
    selection_.cursor = std::min(selection_.cursor, document_.total_size);
    const bool is_range =
        selection_.sel_beg <= selection_.sel_end && selection_.sel_end <= document_.total_size;
    if (!is_range) selection_.sel_beg = selection_.sel_end = no_position;
  }

  Document& document_;
  Selection& selection_;
  OpenState& open_state_;
  std::string_view text_;
  OpenFault fault_;
  int utf8_ = 0;  // the flag as it stands in the text
  std::uint32_t file_beg_ = 0;
  std::uint32_t file_end_ = 0;
  Part part_;                              // the record being read
  std::vector<EditPosition> stored_begs_;  // of the parts read so far, in their order
  std::vector<std::int64_t> shifts_;       // of the sources, as far as one has a shift
  std::string moved_;                      // their names, in lines
};

std::span<const ProjectReader::Key> ProjectReader::keys() {
  using Reader = ProjectReader;
  using Text = std::string_view;
  static constexpr Key table[] = {
      {"utf8", [](Reader& reader, Text value) { return take_number(reader.utf8_, value); }},
      {"file_beg", [](Reader& reader, Text value) { return take_number(reader.file_beg_, value); }},
      {"file_end", [](Reader& reader, Text value) { return take_number(reader.file_end_, value); }},
      {"file", [](Reader& reader, Text value) { return reader.read_file(value); }},
      {"part_file",
       [](Reader& reader, Text value) { return take_number(reader.part_.part_file, value); }},
      {"part_filepos",
       [](Reader& reader, Text value) { return take_number(reader.part_.part_filepos, value); }},
      {"part_gainbeg",
       [](Reader& reader, Text value) { return take_number(reader.part_.part_gainbeg, value); }},
      {"part_artist", [](Reader& reader,
                         Text value) { return reader.take_name(reader.part_.part_artist, value); }},
      {"part_title",
       [](Reader& reader, Text value) { return reader.take_name(reader.part_.part_title, value); }},
      {"part_iscue",
       [](Reader& reader, Text value) { return take_number(reader.part_.part_iscue, value); }},
      {"part_size",
       [](Reader& reader, Text value) { return take_number(reader.part_.part_size, value); }},
      {"part_beg", [](Reader& reader, Text value) { return reader.read_part_beg(value); }},
      {"gainend",
       [](Reader& reader, Text value) { return take_number(reader.document_.end_gain, value); }},
      {"position",
       [](Reader& reader, Text value) { return take_number(reader.selection_.cursor, value); }},
      {"vbr",
       [](Reader& reader, Text value) { return take_number(reader.document_.stream.vbr, value); }},
      {"sel_beg",
       [](Reader& reader, Text value) { return take_number(reader.selection_.sel_beg, value); }},
      {"sel_end",
       [](Reader& reader, Text value) { return take_number(reader.selection_.sel_end, value); }},
      {"sheet_artist",
       [](Reader& reader, Text value) {
         return reader.take_name(reader.document_.sheet_artist, value);
       }},
      {"sheet_title",
       [](Reader& reader, Text value) {
         return reader.take_name(reader.document_.sheet_title, value);
       }},
  };
  return table;
}

// Who edits on should know now, and not at the save alone.
void tell_of_sources(const Document& document, const std::string& moved) {
  const auto tell = [](BoxIcon icon, std::string text) {
    host().show_message_box({.caption = std::string(ui_text(row::project_file)),
                             .text = std::move(text),
                             .icon = icon});
  };
  if (!moved.empty()) tell(BoxIcon::information, format_row(ui_text(row::borders_moved), moved));
  const std::string changes = changes_of_sources(document);
  if (!changes.empty()) tell(BoxIcon::warning, changes);
}

bool is_project_text(std::string_view head) {
  if (head.starts_with(utf8_mark)) head.remove_prefix(utf8_mark.size());
  return head.starts_with(header);
}

}  // namespace

std::string project_text(const Document& document, const Selection& selection, EditPosition cursor,
                         const std::string& folder) {
  return ProjectWriter(document, selection, cursor, folder).write();
}

OpenFault parse_project(Document& document, Selection& selection, OpenState& open_state,
                        std::string_view text) {
  reset_state(document, selection, open_state, ResetLevel::no_name);
  ProjectReader reader(document, selection, open_state, text);
  OpenFault fault = reader.read();
  if (fault.cause.empty()) tell_of_sources(document, reader.moved());
  return fault;
}

std::error_code write_project(const Document& document, const Selection& selection,
                              OpenState& open_state, const std::string& name, EditPosition cursor) {
  const std::string whole_name = in_current_folder(name);
  const std::string text =
      project_text(document, selection, cursor, std::string(folder_of(whole_name)));
  const std::error_code error = replace_text(whole_name, text, is_project_text);
  if (!error) open_state.document_modified = false;
  return error;
}

OpenFault read_project(Document& document, Selection& selection, OpenState& open_state) {
  std::string text;
  if (const auto error = read_whole_file(open_state.project_name, largest_project, text))
    return {.audio = {}, .cause = error.message()};
  OpenFault fault = parse_project(document, selection, open_state, text);
  if (fault.cause.empty() && document.parts.empty()) fault.cause = "It names no audio.";
  if (!fault.cause.empty()) close_stream(document, selection, open_state);
  return fault;
}

}  // namespace corvelin

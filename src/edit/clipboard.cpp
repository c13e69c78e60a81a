// SPDX-License-Identifier: GPL-2.0-or-later
// The clipboard's text, written and read.
//
// The first line is a mark, each other one a range: path, first audio, audio end, file
// position, size, gain, cue flag, artist, title, with a tab behind each. Numbers are signed with 32
// bits, texts UTF-8; lines are parted by CR LF.
#include "edit/clipboard.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "edit/cut_commands.h"
#include "edit/editor.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/file_kind.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::size_t block_size = 50000;  // bytes of a text, with a zero behind it
constexpr std::size_t field_count = 9;     // of a range
constexpr std::size_t longest_name = 500;  // UTF-16 code units

// What would part fields or lines can't stand in a name.
std::string name_field(std::u16string_view name) {
  std::string text = on_one_line(wide_to_bytes(name, true));
  std::ranges::replace(text, '\t', ' ');
  return text;
}

std::int32_t number_field(std::uint32_t value) { return static_cast<std::int32_t>(value); }

// False when the path can't be written.
bool append_range(const Document& document, std::string& text, const Part& range) {
  const SourceFile& file = document.files[range.part_file];
  if (file.file_name.find('\t') != std::string::npos ||
      file.file_name.find(line_end) != std::string::npos)
    return false;
  fmt::format_to(std::back_inserter(text), "{}{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t", line_end,
                 file.file_name, number_field(file.first_audio), number_field(file.audio_end),
                 number_field(range.part_filepos), number_field(range.part_size),
                 range.part_gainbeg, number_field(range.part_iscue), name_field(range.part_artist),
                 name_field(range.part_title));
  return true;
}

// The text of the selected ranges. Nothing when there are none and when they can't be put in one.
std::optional<std::string> text_of_selection(const Editor& editor) {
  const EditPosition begin = editor.selection.sel_beg;
  const EditPosition end = std::min(editor.selection.sel_end, editor.document.total_size);
  if (begin >= end) return std::nullopt;
  std::string text(clipboard_mark);
  for (PartIndex i = part_at(editor.document, begin); i <= part_at(editor.document, end); ++i) {
    Part range = editor.document.parts[i];
    if (range.part_beg == end) break;
    if (range.part_beg < begin) {  // what begins inside a part has neither its level nor its cue
      const std::uint32_t left_out = begin - range.part_beg;
      range.part_beg = begin;
      range.part_filepos += left_out;
      range.part_size -= left_out;
      range.part_gainbeg = 0;
      range.part_iscue = 0;
    }
    range.part_size = std::min(range.part_size, end - range.part_beg);
    if (!append_range(editor.document, text, range) || text.size() >= block_size)
      return std::nullopt;
  }
  return text;
}

struct PastedRange {
  std::string_view path;
  std::uint32_t first_audio = 0;  // of the file
  std::uint32_t audio_end = 0;
  std::uint32_t file_pos = 0;
  std::uint32_t size = 0;
  std::int16_t gain = 0;
  bool is_cue = false;
  std::string_view artist;
  std::string_view title;
};

// Nothing when a field is missing.
std::optional<PastedRange> parse_range(std::string_view line) {
  std::array<std::string_view, field_count> fields;
  for (std::string_view& field : fields) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return std::nullopt;
    field = line.substr(0, tab);
    line.remove_prefix(tab + 1);
  }
  const auto number = [&](std::size_t i) {
    return static_cast<std::uint32_t>(leading_number(fields[i]));
  };
  return PastedRange{.path = fields[0],
                     .first_audio = number(1),
                     .audio_end = number(2),
                     .file_pos = number(3),
                     .size = number(4),
                     .gain = static_cast<std::int16_t>(number(5)),
                     .is_cue = number(6) != 0,
                     .artist = fields[7],
                     .title = fields[8]};
}

// The text ends at a zero, as it does for whoever wrote it.
PasteResult fetch_text(std::string& text) {
  switch (host().get_clipboard_text(text)) {
    case ClipboardContent::no_text:
      return PasteResult::no_text;
    case ClipboardContent::unavailable:
      return PasteResult::failed;
    case ClipboardContent::unreadable:
      return PasteResult::not_fetched;
    case ClipboardContent::text:
      break;
  }
  text.resize(std::min(text.find('\0'), text.size()));
  return text.starts_with(clipboard_mark) ? PasteResult::pasted : PasteResult::foreign_text;
}

// One paste: adds range behind range from the beginning of the selection on.
class Paste {
 public:
  explicit Paste(Editor& editor) : editor_(editor) {}

  PasteResult run(std::string_view text) {
    ensure_selection(editor_.selection, editor_.selection.cursor);
    if (editor_.selection.sel_beg < editor_.selection.sel_end)
      removed_ =
          delete_range(editor_.document, editor_.selection.sel_beg, editor_.selection.sel_end);
    place_ = editor_.selection.sel_beg;
    forget_stashed_texts(editor_.selection);  // the border is not one of the parts to come
    const PasteResult result = add_ranges(text);
    if (result == PasteResult::pasted) {
      editor_.selection.sel_end = place_;
    } else {
      give_up();
    }
    return result;
  }

 private:
  PasteResult add_ranges(std::string_view text) {
    std::size_t end = text.find(line_end);
    if (end == std::string_view::npos) return PasteResult::no_first_line;
    while (end != std::string_view::npos) {
      text.remove_prefix(end + line_end.size());
      end = text.find(line_end);
      const auto range = parse_range(text.substr(0, end));
      const PasteResult result = range ? add(*range) : PasteResult::failed;
      if (result != PasteResult::pasted) return result;
    }
    return PasteResult::pasted;
  }

  PasteResult add(const PastedRange& range) {
    if (extension_of(range.path).empty()) return PasteResult::failed;
    if ((file_kind(range.path) == FileKind::aac) != (editor_.document.stream.is_aac != 0))
      return PasteResult::other_format;
    const auto index = add_source_file(editor_.document, path_from_outside(range.path, ""));
    if (!index || !take_bounds(editor_.document.files[*index], range)) return PasteResult::failed;

    const auto frame = frame_at_begin(*editor_.document.files[*index].handle, range.file_pos);
    if (!frame) return PasteResult::failed;
    if (kind_of(*frame) != editor_.document.kind) return PasteResult::other_parameters;
    take_in_bitrate(editor_.document.stream, *frame);
    return add_as_part(*index, range) ? PasteResult::pasted : PasteResult::failed;
  }

  // A file that is new here gets the bounds that it had where the range comes from, as far as it
  // goes. False for a range that the file, or a stream, doesn't have room for.
  bool take_bounds(SourceFile& file, const PastedRange& range) const {
    const std::uint64_t file_size = file.handle->facts().size;
    const std::uint64_t range_end = std::uint64_t{range.file_pos} + range.size;
    if (range.size == 0 || range_end > file_size || !has_room_for(editor_.document, range.size))
      return false;
    if (file.audio_end != 0) return true;
    const std::uint64_t audio_end = std::min<std::uint64_t>(range.audio_end, file_size);
    if (range.first_audio >= audio_end) return false;
    file.first_audio = range.first_audio;
    file.audio_end = static_cast<std::uint32_t>(audio_end);
    return true;
  }

  [[nodiscard]] std::optional<FrameInfo> frame_at_begin(const InputFile& file,
                                                        std::uint32_t file_pos) const {
    FrameInfo frame;
    std::array<std::uint8_t, header_size> head = {};
    if (file.read_at(file_pos, head) < head.size()) return std::nullopt;
    if (!decode_frame_header(frame, head, frame_format(editor_.document.stream)))
      return std::nullopt;
    return frame;
  }

  bool add_as_part(std::uint16_t file, const PastedRange& range) {
    make_border(editor_.document, place_);
    const PartIndex index = add_part(editor_.document, place_, file, range.file_pos, range.size);
    if (index == no_part) return false;
    Part& part = editor_.document.parts[index];
    part.part_gainbeg = range.gain;
    part.part_iscue = range.is_cue ? 1 : 0;
    part.part_artist = cut_to_units(bytes_to_wide(range.artist, true), longest_name);
    part.part_title = cut_to_units(bytes_to_wide(range.title, true), longest_name);
    place_ += range.size;
    return true;
  }

  // The border that the removal of the selection left is restored as it is now. That brings the
  // selected bytes back if no range was added yet and they were of one file; in any other case the
  // undo step does.
  void give_up() const {
    editor_.selection.sel_end = editor_.selection.sel_beg;
    if (removed_ != no_part) restore_border(editor_.document, editor_.selection, removed_, place_);
    remove_last_source_file(editor_.document);
  }

  Editor& editor_;
  PartIndex removed_ = no_part;  // the part that followed the selection that was replaced
  EditPosition place_ = 0;       // of the next range
};

std::string_view paste_failure(PasteResult result) {
  switch (result) {
    case PasteResult::other_parameters:
      return ui_text(row::parameters_do_not_match);
    case PasteResult::foreign_text:
      return "No corvl part";
    case PasteResult::no_text:
      return "Wrong format";
    case PasteResult::not_fetched:
      return "Get failed";
    case PasteResult::no_first_line:
      return "Parse failed";
    case PasteResult::other_format:
      return "MP3 / AAC";
    case PasteResult::pasted:
    case PasteResult::failed:
      break;
  }
  return "Unknown problem";
}

Outcome refuse_as(std::string_view caption, std::string_view text) {
  return {Result::refused, MessageBox{.caption = std::string(caption),
                                      .text = std::string(text),
                                      .icon = BoxIcon::warning}};
}

Outcome copy_or_refuse(const Editor& editor) {
  return copy_to_clipboard(editor) ? Outcome(Result::done)
                                   : refuse_as(ui_text(row::error), ui_text(row::not_possible));
}

}  // namespace

bool copy_to_clipboard(const Editor& editor) {
  const std::optional<std::string> text = text_of_selection(editor);
  const bool is_set = host().set_clipboard_text(text.value_or(""));
  return text && is_set;
}

PasteResult paste_from_clipboard(Editor& editor) {
  std::string text;
  const PasteResult fetched = fetch_text(text);
  return fetched == PasteResult::pasted ? Paste(editor).run(text) : fetched;
}

Outcome copy(Editor& editor) {
  if (!has_selected_range(editor.selection)) {
    editor.selection.sel_beg = 0;
    editor.selection.sel_end = editor.document.total_size;
  }
  return copy_or_refuse(editor);
}

Outcome cut_clipboard(Editor& editor) {
  if (!has_selected_range(editor.selection)) return refuse(ui_text(row::selection_too_short));
  const Outcome copied = copy_or_refuse(editor);
  return copied.result == Result::done ? cut_or_cue(editor) : copied;
}

Outcome paste(Editor& editor) {
  const PasteResult result = paste_from_clipboard(editor);
  if (result == PasteResult::pasted) return Result::done;
  return refuse_as(ui_text(row::clipboard_error), paste_failure(result));
}

}  // namespace corvelin

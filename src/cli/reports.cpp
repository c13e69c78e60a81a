// SPDX-License-Identifier: GPL-2.0-or-later
// Summary and frame list.
#include "cli/reports.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "cli/messages.h"
#include "cli/times.h"
#include "edit/editor.h"
#include "edit/file_info_dialog.h"
#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "exchange/id3v2_texts.h"
#include "frames/frame_gain.h"
#include "model/document.h"
#include "model/fade.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/text/numbers.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

// Lines of a label and a value, which stand in columns.
class Summary {
 public:
  void line(std::string_view label, std::string_view value) {
    fmt::format_to(std::back_inserter(text_), "{:23}{}\n", label, value);
  }
  void text_line(std::string_view label, std::string_view value) {
    if (!value.empty()) line(fmt::format("  {}:", label), value);
  }
  void add(std::string_view text) { text_ += text; }
  std::string take() { return printable(std::move(text_)); }

 private:
  std::string text_;
};

void add_id3v1(const Editor& editor, Summary& summary) {
  summary.line("ID3v1 tag:", !has_id3v1(editor.document)    ? "No"
                             : editor.open_state.keep_id3v1 ? "Yes"
                                                            : "Yes (not keeping)");
  if (!has_id3v1(editor.document)) return;
  const TagDialog tag = tag_dialog_load(editor.document);
  const auto add = [&](std::string_view label, const std::u16string& text) {
    summary.text_line(label, wide_to_bytes(text, true));
  };
  add("title", tag.title);
  add("artist", tag.artist);
  add("album", tag.album);
  add("year", tag.year);
  add("comment", tag.comment);
  summary.text_line("track", tag.track == 0 ? "" : std::to_string(tag.track));
  summary.text_line("genre", tag.genre);
}

void add_id3v2(const Document& document, Summary& summary) {
  const std::optional<Id3v2Texts> tag = id3v2_texts(document);
  if (!tag) return;
  summary.line("ID3v2 tag:", keeps_id3v2(document, false) ? "Yes" : "Yes (not keeping)");
  summary.text_line("title", tag->title);
  summary.text_line("artist", tag->artist);
  summary.text_line("album", tag->album);
  summary.text_line("year", tag->year);
  summary.text_line("track", tag->track);
}

std::string place_text(const Document& document, EditPosition pos) {
  return fmt::format("{} ({})", group_thousands(pos), time_text(seconds_at(document, pos)));
}

std::string part_line(const Editor& editor, std::size_t index, double begin, double end) {
  const Part& part = editor.document.parts[index];
  std::string line =
      fmt::format("  {:3}  {}  {}  {}  position {}  size {}  file {}  offset {}", index,
                  part.part_iscue != 0 ? "cue" : "cut", time_text(begin), time_text(end - begin),
                  group_thousands(part.part_beg), group_thousands(part.part_size), part.part_file,
                  group_thousands(part.part_filepos));
  if (part.part_gainbeg != 0) line += fmt::format("  gain {:+.1f} dB", part.part_gainbeg * 1.5);
  if (!part.part_artist.empty()) line += "  " + wide_to_bytes(part.part_artist, true);
  if (!part.part_title.empty()) line += "  \"" + wide_to_bytes(part.part_title, true) + "\"";
  return line + "\n";
}

void add_parts(const Editor& editor, Summary& summary) {
  summary.line("Parts:",
               fmt::format("{} (number, kind, start, length)", editor.document.parts.size()));
  double begin = 0;
  for (std::size_t i = 0; i < editor.document.parts.size(); ++i) {
    const double end =
        seconds_at(editor.document, part_end(editor.document, static_cast<PartIndex>(i)));
    summary.add(part_line(editor, i, begin, end));
    begin = end;
  }
}

}  // namespace

std::string stream_summary(const Editor& editor) {
  Summary summary;
  summary.line("File:", editor.document.files[0].file_name);
  for (const InfoLine& info : file_info_lines(editor, editor.selection.cursor))
    summary.line(info.label, info.value.empty() ? "-" : info.value);
  add_id3v2(editor.document, summary);
  add_id3v1(editor, summary);
  summary.line("Stream:", text_of(editor.document.kind));
  summary.line("Total time:", time_text(total_seconds(editor.document)));
  summary.line("Source files:", std::to_string(editor.document.files.size()));
  for (std::size_t i = 1; i < editor.document.files.size(); ++i)
    summary.line(fmt::format("  file {}:", i), editor.document.files[i].file_name);
  summary.line("Cursor:", place_text(editor.document, editor.selection.cursor));
  if (has_selection(editor.selection)) {
    summary.line("Selection:",
                 fmt::format("{} - {}", place_text(editor.document, editor.selection.sel_beg),
                             place_text(editor.document, editor.selection.sel_end)));
  }
  add_parts(editor, summary);
  return summary.take();
}

void print_frames(const Document& document) {
  fmt::memory_buffer lines;
  std::vector<std::uint8_t> block(frame_block_limit);
  FrameCursor cursor = frame_cursor_at(document, 0);
  while (cursor.pos < document.total_size) {
    const EditPosition start = cursor.pos;
    const PartIndex start_part = cursor.part;
    const std::size_t size = read_frames(document, block, cursor, document.total_size).size;
    for (std::size_t at = 0; at < size;) {
      FrameInfo frame;
      if (!decode_frame_header(frame, std::span(block).subspan(at), frame_format(document.stream)))
        break;
      const EditPosition place = start + static_cast<EditPosition>(at);
      const int gain =
          part_has_gain(document, start_part) ? gain_at(document, place, start_part) : 0;
      fmt::format_to(std::back_inserter(lines), "{} {} {} {} {} {}\n", place,
                     document.parts[start_part].part_file, file_pos_of(document, start_part, place),
                     frame.frame_length, frame.bitrate, gain);
      at += frame.frame_length;
    }
    print({lines.data(), lines.size()});
    lines.clear();
  }
}

}  // namespace corvelin

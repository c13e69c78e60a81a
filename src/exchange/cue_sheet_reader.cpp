// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of cue sheets, line by line. Sheets come from many programs, so that whatever isn't known
// is passed over; only a malformed line of a known kind ends the reading.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "exchange/cue_sheet.h"
#include "exchange/cue_time.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/exact_time.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/open_audio_file.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/note.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t largest_sheet = std::size_t{16} << 20;  // bytes
constexpr std::size_t line_limit = 400;                       // bytes; longer lines don't count
constexpr std::size_t longest_name = 300;                     // UTF-16 code units
constexpr std::size_t longest_time = 40;                      // bytes

// A sheet in UTF-16 or with zeros for blanks is read as far as possible, and then at least doesn't
// end at its first byte.
void blank_out_zeros(std::string& text, std::size_t file_size) {
  constexpr std::size_t looked_at = 600;  // bytes
  constexpr std::size_t tail = 10;        // bytes of a shorter file that stay as they are
  std::size_t count = std::min(looked_at, text.size());
  if (file_size < looked_at) count = std::min(count, file_size - std::min(file_size, tail));
  std::ranges::replace(std::span(text).first(count), '\0', ' ');
}

// What stands between the first and the last quote of a line, which may hold quotes itself.
std::optional<std::string_view> quoted(std::string_view line) {
  const std::size_t first = line.find('"');
  const std::size_t last = line.rfind('"');
  if (first == last) return std::nullopt;  // one quote or none
  return line.substr(first + 1, last - first - 1);
}

// What stands behind the second blank of an index line.
std::optional<std::string_view> index_time(std::string_view line) {
  const std::size_t first = line.find(' ');
  const std::size_t second = line.find(' ', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  std::string_view time = line.substr(second + 1);
  const auto is_control = [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; };
  if (!time.empty() && is_control(time.back())) time.remove_suffix(1);
  return time.substr(0, longest_time);
}

class CueSheetReader {
 public:
  CueSheetReader(Document& document, Selection& selection, OpenState& open_state,
                 bool over_current_audio, bool utf8)
      : document_(document),
        selection_(selection),
        open_state_(open_state),
        over_current_audio_(over_current_audio),
        utf8_(utf8) {}

  // Takes the lines of the text in.
  OpenFault read(std::string_view text) {
    Next next = Next::go_on;
    bool is_closed = false;  // the last line was the start of a track, which closes the one before
    while (!text.empty() && next == Next::go_on) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(end + 1, text.size()));
      ++line_number_;
      if (line.size() >= line_limit) continue;
      line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
      is_closed = line.starts_with("TRACK");
      next = take_in(line);
    }
    if (next == Next::go_on && !is_closed) next = close_track();
    return fault_;
  }

 private:
  enum class Next { go_on, end, fail };

  Next fail(std::string cause, std::string audio = {}) {
    fault_ = {.audio = std::move(audio), .cause = std::move(cause)};
    return Next::fail;
  }
  Next fail_at_line(std::string_view reason) {
    return fail(fmt::format("Line {}: {}", line_number_, reason));
  }

  Next take_in(std::string_view line) {
    if (line.starts_with("FILE")) return open_audio(line);
    if (line.starts_with("TITLE")) return take_name(line, title_);
    if (line.starts_with("PERFORMER")) return take_name(line, performer_);
    if (line.starts_with("INDEX 01")) return take_time(line);
    if (line.starts_with("TRACK")) return close_track();
    return Next::go_on;
  }

  Next open_audio(std::string_view line) {
    if (over_current_audio_) return Next::go_on;
    const auto name = quoted(line);
    if (!name) return fail_at_line("no name in quotes stands behind FILE.");
    if (!open_state_.audio_name.empty())
      return fail_at_line("a second FILE; only a sheet of one audio file can be opened.");
    const std::string audio = path_from_encoded(*name, utf8_, folder_of(open_state_.project_name));
    std::string cause = open_audio_file(document_, selection_, open_state_, audio);
    if (!cause.empty()) return fail(std::move(cause), audio);
    show_cue_sheet_note(document_);
    return Next::go_on;
  }

  Next take_name(std::string_view line, std::u16string& name) {
    const auto value = quoted(line);
    if (!value) return fail_at_line("no text in quotes stands behind TITLE or PERFORMER.");
    name = cut_to_units(bytes_to_wide(*value, utf8_), longest_name);
    return Next::go_on;
  }

  Next take_time(std::string_view line) {
    if (!time_.empty()) return Next::go_on;
    const auto time = index_time(line);
    if (!time) return fail_at_line("no time stands behind INDEX 01.");
    time_ = *time;
    return Next::go_on;
  }

  // What has been collected belongs to the album until the first track begins, then to a track.
  Next close_track() {
    const Next next = in_track_ ? set_cue() : name_album();
    in_track_ = true;
    title_.clear();
    performer_.clear();
    time_ = {};
    return next;
  }

  Next name_album() {
    if (!title_.empty()) document_.sheet_title = title_;
    if (!performer_.empty()) document_.sheet_artist = performer_;
    return Next::go_on;
  }

  Next set_cue() {
    if (time_.empty()) return Next::end;
    const EditPosition pos = exact_place(document_, cue_seconds(time_));
    if (pos >= document_.total_size) return Next::end;
    const PartIndex index = make_border(document_, pos);
    if (index == no_part)
      return fail(fmt::format("A document can have {} parts; its cues make more.", most_parts));
    Part& part = document_.parts[index];
    part.part_title = title_;
    part.part_artist = performer_;
    part.part_iscue = 1;
    return Next::go_on;
  }

  Document& document_;
  Selection& selection_;
  OpenState& open_state_;
  bool over_current_audio_;
  bool utf8_;
  bool in_track_ = false;
  std::size_t line_number_ = 0;  // from 1
  OpenFault fault_;
  std::u16string title_;
  std::u16string performer_;
  std::string_view time_;
};

}  // namespace

void show_cue_sheet_note(const Document& document) {
  if (document.stream.vbr != vbr_constant) show_note_once(Note::cue_sheets_and_vbr);
}

OpenFault load_cue_sheet(Document& document, Selection& selection, OpenState& open_state,
                         bool over_current_audio) {
  std::string text;
  if (const auto error = read_whole_file(open_state.project_name, largest_sheet, text))
    return {.audio = {}, .cause = error.message()};
  const std::size_t file_size = text.size();
  const bool utf8 = text.starts_with(utf8_mark);
  settings.char_enc = utf8 ? 1 : 0;
  if (utf8) text.erase(0, utf8_mark.size());
  blank_out_zeros(text, file_size);

  OpenFault fault =
      CueSheetReader(document, selection, open_state, over_current_audio, utf8).read(text);
  if (fault.cause.empty() && document.parts.empty()) fault.cause = "It names no audio.";
  clear_selection(selection);
  open_state.document_modified = false;
  return fault;
}

}  // namespace corvelin

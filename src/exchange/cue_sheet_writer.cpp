// SPDX-License-Identifier: GPL-2.0-or-later
// Writing of cue sheets.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "exchange/cue_sheet.h"
#include "exchange/cue_time.h"
#include "model/document.h"
#include "model/exact_time.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/files/replacing_file.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

bool is_whole_first_file(const Document& document) {
  const SourceFile& file = document.files[0];
  return document.files.size() == 1 && document.total_size == file.audio_end - file.first_audio;
}

std::string name_bytes(const std::u16string& name) {
  return on_one_line(wide_to_bytes(name, settings.char_enc != 0));
}

// A path that the encoding can't hold, or that is no valid UTF-8, is written byte by byte, or it
// would name no file any more.
std::string path_bytes(const std::string& path) {
  const bool utf8 = settings.char_enc != 0;
  const std::string encoded = wide_to_bytes(bytes_to_wide(path, true), utf8);
  const bool survives = wide_to_bytes(bytes_to_wide(encoded, utf8), true) == path;
  return survives ? encoded : path;
}

// Whether a text begins as a sheet does: with one of the commands, whatever comes before it.
bool is_sheet_text(std::string_view head) {
  constexpr std::array<std::string_view, 10> commands = {
      "REM",        "CATALOG", "CDTEXTFILE", "PERFORMER", "TITLE",
      "SONGWRITER", "FILE",    "TRACK",      "INDEX",     "ISRC"};
  if (head.starts_with(utf8_mark)) head.remove_prefix(utf8_mark.size());
  head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
  const std::string_view word = head.substr(0, head.find_first_of(" \t\r\n"));
  return std::ranges::any_of(
      commands, [word](std::string_view command) { return equal_ignoring_case(word, command); });
}

// What would end the line or the name in it has no form in a sheet.
bool can_be_named(const std::string& audio) {
  return audio.find_first_of("\"\r\n") == std::string::npos;
}

std::string audio_line(const Document& document, const std::string& name) {
  const char* const type = document.kind.layer == 3 ? "MP3" : "WAVE";
  return fmt::format("FILE \"{}\" {}\r\n", path_bytes(name), type);
}

std::string album_lines(const Document& document) {
  std::string text;
  if (!document.sheet_artist.empty())
    text = fmt::format("PERFORMER \"{}\"\r\n", name_bytes(document.sheet_artist));
  const bool has_title = !document.sheet_title.empty();
  return text + fmt::format("TITLE \"{}\"\r\n",
                            has_title ? name_bytes(document.sheet_title) : "(Title N.N.)");
}

std::string track_lines(const Document& document) {
  std::string text;
  int number = 0;
  for (const Part& part : document.parts) {
    if (part.part_iscue == 0) continue;
    ++number;
    const std::string title = part.part_title.empty() ? fmt::format("(Track {:02})", number)
                                                      : name_bytes(part.part_title);
    auto end = std::back_inserter(text);
    fmt::format_to(end, "  TRACK {:02} AUDIO\r\n    TITLE \"{}\"\r\n", number, title);
    if (!part.part_artist.empty())
      fmt::format_to(end, "    PERFORMER \"{}\"\r\n", name_bytes(part.part_artist));
    fmt::format_to(end, "    INDEX 01 {}\r\n",
                   format_cue_time(exact_seconds(document, part.part_beg)));
  }
  return text;
}

}  // namespace

bool names_other_audio(const Document& document, const OpenState& open_state) {
  return !is_whole_first_file(document) && open_state.save_name.empty();
}

bool save_cue_sheet(const Document& document, const OpenState& open_state, const std::string& name,
                    std::string& reason) {
  std::string audio = document.files[0].file_name;
  if (!is_whole_first_file(document) && !open_state.save_name.empty()) audio = open_state.save_name;
  const std::string named = relative_to_folder(audio, std::string(folder_of(name)));
  if (!can_be_named(named)) {
    reason = fmt::format("{}\nA sheet can't hold a name with a quote or a line end in it.", named);
    return false;
  }
  const std::string mark(settings.char_enc != 0 ? utf8_mark : "");
  const std::string text =
      mark + album_lines(document) + audio_line(document, named) + track_lines(document);
  if (const std::error_code error = replace_text(name, text, is_sheet_text)) {
    reason = fmt::format("{}\n{}", name, error.message());
    return false;
  }
  add_recent(name);
  return true;
}

}  // namespace corvelin

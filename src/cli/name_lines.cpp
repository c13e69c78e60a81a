// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines for what is written beside the audio: names, the ID3v1 tag, header bits.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/messages.h"
#include "cli/nearest_word.h"
#include "cli/words.h"
#include "edit/editor.h"
#include "edit/names_dialog.h"
#include "exchange/id3v1.h"
#include "exchange/id3v2_copy.h"
#include "exchange/id3v2_texts.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

// A field that KEY=TEXT sets.
struct Field {
  std::string_view key;
  std::function<Refusal(std::string_view)> take;
};

// A text of so many characters at most.
Field text_field(std::string_view key, std::u16string& text, std::size_t limit) {
  return {key, [&text, key, limit](std::string_view value) {
            text = name_within(limit, value, key);
            return no_refusal;
          }};
}

Refusal take_texts(Arguments words, std::span<const Field> fields) {
  for (const std::string& word : words) {
    const std::size_t equal = word.find('=');
    if (equal == std::string::npos) return fmt::format("\"{}\" is no KEY=TEXT", word);
    const std::string_view key = std::string_view(word).substr(0, equal);
    const auto field = std::ranges::find(fields, key, &Field::key);
    if (field == fields.end()) {
      std::vector<std::string_view> keys;
      for (const Field& known : fields) keys.push_back(known.key);
      return fmt::format("there is no field \"{}\"{}", key, did_you_mean(key, keys));
    }
    Refusal refusal = field->take(std::string_view(word).substr(equal + 1));
    if (!refusal.empty()) return refusal;
  }
  return no_refusal;
}

Refusal take_track(std::string_view value, TagDialog& tag) {
  constexpr std::uint32_t highest = 127;  // what a reader of the tag takes for a track
  const auto track = parse_whole<std::uint32_t>(value);
  if (!value.empty() && (!track || *track > highest))
    return fmt::format("track takes 0 to {}, not \"{}\"", highest, value);
  tag.track = track.value_or(0);
  return no_refusal;
}

Refusal take_genre(std::string_view value, TagDialog& tag) {
  if (!value.empty() && !genre_index(value)) {
    return fmt::format("ID3v1 has no genre \"{}\"{}", value, did_you_mean(value, genre_names()));
  }
  tag.genre = value;
  return no_refusal;
}

// The tag holds Windows-1252 text, and beside a track number less of the comment.
void tell_changed_texts(const Document& document, const TagDialog& tag) {
  const TagDialog held = tag_dialog_load(document);
  const bool is_same = held.title == tag.title && held.artist == tag.artist &&
                       held.album == tag.album && held.year == tag.year &&
                       held.comment == tag.comment;
  if (is_same) return;
  const auto text = [](const std::u16string& wide) { return wide_to_bytes(wide, true); };
  complain(fmt::format(
      "not all of that fits an ID3v1 tag, which now says title=\"{}\" artist=\"{}\" "
      "album=\"{}\" year=\"{}\" comment=\"{}\"",
      text(held.title), text(held.artist), text(held.album), text(held.year), text(held.comment)));
}

// The tag that players prefer may go on to tell something else.
void tell_other_texts(const Document& document, const TagDialog& tag) {
  if (!keeps_id3v2(document, false)) return;
  const std::optional<Id3v2Texts> kept = id3v2_texts(document);
  if (!kept) return;
  std::string texts;
  const auto compare = [&texts](std::string_view name, const std::string& text,
                                const std::u16string& mine) {
    if (!text.empty() && bytes_to_wide(text, true) != mine)
      texts += fmt::format("{} {}=\"{}\"", texts.empty() ? "" : ",", name, text);
  };
  compare("title", kept->title, tag.title);
  compare("artist", kept->artist, tag.artist);
  compare("album", kept->album, tag.album);
  compare("year", kept->year.substr(0, id3v1_year_limit), tag.year);
  if (texts.empty()) return;
  complain(fmt::format("the ID3v2 tag is kept and still shows{}; set keep_id3v2 0 leaves it out",
                       texts));
}

Refusal tag_line(Editor& editor, Arguments words, HeadlessHost&) {
  if (!can_create_tag(editor.document)) return "an AAC stream has no such tag";
  TagDialog tag = tag_dialog_load(editor.document);
  tag.create_tag = true;
  const Field fields[] = {
      text_field("title", tag.title, id3v1_text_limit),
      text_field("artist", tag.artist, id3v1_text_limit),
      text_field("album", tag.album, id3v1_text_limit),
      text_field("year", tag.year, id3v1_year_limit),
      text_field("comment", tag.comment, id3v1_text_limit),
      {"track", [&tag](std::string_view value) { return take_track(value, tag); }},
      {"genre", [&tag](std::string_view value) { return take_genre(value, tag); }}};
  Refusal refusal = take_texts(words, fields);
  if (!refusal.empty()) return refusal;
  tag_dialog_apply(editor.document, editor.open_state, tag);
  editor.open_state.document_modified = true;
  tell_changed_texts(editor.document, tag);
  tell_other_texts(editor.document, tag);
  return no_refusal;
}

Refusal take_flag(std::string_view value, bool& flag) {
  if (value != "0" && value != "1") return fmt::format("\"{}\" is neither 0 nor 1", value);
  flag = value == "1";
  return no_refusal;
}

Refusal names_line(Editor& editor, Arguments words, HeadlessHost&) {
  NamesDialog names(editor);
  names.begin();
  constexpr std::size_t limit = NamesDialog::text_limit;
  const Field fields[] = {text_field("part_title", names.part_title, limit),
                          text_field("part_artist", names.part_artist, limit),
                          text_field("sheet_title", names.sheet_title, limit),
                          text_field("sheet_artist", names.sheet_artist, limit),
                          {"part_iscue", [&names](std::string_view value) {
                             return take_flag(value, names.part_iscue);
                           }}};
  Refusal refusal = take_texts(words, fields);
  if (refusal.empty()) names.accept();
  return refusal;
}

Refusal header_bits_line(Editor& editor, Arguments words, HeadlessHost&) {
  if (editor.document.stream.is_aac != 0) return "an AAC stream has no such header bits";
  std::array<bool, 3> bits = {};
  for (std::size_t i = 0; i < bits.size(); ++i) {
    Refusal refusal = take_flag(words[i], bits[i]);
    if (!refusal.empty()) return refusal;
  }
  editor.document.header_rewrite = {.rewrite_header = true,
                                    .rewrite_copyright = bits[0],
                                    .rewrite_original = bits[1],
                                    .rewrite_private = bits[2]};
  editor.open_state.document_modified = true;
  return no_refusal;
}

constexpr EditLine table[] = {
    {"names", "KEY=\"text\" …", "names the current part and the album", 1, any_count, true,
     names_line},
    {"tag", "KEY=\"text\" …", "fills in the ID3v1 tag", 1, any_count, true, tag_line},
    {"header_bits", "COPYRIGHT ORIGINAL PRIVATE", "sets the header bits to write, 0 or 1 each", 3,
     3, true, header_bits_line},
};

}  // namespace

std::span<const EditLine> name_lines() { return table; }

}  // namespace corvelin

// Edit lines for what is written beside the audio: names, the ID3v1 tag, header bits.
#include "cli/edit_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "cli/words.h"
#include "document/open_state.h"
#include "edit/names_dialog.h"
#include "exchange/id3v1.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "platform/text.h"

namespace corvelin {

namespace {

// A text that KEY=TEXT sets.
struct NamedText {
  std::string_view key;
  std::u16string* text;
};

// Takes each KEY=TEXT in: into one of `texts`, or by `take_other`, which tells whether it is for
// it.
template <typename TakeOther>
std::string take_texts(Arguments words, std::span<const NamedText> texts, TakeOther take_other) {
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
  return no_refusal;
}

// The fields of the ID3v1 tag.
Refusal tag_line(Arguments words, HeadlessHost&) {
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
  return no_refusal;
}

// The names of the current part and of the album.
Refusal names_line(Arguments words, HeadlessHost&) {
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
  return no_refusal;
}

Refusal header_bits_line(Arguments words, HeadlessHost&) {
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

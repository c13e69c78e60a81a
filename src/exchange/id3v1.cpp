// SPDX-License-Identifier: GPL-2.0-or-later
// The fields of the ID3v1 record.
#include "exchange/id3v1.h"

#include <algorithm>
#include <array>

#include "model/document.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/text/bytes.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"

namespace corvelin {

namespace {

struct Field {
  std::size_t at;
  std::size_t size;
};

constexpr Field title_field = {3, 30};
constexpr Field artist_field = {33, 30};
constexpr Field album_field = {63, 30};
constexpr Field year_field = {93, 4};
constexpr Field comment_field = {97, 30};
constexpr std::size_t comment_beside_track = 28;
// A zero behind 28 bytes of comment says that the byte behind it is a track number.
constexpr std::size_t track_mark_place = 125;
constexpr std::size_t track_place = 126;
constexpr std::size_t genre_place = 127;

// clang-format off
constexpr std::array<std::string_view, 148> genres = {
    "Blues", "Classic Rock", "Country", "Dance", "Disco", "Funk", "Grunge", "Hip-Hop", "Jazz",
    "Metal", "New Age", "Oldies", "Other", "Pop", "R&B", "Rap", "Reggae", "Rock", "Techno",
    "Industrial", "Alternative", "Ska", "Death Metal", "Pranks", "Soundtrack", "Euro-Techno",
    "Ambient", "Trip-Hop", "Vocal", "Jazz+Funk", "Fusion", "Trance", "Classical", "Instrumental",
    "Acid", "House", "Game", "Sound Clip", "Gospel", "Noise", "AlternRock", "Bass", "Soul", "Punk",
    "Space", "Meditative", "Instrumental Pop", "Instrumental Rock", "Ethnic", "Gothic", "Darkwave",
    "Techno-Industrial", "Electronic", "Pop-Folk", "Eurodance", "Dream", "Southern Rock", "Comedy",
    "Cult", "Gangsta", "Top 40", "Christian Rap", "Pop/Funk", "Jungle", "Native American",
    "Cabaret", "New Wave", "Psychadelic", "Rave", "Showtunes", "Trailer", "Lo-Fi", "Tribal",
    "Acid Punk", "Acid Jazz", "Polka", "Retro", "Musical", "Rock & Roll", "Hard Rock", "Folk",
    "Folk-Rock", "National Folk", "Swing", "Fast Fusion", "Bebob", "Latin", "Revival", "Celtic",
    "Bluegrass", "Avantgarde", "Gothic Rock", "Progressive Rock", "Psychedelic Rock",
    "Symphonic Rock", "Slow Rock", "Big Band", "Chorus", "Easy Listening", "Acoustic", "Humour",
    "Speech", "Chanson", "Opera", "Chamber Music", "Sonata", "Symphony", "Booty Bass", "Primus",
    "Porn Groove", "Satire", "Slow Jam", "Club", "Tango", "Samba", "Folklore", "Ballad",
    "Power Ballad", "Rhythmic Soul", "Freestyle", "Duet", "Punk Rock", "Drum Solo", "A capella",
    "Euro-House", "Dance Hall", "Goa", "Drum & Bass", "Club-House", "Hardcore", "Terror", "Indie",
    "BritPop", "Afro-Punk", "Polsk Punk", "Beat", "Christian Gangsta Rap", "Heavy Metal",
    "Black Metal", "Crossover", "Contemporary Christian", "Christian Rock", "Merengue", "Salsa",
    "Thrash Metal", "Anime", "JPop", "Synthpop"};
// clang-format on

// The bytes of a field up to a zero.
std::string raw_text(const Id3v1Record& record, Field field) {
  const auto bytes = std::span(record).subspan(field.at, field.size);
  return {bytes.begin(), std::ranges::find(bytes, 0)};
}

std::u16string shown_text(const Document& document, Field field) {
  return bytes_to_wide(raw_text(document.stream.id3v1, field), false);
}

void put_text(Id3v1Record& record, Field field, std::string_view text) {
  const auto bytes = std::span(record).subspan(field.at, field.size);
  std::ranges::fill(bytes, std::uint8_t{0});
  put_mark(bytes, 0, text.substr(0, field.size));
}

// The bytes for a field that held `before`. Many tags are in another encoding than they should be:
// what the user left as it was is not to be damaged by the way through the code page.
std::string edited_text(std::u16string_view text, const std::string& before) {
  return text == bytes_to_wide(before, false) ? before : wide_to_bytes(text, false);
}

std::u16string tag_limited(const std::u16string& text) {
  return cut_to_units(text, id3v1_text_limit);
}

}  // namespace

bool has_id3v1(const Document& document) { return stands_at(document.stream.id3v1, 0, "TAG"); }

std::optional<Id3v1Record> kept_id3v1(const Document& document, const OpenState& open_state) {
  if (!open_state.keep_id3v1 || !can_create_tag(document)) return std::nullopt;
  return document.stream.id3v1;
}

void keep_id3v1_as_set(const Document& document, OpenState& open_state) {
  if (has_id3v1(document)) open_state.keep_id3v1 = settings.save_id3v1 != 0;
}

std::span<const std::string_view> genre_names() { return genres; }

std::string genre_name(std::uint32_t index) {
  return index < genres.size() ? std::string(genres[index]) : std::to_string(index);
}

std::optional<std::uint8_t> genre_index(std::string_view name) {
  const auto* const found = std::ranges::find(genres, name);
  if (found == genres.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found - genres.begin());
}

bool can_create_tag(const Document& document) { return document.stream.is_aac == 0; }

bool can_edit_tag(const Document& document, const TagDialog& dialog) {
  return dialog.create_tag && can_create_tag(document);
}

TagDialog tag_dialog_load(const Document& document) {
  if (!has_id3v1(document)) return {};
  const std::uint8_t track = document.stream.id3v1[track_place];
  const bool has_track =
      document.stream.id3v1[track_mark_place] == 0 && track <= 127;  // a signed byte
  const std::uint8_t genre = document.stream.id3v1[genre_place];
  return {.create_tag = settings.save_id3v1 != 0,
          .title = shown_text(document, title_field),
          .artist = shown_text(document, artist_field),
          .album = shown_text(document, album_field),
          .year = shown_text(document, year_field),
          .comment = shown_text(document, comment_field),
          .track = has_track ? track : 0U,
          .genre = genre < genres.size() ? genre_name(genre) : std::string{}};
}

void names_from_current_cue(const Document& document, TagDialog& dialog) {
  if (document.parts.empty()) return;
  const Part& part = document.parts[document.current_part];
  dialog.title = tag_limited(part.part_title);
  dialog.artist = tag_limited(part.part_artist.empty() ? document.sheet_artist : part.part_artist);
  dialog.album = tag_limited(document.sheet_title);
  dialog.year.clear();
  dialog.comment.clear();
  dialog.track = document.current_part + 1U;
}

void tag_dialog_apply(Document& document, OpenState& open_state, const TagDialog& dialog) {
  change_setting(&Settings::save_id3v1, dialog.create_tag ? 1 : 0);
  open_state.keep_id3v1 = dialog.create_tag;
  if (!dialog.create_tag) return;

  Id3v1Record& record = document.stream.id3v1;
  const Id3v1Record before = has_id3v1(document) ? record : Id3v1Record{};
  const auto edited = [&before](const std::u16string& text, Field field) {
    return edited_text(text, raw_text(before, field));
  };
  record = {};
  put_mark(record, 0, "TAG");
  put_text(record, title_field, edited(dialog.title, title_field));
  put_text(record, artist_field, edited(dialog.artist, artist_field));
  put_text(record, album_field, edited(dialog.album, album_field));
  put_text(record, year_field, edited(dialog.year, year_field));
  record[track_place] = static_cast<std::uint8_t>(dialog.track);
  put_text(record,
           {comment_field.at, dialog.track == 0 ? comment_field.size : comment_beside_track},
           edited(dialog.comment, comment_field));
  record[genre_place] = genre_index(dialog.genre).value_or(no_genre);
}

Id3v1Record id3v1_of_piece(const Document& document, const std::optional<Id3v1Record>& before,
                           PartIndex index, std::uint32_t track) {
  const Part& part = document.parts[index];
  Id3v1Record record = before.value_or(Id3v1Record{});
  const auto put_known = [&record](Field field, const std::u16string& text) {
    if (!text.empty()) put_text(record, field, wide_to_bytes(text, false));
  };
  put_mark(record, 0, "TAG");
  put_text(record, title_field, wide_to_bytes(part.part_title, false));
  put_known(artist_field, part.part_artist.empty() ? document.sheet_artist : part.part_artist);
  put_known(album_field, document.sheet_title);
  record[track_mark_place] = 0;
  record[track_place] = static_cast<std::uint8_t>(track);
  if (!before) record[genre_place] = no_genre;
  return record;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The one ID3v1 record of the document, `document.stream.id3v1` (id3.org, ID3v1 and ID3v1.1; genres
// with their later extensions): its fields for a dialog and for the pieces of a split, and whether
// it goes behind the audio. Reading it from a file is the business of the opening.
//
// The record holds the file's last 128 bytes, tag or not: it is one when it begins with "TAG". Its
// text is in the ANSI code page.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/document.h"
#include "model/stream_info.h"
#include "opening/open_state.h"

namespace corvelin {

bool has_id3v1(const Document& document);

/// The record that a save puts behind the audio, if it is to be kept. AAC never gets one.
std::optional<Id3v1Record> kept_id3v1(const Document& document, const OpenState& open_state);

/// Has the next save follow the setting `save_id3v1`, if there is a tag to be saved. For the
/// command that switches the setting.
void keep_id3v1_as_set(const Document& document, OpenState& open_state);

/// The names of the genres by their index.
std::span<const std::string_view> genre_names();

/// The name of a genre, or the number in digits for one that has none.
std::string genre_name(std::uint32_t index);

/// The index of a genre by its name in exactly this spelling.
std::optional<std::uint8_t> genre_index(std::string_view name);

/// Most characters of the tag's texts.
constexpr std::size_t id3v1_text_limit = 30;  // title, artist, album, comment
constexpr std::size_t id3v1_year_limit = 4;
constexpr std::size_t id3v1_track_digits = 2;
constexpr std::uint8_t no_genre = 255;

/// The tag fields of a dialog.
struct TagDialog {
  bool create_tag = false;  // the box "Create/use ID3v1 tag"
  std::u16string title;
  std::u16string artist;
  std::u16string album;
  std::u16string year;
  std::u16string comment;
  std::uint32_t track = 0;  // 0: the field is empty
  std::string genre;        // a name of the list, or empty
};

/// Whether the box can be switched, and whether the fields can be edited.
bool can_create_tag(const Document& document);
bool can_edit_tag(const Document& document, const TagDialog& dialog);

/// The fields with the values of the record; empty, with the box off, without a tag.
TagDialog tag_dialog_load(const Document& document);

/// Title, artist and album of the current part and its sheet, its number as the track, and no year
/// and comment. The genre stays.
void names_from_current_cue(const Document& document, TagDialog& dialog);

/// Writes the fields to the record and has saves keep it, or, with the box off, has them leave it
/// out. A field that was not changed keeps its bytes, in whatever encoding they are. What is too
/// long is cut; with a track the comment has two bytes less.
void tag_dialog_apply(Document& document, OpenState& open_state, const TagDialog& dialog);

/// The record for a piece of a split that begins with this part. The title is the part's. An artist
/// or album that the document doesn't know is that of `before`, which is the record of the piece
/// before, or that of the source where it is kept; so are year, comment and genre.
Id3v1Record id3v1_of_piece(const Document& document, const std::optional<Id3v1Record>& before,
                           PartIndex index, std::uint32_t track);

}  // namespace corvelin

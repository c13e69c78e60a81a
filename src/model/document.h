// SPDX-License-Identifier: GPL-2.0-or-later
// The edited document: an ordered table of parts, each a byte range of one source file. Audio bytes
// stay in the source files until a save; every cut, paste and join is arithmetic on this table.
// A document is a value: a copy shares the opened files and nothing else, and two of them know
// nothing of each other.
//
// Owns the tables of source files and parts and the look-ups in them. Where frames begin is the
// business of the frame locator.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/frame_index.h"
#include "model/stream_info.h"
#include "platform/files/file.h"

namespace corvelin {

/// A byte offset in the edited stream: the parts in table order, 0 at the first byte of the first
/// part.
using EditPosition = std::uint32_t;
constexpr EditPosition no_position = 0xFFFFFFFF;

/// Everything above this is a position that wrapped around below 0. So of a stream that is longer
/// the last few frames are there, but can't be gone to.
constexpr EditPosition highest_position = 0xFFFF0000;

/// The largest source file and the longest stream, in bytes.
constexpr std::uint64_t largest_file = 0xFFFFFFFE;
constexpr std::uint64_t longest_stream = 0xFFFFFFFE;

using PartIndex = std::uint16_t;
constexpr PartIndex no_part = 0xFFFF;

constexpr std::size_t most_parts = 1000;
constexpr std::size_t most_files = 400;

/// One byte range of a source file. The field names are the keys of the project file.
struct Part {
  std::uint16_t part_file = 0;     // index of the source file
  std::uint32_t part_filepos = 0;  // file offset of the first byte
  std::uint32_t part_size = 0;     // bytes
  EditPosition part_beg = 0;       // of the first byte
  std::int16_t part_gainbeg = 0;  // gain steps (1.5 dB) at the first byte; 0 leaves the level alone
  std::uint32_t part_iscue = 0;   // 1: a cue (a track starts here), 0: a plain cut
  std::u16string part_title;      // empty: none
  std::u16string part_artist;
  bool operator==(const Part&) const = default;
};

/// A file whose bytes the parts are made of. It is only read, so that copies share it.
struct SourceFile {
  std::shared_ptr<const InputFile> handle;  // never null in a document
  std::string file_name;
  std::uint32_t first_audio = 0;   // file offset of the first audio frame
  std::uint32_t audio_end = 0;     // file offset behind the last audio byte
  SharedIndex index;               // of the audio; whoever moves the bounds puts a new one here
  bool is_unlike_project = false;  // other audio than when the project of the parts was made
};

/// Between any two operations the parts lie without a gap (`part_beg` of the first is 0, of each
/// other one the end of the one before), none is empty, and `total_size` is the sum of their sizes.
struct Document {
  std::vector<Part> parts;        // at most `most_parts`
  std::vector<SourceFile> files;  // at most `most_files`; 0 is the file that was opened first
  PartIndex current_part = 0;     // the part that the cursor and the level tools work on
  std::uint32_t total_size = 0;   // bytes of the edited stream
  std::int16_t end_gain = 0;      // gain steps at the very end, the close of the last part's fade
  std::u16string sheet_title;     // of the album
  std::u16string sheet_artist;

  StreamInfo stream;
  StreamKind kind;
  HeaderRewrite header_rewrite;

  /// Another number after each change: what was made of another one is stale. No two documents of a
  /// process have one number but those that are copies of each other.
  std::uint64_t revision = 0;
};

/// Gives the document a new `revision`. The operations on the tables do so themselves; who writes a
/// field does, and the dispatcher for every command that changes the document.
void touch(Document& document);

std::uint16_t part_count(const Document& document);
std::uint16_t file_count(const Document& document);

/// Opens a source file, or finds it in the table by its name (compared with case). Sets neither
/// `first_audio` nor `audio_end`. Nothing when the table is full or the file can't be opened, and
/// `cause` then says which, in words for the user.
std::optional<std::uint16_t> add_source_file(Document& document, const std::string& name,
                                             std::string* cause = nullptr);

/// Closes the file with the highest index if no part refers to it.
void remove_last_source_file(Document& document);

/// The permissions of a new file that is made of the sources: open to nobody to whom one of them is
/// not.
std::uint32_t permissions_of_sources(const Document& document);

/// Which source could not be read in full, and why, on two lines: any read that failed since it was
/// opened. Empty when all went well.
///
/// A part of the document is then not what it seems: a tag may be missing, a frame not found. Who
/// writes something made of it tells the user, or doesn't write at all.
std::string read_fault(const Document& document);

/// The source of what lies from `begin` up to `end` that has become shorter since it was opened, so
/// that not all of it can be read, and that word, on two lines. Empty when all is there.
std::string shrunk_source(const Document& document, EditPosition begin, EditPosition end);

/// Puts a new part in front of the first one that begins at or behind `pos`. It has no gain, cue or
/// texts. `no_part` when the file isn't there or the table is full.
PartIndex add_part(Document& document, EditPosition pos, std::uint16_t file, std::uint32_t file_pos,
                   std::uint32_t size);

/// Takes a part out and returns the index of the part that is now there, or the last one; `no_part`
/// from an empty table. Leaves `total_size` to the caller, who may remove many.
PartIndex remove_part(Document& document, PartIndex index);

/// The part that holds `pos`. The end of the stream belongs to the last part, what lies behind it
/// to part 0.
PartIndex part_at(const Document& document, EditPosition pos);

/// The `EditPosition` behind the part's last byte.
EditPosition part_end(const Document& document, PartIndex index);

/// The file offset of `pos` in a part. A position before the part (also one that wrapped around)
/// gives the part's first byte; one behind its end is not limited, since the locator reads on past
/// a border.
std::uint32_t file_pos_of(const Document& document, PartIndex index, EditPosition pos);

void recompute_total(Document& document);
void renumber_parts(Document& document);

/// Whether the part's level is changed anywhere: at its start or at the border behind it.
bool part_has_gain(const Document& document, PartIndex index);

/// The gain at the border behind a part: that of the next part, or `end_gain`.
std::int16_t gain_behind(const Document& document, PartIndex index);

/// In a document of several files each part without a title gets the name of its file, cut to 96
/// characters.
void name_parts_from_files(Document& document);

/// Makes it a document without files, parts and stream, of a new revision.
void close_document(Document& document);

}  // namespace corvelin

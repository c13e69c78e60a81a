// SPDX-License-Identifier: GPL-2.0-or-later
// Making and undoing of cuts. A cut is a border in the part table with a gap between the file
// ranges of the two parts that meet there; the audio bytes stay in the source files, so the gap can
// be closed again. A border lies on a frame's start: callers get their positions from the frame
// locator, and a frame is never split.
#pragma once

#include <cstdint>

#include "model/document.h"
#include "model/selection.h"

namespace corvelin {

/// Whether a part begins at `pos`, or the stream ends there.
bool is_border(const Document& document, EditPosition pos);

/// Makes `pos` a border and returns the part that begins there: 0 at the stream's start,
/// `part_count()` at its end. The second half of a split is a plain cut without gain, cue or texts.
/// `no_part` when the table is full; the part stays whole then.
PartIndex split_at(Document& document, EditPosition pos);

/// Takes the range out and returns the part that follows the cut, which is `part_count()` at the
/// stream's end.
///
/// `no_part` when the range is the whole stream, which never gets empty by a cut, and when the
/// table is full. With room for one of two new borders the first one stays and nothing is cut.
PartIndex delete_range(Document& document, EditPosition beg, EditPosition end);

/// Makes `pos` a border by the rules of a cut that takes nothing out: as `split_at`, but `no_part`
/// whenever the table is full, even at a border that is there.
PartIndex make_border(Document& document, EditPosition pos);

/// Whether `delete_range` would do all of its work, with room for each border that it needs.
bool can_delete_range(const Document& document, EditPosition beg, EditPosition end);

/// Brings back the source bytes that are missing at a border: in front of part `index`, or, with
/// `pos` at the stream's end, behind it. Two files that meet are both stretched to the ends where
/// they were joined. The bytes become the selection (of two files only those in front of the part),
/// and a border that goes leaves its cue flag, gain and texts in the selection's record.
///
/// Returns the part at `pos`, or `no_part` when nothing is missing there. That is also the answer
/// at an end of a file's audio for a part that lies outside it, as a project for another file may
/// have it.
PartIndex restore_border(Document& document, Selection& selection, PartIndex index,
                         EditPosition pos);

/// Whether source bytes are missing at the part's start: between it and the part before it, or, of
/// part 0, in front of it in its file. Where two files meet there is always something missing.
bool has_gap(const Document& document, PartIndex index);

/// Moves the start of part `index` to `pos`, which takes audio from one of the two parts that meet
/// there and gives it to the other. Nothing for a border with a gap, which is a cut, nor for a
/// `pos` that would leave one of them empty.
void move_border(Document& document, PartIndex index, EditPosition pos);

/// Whether the stream may grow by so many bytes.
bool has_room_for(const Document& document, std::uint64_t bytes);

/// Moves the part's texts, each at most 500 characters, to the selection's record. A text that the
/// part lacks leaves the one there alone.
void stash_part_texts(Document& document, Selection& selection, PartIndex index);

/// Replaces the part's texts by those in the selection's record, and empties these.
void take_stashed_part_texts(Document& document, Selection& selection, PartIndex index);

/// Forgets the texts of a border that was taken out.
void forget_stashed_texts(Selection& selection);

}  // namespace corvelin

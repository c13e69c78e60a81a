// SPDX-License-Identifier: GPL-2.0-or-later
// Borders made and taken out.
#include "model/cuts.h"

#include <cstdint>
#include <utility>

#include "platform/text/text.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_stashed_text = 500;  // UTF-16 code units

const SourceFile& file_of(const Document& document, const Part& part) {
  return document.files[part.part_file];
}

// File offsets are compared in 64 bits: a part that a project made up may end beyond 4 GiB.
std::uint64_t file_end_of(const Part& part) {
  return std::uint64_t{part.part_filepos} + part.part_size;
}

bool begins_in_audio(const SourceFile& file, const Part& part) {
  return part.part_filepos >= file.first_audio && part.part_filepos <= file.audio_end;
}

bool ends_in_audio(const SourceFile& file, const Part& part) {
  return file_end_of(part) <= file.audio_end;
}

void select_bytes(Selection& selection, EditPosition begin, std::uint32_t count) {
  selection.sel_beg = begin;
  selection.sel_end = begin + count;
}

void stash_border(Document& document, Selection& selection, PartIndex index) {
  const Part& part = document.parts[index];
  selection.sel_iscue = selection.sel_cue_locked = part.part_iscue;
  selection.sel_gain = part.part_gainbeg;
  stash_part_texts(document, selection, index);
}

bool rejoin_files(const Document& document, Selection& selection, Part& before, Part& part) {
  const SourceFile& file = file_of(document, part);
  const SourceFile& file_before = file_of(document, before);
  if (!ends_in_audio(file_before, before) || !begins_in_audio(file, part)) return false;
  const std::uint32_t front = part.part_filepos - file.first_audio;
  const std::uint32_t size_before = file_before.audio_end - before.part_filepos;
  if (!has_room_for(document, std::uint64_t{front} + size_before - before.part_size)) return false;
  before.part_size = size_before;
  part.part_filepos = file.first_audio;
  part.part_size += front;
  select_bytes(selection, part.part_beg, front);
  return true;
}

bool restore_tail(const Document& document, Selection& selection, Part& part, EditPosition pos) {
  const SourceFile& file = file_of(document, part);
  if (!ends_in_audio(file, part)) return false;
  const std::uint32_t size = file.audio_end - part.part_filepos;
  const std::uint32_t tail = size - part.part_size;
  if (!has_room_for(document, tail)) return false;
  part.part_size = size;
  select_bytes(selection, pos, tail);
  return true;
}

bool restore_head(Document& document, Selection& selection) {
  Part& part = document.parts[0];
  const SourceFile& file = file_of(document, part);
  if (!begins_in_audio(file, part)) return false;
  const std::uint32_t head = part.part_filepos - file.first_audio;
  if (!has_room_for(document, head)) return false;
  select_bytes(selection, 0, head);
  stash_border(document, selection, 0);
  part.part_size += head;
  part.part_filepos = file.first_audio;
  return true;
}

// The part before keeps its start, gain, cue and texts, and goes on over the gap and `index`.
bool close_gap(Document& document, Selection& selection, PartIndex index) {
  const Part& part = document.parts[index];
  Part& before = document.parts[index - 1u];
  if (part.part_file != before.part_file || part.part_filepos > file_of(document, part).audio_end)
    return false;
  const auto gap = static_cast<std::uint32_t>(part.part_filepos - file_end_of(before));
  if (!has_room_for(document, gap)) return false;
  select_bytes(selection, part.part_beg, gap);
  stash_border(document, selection, index);
  before.part_size += gap + part.part_size;
  remove_part(document, index);
  return true;
}

bool restore_at(Document& document, Selection& selection, PartIndex index, EditPosition pos) {
  Part& part = document.parts[index];
  if (index == 0)
    return pos == document.total_size ? restore_tail(document, selection, part, pos)
                                      : restore_head(document, selection);
  Part& before = document.parts[index - 1u];
  if (part.part_file != before.part_file && pos < document.total_size)
    return rejoin_files(document, selection, before, part);
  // Parts that were pasted in another order have no gap between them. This comes first at the
  // stream's end too: the tail behind such a part doesn't come back.
  if (part.part_filepos < file_end_of(before)) return false;
  return pos == document.total_size ? restore_tail(document, selection, part, pos)
                                    : close_gap(document, selection, index);
}

bool is_refused(const Document& document, EditPosition beg, EditPosition end) {
  return document.parts.size() >= most_parts || (beg == 0 && end >= document.total_size);
}

}  // namespace

bool is_border(const Document& document, EditPosition pos) {
  return pos >= document.total_size || document.parts[part_at(document, pos)].part_beg == pos;
}

void move_border(Document& document, PartIndex index, EditPosition pos) {
  if (index == 0 || index >= document.parts.size()) return;
  Part& before = document.parts[index - 1u];
  Part& part = document.parts[index];
  if (pos <= before.part_beg || pos >= part_end(document, index) || has_gap(document, index))
    return;
  const std::uint32_t moved = part.part_beg - pos;  // wraps around for a move to the right
  before.part_size -= moved;
  part.part_size += moved;
  part.part_beg = pos;
  part.part_filepos -= moved;
  touch(document);
}

bool has_room_for(const Document& document, std::uint64_t bytes) {
  return document.total_size + bytes <= longest_stream;
}

PartIndex split_at(Document& document, EditPosition pos) {
  if (pos == 0) return 0;
  if (pos >= document.total_size) return part_count(document);
  const PartIndex index = part_at(document, pos);
  Part& part = document.parts[index];
  if (part.part_beg == pos) return index;
  if (document.parts.size() >= most_parts) return no_part;
  const std::uint32_t file_pos = file_pos_of(document, index, pos);
  const std::uint32_t rest = part_end(document, index) - pos;
  part.part_size -= rest;
  return add_part(document, pos, part.part_file, file_pos, rest);
}

PartIndex delete_range(Document& document, EditPosition beg, EditPosition end) {
  if (is_refused(document, beg, end)) return no_part;
  const PartIndex first = split_at(document, beg);
  if (first == no_part || beg >= end) return first;
  const PartIndex behind = split_at(document, end);
  if (behind == no_part) return no_part;
  for (PartIndex i = first; i < behind; ++i) remove_part(document, first);
  recompute_total(document);
  return first;
}

PartIndex make_border(Document& document, EditPosition pos) {
  return delete_range(document, pos, pos);
}

bool can_delete_range(const Document& document, EditPosition beg, EditPosition end) {
  if (is_refused(document, beg, end)) return false;
  const std::size_t borders =
      (is_border(document, beg) ? 0u : 1u) + (beg < end && !is_border(document, end) ? 1u : 0u);
  return document.parts.size() + borders <= most_parts;
}

bool has_gap(const Document& document, PartIndex index) {
  const Part& part = document.parts[index];
  if (index == 0) return part.part_filepos > file_of(document, part).first_audio;
  const Part& before = document.parts[index - 1u];
  return part.part_file != before.part_file || part.part_filepos != file_end_of(before);
}

PartIndex restore_border(Document& document, Selection& selection, PartIndex index,
                         EditPosition pos) {
  if (index >= document.parts.size() || !restore_at(document, selection, index, pos))
    return no_part;
  recompute_total(document);
  renumber_parts(document);
  return part_at(document, pos);
}

void stash_part_texts(Document& document, Selection& selection, PartIndex index) {
  Part& part = document.parts[index];
  if (!part.part_artist.empty())
    selection.sel_artist = cut_to_units(part.part_artist, longest_stashed_text);
  if (!part.part_title.empty())
    selection.sel_title = cut_to_units(part.part_title, longest_stashed_text);
  part.part_artist.clear();
  part.part_title.clear();
}

void take_stashed_part_texts(Document& document, Selection& selection, PartIndex index) {
  Part& part = document.parts[index];
  part.part_title = std::exchange(selection.sel_title, {});
  part.part_artist = std::exchange(selection.sel_artist, {});
}

void forget_stashed_texts(Selection& selection) {
  selection.sel_title.clear();
  selection.sel_artist.clear();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Edits whose places are given in words instead of by a selection: several cuts in one step, a cue
// with its names. All places lie on frame starts. Each takes an undo step.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "edit/command_table.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

struct Range {
  EditPosition begin;
  EditPosition end;
};

/// The ranges in order, those that meet or overlap as one.
std::vector<Range> merged(std::vector<Range> ranges);

/// What of the stream lies outside of ranges that are in order and apart.
std::vector<Range> outside_of(const Document& document, std::span<const Range> ranges);

enum class CutResult { done, nothing_left, no_room };

/// Cuts out ranges that are in order and apart, each as Cut/Cue does, and clears the selection. All
/// or none. `change` is `cut_change` or `keep_change`.
CutResult cut_ranges(Editor& editor, std::span<const Range> ranges, const Command& change);

/// Makes a cue at `pos`, in front of the end, or one of the border that is there, and gives it the
/// names that there are. False when the table of parts has no room.
bool set_cue_at(Editor& editor, EditPosition pos, const std::optional<std::u16string>& title,
                const std::optional<std::u16string>& artist);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// One kind of edit line: its row in the tables, which stand beside the functions that carry the
// lines out, a file a subject.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace corvelin {

class HeadlessHost;
struct Editor;

/// The words behind the name of a line.
using Arguments = std::span<const std::string>;

/// Why a line was refused; empty when it was done.
using Refusal = std::string;

inline const Refusal no_refusal;

constexpr std::size_t any_count = static_cast<std::size_t>(-1);

struct EditLine {
  std::string_view name;
  std::string_view arguments;  // as the help shows them
  std::string_view help;
  std::size_t fewest;  // arguments
  std::size_t most;
  bool needs_document;
  Refusal (*run)(Editor& editor, Arguments words, HeadlessHost& host);
};

// The tables, by subject.
std::span<const EditLine> document_lines();   // open, append, close
std::span<const EditLine> cut_lines();        // cut, keep, cue
std::span<const EditLine> selection_lines();  // places: cursor, selection, part
std::span<const EditLine> name_lines();       // names, tags, header bits
std::span<const EditLine> level_lines();      // levels, and cues by pauses and by the clock
std::span<const EditLine> save_lines();
std::span<const EditLine> play_lines();
std::span<const EditLine> run_lines();  // settings, undo, state, help

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The fixture of tests of editing commands: a stream of 20 frames of 417 bytes,
// and a short way to write down what is made of it.
#pragma once

#include <sstream>
#include <string>

#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/undo.h"
#include "platform/text/text.h"
#include "support/core_test.h"

namespace corvelin::test {

/// Parts are written as ranges of frames in their file, with what belongs to
/// their start: "0-5 8-20*g-4:Title" is a part of 5 frames and, behind a gap of
/// 3, a cue with a gain and a name. Behind them stand places in the edited
/// stream, in frames: "=5-8" the selection, "@7" the cursor and "#1" the
/// current part, both left out when 0. A state ends with "!" when the document
/// counts as modified, "^" when there is an undo step, and the text of a box in
/// braces.
class EditTest : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", frames(20))); }

  void make(const std::string& state) {
    document.parts.clear();
    document.total_size = 0;
    undo_clear(editor);
    clear_selection(selection);
    open_state.document_modified = false;
    move_cursor(document, selection, 0);
    std::istringstream words(state);
    for (std::string word; words >> word;) {
      std::istringstream in(word);
      char mark = word[0];
      std::uint32_t from = 0;
      std::uint32_t to = 0;
      if (std::string_view("=@#").find(mark) != std::string_view::npos) in >> mark;
      in >> from;
      if (mark == '@') selection.cursor = from * length;
      if (mark == '#') document.current_part = static_cast<PartIndex>(from);
      char dash = 0;
      in >> dash >> to;
      if (mark == '=') select(from, to);
      if (word[0] >= '0' && word[0] <= '9') make_part(from, to, in);
    }
  }

  /// Runs commands by their names, one after the other; "@5" goes to a frame. Whether all were
  /// done.
  bool run(const std::string& commands) {
    std::istringstream words(commands);
    bool all_done = true;
    for (std::string word; words >> word;) {
      if (word[0] == '@') {
        move_cursor(document, selection,
                    static_cast<EditPosition>(std::stoul(word.substr(1))) * length);
      } else if (dispatch_command(editor, find_command(word).value()) != DispatchResult::done) {
        all_done = false;
      }
    }
    return all_done;
  }

  void select(std::uint32_t begin, std::uint32_t end) {
    set_sel_begin(document, selection, begin * length);
    set_sel_end(document, selection, end * length);
  }

  // With the bytes left over, where there is no frame.
  static std::string in_frames(std::uint32_t pos) {
    const std::string rest = pos % length == 0 ? "" : "+" + std::to_string(pos % length);
    return std::to_string(pos / length) + rest;
  }

  std::string parts() {
    std::ostringstream table;
    for (const Part& part : document.parts) {
      if (part.part_beg != 0) table << ' ';
      table << in_frames(part.part_filepos) << '-' << in_frames(part.part_filepos + part.part_size);
      if (part.part_iscue != 0) table << '*';
      if (part.part_gainbeg != 0) table << 'g' << part.part_gainbeg;
      if (!part.part_title.empty()) table << ':' << wide_to_bytes(part.part_title, true);
    }
    return table.str();
  }

  std::string places() {
    std::string text;
    if (selection.sel_beg != none)
      text += " =" + in_frames(selection.sel_beg) + "-" + in_frames(selection.sel_end);
    if (selection.cursor != 0) text += " @" + in_frames(selection.cursor);
    return text;
  }

  std::string state() {
    std::string text = parts() + places();
    if (document.current_part != 0) text += " #" + std::to_string(document.current_part);
    if (open_state.document_modified || !undo_stack.empty()) text += ' ';
    if (open_state.document_modified) text += '!';
    if (!undo_stack.empty()) text += '^';
    if (!host.boxes.empty()) text += " {" + host.boxes.back().text + "}";
    host.boxes.clear();
    return text;
  }

 private:
  void make_part(std::uint32_t from, std::uint32_t to, std::istringstream& in) {
    Part& part =
        document
            .parts[add_part(document, document.total_size, 0, from * length, (to - from) * length)];
    for (char mark = 0; in >> mark;) {
      if (mark == '*') part.part_iscue = 1;
      if (mark == 'g') in >> part.part_gainbeg;
      std::string title;
      if (mark == ':' && in >> title) part.part_title = bytes_to_wide(title, true);
    }
  }
};

}  // namespace corvelin::test

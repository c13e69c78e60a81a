// The fixture of tests of editing commands: streams of frames of 417 bytes, and a short way to
// write down a part table.
#pragma once

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>

#include "edit/undo.h"
#include "model/selection.h"
#include "platform/text.h"
#include "support/core_test.h"

namespace corvelin::test {

constexpr std::uint32_t frame = 417;  // bytes
constexpr std::uint32_t none = no_position;

/// Parts are written as ranges of frames in their file, with what belongs to their start:
/// "0-5 8-20*g-4:Title" is a part of 5 frames and, behind a gap of 3, a cue with a gain and a name.
/// Places are frames of the edited stream.
class EditTest : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).bytes())); }

  static void make(const std::string& table) {
    document.parts.clear();
    document.total_size = 0;
    undo_clear();
    clear_selection();
    open_state.document_modified = false;
    std::istringstream words(table);
    for (std::string word; words >> word;) make_part(word);
    seek_to(0);
  }

  static std::string parts() {
    std::ostringstream table;
    for (const Part& part : document.parts) {
      if (part.part_beg != 0) table << ' ';
      table << part.part_filepos / frame << '-' << (part.part_filepos + part.part_size) / frame;
      if (part.part_iscue != 0) table << '*';
      if (part.part_gainbeg != 0) table << 'g' << part.part_gainbeg;
      if (!part.part_title.empty()) table << ':' << wide_to_bytes(part.part_title, true);
    }
    return table.str();
  }

  static void select(std::uint32_t begin, std::uint32_t end) {
    clear_selection();
    if (begin == none) return;
    set_sel_begin(begin * frame);
    set_sel_end(end * frame);
  }

  static void expect_selection(std::uint32_t begin, std::uint32_t end) {
    EXPECT_EQ(selection.sel_beg, begin == none ? none : begin * frame);
    EXPECT_EQ(selection.sel_end, end == none ? none : end * frame);
  }

  /// The box shown last, as "CAPTION: TEXT"; empty without one.
  std::string take_box() {
    if (host.boxes.empty()) return {};
    const MessageBox box = host.boxes.back();
    host.boxes.clear();
    return box.caption + ": " + box.text;
  }

 private:
  static void make_part(const std::string& word) {
    std::istringstream in(word);
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    char mark = 0;
    in >> from >> mark >> to;
    Part& part =
        document.parts[add_part(document.total_size, 0, from * frame, (to - from) * frame)];
    while (in >> mark) {
      if (mark == '*') part.part_iscue = 1;
      if (mark == 'g') in >> part.part_gainbeg;
      if (mark == ':') {
        std::string title;
        in >> title;
        part.part_title = bytes_to_wide(title, true);
      }
    }
  }
};

}  // namespace corvelin::test

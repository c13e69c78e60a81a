// The clipboard: its text to the byte, what a paste makes of it, and texts that mean no good.
#include "edit/clipboard.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "edit/undo.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "platform/clipboard.h"
#include "platform/file.h"
#include "platform/system.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Clipboard : public CoreTest {
 protected:
  Clipboard() {
    clipboard_file = folder.path("clipboard");
    EXPECT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  }
  ~Clipboard() override { clipboard_file.clear(); }

  static void select_frames(std::uint32_t begin, std::uint32_t end) {
    selection.sel_beg = begin * length;
    selection.sel_end = end * length;
  }

  /// Puts a text on the clipboard as another program does.
  void put(std::string_view text) const { folder.file("clipboard", text); }

  [[nodiscard]] std::string clipboard() const { return read_text(clipboard_file); }

  /// A range of a file of 100 frames of 417 bytes.
  static std::string range(const std::string& path, std::string_view numbers,
                           std::string_view names = "\t\t") {
    return "\r\n" + path + "\t0\t41700\t" + std::string(numbers) + "\t" + std::string(names);
  }

  void expect_failure(std::string_view text) {
    EXPECT_FALSE(paste());
    ASSERT_FALSE(host.boxes.empty());
    EXPECT_EQ(host.boxes.back().caption, "Clipboard error");
    EXPECT_EQ(host.boxes.back().text, text);
    EXPECT_EQ(host.boxes.back().icon, BoxIcon::warning);
    EXPECT_EQ(undo_stack.front().undo_label, "Paste");
  }
};

TEST_F(Clipboard, ListsTheSelectedRanges) {
  split_at(10 * length);
  split_at(20 * length);
  document.parts[0].part_gainbeg = 3;
  document.parts[1].part_gainbeg = -2;
  document.parts[1].part_iscue = 1;
  document.parts[1].part_title = u"\u00e4\tb";
  document.parts[1].part_artist = u"C";
  const std::string head = "[corvlparts]\r\n" + folder.path("a.mp3") + "\t0\t41700\t";
  const std::string next = "\r\n" + folder.path("a.mp3") + "\t0\t41700\t";
  struct Case {
    std::uint32_t begin;  // frames
    std::uint32_t end;
    std::string text;
  };
  const Case cases[] = {
      {2, 5, head + "834\t1251\t0\t0\t\t\t"},
      {0, 10, head + "0\t4170\t3\t1\t\t\t"},
      {5, 12, head + "2085\t2085\t0\t0\t\t\t" + next + "4170\t834\t-2\t1\tC\t\u00e4 b\t"},
      {10, 20, head + "4170\t4170\t-2\t1\tC\t\u00e4 b\t"},
      {15, 100, head + "6255\t2085\t0\t0\tC\t\u00e4 b\t" + next + "8340\t33360\t0\t0\t\t\t"},
  };
  for (const Case& c : cases) {
    select_frames(c.begin, c.end);
    EXPECT_TRUE(copy());
    EXPECT_EQ(clipboard(), c.text);
  }
}

TEST_F(Clipboard, CopiesAllWithoutASelection) {
  selection.sel_beg = selection.sel_end = length;
  EXPECT_TRUE(copy());
  EXPECT_EQ(selection.sel_beg, 0U);
  EXPECT_EQ(selection.sel_end, 100 * length);
  EXPECT_EQ(clipboard(), "[corvlparts]" + range(folder.path("a.mp3"), "0\t41700\t0\t1"));
  EXPECT_TRUE(undo_stack.empty());
}

TEST_F(Clipboard, HoldsAtMostOneBlock) {
  for (std::uint32_t i = 1; i < 100; ++i) split_at(i * length);
  for (Part& part : document.parts) part.part_title.assign(300, u'x');
  ASSERT_TRUE(copy());
  const std::size_t size = clipboard().size();
  // 49999 bytes and the zero behind them fit.
  document.parts[0].part_title.append(49999 - size, u'x');
  EXPECT_TRUE(copy());
  EXPECT_EQ(clipboard().size(), 49999U);
  document.parts[0].part_title += u'x';
  EXPECT_FALSE(copy());
  EXPECT_EQ(clipboard(), "");
  EXPECT_EQ(host.boxes.back().text, "Not possible");
  EXPECT_EQ(host.boxes.back().caption, "Error");
  expect_failure("Wrong format");
}

TEST_F(Clipboard, TellsWhatItCanNotCopy) {
  clipboard_file = folder.path("no/such/folder");
  EXPECT_FALSE(copy());
  clipboard_file = folder.path("clipboard");
  ASSERT_TRUE(open("tab\t.mp3", Mp3Builder{}.frames(100).bytes()));
  EXPECT_FALSE(copy());
  EXPECT_EQ(host.boxes.size(), 2U);

  // A recording that was named as the clipboard by mistake stays one.
  const Bytes bytes = Mp3Builder{}.frames(100).bytes();
  ASSERT_TRUE(open("b.mp3", bytes));
  clipboard_file = folder.path("b.mp3");
  EXPECT_FALSE(copy());
  EXPECT_EQ(read_file(folder.path("b.mp3")), bytes);
}

TEST_F(Clipboard, CutsWithOneUndoStep) {
  EXPECT_FALSE(cut_clipboard());
  EXPECT_EQ(host.boxes.back().text, "No selection or selection too short.");
  EXPECT_EQ(undo_stack.size(), 1U);  // refused, and yet a step

  select_frames(10, 20);
  EXPECT_TRUE(cut_clipboard());
  EXPECT_EQ(clipboard(), "[corvlparts]" + range(folder.path("a.mp3"), "4170\t4170\t0\t0"));
  EXPECT_EQ(document.total_size, 90 * length);
  EXPECT_EQ(undo_stack.size(), 2U);
  EXPECT_EQ(undo_stack.front().undo_label, "Cut (clipboard)");

  select_frames(0, 90);
  EXPECT_FALSE(cut_clipboard());
  EXPECT_EQ(host.boxes.back().text, "Selection range seems to be invalid.");
  EXPECT_TRUE(clipboard().ends_with("\t8340\t33360\t0\t0\t\t\t"));
  EXPECT_EQ(document.total_size, 90 * length);
}

TEST_F(Clipboard, PastesAtTheCursorAndOverTheSelection) {
  const std::string b =
      folder.file("b.mp3", Mp3Builder{}.shape({.bitrate = 64}).frames(150).bytes());
  const std::string names = "\u00c4\tT\t";
  put("[corvlparts]" + range(b, "0\t2080\t-5\t1", names) + range(b, "2080\t208\t0\t0"));
  selection.cursor = 10 * length;
  EXPECT_TRUE(paste());
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_EQ(stream.vbr, vbr_seen);
  ASSERT_EQ(document.parts.size(), 4U);
  EXPECT_EQ(document.files[1].audio_end, 150 * 208U);  // no further than it goes
  const Part& part = document.parts[1];
  EXPECT_EQ(part.part_beg, 4170U);
  EXPECT_EQ(part.part_size, 2080U);
  EXPECT_EQ(part.part_gainbeg, -5);
  EXPECT_EQ(part.part_iscue, 1U);
  EXPECT_EQ(part.part_artist, u"\u00c4");
  EXPECT_EQ(part.part_title, u"T");
  EXPECT_EQ(document.parts[2].part_title, u"b.mp3");  // named from its file
  EXPECT_EQ(selection.sel_beg, 4170U);
  EXPECT_EQ(selection.sel_end, 4170U + 2080 + 208);
  EXPECT_EQ(selection.cursor, 4170U);

  put("[corvlparts]" + range(b, "0\t208\t0\t0"));
  EXPECT_TRUE(paste());  // replaces what was pasted
  EXPECT_EQ(document.total_size, 41700U + 208);
  EXPECT_EQ(document.files.size(), 2U);

  selection.sel_beg = selection.sel_end = 0;
  selection.cursor = 20 * length;
  EXPECT_TRUE(paste());
  // In front of the cursor there are 10 frames of 417 bytes and 2 of 208 now, and 3754 bytes more.
  EXPECT_EQ(selection.cursor, 4170U + 2 * 208 + 10 * 417);
  undo_pop();
  undo_pop();
  undo_pop();
  EXPECT_EQ(document.files.size(), 1U);
  EXPECT_EQ(document.total_size, 41700U);
}

TEST_F(Clipboard, PastesWhatWasCopiedAfterTheDocumentWasClosed) {
  select_frames(90, 100);
  ASSERT_TRUE(copy());
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(50).bytes()));
  selection.cursor = document.total_size;
  EXPECT_TRUE(paste());
  EXPECT_EQ(document.total_size, 60 * length);
  EXPECT_EQ(document.parts[1].part_filepos, 90 * length);
  EXPECT_EQ(document.files[1].audio_end, 100 * length);
}

TEST_F(Clipboard, RefusesWhatDoesNotBelongHere) {
  const std::string a = folder.path("a.mp3");
  const std::string b = folder.file("b.mp3", Mp3Builder{}.frames(100).bytes());
  const std::string mono =
      folder.file("m.mp3", Mp3Builder{}.shape({.is_mono = true}).frames(99).bytes());
  const std::string good = "[corvlparts]" + range(a, "0\t417\t0\t0");
  const std::string parameters =
      "Audio parameters do not match.\nSame samplerate, channel mode,\nMPEG type and CRC needed.";
  struct Case {
    std::string text;
    std::string told;
    std::size_t added = 0;
  };
  const Case cases[] = {
      {"", "Wrong format"},
      {"a shopping list", "No corvl part"},
      {"[corvlparts", "No corvl part"},
      {std::string("[corvl\0parts]\r\n", 15), "No corvl part"},
      {"[corvlparts]" + a + "\t0\t41700\t", "Parse failed"},
      {"[corvlparts]\r\n", "Unknown problem"},
      {good.substr(0, good.size() - 1), "Unknown problem"},  // cut off in the last tab
      {good + "\r\n", "Unknown problem", 1},
      {good + "\r\n/b.mp3\t0\t9", "Unknown problem", 1},
      {good + range(folder.path("gone.mp3"), "0\t417\t0\t0"), "Unknown problem", 1},
      {"[corvlparts]" + range("no_point", "0\t417\t0\t0"), "Unknown problem"},
      {"[corvlparts]" + range(b + ".AAC", "0\t417\t0\t0"), "MP3 / AAC"},
      {"[corvlparts]" + range(mono, "0\t417\t0\t0"), parameters},
      {"[corvlparts]" + range(b, "1\t417\t0\t0"), "Unknown problem"},      // no frame
      {"[corvlparts]" + range(b, "41283\t418\t0\t0"), "Unknown problem"},  // beyond the file
      {"[corvlparts]" + range(b, "417\t-417\t0\t0"), "Unknown problem"},   // a sum that wraps
      {"[corvlparts]" + range(b, "-417\t417\t0\t0"), "Unknown problem"},
      {"[corvlparts]" + range(b, "0\t0\t0\t0"), "Unknown problem"},
      {"[corvlparts]" + range(b, "x\ty\t0\t0"), "Unknown problem"},
      {"[corvlparts]\r\n" + b + "\t0\t0\t0\t417\t0\t0\t\t\t", "Unknown problem"},
      {"[corvlparts]\r\n" + b + "\t41700\t41701\t0\t417\t0\t0\t\t\t", "Unknown problem"},
      {"[corvlparts]" + range(folder.path(""), "0\t417\t0\t0"), "Unknown problem"},
      {std::string(2000000, 'x'), "Get failed"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 200));
    ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
    put(c.text);
    expect_failure(c.told);
    EXPECT_EQ(document.files.size(), 1U);
    EXPECT_EQ(document.total_size, 41700U + c.added * length);
    ASSERT_TRUE(undo_pop());
    EXPECT_EQ(document.total_size, 41700U);
  }
}

TEST_F(Clipboard, BringsTheSelectionBackAfterAFailure) {
  select_frames(10, 20);
  put("[corvlparts]" + range(folder.path("gone.mp3"), "0\t417\t0\t0"));
  EXPECT_FALSE(paste());
  EXPECT_EQ(document.total_size, 41700U);
  EXPECT_EQ(document.parts.size(), 1U);
  EXPECT_EQ(selection.sel_beg, 10 * length);
  EXPECT_EQ(selection.sel_end, 20 * length);
}

TEST_F(Clipboard, FillsTheTableOfPartsAndNoMore) {
  std::string text = "[corvlparts]";
  for (int i = 0; i < 5000; ++i) text += range(folder.path("a.mp3"), "0\t417\t0\t0");
  put(text);
  selection.cursor = 10 * length;
  expect_failure("Unknown problem");
  EXPECT_EQ(document.parts.size(), most_parts);
  ASSERT_TRUE(undo_pop());
  EXPECT_EQ(document.parts.size(), 1U);
}

TEST_F(Clipboard, ReplacesItsFileAsAWhole) {
  put("old");
  write_calls.write = [](int, const void*, std::size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  EXPECT_FALSE(copy());
  write_calls = system_write_calls;
  EXPECT_EQ(clipboard(), "old");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "clipboard"}));
}

TEST_F(Clipboard, LivesInAFolderOfTheUserAlone) {
  const char* const before = std::getenv("XDG_RUNTIME_DIR");
  const std::string kept = before != nullptr ? before : "";
  ::setenv("XDG_RUNTIME_DIR", folder.path("").c_str(), 1);
  EXPECT_EQ(runtime_folder(), folder.path(""));
  ::unsetenv("XDG_RUNTIME_DIR");
  const std::string own = runtime_folder();
  struct stat status = {};
  ASSERT_EQ(::lstat(own.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode, S_IFDIR | 0700U);
  if (before != nullptr) ::setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The clipboard: its text to the byte, what a paste makes of it, and texts that mean no good.
#include <sys/stat.h>

#include <cstdlib>

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/stream_info.h"
#include "platform/files/clipboard.h"
#include "platform/files/system_calls.h"
#include "platform/processes/system.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class Clipboard : public EditTest {
 protected:
  Clipboard() { clipboard_file = folder.path("clipboard"); }
  ~Clipboard() override { clipboard_file.clear(); }
  void SetUp() override { ASSERT_TRUE(open("a.mp3", frames(100))); }

  /// Puts a text on the clipboard as another program does.
  void put(std::string_view text) const { folder.file("clipboard", text); }

  [[nodiscard]] std::string clipboard() const { return read_text(clipboard_file); }

  /// A range of a file of 100 frames of 417 bytes.
  static std::string range(const std::string& path, std::string_view numbers,
                           std::string_view names = "\t\t") {
    return "\r\n" + path + "\t0\t41700\t" + std::string(numbers) + "\t" + std::string(names);
  }
};

const std::string mark = "[corvlparts]";

TEST_F(Clipboard, ListsTheSelectedRanges) {
  make("0-10g3 10-20*g-2 20-100");
  document.parts[1].part_title = u"\u00e4\tb";
  document.parts[1].part_artist = u"C";
  const std::string a = folder.path("a.mp3");
  struct {
    std::uint32_t begin, end;
    std::string text;
  } const cases[] = {
      {2, 5, range(a, "834\t1251\t0\t0")},
      {0, 10, range(a, "0\t4170\t3\t0")},
      {5, 12, range(a, "2085\t2085\t0\t0") + range(a, "4170\t834\t-2\t1", "C\t\u00e4 b\t")},
      {10, 20, range(a, "4170\t4170\t-2\t1", "C\t\u00e4 b\t")},
      {15, 100, range(a, "6255\t2085\t0\t0", "C\t\u00e4 b\t") + range(a, "8340\t33360\t0\t0")}};
  for (const auto& c : cases) {
    select(c.begin, c.end);
    EXPECT_TRUE(run("copy"));
    EXPECT_EQ(clipboard(), mark + c.text);
  }
  make("0-100 =1-1");  // no range: all
  EXPECT_TRUE(run("copy"));
  EXPECT_EQ(clipboard(), mark + range(a, "0\t41700\t0\t0"));
  EXPECT_EQ(state(), "0-100 =0-100");
}

TEST_F(Clipboard, HoldsAtMostOneBlock) {
  for (std::uint32_t i = 1; i < 100; ++i) split_at(document, i * length);
  for (Part& part : document.parts) part.part_title.assign(300, u'x');
  ASSERT_TRUE(run("copy"));
  // 49999 bytes and the zero behind them fit.
  document.parts[0].part_title.append(49999 - clipboard().size(), u'x');
  EXPECT_TRUE(run("copy"));
  EXPECT_EQ(clipboard().size(), 49999U);
  document.parts[0].part_title += u'x';
  EXPECT_FALSE(run("copy"));
  EXPECT_EQ(clipboard(), "");
  EXPECT_EQ(take_box(), "Error: Not possible");
}

TEST_F(Clipboard, CopyReplacesNothingButAClipboard) {
  clipboard_file = folder.path("no/such/folder");
  EXPECT_FALSE(run("copy"));
  // A recording that was named as the clipboard by mistake stays one.
  clipboard_file = folder.path("a.mp3");
  EXPECT_FALSE(run("copy"));
  EXPECT_EQ(read_file(folder.path("a.mp3")), frames(100));

  clipboard_file = folder.path("clipboard");
  put("[corvlparts] old");
  system_calls.write = [](int, const void*, std::size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  EXPECT_FALSE(run("copy"));
  system_calls = original_system_calls;
  EXPECT_EQ(clipboard(), "[corvlparts] old");
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.mp3", "clipboard"}));
  ASSERT_TRUE(open("tab\t.mp3", frames(100)));
  EXPECT_FALSE(run("copy"));
  EXPECT_EQ(host.boxes.size(), 4U);
}

TEST_F(Clipboard, CutsWithOneUndoStep) {
  make("0-100 =5-5");
  EXPECT_FALSE(run("cut_clipboard"));  // refused, and yet a step
  EXPECT_EQ(state(), "0-100 =5-5 ^ {No selection or selection too short.}");
  select(10, 20);
  EXPECT_TRUE(run("cut_clipboard"));
  EXPECT_EQ(clipboard(), mark + range(folder.path("a.mp3"), "4170\t4170\t0\t0"));
  EXPECT_EQ(state(), "0-10 20-100 !^");
  EXPECT_EQ(undo_stack.size(), 2U);
  select(0, 90);
  EXPECT_FALSE(run("cut_clipboard"));
  EXPECT_EQ(take_box(), "Not possible: Selection range seems to be invalid.");
  EXPECT_TRUE(clipboard().ends_with("\t8340\t33360\t0\t0\t\t\t"));
}

TEST_F(Clipboard, PastesAtTheCursorAndOverTheSelection) {
  make("0-100 @10");
  const std::string b = folder.file("b.mp3", frames(150, {.bitrate = 64}));
  put(mark + range(b, "0\t2080\t-5\t1", "\u00c4\tT\t") + range(b, "2080\t208\t0\t0"));
  EXPECT_TRUE(run("paste"));
  // 2080 and 208 bytes; the second part is named from its file.
  const std::string pasted = "0-10:a.mp3 0-4+412*g-5:T 4+412-5+203:b.mp3 10-100:a.mp3";
  EXPECT_EQ(state(), pasted + " =10-15+203 @10 #1 !^");
  EXPECT_EQ(document.parts[1].part_artist, u"\u00c4");
  EXPECT_EQ(document.files[1].audio_end, 150 * 208U);  // no further than it goes
  EXPECT_EQ(document.stream.vbr, vbr_seen);

  put(mark + range(b, "0\t208\t0\t0"));
  EXPECT_TRUE(run("paste"));  // replaces what was pasted
  EXPECT_EQ(parts(), "0-10:a.mp3 0-0+208:b.mp3 10-100:a.mp3");
  selection.sel_beg = selection.sel_end = 0;
  selection.cursor = 20 * length;
  EXPECT_TRUE(run("paste"));
  // In front of the cursor there are 10 frames of 417 bytes and 2 of 208 now, and 3754 bytes more.
  EXPECT_EQ(selection.cursor, 4170U + 2 * 208 + 10 * length);
  while (!undo_stack.empty()) undo_pop(editor);
  EXPECT_EQ(parts(), "0-100");
  EXPECT_EQ(document.files.size(), 1U);
}

TEST_F(Clipboard, PastesWhatWasCopiedAfterTheDocumentWasClosed) {
  select(90, 100);
  ASSERT_TRUE(run("copy"));
  ASSERT_TRUE(open("b.mp3", frames(50)));
  selection.cursor = document.total_size;
  EXPECT_TRUE(run("paste"));
  EXPECT_EQ(parts(), "0-50*:b.mp3 90-100:a.mp3");
  EXPECT_EQ(document.files[1].audio_end, 100 * length);
}

TEST_F(Clipboard, RefusesWhatDoesNotBelongHere) {
  const std::string a = folder.path("a.mp3");
  const std::string b = folder.file("b.mp3", frames(100));
  const std::string mono = folder.file("m.mp3", frames(99, {.is_mono = true}));
  const std::string good = mark + range(a, "0\t417\t0\t0");
  std::string many = mark;
  for (int i = 0; i < 5000; ++i) many += range(a, "0\t417\t0\t0");
  struct {
    std::string text;
    std::string told;
    std::size_t added = 0;
  } const cases[] = {
      {"", "Wrong format"},
      {"a shopping list", "No corvl part"},
      {"[corvlparts", "No corvl part"},
      {std::string("[corvl\0parts]\r\n", 15), "No corvl part"},
      {mark + a + "\t0\t41700\t", "Parse failed"},
      {mark + "\r\n", "Unknown problem"},
      {good.substr(0, good.size() - 1), "Unknown problem"},  // cut off in the last tab
      {good + "\r\n/b.mp3\t0\t9", "Unknown problem", 1},
      {good + range(folder.path("gone.mp3"), "0\t417\t0\t0"), "Unknown problem", 1},
      {mark + range("no_point", "0\t417\t0\t0"), "Unknown problem"},
      {mark + range(b + ".AAC", "0\t417\t0\t0"), "MP3 / AAC"},
      {mark + range(mono, "0\t417\t0\t0"),
       "Audio parameters do not match.\nSame samplerate, channel mode,\nMPEG type and CRC needed."},
      {mark + range(b, "1\t417\t0\t0"), "Unknown problem"},      // no frame
      {mark + range(b, "41283\t418\t0\t0"), "Unknown problem"},  // beyond the file
      {mark + range(b, "417\t-417\t0\t0"), "Unknown problem"},   // a sum that wraps
      {mark + range(b, "-417\t417\t0\t0"), "Unknown problem"},
      {mark + range(b, "0\t0\t0\t0"), "Unknown problem"},
      {mark + "\r\n" + b + "\t0\t0\t0\t417\t0\t0\t\t\t", "Unknown problem"},
      {mark + "\r\n" + b + "\t41700\t41701\t0\t417\t0\t0\t\t\t", "Unknown problem"},
      {mark + range(folder.path(""), "0\t417\t0\t0"), "Unknown problem"},
      {std::string(2000000, 'x'), "Get failed"},
      {many, "Unknown problem", 998},  // the table is full: 1000 parts, one on each side
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 200));
    ASSERT_TRUE(open("a.mp3", frames(100)));
    selection.cursor = 10 * length;
    put(c.text);
    EXPECT_FALSE(run("paste"));
    EXPECT_EQ(take_box(), "Clipboard error: " + c.told);
    EXPECT_EQ(open_state.document_modified, c.added != 0);
    EXPECT_EQ(document.files.size(), 1U);
    EXPECT_EQ(document.total_size, (100 + c.added) * length);
    ASSERT_TRUE(undo_pop(editor));
    EXPECT_EQ(parts(), "0-100*");
  }
  select(10, 20);  // comes back after a failure
  put(mark + range(folder.path("gone.mp3"), "0\t417\t0\t0"));
  EXPECT_FALSE(run("paste"));
  EXPECT_EQ(parts() + places(), "0-100* =10-20 @10");
}

TEST_F(Clipboard, LivesInAFolderOfTheUserAlone) {
  const char* const before = std::getenv("XDG_RUNTIME_DIR");
  const std::string kept = before != nullptr ? before : "";
  ::setenv("XDG_RUNTIME_DIR", folder.path("").c_str(), 1);
  EXPECT_EQ(runtime_folder(), folder.path(""));
  ::unsetenv("XDG_RUNTIME_DIR");
  struct stat status = {};
  ASSERT_EQ(::lstat(runtime_folder().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode, S_IFDIR | 0700U);
  if (before != nullptr) ::setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
}

}  // namespace
}  // namespace corvelin::test

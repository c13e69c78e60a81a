// SPDX-License-Identifier: GPL-2.0-or-later
// Cue sheets read and written. The constant stream has frames of 417 bytes at 15963.28125 bytes a
// second, so that 10 s lie in frame 382 and the frame at or after it is 383.
#include "exchange/cue_sheet.h"
#include "edit/save_project.h"

#include <sys/stat.h>

#include "edit/editor.h"
#include "exchange/cue_time.h"
#include "model/cuts.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "settings/settings.h"
#include "shell/start_up.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

// 100 frames of 417 bytes and then 500 of 208: 38.28125 frames a second, 15.7 s.
Bytes variable_audio() {
  return Mp3Builder{}.frames(100).shape({.bitrate = 64}).frames(500).bytes();
}

const std::string file_line = "FILE \"a.mp3\" MP3\r\n";

std::string track(std::string_view time) {
  return "  TRACK 01 AUDIO\r\n    INDEX 01 " + std::string(time) + "\r\n";
}

class CueSheet : public EditTest {
 protected:
  void SetUp() override {
    start_up(editor, std::nullopt);
    folder.file("a.mp3", frames(1000));
  }

  bool open_sheet(std::string_view text) { return open_file(editor, folder.file("s.cue", text)); }

  std::string saved_sheet() {
    EXPECT_TRUE(save("out.cue"));
    return read_text(folder.path("out.cue"));
  }
  bool save(const std::string& name) {
    return save_cue_sheet(document, open_state, folder.path(name), reason);
  }
  std::string reason;

  /// The frames at which cues stand.
  std::string cues() {
    std::string text;
    for (const Part& part : document.parts)
      if (part.part_iscue != 0) text += in_frames(part.part_beg) + " ";
    return text;
  }
};

TEST_F(CueSheet, NamesAlbumAndTracks) {
  ASSERT_TRUE(open_sheet("REM GENRE Rock\r\nPERFORMER \"Band\"\r\nTITLE \"" +
                         std::string(350, 'x') + "\"\r\n" + file_line +
                         "  TRACK 01 AUDIO\r\n    TITLE \"One \"1\"\"\r\n"
                         "    INDEX 01 00:00:00\r\n"
                         "  TRACK 02 AUDIO\r\n    TITLE \"PERFORMER Two\"\r\n"
                         "    PERFORMER \"Guest\"\r\n    INDEX 00 00:09:00\r\n"
                         "    INDEX 01 00:10:00\r\n    INDEX 01 00:12:00"));
  EXPECT_EQ(document.sheet_artist, u"Band");
  EXPECT_EQ(document.sheet_title, std::u16string(300, u'x'));
  EXPECT_EQ(state(), "0-383*:One \"1\" 383-1000*:PERFORMER Two");
  EXPECT_EQ(document.parts[0].part_artist, u"");
  EXPECT_EQ(document.parts[1].part_artist, u"Guest");
  EXPECT_EQ(open_state.project_name, folder.path("s.cue"));
  EXPECT_EQ(open_state.audio_name, folder.path("a.mp3"));
  EXPECT_EQ(settings.file_recent, std::vector<std::string>{folder.path("s.cue")});
}

TEST_F(CueSheet, ReadsWhatOthersWriteAndRefusesWhatIsBroken) {
  const std::string long_remark = "REM " + std::string(396, 'x');
  const std::string ten = file_line + track("00:10:00");
  std::string zeros = ten;  // near the start they are blanks
  zeros[4] = zeros[zeros.find("INDEX") + 5] = '\0';
  std::string many = "FILE \"long.mp3\" MP3\r\n";
  for (int i = 0; i < 10000; ++i) many += track("0:" + std::to_string(i * 2));  // 1/37.5 s apart
  struct {
    const char* name;
    std::string text;
    std::string cues;  // none: refused
  } const sheets[] = {
      {"LoneLineFeeds", "FILE \"a.mp3\" MP3\nTRACK 01 AUDIO\nINDEX 01 00:10:00\n", "0 383 "},
      {"Mark", "\xEF\xBB\xBF" + ten, "0 383 "},
      {"NoTracks", file_line, "0 "},
      {"OneColonIsMinutesAndFrames", file_line + track("0:75"), "0 39 "},
      {"NoColonIsMinutes", file_line + track("0.1"), "0 230 "},
      {"FieldsBeyondTheirRange", file_line + track("00:09:75"), "0 383 "},
      {"Negative", file_line + track("-1:00:00") + track("00:10:00"), "0 383 "},
      {"NumberOf20Digits", file_line + track("99999999999999999999:0:0"), "0 "},
      {"TimeLongerThan40Bytes", file_line + track(std::string(45, '9')), "0 "},
      {"BehindTheEnd", ten + track("99:59:74") + track("00:15:00"), "0 383 "},
      {"NoIndex", file_line + "TRACK 01 AUDIO\r\nINDEX 02 00:05:00\r\n" + track("0:9:0"), "0 "},
      {"NotInOrder", ten + track("00:01:00"), "0 39 383 "},
      {"DanglingTrack", ten + "TRACK 02 AUDIO", "0 383 "},
      {"OverlongLines", long_remark + "\r\n" + ten + long_remark, "0 383 "},
      {"Zeros", zeros, "0 383 "},
      {"ZeroBehind600Bytes", ten + std::string(700, ' ') + '\0' + track("00:15:00"), "0 383 "},
      {"OverlongFileLine", "FILE \"a.mp3\"" + std::string(388, ' ') + "\r\n" + ten, "0 383 "},
      {"TabInFront", "\t" + ten, ""},
      {"LowerCaseKeyword", "file \"a.mp3\" MP3\r\n" + track("00:10:00"), ""},
      {"OneQuote", "FILE a.mp3\" MP3\r\n", ""},
      {"OneQuoteInATitle", file_line + "TITLE \"x\r\n", ""},
      {"NoQuoteInAPerformer", file_line + "PERFORMER x\r\n", ""},
      {"TwoFiles", ten + file_line, ""},
      {"IndexWithoutTime", file_line + "TRACK 01 AUDIO\r\nINDEX 01\r\n", ""},
      {"NoFile", "TITLE \"x\"\r\n" + track("00:10:00"), ""},
      {"Empty", "", ""},
      {"Itself", "FILE \"s.cue\" MP3\r\n", ""},
      {"Pipe", "FILE \"pipe.mp3\" MP3\r\n", ""},
      {"FullTable", many, ""},
  };
  ASSERT_EQ(::mkfifo(folder.path("pipe.mp3").c_str(), 0600), 0);
  folder.file("long.mp3", frames(1200));
  for (const auto& sheet : sheets) {
    SCOPED_TRACE(sheet.name);
    EXPECT_EQ(open_sheet(sheet.text), !sheet.cues.empty());
    EXPECT_EQ(cues(), sheet.cues);
    EXPECT_EQ(document.parts.empty(), sheet.cues.empty());
    EXPECT_EQ(host.boxes.size(), sheet.cues.empty() ? 1U : 0U);
    host.boxes.clear();
  }
  EXPECT_FALSE(open_sheet("FILE \"D:\\music\\b.mp3\" MP3\r\n"));
  EXPECT_EQ(take_box(), "File open failed: Project file: " + folder.path("s.cue") +
                            "\n\nAudio file: D:\\music\\b.mp3\n");
  EXPECT_FALSE(open_sheet(ten + file_line));
  EXPECT_EQ(host.boxes.back().text, "Project file: " + folder.path("s.cue") + "\n\n");
  EXPECT_EQ(host.boxes.back().cause,
            "Line 4: a second FILE; only a sheet of one audio file can be opened.");
}

TEST_F(CueSheet, FindsAudioByEitherSeparatorAndEncoding) {
  std::filesystem::create_directory(folder.path("sub"));
  for (const char* name : {"sub/b.mp3", "\xC3\xBC.mp3", "back\\slash.mp3"})
    folder.file(name, frames(20));
  const std::pair<std::string, std::string> files[] = {
      {"sub\\b.mp3", "sub/b.mp3"},
      {"\xFC.mp3", "\xC3\xBC.mp3"},      // in the ANSI code page
      {"\xC3\xBC.mp3", "\xC3\xBC.mp3"},  // UTF-8 without the mark
      {"back\\slash.mp3", "back\\slash.mp3"},
      {folder.path("sub\\b.mp3"), "sub/b.mp3"},
  };
  for (const auto& [text, name] : files) {
    EXPECT_TRUE(open_sheet("FILE \"" + text + "\" MP3\r\n")) << text;
    EXPECT_EQ(open_state.audio_name, folder.path(name));
  }
}

TEST_F(CueSheet, KeepsItsEncoding) {
  for (const std::string head : {"TITLE \"\xFC\"\r\n", "\xEF\xBB\xBFTITLE \"\xC3\xBC\"\r\n"}) {
    ASSERT_TRUE(open_sheet(head + file_line));
    EXPECT_EQ(document.sheet_title, u"ü");
    EXPECT_TRUE(saved_sheet().starts_with(head));
  }
  // The code page has no omega; the bytes of the name lead to the file all the same.
  ASSERT_TRUE(open("\u03A9.mp3", frames(100)));
  settings.char_enc = 0;
  const std::string sheet = saved_sheet();
  EXPECT_NE(sheet.find("FILE \"\u03A9.mp3\" MP3\r\n"), std::string::npos);
  ASSERT_TRUE(open_sheet(sheet));
  EXPECT_EQ(document.files[0].file_name, folder.path("\u03A9.mp3"));
}

TEST_F(CueSheet, WritesCuesWithTheirTimes) {
  ASSERT_TRUE(open_sheet(file_line + track("00:00:00") + track("00:10:00")));
  document.sheet_artist = u"Band";
  document.parts[1].part_title = u"Line\nend";
  document.parts[1].part_artist = u"Guest";
  ASSERT_EQ(split_at(document, 600 * length), 2);  // a plain border is no track
  document.parts[split_at(document, 765 * length)].part_iscue = 1;
  open_state.document_modified = true;
  settings.char_enc = 0;
  // Frame 765 begins at 19.984 s.
  EXPECT_EQ(saved_sheet(),
            "PERFORMER \"Band\"\r\nTITLE \"(Title N.N.)\"\r\nFILE \"a.mp3\" MP3\r\n"
            "  TRACK 01 AUDIO\r\n    TITLE \"(Track 01)\"\r\n    INDEX 01 00:00:00\r\n"
            "  TRACK 02 AUDIO\r\n    TITLE \"Line end\"\r\n    PERFORMER \"Guest\"\r\n"
            "    INDEX 01 00:10:00\r\n"
            "  TRACK 03 AUDIO\r\n    TITLE \"(Track 03)\"\r\n    INDEX 01 00:19:73\r\n");
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_EQ(settings.file_recent.front(), folder.path("out.cue"));

  std::filesystem::create_directory(folder.path("sub"));
  ASSERT_TRUE(open("b.mp2", frames(50, {.layer = 2})));
  EXPECT_TRUE(save("sub/s.cue"));  // audio elsewhere is named in full
  EXPECT_NE(
      read_text(folder.path("sub/s.cue")).find("FILE \"" + folder.path("b.mp2") + "\" WAVE\r\n"),
      std::string::npos);
  EXPECT_FALSE(save("gone/s.cue"));
  for (const char* const name : {"a \"b\".mp3", "line\nend.mp3"}) {
    ASSERT_TRUE(open(name, frames(50)));
    EXPECT_FALSE(save("s.cue"));
    EXPECT_EQ(reason,
              std::string(name) + "\nA sheet can't hold a name with a quote or a line end in it.");
  }
}

TEST_F(CueSheet, AsksBeforeItNamesAudioOfOtherLength) {
  ASSERT_TRUE(open_sheet(file_line));
  delete_range(document, 0, 10 * length);
  settings.msg_hide = 0xFFFF;
  open_state.project_name = folder.path("out.cue");
  const auto named_audio = [this] {
    EXPECT_TRUE(save_project(editor, false, true));
    if (!std::filesystem::exists(open_state.project_name)) return std::string("none");
    const std::string sheet = read_text(open_state.project_name);
    const std::size_t begin = sheet.find('"', sheet.find("FILE "));
    return sheet.substr(begin, sheet.find(" MP3") - begin);
  };
  host.answers = {BoxAnswer::cancel};
  EXPECT_EQ(named_audio(), "none");
  EXPECT_EQ(host.boxes[0].caption, "Save Project file or Cue sheet");
  EXPECT_EQ(named_audio(), "\"a.mp3\"");
  open_state.save_name = folder.path("cut.mp3");
  EXPECT_EQ(named_audio(), "\"cut.mp3\"");
  EXPECT_EQ(host.boxes.size(), 2U);

  // Two files are never the first one, whatever their length in all.
  open_state.save_name.clear();
  append_file(document, folder.file("b.mp3", frames(10)));
  ASSERT_EQ(document.total_size, 1000 * length);
  named_audio();
  EXPECT_EQ(host.boxes.size(), 3U);
}

TEST_F(CueSheet, ShowsTheNoteAboutVariableStreamsOnce) {
  folder.file("a.mp3", variable_audio());
  ASSERT_TRUE(open_sheet(file_line));
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_TRUE(host.boxes[0].text.starts_with("CUE SHEETS AND VBR\n\n"));
  host.hides_notes = true;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(open_sheet(file_line));
    EXPECT_EQ(host.boxes.size(), 2U);
    EXPECT_EQ(settings.msg_hide, 16);
  }
}

TEST_F(CueSheet, TimesAreExactTimesOfTheEditedStream) {
  Mp3Builder mpeg2;
  for (int i = 0; i < 600; ++i)
    mpeg2.frame({.version = 2, .bitrate = i % 2 == 0 ? 32 : 64, .sample_rate = 22050});
  struct {
    const char* name;
    Bytes audio;
    EditPosition cut;  // from the start on
    EditPosition cue;
    const char* time;
  } const rows[] = {
      {"whole.mp3", variable_audio(), 0, 100 * length + 282 * 208, "00:09:73"},  // 382 frames
      {"cut.mp3", variable_audio(), 90 * length, 10 * length + 372 * 208, "00:09:73"},
      {"damaged.mp3",
       Mp3Builder{}.frames(100).zeros(30000).shape({.bitrate = 64}).frames(500).bytes(), 0,
       100 * length + 30000 + 282 * 208, "00:09:73"},
      {"mpeg2.mp3", mpeg2.bytes(), 10 * 312, 181 * 312, "00:09:34"},  // 362 frames, 9.4563 s
      {"a.aac", Mp3Builder{}.adts(600, 200, 1).bytes(), 24950, 79900, "00:04:48"},  // 4.6440 s
  };
  settings.use_toc = 1;  // which bends the times that are shown
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_TRUE(open(row.name, row.audio));
    if (row.cut != 0) delete_range(document, 0, row.cut);
    document.parts[split_at(document, row.cue)].part_iscue = 1;
    EXPECT_NE(saved_sheet().find("INDEX 01 " + std::string(row.time) + "\r\n"), std::string::npos);
    open_state.project_name = folder.path("out.cue");
    EXPECT_EQ(load_cue_sheet(document, selection, open_state, true).cause, "");
    ASSERT_EQ(part_count(document), 2);  // the cues that are there
  }
}

TEST_F(CueSheet, LoadsOverTheCurrentAudio) {
  ASSERT_TRUE(open("b.mp3", frames(1000)));
  make("0-100* 100-1000*");
  selection.sel_artist = u"of a border that was restored";
  host.existing_files = {folder.file("s.cue", file_line + "TITLE \"x\"\r\n" + track("00:10:00"))};
  EXPECT_TRUE(run("load_cue_sheet_over_audio"));
  EXPECT_EQ(cues(), "0 100 383 ");
  EXPECT_EQ(document.parts[2].part_artist, u"");
  EXPECT_EQ(document.sheet_title, u"x");
  EXPECT_EQ(open_state.audio_name, folder.path("b.mp3"));
  EXPECT_FALSE(run("load_cue_sheet_over_audio"));  // cancelled
  EXPECT_EQ(undo_stack.size(), 1U);
}

TEST_F(CueSheet, AbsurdTimesGiveDefinedPlaces) {
  const std::pair<double, const char*> times[] = {
      {59.9999, "00:59:74"}, {7500, "125:00:00"}, {-1, "00:00:00"}, {1e300, "71582788:15:74"}};
  for (const auto& [seconds, text] : times) EXPECT_EQ(format_cue_time(seconds), text);
  EXPECT_EQ(format_cue_time(8.04), "00:08:03");  // 0.03999... of a second
  EXPECT_NEAR(cue_seconds("01:02:37"), 62.49333, 1e-5);
  EXPECT_GT(cue_seconds("99999999999999999999999999999999999999:0:0"), 1e38);
}

}  // namespace
}  // namespace corvelin::test

// Cue sheets read and written. The constant stream has frames of 417 bytes at 15963.28125 bytes a
// second, so that 10 s lie in frame 382 and the frame at or after it is 383.
#include "exchange/cue_sheet.h"

#include <sys/stat.h>

#include "exchange/cue_time.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "shell/start_up.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

constexpr std::uint32_t half_length = 208;  // of a frame at 64 kbit/s

Bytes constant_audio() { return Mp3Builder{}.frames(1000).bytes(); }

// 100 frames of 417 bytes and then 500 of 208: 38.28125 frames a second, 15.7 s.
Bytes variable_audio() {
  return Mp3Builder{}.frames(100).shape({.bitrate = 64}).frames(500).bytes();
}

class CueSheet : public CoreTest {
 protected:
  CueSheet() {
    start_up(std::nullopt);
    folder.file("a.mp3", constant_audio());
  }

  bool open_sheet(std::string_view text) { return open_file(folder.file("s.cue", text)); }

  std::string saved_sheet() {
    open_state.project_name = folder.path("out.cue");
    EXPECT_EQ(save_cue_sheet(), CueSheetSave::written);
    return read_text(open_state.project_name);
  }

  static std::vector<EditPosition> cues() {
    std::vector<EditPosition> cues;
    for (const Part& part : document.parts)
      if (part.part_iscue != 0) cues.push_back(part.part_beg);
    return cues;
  }
};

using Places = std::vector<EditPosition>;

const std::string file_line = "FILE \"a.mp3\" MP3\r\n";

std::string track(std::string_view time) {
  return "  TRACK 01 AUDIO\r\n    INDEX 01 " + std::string(time) + "\r\n";
}

TEST_F(CueSheet, NamesAlbumAndTracks) {
  ASSERT_TRUE(open_sheet("REM GENRE Rock\r\nPERFORMER \"Band\"\r\nTITLE \"Album\"\r\n" + file_line +
                         "  TRACK 01 AUDIO\r\n    TITLE \"One \"1\"\"\r\n"
                         "    INDEX 01 00:00:00\r\n"
                         "  TRACK 02 AUDIO\r\n    TITLE \"PERFORMER Two\"\r\n"
                         "    PERFORMER \"Guest\"\r\n    INDEX 00 00:09:00\r\n"
                         "    INDEX 01 00:10:00\r\n    INDEX 01 00:12:00"));
  EXPECT_EQ(document.sheet_artist, u"Band");
  EXPECT_EQ(document.sheet_title, u"Album");
  EXPECT_EQ(cues(), (Places{0, 383 * length}));
  EXPECT_EQ(document.parts[0].part_title, u"One \"1\"");
  EXPECT_EQ(document.parts[0].part_artist, u"");
  EXPECT_EQ(document.parts[1].part_title, u"PERFORMER Two");
  EXPECT_EQ(document.parts[1].part_artist, u"Guest");
  EXPECT_EQ(selection.sel_title, u"");
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_FALSE(open_state.document_modified);
  EXPECT_EQ(open_state.project_name, folder.path("s.cue"));
  EXPECT_EQ(open_state.audio_name, folder.path("a.mp3"));
  EXPECT_EQ(settings.file_recent, std::vector<std::string>{folder.path("s.cue")});
  EXPECT_TRUE(host.boxes.empty());
}

struct Sheet {
  const char* name;
  std::string text;
  bool opens;
  Places cues;
};

TEST_F(CueSheet, ReadsWhatOthersWriteAndRefusesWhatIsBroken) {
  const std::string long_remark = "REM " + std::string(396, 'x');
  const Sheet sheets[] = {
      {"LoneLineFeeds",
       "FILE \"a.mp3\" MP3\nTRACK 01 AUDIO\nINDEX 01 00:10:00\n",
       true,
       {0, 159711}},
      {"Mark", "\xEF\xBB\xBF" + file_line + track("00:10:00"), true, {0, 159711}},
      {"NoTracks", file_line, true, {0}},
      {"OneColonIsMinutesAndFrames", file_line + track("0:75"), true, {0, 39 * length}},
      {"NoColonIsMinutes", file_line + track("0.1"), true, {0, 230 * length}},
      {"FieldsBeyondTheirRange", file_line + track("00:09:75"), true, {0, 159711}},
      {"Negative", file_line + track("-1:00:00") + track("00:10:00"), true, {0, 159711}},
      {"NumberOf20Digits", file_line + track("99999999999999999999:0:0"), true, {0}},
      {"TimeLongerThan40Bytes", file_line + track(std::string(45, '9')), true, {0}},
      {"BehindTheEnd",
       file_line + track("00:10:00") + track("99:59:74") + track("00:15:00"),
       true,
       {0, 159711}},
      {"NoIndex",
       file_line + "TRACK 01 AUDIO\r\nINDEX 02 00:05:00\r\n" + track("00:10:00"),
       true,
       {0}},
      {"NotInOrder",
       file_line + track("00:10:00") + track("00:01:00"),
       true,
       {0, 39 * length, 159711}},
      {"DanglingTrack", file_line + track("00:10:00") + "TRACK 02 AUDIO", true, {0, 159711}},
      {"OverlongLines",
       long_remark + "\r\n" + file_line + track("00:10:00") + long_remark,
       true,
       {0, 159711}},
      {"OverlongFileLine",
       "FILE \"a.mp3\"" + std::string(388, ' ') + "\r\n" + track("00:10:00"),
       false,
       {}},
      {"TabInFront", "\t" + file_line + track("00:10:00"), false, {}},
      {"LowerCaseKeyword", "file \"a.mp3\" MP3\r\n" + track("00:10:00"), false, {}},
      {"OneQuote", "FILE a.mp3\" MP3\r\n", false, {}},
      {"OneQuoteInATitle", file_line + "TITLE \"x\r\n", false, {}},
      {"NoQuoteInAPerformer", file_line + "PERFORMER x\r\n", false, {}},
      {"TwoFiles", file_line + track("00:10:00") + file_line, false, {}},
      {"IndexWithoutTime", file_line + "TRACK 01 AUDIO\r\nINDEX 01\r\n", false, {}},
      {"NoFile", "TITLE \"x\"\r\n" + track("00:10:00"), false, {}},
      {"Empty", "", false, {}},
      {"Utf16",
       std::string("\xFF\xFE"
                   "F\0I\0L\0E\0",
                   10),
       false,
       {}},
      {"Itself", "FILE \"s.cue\" MP3\r\n", false, {}},
      {"Folder", "FILE \"\" MP3\r\n", false, {}},
      {"Device", "FILE \"/dev/zero\" MP3\r\n", false, {}},
      {"Pipe", "FILE \"pipe.mp3\" MP3\r\n", false, {}},
  };
  ASSERT_EQ(::mkfifo(folder.path("pipe.mp3").c_str(), 0600), 0);
  for (const Sheet& sheet : sheets) {
    SCOPED_TRACE(sheet.name);
    EXPECT_EQ(open_sheet(sheet.text), sheet.opens);
    EXPECT_EQ(cues(), sheet.cues);
    EXPECT_EQ(document.parts.empty(), !sheet.opens);
  }
}

TEST_F(CueSheet, ZerosNearTheStartAreBlanks) {
  std::string text = file_line + track("00:10:00") + std::string(100, ' ') + "\r\n";
  text[4] = '\0';  // FILE\0"a.mp3"
  text.insert(text.find("INDEX") + 5, 1, '\0');
  text.erase(text.find("INDEX") + 6, 1);  // INDEX\0001
  EXPECT_TRUE(open_sheet(text));
  EXPECT_EQ(cues(), (Places{0, 159711}));

  // Behind the first 600 bytes a zero ends the text.
  const std::string late = file_line + std::string(700, ' ') + "\r\n" + track("00:10:00");
  EXPECT_TRUE(open_sheet(late + std::string(1, '\0') + track("00:15:00")));
  EXPECT_EQ(cues(), (Places{0, 159711}));
}

TEST_F(CueSheet, FailureNamesSheetAndAudio) {
  EXPECT_FALSE(open_sheet("FILE \"D:\\music\\b.mp3\" MP3\r\n"));
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].caption, "File open failed");
  EXPECT_EQ(host.boxes[0].text,
            "Project file: " + folder.path("s.cue") + "\n\nAudio file: D:\\music\\b.mp3\n");
}

TEST_F(CueSheet, FindsAudioByEitherSeparatorAndEncoding) {
  std::filesystem::create_directory(folder.path("sub"));
  for (const char* name : {"sub/b.mp3", "\xC3\xBC.mp3", "back\\slash.mp3"})
    folder.file(name, constant_audio());
  const std::pair<std::string, std::string> files[] = {
      {"sub\\b.mp3", "sub/b.mp3"},
      {"sub/b.mp3", "sub/b.mp3"},
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
  const std::string body = "TITLE \"\xFC\"\r\n" + file_line;
  ASSERT_TRUE(open_sheet(body));
  EXPECT_EQ(document.sheet_title, u"ü");
  EXPECT_EQ(settings.char_enc, 0);
  EXPECT_TRUE(saved_sheet().starts_with("TITLE \"\xFC\"\r\n"));

  ASSERT_TRUE(open_sheet("\xEF\xBB\xBFTITLE \"\xC3\xBC\"\r\n" + file_line));
  EXPECT_EQ(document.sheet_title, u"ü");
  EXPECT_EQ(settings.char_enc, 1);
  EXPECT_TRUE(saved_sheet().starts_with("\xEF\xBB\xBFTITLE \"\xC3\xBC\"\r\n"));
}

// The code page has no omega; the bytes of the name lead to the file all the same.
TEST_F(CueSheet, NamesAudioThatTheEncodingCannotHold) {
  ASSERT_TRUE(open("\u03A9.mp3", Mp3Builder{}.frames(100).bytes()));
  settings.char_enc = 0;
  const std::string sheet = saved_sheet();
  EXPECT_NE(sheet.find("FILE \"\u03A9.mp3\" MP3\r\n"), std::string::npos);
  ASSERT_TRUE(open_sheet(sheet));
  EXPECT_EQ(document.files[0].file_name, folder.path("\u03A9.mp3"));
}

TEST_F(CueSheet, CutsNamesAt300Characters) {
  ASSERT_TRUE(open_sheet("TITLE \"" + std::string(350, 'x') + "\"\r\n" + file_line));
  EXPECT_EQ(document.sheet_title, std::u16string(300, u'x'));
}

TEST_F(CueSheet, FullTableEndsTheReading) {
  folder.file("long.mp3", Mp3Builder{}.frames(1200).bytes());
  std::string text = "FILE \"long.mp3\" MP3\r\n";
  for (int i = 0; i < 10000; ++i) text += track("0:" + std::to_string(i * 2));  // 1/37.5 s apart
  EXPECT_FALSE(open_sheet(text));
  EXPECT_EQ(host.boxes.size(), 1U);
}

TEST_F(CueSheet, WritesCuesWithTheirTimes) {
  ASSERT_TRUE(open_sheet(file_line + track("00:00:00") + track("00:10:00")));
  document.sheet_artist = u"Band";
  document.parts[1].part_title = u"Line\nend";
  document.parts[1].part_artist = u"Guest";
  ASSERT_EQ(split_at(600 * length), 2);  // a plain border is no track
  document.parts[split_at(765 * length)].part_iscue = 1;
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
  EXPECT_TRUE(host.boxes.empty());
}

TEST_F(CueSheet, NamesAudioElsewhereInFull) {
  std::filesystem::create_directory(folder.path("sub"));
  ASSERT_TRUE(open("b.mp2", Mp3Builder{}.shape({.layer = 2}).frames(50).bytes()));
  open_state.project_name = folder.path("sub/s.cue");
  EXPECT_EQ(save_cue_sheet(), CueSheetSave::written);
  EXPECT_NE(
      read_text(open_state.project_name).find("FILE \"" + folder.path("b.mp2") + "\" WAVE\r\n"),
      std::string::npos);
  open_state.project_name = folder.path("gone/s.cue");
  EXPECT_EQ(save_cue_sheet(), CueSheetSave::failed);
}

TEST_F(CueSheet, AsksBeforeItNamesAudioOfOtherLength) {
  ASSERT_TRUE(open_sheet(file_line));
  delete_range(0, 10 * length);
  open_state.project_name = folder.path("out.cue");
  host.answers = {BoxAnswer::cancel};
  EXPECT_EQ(save_cue_sheet(), CueSheetSave::cancelled);
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].caption, "Save Project file or Cue sheet");
  EXPECT_NE(saved_sheet().find("FILE \"a.mp3\""), std::string::npos);

  open_state.save_name = folder.path("cut.mp3");
  EXPECT_NE(saved_sheet().find("FILE \"cut.mp3\""), std::string::npos);
  EXPECT_EQ(host.boxes.size(), 2U);
}

TEST_F(CueSheet, CountsTheFramesOfAVariableStream) {
  folder.file("a.mp3", variable_audio());
  // 10 s and 12 s are 382.8 and 459.4 frames.
  ASSERT_TRUE(open_sheet(file_line + track("00:00:00") + track("00:10:00") + track("00:12:00")));
  EXPECT_NE(stream.vbr, 0);
  const EditPosition first = 100 * length + 282 * half_length;
  const EditPosition second = 100 * length + 359 * half_length;
  EXPECT_EQ(cues(), (Places{0, first, second}));
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_TRUE(host.boxes[0].text.starts_with("CUE SHEETS AND VBR\n\n"));
  // 382 frames are 9.9788 s, 459 are 11.9902 s.
  const std::string text = saved_sheet();
  EXPECT_NE(text.find("INDEX 01 00:00:00\r\n"), std::string::npos);
  EXPECT_NE(text.find("INDEX 01 00:09:73\r\n"), std::string::npos);
  EXPECT_NE(text.find("INDEX 01 00:11:74\r\n"), std::string::npos);

  host.hides_notes = true;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(open_sheet(file_line + track("99:00:00") + track("00:01:00")));
    EXPECT_EQ(cues(), (Places{0}));
    EXPECT_EQ(host.boxes.size(), 2U);
    EXPECT_EQ(settings.msg_hide, 16);
  }
}

TEST_F(CueSheet, WalkGoesOnBehindTheFirstFile) {
  ASSERT_TRUE(open("v.mp3", variable_audio()));
  const std::uint32_t size = document.total_size;
  const auto index = add_source_file(folder.path("a.mp3"));
  ASSERT_TRUE(index);
  document.files[*index].audio_end = 1000 * length;
  add_part(size, *index, 0, 1000 * length);
  VbrWalk walk;
  EXPECT_NEAR(vbr_walk_to_position(walk, size), 600 / 38.28125, 1e-9);
  EXPECT_NEAR(vbr_walk_to_position(walk, size + 100 * length), 700 / 38.28125, 1e-9);
  walk = {};
  EXPECT_EQ(vbr_walk_to_time(walk, "00:17:00"), size + 50 * length);  // 650.8 frames
  EXPECT_EQ(vbr_walk_to_time(walk, "99999999:00:00"), document.total_size);
}

TEST_F(CueSheet, LoadsOverTheCurrentAudio) {
  ASSERT_TRUE(open("b.mp3", constant_audio()));
  document.parts[split_at(100 * length)].part_iscue = 1;
  selection.sel_artist = u"of a border that was restored";
  host.existing_files = {folder.file("s.cue", file_line + "TITLE \"x\"\r\n" + track("00:10:00"))};
  bool has_run = false;
  EXPECT_TRUE(choose_and_load_cue_sheet([&] { has_run = document.parts.size() == 2; }));
  EXPECT_TRUE(has_run);
  EXPECT_EQ(cues(), (Places{0, 100 * length, 383 * length}));
  EXPECT_EQ(document.parts[2].part_artist, u"");
  EXPECT_EQ(document.sheet_title, u"x");
  EXPECT_EQ(open_state.audio_name, folder.path("b.mp3"));

  EXPECT_FALSE(choose_and_load_cue_sheet([] { FAIL(); }));  // cancelled
  EXPECT_EQ(open_state.project_name, "");
}

TEST(CueTime, FormatsCutTimes) {
  EXPECT_EQ(format_cue_time(0), "00:00:00");
  EXPECT_EQ(format_cue_time(59.9999), "00:59:74");
  EXPECT_EQ(format_cue_time(7500), "125:00:00");
  EXPECT_EQ(format_cue_time(-1), "00:00:00");
  EXPECT_EQ(format_cue_time(1e300), "71582788:15:74");
}

TEST(CueTime, AbsurdRatesGiveDefinedPlaces) {
  reset_state(ResetLevel::start);
  stream.avg_bitrate = 128000;
  EXPECT_EQ(cue_time_to_bytes("01:02:37"), 999893U);  // 62.49333 s
  EXPECT_EQ(cue_time_to_bytes("99999999999999999999999999999999999999:0:0"), highest_position);
  stream.avg_bitrate = 0;
  EXPECT_EQ(cue_time_to_bytes("01:02:37"), 0U);
  EXPECT_EQ(cue_time_to_bytes(""), 0U);
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// Appending: what fits, what doesn't and why, and the Open command's choice of several files.
#include "opening/append.h"

#include <fmt/format.h>

#include <filesystem>

#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/open_dialog.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Append : public CoreTest {
 protected:
  Append() { EXPECT_TRUE(open("a.mp3", frames(20))); }
};

TEST_F(Append, TellsWhyAFileDoesNotFit) {
  const std::string id3 = Mp3Builder::id3v2_frame("TIT2", std::string(500, 'x'));
  Bytes half = mpeg_frame({.bitrate = 320});
  half.resize(800);
  const FrameShape wide = {.bitrate = 320};
  struct {
    std::string_view name;
    Bytes bytes;
    std::string reason;
  } const cases[] = {
      {"no_point", frames(30), "Invalid filename"},
      {"not_there.aac", {}, "MP3 / AAC"},
      {"not_there.mp3", {}, "File open failed"},
      {"999_bytes.mp3", Bytes(999), "Invalid file size"},
      {"zeros.mp3", Bytes(50000), "No sync found"},
      {"short.mp3", frames(4), "No sync found"},
      {"tag.mp3", Mp3Builder{}.id3v2(id3).frames(4).bytes(), "No sync found"},
      {"huge_tag.mp3", Mp3Builder{}.id3v2(id3, 0x0FFFFFFF).frames(30).bytes(), "No sync found"},
      {"half_frame.mp3",
       Mp3Builder{}.zeros(1000).shape(wide).vbr_header({.marker = "Info"}).raw(half).bytes(),
       "No sync found"},
      {"rate.mp3", frames(30, {.sample_rate = 48000}), "Different audio params"},
      {"mono.mp3", frames(30, {.is_mono = true}), "Different audio params"},
      {"crc.mp3", frames(30, {.has_crc = true}), "Different audio params"},
      {"layer.mp3", frames(30, {.layer = 2}), "Different audio params"},
      {"version.mp3", frames(30, {.version = 2, .bitrate = 64, .sample_rate = 22050}),
       "Different audio params"}};
  for (const auto& c : cases) {
    const std::string path = c.bytes.empty() ? folder.path(c.name) : folder.file(c.name, c.bytes);
    std::vector<std::string> list;
    EXPECT_FALSE(append_file_reported(document, path, &list));
    EXPECT_EQ(list, std::vector{"Append failed (" + c.reason + "): " + std::string(c.name)});
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(document.files.size() + document.parts.size(), 2U) << c.name;
    EXPECT_EQ(document.stream.vbr, vbr_constant);
  }
  EXPECT_FALSE(append_file_reported(document, folder.path("mono.mp3"), nullptr));
  EXPECT_EQ(host.boxes.back().cause,
            "its frames are MPEG 1 Layer III, 44100 Hz, mono, CRC: no\n"
            "those of the document MPEG 1 Layer III, 44100 Hz, stereo, CRC: no");
  EXPECT_EQ(take_box(),
            "Not possible: Append failed: Audio parameters do not match.\nSame samplerate, channel "
            "mode,\nMPEG type and CRC needed.\n\nmono.mp3");
}

TEST_F(Append, SaysWhatIsNoAudioAndLeavesNoTrace) {
  for (const auto& [name, kind] : {std::pair{"s.cue", "a cue sheet"}, {"p.cvp", "a project"}}) {
    const std::string path = folder.file(name, frames(30));
    EXPECT_EQ(append_in_one_step(editor, std::vector{path}).failed, path);
    EXPECT_EQ(host.boxes.back().cause,
              fmt::format("This is {}; only audio files can be appended.", kind));
  }
  EXPECT_EQ(append_in_one_step(editor, std::vector{folder.path("")}).count, 0U);
  EXPECT_EQ(host.boxes.back().cause, "This is a folder; only audio files can be appended.");
  EXPECT_EQ(undo_stack.size() + selection.cursor, 0U);

  folder.file("b.mp3", frames(30));
  folder.file("c.mp3", frames(30));
  const std::vector list = {folder.file("l.m3u", "b.mp3\nc.mp3\n")};
  EXPECT_EQ(append_in_one_step(editor, list).count, 2U);
  EXPECT_EQ(document.total_size, 80 * length);
  EXPECT_EQ(undo_stack.size(), 1U);
}

TEST_F(Append, KeepsBelow4GiB) {
  const std::string path = folder.file("sparse.mp3", Bytes(1));
  std::filesystem::resize_file(path, 0xFFFFFFFF);
  EXPECT_EQ(append_file(document, path), AppendResult::bad_size);
  std::filesystem::resize_file(path, 0xFFFFFFFF - 20 * length + 1);
  EXPECT_EQ(append_file(document, path), AppendResult::too_large);
  EXPECT_EQ(document.files.size(), 1U);
}

TEST_F(Append, LeavesTagsAndTheHeaderOfTheFileOut) {
  const std::string tag = Mp3Builder::id3v2_frame("TIT2", "x");
  Mp3Builder file = Mp3Builder{}.id3v2(tag).vbr_header({.frames = 7, .bytes = 9}).frames(30);
  const auto begin = static_cast<std::uint32_t>(10 + tag.size() + length);
  // Only the ID3v1 tag is known; the APE tag (a header and a footer of 32 bytes) stays audio.
  const std::uint32_t size = 30 * length + 32 + 100 + 32;
  const std::string path = folder.file("b.mp3", file.ape(100, true).id3v1("b").bytes());
  ASSERT_EQ(append_file(document, path), AppendResult::appended);
  EXPECT_EQ(document.files[1].first_audio, begin);
  EXPECT_EQ(document.files[1].audio_end, begin + size);
  const Part& part = document.parts[1];
  EXPECT_EQ(part.part_filepos, begin);
  EXPECT_EQ(part.part_size, size);
  EXPECT_EQ(part.part_iscue, 1U);
  EXPECT_EQ(document.stream.xing_frames, 0U);

  // An open source keeps its bounds, whether the file is asked about or appended anew.
  ASSERT_TRUE(open(path));
  EXPECT_TRUE(can_append_files(document, std::vector{path}));
  ASSERT_EQ(append_file(document, path), AppendResult::appended);
  EXPECT_EQ(document.files[0].audio_end, begin + 30 * length);
  EXPECT_EQ(document.total_size, 60 * length);
}

TEST_F(Append, TakesTheFirstFrameThatFits) {
  Mp3Builder file = Mp3Builder{}.zeros(30000).shape({.sample_rate = 48000}).frames(10);
  const std::size_t begin = file.size();
  const std::string path = folder.file("b.mp3", file.shape({}).frames(30).bytes());
  ASSERT_EQ(append_file(document, path), AppendResult::appended);
  EXPECT_EQ(document.files[1].first_audio, begin);
}

TEST_F(Append, MakesTheStreamVariableByAnotherBitrate) {
  const std::string path = folder.file("b.mp3", frames(30, {.bitrate = 64}));
  ASSERT_EQ(append_file(document, path), AppendResult::appended);
  ASSERT_EQ(append_file(document, path), AppendResult::appended);
  EXPECT_EQ(document.stream.vbr, vbr_seen);
  EXPECT_EQ(document.files.size(), 2U);
  while (document.parts.size() < most_parts) add_part(document, 0, 0, 0, length);
  EXPECT_FALSE(append_file_reported(document, path, nullptr));
  EXPECT_EQ(host.boxes.back().text, "Append failed: Part creation failed\n\nb.mp3");
}

TEST_F(Append, JoinsAdtsFiles) {
  const Bytes aac = Mp3Builder{}.adts(20, 372).bytes();
  ASSERT_TRUE(open("a.aac", aac));
  EXPECT_EQ(append_file(document, folder.file("b.mp3", frames(30))), AppendResult::other_format);
  EXPECT_EQ(append_file(document, folder.file("b.AAC", aac)), AppendResult::appended);
  EXPECT_EQ(document.total_size, 2U * 20 * 372);
}

TEST_F(Append, OpensAllFilesOfAChoiceUntilOneFails) {
  settings.working_dir = "/music/";
  for (const char* const name : {"1.mp3", "2.mp3", "4.mp3"}) folder.file(name, frames(30));
  folder.file("3.mp3", frames(30, {.has_crc = true}));
  for (const char* const name : {"1.mp3", "2.mp3", "3.mp3", "4.mp3"})
    host.existing_files.push_back(folder.path(name));
  EXPECT_TRUE(open_file_dialog(editor));
  EXPECT_EQ(host.dialogs[0].path, "/music/");
  EXPECT_EQ(host.dialogs[0].types[0].name, "MP3, AAC, MP2, CVP, CUE, M3U");
  EXPECT_EQ(document.parts.size(), 2U);
  EXPECT_EQ(document.parts[1].part_title, u"2.mp3");
  EXPECT_EQ(host.boxes.size(), 1U);
  EXPECT_TRUE(host.boxes[0].text.ends_with("\n\n3.mp3"));
  EXPECT_TRUE(host.boxes[0].cause.ends_with("Also left out: 4.mp3"));

  settings.working_dir.clear();
  settings.ffmpeg = "/usr/bin/ffmpeg";
  EXPECT_FALSE(open_file_dialog(editor));  // cancelled
  EXPECT_EQ(host.dialogs[1].path + "1.mp3", folder.path("1.mp3"));
  EXPECT_EQ(host.dialogs[1].types[2].pattern, "*.aac;*.mp4;*.m4a");
  const std::string long_name = folder.file(std::string(200, 'x') + ".mp3", frames(30));
  host.existing_files.assign(100, long_name);
  EXPECT_TRUE(open_file_dialog(editor));
  EXPECT_EQ(document.parts.size(), 100U);
}

}  // namespace
}  // namespace corvelin::test

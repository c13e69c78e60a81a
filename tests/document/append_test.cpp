// Appending: what fits, what doesn't and why, and the Open command's choice of several files.
#include "document/append.h"

#include <filesystem>

#include "document/open_dialog.h"
#include "exchange/settings.h"
#include "model/cuts.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Append : public CoreTest {
 protected:
  Append() { EXPECT_TRUE(open("a.mp3", Mp3Builder{}.frames(20).bytes())); }

  AppendResult append(std::string_view name, const Bytes& bytes) {
    return append_file(folder.file(name, bytes));
  }
};

Bytes frames_of(const FrameShape& shape) { return Mp3Builder{}.shape(shape).frames(30).bytes(); }

Bytes first_bytes(Bytes bytes, std::size_t count) {
  bytes.resize(count);
  return bytes;
}

TEST_F(Append, TellsWhyAFileDoesNotFit) {
  struct Case {
    std::string_view name;
    Bytes bytes;
    AppendResult result;
    std::string reason;
  };
  const std::string other = "Different audio params";
  const std::string id3 = Mp3Builder::id3v2_frame("TIT2", std::string(500, 'x'));
  const Case cases[] = {
      {"no_point", frames_of({}), AppendResult::bad_name, "Invalid filename"},
      {"not_there.aac", {}, AppendResult::other_format, "MP3 / AAC"},
      {"not_there.mp3", {}, AppendResult::not_opened, "File open failed"},
      {"999_bytes.mp3", Bytes(999), AppendResult::bad_size, "Invalid file size"},
      {"zeros.mp3", Bytes(50000), AppendResult::no_sync, "No sync found"},
      {"short.mp3", Mp3Builder{}.frames(4).bytes(), AppendResult::no_sync, "No sync found"},
      {"tag.mp3", Mp3Builder{}.id3v2(id3).frames(4).bytes(), AppendResult::no_sync,
       "No sync found"},
      {"huge_tag.mp3", Mp3Builder{}.id3v2(id3, 0x0FFFFFFF).frames(30).bytes(),
       AppendResult::no_sync, "No sync found"},
      {"half_frame.mp3",
       Mp3Builder{}
           .zeros(1000)
           .shape({.bitrate = 320})
           .vbr_header({.marker = "Info"})
           .raw(first_bytes(mpeg_frame({.bitrate = 320}), 800))
           .bytes(),
       AppendResult::no_sync, "No sync found"},
      {"rate.mp3", frames_of({.sample_rate = 48000}), AppendResult::other_parameters, other},
      {"mono.mp3", frames_of({.is_mono = true}), AppendResult::other_parameters, other},
      {"crc.mp3", frames_of({.has_crc = true}), AppendResult::other_parameters, other},
      {"layer.mp3", frames_of({.layer = 2}), AppendResult::other_parameters, other},
      {"version.mp3", frames_of({.version = 2, .bitrate = 64, .sample_rate = 22050}),
       AppendResult::other_parameters, other},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string path = c.bytes.empty() ? folder.path(c.name) : folder.file(c.name, c.bytes);
    EXPECT_EQ(append_file(path), c.result);
    std::vector<std::string> list;
    EXPECT_FALSE(append_file_reported(path, &list));
    EXPECT_EQ(list, std::vector{"Append failed (" + c.reason + "): " + std::string(c.name)});
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(document.files.size(), 1U);
    EXPECT_EQ(document.parts.size(), 1U);
    EXPECT_EQ(stream.vbr, vbr_constant);
  }
}

TEST_F(Append, KeepsBelow4GiB) {
  const std::string path = folder.file("sparse.mp3", Bytes(1));
  std::filesystem::resize_file(path, 0xFFFFFFFF);
  EXPECT_EQ(append_file(path), AppendResult::bad_size);
  std::filesystem::resize_file(path, 0xFFFFFFFF - 20 * length + 1);
  EXPECT_EQ(append_file(path), AppendResult::too_large);
  EXPECT_EQ(document.files.size(), 1U);
}

TEST_F(Append, ShowsTheLongReasonInABox) {
  EXPECT_FALSE(append_file_reported(folder.file("b.mp3", frames_of({.is_mono = true})), nullptr));
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].caption, "Not possible");
  EXPECT_EQ(host.boxes[0].icon, BoxIcon::warning);
  EXPECT_EQ(host.boxes[0].text,
            "Append failed: Audio parameters do not match.\nSame samplerate, channel mode,\n"
            "MPEG type and CRC needed.\n\nb.mp3");
}

TEST_F(Append, LeavesTagsAndTheHeaderOfTheFileOut) {
  const std::string tag = Mp3Builder::id3v2_frame("TIT2", "x");
  Mp3Builder file = Mp3Builder{}.id3v2(tag).vbr_header({.frames = 7, .bytes = 9}).frames(30);
  const auto begin = static_cast<std::uint32_t>(10 + tag.size() + length);
  // Only the ID3v1 tag is known; the APE tag (a header and a footer of 32 bytes) stays audio.
  const std::uint32_t end = begin + 30 * length + 32 + 100 + 32;
  ASSERT_EQ(append("b.mp3", file.ape(100, true).id3v1("b").bytes()), AppendResult::appended);
  EXPECT_EQ(document.files[1].first_audio, begin);
  EXPECT_EQ(document.files[1].audio_end, end);
  const Part& part = document.parts[1];
  EXPECT_EQ(part.part_file, 1U);
  EXPECT_EQ(part.part_filepos, begin);
  EXPECT_EQ(part.part_beg, 20 * length);
  EXPECT_EQ(part.part_size, end - begin);
  EXPECT_EQ(part.part_iscue, 1U);
  EXPECT_EQ(stream.xing_frames, 0U);
  EXPECT_EQ(stream.vbr, vbr_constant);
}

TEST_F(Append, TakesTheFirstFrameThatFits) {
  Mp3Builder file = Mp3Builder{}.zeros(30000).shape({.sample_rate = 48000}).frames(10);
  const std::size_t begin = file.size();
  ASSERT_EQ(append("b.mp3", file.shape({}).frames(30).bytes()), AppendResult::appended);
  EXPECT_EQ(document.files[1].first_audio, begin);
}

TEST_F(Append, KnowsTheStreamAfterASearchInVain) {
  stream.current_frame = {};
  EXPECT_EQ(append("b.mp3", frames_of({})), AppendResult::appended);
}

TEST_F(Append, MakesTheStreamVariableByAnotherBitrate) {
  const std::string path = folder.file("b.mp3", frames_of({.bitrate = 64}));
  ASSERT_EQ(append_file(path), AppendResult::appended);
  ASSERT_EQ(append_file(path), AppendResult::appended);
  EXPECT_EQ(stream.vbr, vbr_seen);
  EXPECT_EQ(document.files.size(), 2U);
  EXPECT_EQ(document.parts.size(), 3U);
}

TEST_F(Append, NeedsAFreePart) {
  ASSERT_TRUE(open("long.mp3", Mp3Builder{}.frames(1000).bytes()));
  for (std::uint32_t i = 1; i < 1000; ++i) ASSERT_NE(split_at(i * length), no_part);
  const std::string path = folder.file("b.mp3", frames_of({}));
  EXPECT_FALSE(append_file_reported(path, nullptr));
  EXPECT_EQ(host.boxes.back().text, "Append failed: Part creation failed\n\nb.mp3");
  EXPECT_EQ(document.files.size(), 2U);
  EXPECT_EQ(document.total_size, 1000 * length);
}

TEST_F(Append, JoinsAdtsFiles) {
  Bytes aac;
  for (int i = 0; i < 20; ++i) {
    const Bytes frame = adts_frame(44100, 372);
    aac.insert(aac.end(), frame.begin(), frame.end());
  }
  ASSERT_TRUE(open("a.aac", aac));
  EXPECT_EQ(append("b.mp3", frames_of({})), AppendResult::other_format);
  EXPECT_EQ(append("b.AAC", aac), AppendResult::appended);
  EXPECT_EQ(document.total_size, 2U * 20 * 372);
}

TEST_F(Append, OpensAllFilesOfAChoiceUntilOneFails) {
  settings.working_dir = "/music/";
  host.existing_files = {folder.file("1.mp3", frames_of({})), folder.file("2.mp3", frames_of({})),
                         folder.file("3.mp3", frames_of({.has_crc = true})),
                         folder.file("4.mp3", frames_of({}))};
  EXPECT_TRUE(open_file_dialog());
  EXPECT_EQ(host.dialogs[0].title, "Open file");
  EXPECT_EQ(host.dialogs[0].path, "/music/");
  EXPECT_EQ(host.dialogs[0].types[0].name, "MP3, AAC, MP2, CVP, CUE, M3U");
  EXPECT_EQ(document.parts.size(), 2U);
  EXPECT_EQ(document.parts[1].part_title, u"2.mp3");
  EXPECT_EQ(host.boxes.size(), 1U);

  settings.working_dir.clear();
  settings.ffmpeg = "/usr/bin/ffmpeg";
  EXPECT_FALSE(open_file_dialog());  // cancelled
  EXPECT_EQ(host.dialogs[1].path + "1.mp3", folder.path("1.mp3"));
  EXPECT_EQ(host.dialogs[1].types[2].pattern, "*.aac;*.mp4;*.m4a");
  EXPECT_EQ(document.parts.size(), 2U);

  host.existing_files.assign(100, folder.path(std::string(200, 'x')));
  EXPECT_FALSE(open_file_dialog());
  EXPECT_EQ(host.boxes.back().text, "GetOpenFileName: 12291");
  EXPECT_EQ(document.parts.size(), 2U);
}

}  // namespace
}  // namespace corvelin::test

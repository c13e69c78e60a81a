// SPDX-License-Identifier: GPL-2.0-or-later
// Opening of audio files: their bounds, headers and averages.
#include "edit/editor.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "opening/tag_bounds.h"
#include "settings/settings.h"
#include "shell/start_up.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class OpenDocument : public CoreTest {
 protected:
  [[nodiscard]] std::uint32_t end() { return document.files[0].audio_end; }
};

TEST_F(OpenDocument, TakesAPlainStreamWhole) {
  ASSERT_TRUE(open("a.mp3", frames(100)));
  EXPECT_EQ(document.total_size, 100 * length);
  EXPECT_EQ(document.parts[0].part_iscue, 1U);
  EXPECT_FLOAT_EQ(document.stream.avg_bitrate, 127706.25F);  // 417 * 44100 / 144
  EXPECT_EQ(settings.file_recent.front(), folder.path("a.mp3"));
  ASSERT_TRUE(
      open("b.mp2", frames(100, {.version = 2, .layer = 2, .bitrate = 64, .sample_rate = 22050})));
  EXPECT_FLOAT_EQ(document.stream.avg_bitrate, 63853.125F);  // 417 * 22050 / 144
  ASSERT_TRUE(open("one.mp3", frames(1)));
  EXPECT_EQ(document.total_size, length);
  ASSERT_TRUE(open("late.mp3", Mp3Builder{}.zeros(0xFFFF0).frames(50).bytes()));
  EXPECT_EQ(document.files[0].first_audio, 0xFFFF0U);
}

TEST_F(OpenDocument, TakesTagsOffBothEnds) {
  const std::string tag = Mp3Builder::id3v2_frame("TIT2", "Title");
  Mp3Builder file = Mp3Builder{}.id3v2(tag).frames(100);
  const auto audio_end = static_cast<std::uint32_t>(file.size());
  ASSERT_TRUE(open("a.mp3", file.ape(100, true).id3v1("Title").bytes()));
  EXPECT_EQ(document.stream.id3v2_size, 10 + tag.size());
  EXPECT_EQ(document.files[0].first_audio, 10 + tag.size());
  EXPECT_EQ(document.stream.ape_size, 164U);
  EXPECT_EQ(end(), audio_end);
  EXPECT_TRUE(open_state.keep_id3v1);

  settings.save_id3v1 = 0;
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(100).id3v1("Title").bytes()));
  EXPECT_FALSE(open_state.keep_id3v1);
  EXPECT_EQ(end(), 100 * length);
  // A file that is nothing else.
  InputFile only_tag;
  ASSERT_FALSE(only_tag.open(folder.file("ape.mp3", Mp3Builder{}.ape(10, true).bytes())));
  EXPECT_EQ(ape_tag_size(only_tag, 74), 74U);
  // Of an APE tag's size only 16 bits are known.
  ASSERT_TRUE(open("c.mp3", Mp3Builder{}.frames(400).ape(70000 - 32, false).bytes()));
  EXPECT_EQ(end(), 400 * length + 65536);
}

TEST_F(OpenDocument, BelievesNoTagThatIsLargerThanTheFile) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(50).ape(0, false, 60000).bytes()));
  EXPECT_EQ(document.stream.ape_size, 32U);
  EXPECT_EQ(document.total_size, 50 * length);
  EXPECT_FALSE(open("b.mp3", Mp3Builder{}.id3v2("x", 0x0FFFFFFF).frames(50).bytes()));
  EXPECT_EQ(take_box(), "File open failed: Audio file: " + folder.path("b.mp3") + "\n");

  Bytes bytes = Mp3Builder{}.id3v2(std::string(300, '\0')).frames(50).bytes();
  bytes[8] = 0;
  bytes[9] = 255;  // size bytes count whole: 10 + 255, not 10 + 127
  ASSERT_TRUE(open("c.mp3", bytes));
  EXPECT_EQ(document.stream.id3v2_size, 265U);
  EXPECT_EQ(document.files[0].first_audio, 310U);
}

TEST_F(OpenDocument, RefusesWhatHoldsNoAudio) {
  const std::string long_tag(0x100000, '\0');
  for (const Bytes& bytes :
       {Bytes{}, Bytes(9, 0xFF), Bytes(200, 0xFF), Bytes(3000000),
        Mp3Builder{}.id3v2(std::string(500, 'x')).bytes(), Mp3Builder{}.id3v1("x").bytes(),
        Mp3Builder{}.ape(10, true).bytes(), Mp3Builder{}.zeros(0x120000).frames(50).bytes(),
        Mp3Builder{}.id3v2(long_tag).zeros(10100).frames(50).bytes()}) {
    EXPECT_FALSE(open("a.mp3", bytes)) << bytes.size();
    EXPECT_TRUE(document.files.empty());
    EXPECT_EQ(host.boxes.size(), 1U) << bytes.size();
    host.boxes.clear();
  }
  for (std::size_t size = 1; size <= 100; ++size) {
    Bytes bytes = frames(1);
    bytes.resize(size);
    EXPECT_FALSE(open("short.mp3", bytes)) << size;
  }
}

TEST_F(OpenDocument, ChoosesByTheExtensionAlone) {
  const Bytes bytes = frames(50);
  EXPECT_TRUE(open("a.MPA", bytes));
  EXPECT_FALSE(open("a.aac", bytes));
  EXPECT_FALSE(open("a.wav", bytes));
  EXPECT_EQ(take_box().find("Unsupported"), std::string::npos);
  EXPECT_FALSE(open("a.mp4", bytes));  // without a program to read it nothing is said
  EXPECT_EQ(take_box(), "");
  const std::string nothing = folder.path("nothing");
  settings.file_recent = {"x", nothing};
  EXPECT_FALSE(open(nothing));
  EXPECT_EQ(host.boxes.back().text, "Audio file: " + nothing + "\n\n\nUnsupported file type.");
  EXPECT_FALSE(open(settings.file_recent.emplace_back(folder.path("gone.mp3"))));
  EXPECT_EQ(settings.file_recent, std::vector<std::string>{"x"});
}

TEST_F(OpenDocument, ReadsAnInfoHeader) {
  const VbrHeader header = {
      .marker = "Info", .frames = 200, .bytes = 100000, .encoder = "LAME3.100"};
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header(header).frames(200).bytes()));
  EXPECT_EQ(document.files[0].first_audio, length);
  EXPECT_EQ(document.stream.has_info_header, 1U);
  EXPECT_EQ(document.stream.vbr, 0);
  EXPECT_FLOAT_EQ(document.stream.avg_frame_size, 500.0F);
  EXPECT_EQ(document.stream.encoder_tag[0], 'L');
  EXPECT_EQ(document.stream.xing_quality, 255);

  ASSERT_TRUE(open("alone.mp3", Mp3Builder{}.vbr_header({.marker = "Info"}).bytes()));
  EXPECT_EQ(document.total_size, length);  // stays audio
  // A header that says nothing of frames, and one that is longer than its file.
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.vbr_header({.bytes = 41700}).frames(100).bytes()));
  EXPECT_FLOAT_EQ(document.stream.avg_frame_size, 417.0F);  // sampled
  const FrameShape small = {.version = 2, .bitrate = 8, .sample_rate = 24000, .is_mono = true};
  ASSERT_TRUE(
      open("c.mp3", Mp3Builder{}.shape(small).vbr_header({.marker = "Info"}).frames(1).bytes()));
  EXPECT_EQ(document.stream.has_info_header, 1U);
}

TEST_F(OpenDocument, TheKindIsThatOfTheMusicBehindAVbriHeader) {
  Bytes header = mpeg_frame({.bitrate = 64, .is_mono = true, .has_crc = true});
  std::ranges::copy(std::string_view("VBRI"), header.begin() + 36);
  const std::string path = folder.file("a.mp3", Mp3Builder{}.raw(header).frames(50).bytes());
  ASSERT_TRUE(open(path));
  EXPECT_EQ(document.total_size, 50 * length);
  EXPECT_EQ(document.kind, kind_of(selection.current_frame));
  EXPECT_FALSE(document.kind.has_crc);
  EXPECT_EQ(document.stream.vbr, vbr_constant);
  EXPECT_TRUE(append_file_reported(document, path, nullptr));
  EXPECT_EQ(document.total_size, 100 * length);
}

TEST_F(OpenDocument, BelievesAXingHeaderWithin3000Bytes) {
  constexpr std::uint32_t size = 100 * length;
  struct {
    std::uint32_t bytes, flags;
    int vbr, quality;
  } const rows[] = {{size + 3000, 15, 6, 57},
                    {size - 3000, 3, 2, 255},
                    {size + 3001, 15, 0, 57},
                    {size - 3001, 15, 0, 57},
                    {0xFFFFFFFF, 15, 0, 57}};  // absurd, and it would wrap
  for (const auto& row : rows) {
    VbrHeader header = {.flags = row.flags, .frames = 100, .bytes = row.bytes, .quality = 57};
    header.toc[0] = 9;
    header.toc[99] = 250;
    EXPECT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header(header).frames(100).bytes()));
    EXPECT_EQ(document.stream.vbr, row.vbr) << row.bytes;
    EXPECT_EQ(document.stream.xing_quality, row.quality) << row.bytes;
    EXPECT_EQ(document.stream.xing_frames, 100U);
    EXPECT_TRUE(row.vbr != 6 || (document.stream.toc[0] == 0 && document.stream.toc[99] == 250));
  }
}

TEST_F(OpenDocument, TellsAVariableBitrateFromPadding) {
  Mp3Builder constant;
  for (int i = 0; i < 150; ++i) constant.frame({}).frame({.has_padding = true});
  ASSERT_TRUE(open("a.mp3", constant.bytes()));
  EXPECT_EQ(document.stream.vbr, 0);
  EXPECT_FLOAT_EQ(document.stream.avg_frame_size, 417.5F);
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(99).frame({.bitrate = 160}).frames(99).bytes()));
  EXPECT_EQ(document.stream.vbr, 1);
  // A change behind the first 100,000 bytes isn't looked for.
  ASSERT_TRUE(open("c.mp3", Mp3Builder{}.frames(300).shape({.bitrate = 160}).frames(50).bytes()));
  EXPECT_EQ(document.stream.vbr, 0);

  ASSERT_TRUE(open("a.aac", Mp3Builder{}.adts(100, 300).adts(100, 302).bytes()));
  EXPECT_EQ(document.total_size, 100U * 602);
  EXPECT_EQ(document.stream.xing_quality, 255);
  EXPECT_NEAR(document.stream.avg_frame_size, 301.0, 0.05);
  EXPECT_NEAR(document.stream.avg_bitrate, 301.0 * 44100 / 128, 20);
}

// The sampling may find nothing: of a short audio behind its tags, which lies in the margin that
// the sampling keeps to the file's end, and in junk, where the last frame found still counts.
TEST_F(OpenDocument, KnowsTheRateOfAllThatOpens) {
  const std::string tag = Mp3Builder::id3v2_frame("TIT2", std::string(3000, 'x'));
  const Bytes frame = mpeg_frame({});
  Mp3Builder junk = Mp3Builder{}.frames(30);
  for (int i = 0; i < 40000; ++i) junk.raw("\xFF\xE0");
  const Bytes streams[] = {Mp3Builder{}.id3v2(tag).frames(1).bytes(),
                           Mp3Builder{}.id3v2(tag).frames(3).id3v1("x").bytes(),
                           Mp3Builder{}.id3v2(tag).vbr_header({.marker = "Info"}).frames(1).bytes(),
                           junk.bytes()};
  for (const Bytes& bytes : streams) {
    ASSERT_TRUE(open("a.mp3", bytes)) << bytes.size();
    EXPECT_FLOAT_EQ(document.stream.avg_bitrate, 127706.25F) << bytes.size();
    EXPECT_EQ(document.kind, kind_of(selection.current_frame));
  }
}

TEST_F(OpenDocument, EndsBeforeALastFrameThatIsCutOff) {
  Bytes bytes = frames(100);
  bytes.resize(bytes.size() - 100);
  ASSERT_TRUE(open("a.mp3", bytes));
  EXPECT_EQ(end(), 99 * length);
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(100).zeros(500).bytes()));
  EXPECT_EQ(end(), 100 * length + 500);
  Bytes other = mpeg_frame({.sample_rate = 48000});  // no frame of this stream
  other.resize(100);
  ASSERT_TRUE(open("c.mp3", Mp3Builder{}.frames(100).raw(other).bytes()));
  EXPECT_EQ(end(), 100 * length + 100);
  // The payload of a last frame may hold what looks like the start of another.
  for (Bytes last : {mpeg_frame({}), adts_frame(44100, 4500)}) {
    const bool is_aac = last.size() > length;
    const Bytes inside = is_aac ? adts_frame(44100, 5000) : mpeg_frame({});
    std::copy_n(inside.begin(), 9, last.begin() + 200);
    bytes = Mp3Builder{}.raw(last).raw(last).raw(last).bytes();
    ASSERT_TRUE(open(is_aac ? "d.aac" : "d.mp3", bytes));
    EXPECT_EQ(end(), bytes.size());
  }
}

TEST_F(OpenDocument, BeginsEachDocumentAfresh) {
  ASSERT_TRUE(open("a.mp3", frames(50, {.copyright = true})));
  EXPECT_EQ(document.header_rewrite.rewrite_copyright, 1U);
  document.header_rewrite.rewrite_header = true;
  selection.sel_beg = selection.sel_end = 417;
  document.sheet_title = u"old";
  open_state.save_name = "old";
  ASSERT_TRUE(open("b.mp3", frames(50)));
  EXPECT_FALSE(document.header_rewrite.rewrite_header || document.header_rewrite.rewrite_copyright);
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_TRUE(document.sheet_title.empty() && open_state.save_name.empty());
}

}  // namespace
}  // namespace corvelin::test

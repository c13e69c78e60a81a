// Opening of audio files: their bounds, headers and averages.
#include <functional>

#include "exchange/settings.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "stream/frame_header.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class OpenDocument : public CoreTest {
 protected:
  [[nodiscard]] static std::uint32_t end() { return document.files[0].audio_end; }
};

TEST_F(OpenDocument, TakesAPlainStreamWhole) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(100).bytes()));
  EXPECT_EQ(document.total_size, 100 * length);
  EXPECT_EQ(document.parts[0].part_iscue, 1U);
  EXPECT_EQ(stream.vbr, 0);
  EXPECT_FLOAT_EQ(stream.avg_frame_size, 417.0F);
  EXPECT_FLOAT_EQ(stream.avg_bitrate, 127706.25F);  // 417 * 44100 / 144
  EXPECT_EQ(settings.file_recent.front(), folder.path("a.mp3"));
  EXPECT_TRUE(host.boxes.empty());
}

TEST_F(OpenDocument, TakesTagsOffBothEnds) {
  const std::string frame = Mp3Builder::id3v2_frame("TIT2", std::string("\0Title", 6));
  Mp3Builder file = Mp3Builder{}.id3v2(frame).frames(100);
  const auto audio_end = static_cast<std::uint32_t>(file.size());
  ASSERT_TRUE(open("a.mp3", file.ape(100, true).id3v1("Title").bytes()));
  EXPECT_EQ(stream.id3v2_size, 10 + frame.size());
  EXPECT_EQ(document.files[0].first_audio, 10 + frame.size());
  EXPECT_EQ(stream.ape_size, 164U);
  EXPECT_EQ(end(), audio_end);
  EXPECT_TRUE(open_state.keep_id3v1);

  settings.save_id3v1 = 0;
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(100).id3v1("Title").bytes()));
  EXPECT_FALSE(open_state.keep_id3v1);
  EXPECT_EQ(end(), 100 * length);
}

TEST_F(OpenDocument, KnowsOnly16BitsOfAnApeSize) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(400).ape(70000 - 32, false).bytes()));
  EXPECT_EQ(stream.ape_size, 70000U - 65536);
  EXPECT_EQ(end(), 400 * length + 65536);
}

TEST_F(OpenDocument, BelievesNoTagThatIsLargerThanTheFile) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(50).ape(0, false, 60000).bytes()));
  EXPECT_EQ(stream.ape_size, 32U);
  EXPECT_EQ(document.total_size, 50 * length);
  EXPECT_FALSE(open("b.mp3", Mp3Builder{}.id3v2("x", 0x0FFFFFFF).frames(50).bytes()));
  EXPECT_EQ(host.boxes.back().caption, "File open failed");
  EXPECT_EQ(host.boxes.back().text, "Audio file: " + folder.path("b.mp3") + "\n");
}

TEST_F(OpenDocument, CountsId3v2SizeBytesWhole) {
  Bytes bytes = Mp3Builder{}.id3v2(std::string(300, '\0')).frames(50).bytes();
  bytes[8] = 0;
  bytes[9] = 255;  // 10 + 255, not 10 + 127
  ASSERT_TRUE(open("a.mp3", bytes));
  EXPECT_EQ(stream.id3v2_size, 265U);
  EXPECT_EQ(document.files[0].first_audio, 310U);
}

struct Refused {
  std::string name;
  std::function<Bytes()> bytes;
};

TEST_F(OpenDocument, RefusesWhatHoldsNoAudio) {
  const std::vector<Refused> files = {
      {"Empty", [] { return Bytes{}; }},
      {"NineBytes", [] { return Bytes(9, 0xFF); }},
      {"TagAlone", [] { return Mp3Builder{}.id3v2(std::string(500, 'x')).bytes(); }},
      {"Id3v1Alone", [] { return Mp3Builder{}.id3v1("x").bytes(); }},
      {"ApeAlone", [] { return Mp3Builder{}.ape(10, true).bytes(); }},
      {"HalfAFrame", [] { return Bytes(200, 0xFF); }},
      {"Zeros", [] { return Bytes(3000000); }},
      {"LongJunk", [] { return Mp3Builder{}.zeros(0x120000).frames(50).bytes(); }},
      {"LongTagAndJunk",
       [] {
         return Mp3Builder{}.id3v2(std::string(0x100000, '\0')).zeros(10100).frames(50).bytes();
       }},
  };
  for (const Refused& file : files) {
    EXPECT_FALSE(open(file.name + ".mp3", file.bytes())) << file.name;
    EXPECT_TRUE(document.files.empty()) << file.name;
    EXPECT_EQ(host.boxes.size(), 1U) << file.name;
    host.boxes.clear();
  }
  for (std::size_t size = 1; size <= 100; ++size) {
    Bytes bytes = Mp3Builder{}.frames(1).bytes();
    bytes.resize(size);
    EXPECT_FALSE(open("short.mp3", bytes)) << size;
  }
}

TEST_F(OpenDocument, OpensWhatAnEarOrTwoFramesAreEnoughFor) {
  ASSERT_TRUE(open("one.mp3", Mp3Builder{}.frames(1).bytes()));
  EXPECT_EQ(document.total_size, length);
  ASSERT_TRUE(open("late.mp3", Mp3Builder{}.zeros(0xFFFF0).frames(50).bytes()));
  EXPECT_EQ(document.files[0].first_audio, 0xFFFF0U);
}

TEST_F(OpenDocument, ChoosesByTheExtensionAlone) {
  const Bytes bytes = Mp3Builder{}.frames(50).bytes();
  EXPECT_TRUE(open("a.MPA", bytes));
  EXPECT_FALSE(open("a.aac", bytes));
  EXPECT_FALSE(open("a.wav", bytes));
  EXPECT_EQ(host.boxes.back().text.find("Unsupported"), std::string::npos);
  host.boxes.clear();
  EXPECT_FALSE(open("a.mp4", bytes));  // without a program to read it nothing is said
  EXPECT_TRUE(host.boxes.empty());
  open_state.audio_name = "nothing";
  EXPECT_FALSE(open_document());
  EXPECT_EQ(host.boxes.back().text, "Audio file: nothing\n\n\nUnsupported file type.");
}

TEST_F(OpenDocument, ForgetsARecentFileThatFailed) {
  settings.file_recent = {"x", folder.path("gone.mp3")};
  open_state.audio_name = folder.path("gone.mp3");
  EXPECT_FALSE(open_document());
  EXPECT_EQ(settings.file_recent, std::vector<std::string>{"x"});
}

TEST_F(OpenDocument, ReadsAnInfoHeader) {
  const VbrHeader header = {
      .marker = "Info", .frames = 200, .bytes = 100000, .encoder = "LAME3.100"};
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header(header).frames(200).bytes()));
  EXPECT_EQ(document.files[0].first_audio, length);
  EXPECT_EQ(stream.has_info_header, 1U);
  EXPECT_EQ(stream.vbr, 0);
  EXPECT_EQ(stream.xing_frames, 200U);
  EXPECT_FLOAT_EQ(stream.avg_frame_size, 500.0F);
  EXPECT_EQ(stream.encoder_tag[0], 'L');
  EXPECT_EQ(stream.xing_quality, 255);
}

TEST_F(OpenDocument, KeepsALoneInfoFrameAsAudio) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header({.marker = "Info"}).bytes()));
  EXPECT_EQ(document.total_size, length);
  EXPECT_EQ(document.files[0].first_audio, 0U);
}

TEST_F(OpenDocument, BelievesAXingHeaderWithin3000Bytes) {
  const auto vbr_with = [&](std::int64_t difference, std::uint32_t flags) {
    VbrHeader header = {.flags = flags,
                        .frames = 100,
                        .bytes = static_cast<std::uint32_t>(100 * length + difference),
                        .quality = 57};
    header.toc[0] = 9;
    header.toc[99] = 250;
    EXPECT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header(header).frames(100).bytes()));
    return int{stream.vbr};
  };
  EXPECT_EQ(vbr_with(3000, 15), 6);
  EXPECT_EQ(stream.toc[0], 0);
  EXPECT_EQ(stream.toc[99], 250);
  EXPECT_EQ(stream.xing_quality, 57);
  EXPECT_EQ(vbr_with(-3000, 3), 2);
  EXPECT_EQ(stream.xing_quality, 255);
  EXPECT_EQ(vbr_with(3001, 15), 0);
  EXPECT_EQ(vbr_with(0xFFFFFFFF - std::int64_t{100} * length, 15), 0);  // absurd, and it would wrap
  EXPECT_EQ(vbr_with(-3001, 15), 0);
  EXPECT_EQ(stream.xing_frames, 100U);
}

TEST_F(OpenDocument, SurvivesAHeaderWithoutFrames) {
  const VbrHeader header = {.flags = 15, .frames = 0, .bytes = 100 * length};
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.vbr_header(header).frames(100).bytes()));
  EXPECT_FLOAT_EQ(stream.avg_frame_size, 417.0F);  // sampled
}

TEST_F(OpenDocument, ReadsAMarkerInAFileShorterThanItsHeader) {
  const FrameShape small = {.version = 2, .bitrate = 8, .sample_rate = 24000, .is_mono = true};
  ASSERT_TRUE(
      open("a.mp3", Mp3Builder{}.shape(small).vbr_header({.marker = "Info"}).frames(1).bytes()));
  EXPECT_EQ(stream.has_info_header, 1U);
}

TEST_F(OpenDocument, TellsAVariableBitrateFromPadding) {
  Mp3Builder constant;
  for (int i = 0; i < 150; ++i) constant.frame({}).frame({.has_padding = true});
  ASSERT_TRUE(open("a.mp3", constant.bytes()));
  EXPECT_EQ(stream.vbr, 0);
  EXPECT_FLOAT_EQ(stream.avg_frame_size, 417.5F);

  Mp3Builder variable = Mp3Builder{}.frames(100).frame({.bitrate = 160}).frames(100);
  ASSERT_TRUE(open("b.mp3", variable.bytes()));
  EXPECT_EQ(stream.vbr, 1);

  // A change behind the first 100,000 bytes isn't looked for.
  Mp3Builder late = Mp3Builder{}.frames(300).shape({.bitrate = 160}).frames(50);
  ASSERT_TRUE(open("c.mp3", late.bytes()));
  EXPECT_EQ(stream.vbr, 0);
}

TEST_F(OpenDocument, EndsBeforeALastFrameThatIsCutOff) {
  Bytes bytes = Mp3Builder{}.frames(100).bytes();
  bytes.resize(bytes.size() - 100);
  ASSERT_TRUE(open("a.mp3", bytes));
  EXPECT_EQ(end(), 99 * length);
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(100).zeros(500).bytes()));
  EXPECT_EQ(end(), 100 * length + 500);
}

TEST_F(OpenDocument, OpensAacByFrameLengths) {
  Mp3Builder aac;
  for (std::size_t i = 0; i < 200; ++i) aac.raw(adts_frame(44100, 300 + i % 3));
  ASSERT_TRUE(open("a.aac", aac.bytes()));
  EXPECT_EQ(stream.is_aac, 1U);
  EXPECT_EQ(document.total_size, aac.size());
  EXPECT_NEAR(stream.avg_frame_size, 301.0, 0.02);
  EXPECT_NEAR(stream.avg_bitrate, 301.0 * 44100 / 128, 10);
}

TEST_F(OpenDocument, BeginsEachDocumentAfresh) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.shape({.copyright = true}).frames(50).bytes()));
  EXPECT_EQ(header_rewrite.rewrite_copyright, 1U);
  header_rewrite.rewrite_header = true;
  selection.sel_beg = selection.sel_end = 417;
  document.sheet_title = u"old";
  open_state.save_name = "old";
  ASSERT_TRUE(open("b.mp3", Mp3Builder{}.frames(50).bytes()));
  EXPECT_FALSE(header_rewrite.rewrite_header);
  EXPECT_EQ(header_rewrite.rewrite_copyright, 0U);
  EXPECT_EQ(selection.sel_beg, no_position);
  EXPECT_TRUE(document.sheet_title.empty());
  EXPECT_TRUE(open_state.save_name.empty());
}

}  // namespace
}  // namespace corvelin::test

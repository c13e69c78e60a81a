// SPDX-License-Identifier: GPL-2.0-or-later
// VBR/Info headers as written, byte by byte.
#include "exchange/vbr_header.h"

#include "edit/editor.h"
#include "exchange/range_copy.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class VbrHeaderTest : public CoreTest {
 protected:
  // Writes a header in front of `audio` and returns the whole file.
  Bytes write(const Bytes& audio, std::uint32_t frame_count, const Bytes& before = {}) {
    OutputFile target;
    std::filesystem::remove(folder.path("out"));
    EXPECT_FALSE(target.create_new(folder.path("out")));
    EXPECT_FALSE(target.write(before));
    EXPECT_FALSE(target.write(make_vbr_frame(document, selection.current_frame)));
    EXPECT_FALSE(target.write(audio));
    result = make_vbr_header(document, target, before.size(), frame_count);
    EXPECT_FALSE(result.error);
    EXPECT_FALSE(target.write_at(result.place, result.fields));
    EXPECT_FALSE(target.close());
    return read_file(folder.path("out"));
  }

  // Copies the whole stream, with the header that it gets.
  Bytes copy() {
    OutputFile target;
    std::filesystem::remove(folder.path("out"));
    EXPECT_FALSE(target.create_new(folder.path("out")));
    RangeCopy copy(document, selection, target);
    copy.begin(whole_stream(document), {});
    while (copy.phase() != RangeCopy::Phase::over)
      if (copy.step()) return {};
    EXPECT_FALSE(target.close());
    return read_file(folder.path("out"));
  }

  VbrHeaderFields result;
};

std::uint32_t number_at(const Bytes& bytes, std::size_t at) {
  return static_cast<std::uint32_t>(bytes[at] << 24 | bytes[at + 1] << 16 | bytes[at + 2] << 8 |
                                    bytes[at + 3]);
}

std::string text_at(const Bytes& bytes, std::size_t at, std::size_t size) {
  return std::string(bytes.begin(), bytes.end()).substr(at, size);
}

TEST_F(VbrHeaderTest, DescribesAVariableStream) {
  Mp3Builder audio = Mp3Builder{}.shape({.has_crc = true, .copyright = true});
  for (int i = 0; i < 100; ++i) audio.frame({.bitrate = 64}).frame({.bitrate = 320});
  ASSERT_TRUE(open("a.mp3", frames(5, {.has_crc = true, .has_padding = true})));
  document.stream.vbr = 1;
  document.stream.xing_quality = 60;
  std::copy_n("LAME3.100", 9, document.stream.encoder_tag.begin());
  const Bytes file = write(audio.bytes(), 200, Bytes(300, 'x'));

  const std::size_t header = 300;
  EXPECT_EQ(number_at(file, header), 0xFFFB9000U);  // no CRC, no padding, 128 kbit/s
  EXPECT_EQ(text_at(file, 336, 8), std::string("Xing\0\0\0\x0F", 8));
  EXPECT_EQ(number_at(file, header + 44), 200U);
  EXPECT_EQ(number_at(file, header + 48), 417 + audio.size());
  EXPECT_EQ(number_at(file, header + 36 + 116), 60U);
  EXPECT_EQ(text_at(file, 456, 9), "LAME3.100");
  EXPECT_EQ(number_at(file, header + 36 + 148), 417 + audio.size());
  // Frame 2i lies at i per cent of the time, and the header's own frame is frame 0: in front of it
  // are that, i frames of 208 bytes and i - 1 of 1044, out of 125,617 bytes in all.
  const std::size_t table = header + 36 + 16;
  EXPECT_EQ(file[table], 0);
  EXPECT_EQ(file[table + 1], 1);     // 625 bytes: 1.27
  EXPECT_EQ(file[table + 25], 63);   // 30,673 bytes: 62.51
  EXPECT_EQ(file[table + 50], 126);  // 61,973 bytes: 126.30
  EXPECT_EQ(file[table + 99], 251);  // 123,321 bytes: 251.32
  EXPECT_TRUE(result.is_complete);
}

TEST_F(VbrHeaderTest, SaysNoMoreThanItKnows) {
  ASSERT_TRUE(open("a.mp3", frames(5)));
  document.stream.xing_quality = 60;
  std::copy_n("LAME", 4, document.stream.encoder_tag.begin());
  settings.keep_lame = 0;
  Bytes file = write(frames(5), 5);  // of a constant stream
  EXPECT_EQ(text_at(file, 36, 8), std::string("Info\0\0\0\x03", 8));
  EXPECT_EQ(text_at(file, 52, 365), std::string(365, '\0'));
  settings.keep_lame = 1;
  file = write(frames(3), 3);  // of a selection: the tag tells its length
  EXPECT_EQ(number_at(file, 36 + 120 + 28), 4 * length);

  document.stream.vbr = 1;
  document.stream.xing_quality = 255;  // none
  EXPECT_EQ(number_at(write(frames(50), 50), 40), 7U);
  document.stream.xing_quality = 10;
  add_source_file(document, folder.file("b.mp3", frames(50)));
  EXPECT_EQ(number_at(write(frames(50), 50), 40), 7U);  // one encoder's, and there are two files
  copy();
  EXPECT_EQ(document.stream.xing_quality, 255);  // a save that wrote the header forgets it
  file = write(Mp3Builder{}.frames(100).zeros(10).frames(100).bytes(), 200);
  EXPECT_FALSE(result.is_complete);  // the table ends at a bad frame
  EXPECT_EQ(number_at(file, 40), 3U);
  EXPECT_EQ(number_at(file, 44), 200U);
}

// Frames of a low bitrate end before the header does; the audio behind must stay as it is.
TEST_F(VbrHeaderTest, StaysInsideItsFrame) {
  const std::pair<FrameShape, std::size_t> rows[] = {
      // and the size of the header's frame
      {{.bitrate = 48}, 156},
      {{.version = 2, .bitrate = 8, .sample_rate = 16000}, 0},
      {{.version = 2, .bitrate = 8, .sample_rate = 22050, .is_mono = true}, 0},
      {{.version = 2, .bitrate = 8, .sample_rate = 16000, .is_mono = true}, 36}};
  for (const auto& [shape, size] : rows) {
    const Bytes audio = frames(9, shape);
    ASSERT_TRUE(open("a.mp3", audio));
    std::copy_n("LAME", 4, document.stream.encoder_tag.begin());
    document.stream.has_info_header = 1;
    const Bytes file = copy();
    ASSERT_EQ(file.size(), size + audio.size());
    EXPECT_EQ(Bytes(file.begin() + static_cast<long>(size), file.end()), audio);
    EXPECT_EQ(text_at(file, 0, size).find("LAME"), std::string::npos);
  }
}

}  // namespace
}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// Peaks measured through each of the decoders, against those of another program, and what becomes
// of a measuring without a decoder.
#include "audio/sample_reader.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "audio/decoder_bridge.h"
#include "audio/fill_step.h"
#include "audio/playback.h"
#include "audio/stretch_peaks.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "platform/codecs/aac_decoder.h"
#include "platform/codecs/dynamic_library.h"
#include "platform/codecs/mpeg_decoder.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Samples : public CoreTest {
 protected:
  ~Samples() override { library_folder.clear(); }

  bool open_sample(const std::string& name) {
    return open(std::string(CORVELIN_SAMPLES "/") + name);
  }

  // Opens it at the cursor, up to the end of the stream.
  bool open_reader(SampleReader& reader, std::uint32_t frames_a_read = 1) {
    return reader.open(edit_cursor(document, selection), document.total_size, frames_a_read);
  }

  struct Decoded {
    EditPosition begin;  // of the frame
    std::vector<std::int16_t> samples;
  };

  // The frames from `first` on, one by one. The first one of AAC only opens the decoder.
  std::vector<Decoded> decode_from(EditPosition first, std::size_t most = 2000) {
    seek_to(playback, first);
    SampleReader reader(document);
    EXPECT_TRUE(open_reader(reader));
    std::vector<Decoded> frames;
    while (reader.pos() < document.total_size && frames.size() < most) {
      const EditPosition begin = reader.pos();
      const std::span<const std::int16_t> samples = reader.read(1);
      frames.push_back({begin, {samples.begin(), samples.end()}});
    }
    return frames;
  }
};

struct SamplePeaks {
  const char* name;
  Decoder decoder;
  std::uint32_t frames_a_read;
  int tolerance;
  std::vector<int> peaks;  // by ffmpeg -flags2 +skip_manual
};

TEST_F(Samples, FindsThePeaksThatAnotherDecoderFinds) {
  const SamplePeaks table[] = {
      {"cbr128.mp3",
       Decoder::codec_manager,
       100,
       1,
       {12074, 11118, 9859, 12387, 19345, 19088, 17050}},
      {"vbr.mp3", Decoder::mpglib, 100, 1, {14718, 18216, 12238, 8449, 17958, 17304, 18331}},
      {"crc.mp3", Decoder::codec_manager, 100, 1, {14847, 14088, 12945, 15342, 17804}},
      {"mono_mpeg2.mp3",
       Decoder::codec_manager,
       100,
       1,
       {15920, 11184, 15654, 15221, 7865, 13700, 15640}},
      {"layer2.mp2", Decoder::mpglib, 100, 1, {14300, 15754, 13171, 14011}},
      // Behind the frame that opens the decoder. Noise substitution differs between decoders.
      {"speech.aac", Decoder::faad, 100, 40, {17586, 18716, 15568, 9546, 15390, 14137, 17184}},
      // Doubled in rate, which lets the wave rise between the samples.
      {"stereo_low.aac", Decoder::faad, 25, 400, {15651, 14229}},
  };
  for (const SamplePeaks& row : table) {
    SCOPED_TRACE(row.name);
    ASSERT_TRUE(open_sample(row.name));
    settings.use_mpglib = row.decoder == Decoder::mpglib ? 1 : 0;
    ASSERT_EQ(chosen_decoder(document), row.decoder);
    SampleReader reader(document);
    ASSERT_TRUE(open_reader(reader, row.frames_a_read));
    for (const int peak : row.peaks)
      EXPECT_NEAR(reader.read_peak(row.frames_a_read), peak, row.tolerance);
  }
}

// How far two runs of samples are apart at most.
int distance(const std::vector<std::int16_t>& a, const std::vector<std::int16_t>& b) {
  if (a.size() != b.size()) return 65536;
  int furthest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) furthest = std::max(furthest, std::abs(a[i] - b[i]));
  return furthest;
}

TEST_F(Samples, DecodesBehindASeekWhatAStraightRunGives) {
  for (const char* name :
       {"cbr128.mp3", "vbr.mp3", "mono_mpeg2.mp3", "crc.mp3", "stereo_low.aac"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(open_sample(name));
    const std::vector<Decoded> straight = decode_from(0);
    for (std::size_t frame = 20; frame + 20 < straight.size(); frame += 37) {
      const std::vector<Decoded> part = decode_from(straight[frame].begin, 10);
      const std::size_t opening = part[0].begin == straight[frame].begin ? 0 : 1;
      for (std::size_t i = 0; i < part.size(); ++i)
        EXPECT_LE(distance(part[i].samples, straight[frame + opening + i].samples), 1) << frame;
    }
  }
}

TEST_F(Samples, DecodesOnBehindDamageAndAnotherChannelMode) {
  settings.use_mpglib = 1;
  Bytes bytes = read_file(CORVELIN_SAMPLES "/crc.mp3");
  ASSERT_TRUE(open("whole.mp3", bytes));
  const std::vector<Decoded> whole = decode_from(0);
  for (std::size_t i = 50'000; i < 51'000; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
  ASSERT_TRUE(open("damaged.mp3", bytes));
  const std::vector<Decoded> damaged = decode_from(0);
  ASSERT_GT(damaged.size(), 400U);
  EXPECT_EQ(damaged[100].samples, whole[100].samples);
  EXPECT_EQ(damaged.back().samples, whole.back().samples);

  // Frames of one channel in the midst of a stream of two, and the other way round.
  const Bytes two = frames(10);
  const Bytes one = frames(10, {.is_mono = true});
  for (const bool is_mono : {false, true}) {
    ASSERT_TRUE(open("mixed.mp3", Mp3Builder{}
                                      .raw(is_mono ? one : two)
                                      .raw(is_mono ? two : one)
                                      .raw(is_mono ? one : two)
                                      .bytes()));
    const std::vector<Decoded> mixed = decode_from(0);
    std::size_t total = 0;
    for (const Decoded& frame : mixed) total += frame.samples.size();
    EXPECT_EQ(total, 30U * 1152 * (is_mono ? 1 : 2));
  }
}

TEST_F(Samples, EndWhereTheyAreToAndLeaveTheCursorAlone) {
  ASSERT_TRUE(open_sample("cbr128.mp3"));
  const EditPosition third = next_frame_in(
      document, 0, next_frame_in(document, 0, 0, selection.current_frame), selection.current_frame);
  seek_to(playback, frame_at(document, 100'000, selection.current_frame));
  const Selection before = selection;
  SampleReader reader(document);
  ASSERT_TRUE(reader.open(edit_cursor(document, selection), third, 6));
  reader.move_to(0);
  reader.read_peak(6);
  EXPECT_EQ(reader.pos(), third);
  EXPECT_EQ(reader.read_peak(6), 0);
  EXPECT_EQ(reader.pos(), third);
  reader.close();
  reader.move_to(0);
  EXPECT_EQ(reader.read_peak(6), 0);  // no session
  EXPECT_EQ(selection.cursor, before.cursor);
  EXPECT_EQ(selection.current_frame, before.current_frame);
}

TEST_F(Samples, TwoDecodersFindThePeakOfOne) {
  // Of all samples the one whose rounding depends most on the frames before.
  const Bytes once = read_file(CORVELIN_SAMPLES "/mono_mpeg2.mp3");
  Mp3Builder builder;
  for (int i = 0; i < 11; ++i) builder.raw(once);
  ASSERT_TRUE(open("long.mp3", builder.bytes()));
  StretchPeaks stretch(document);
  SampleReader reader(document);
  ASSERT_TRUE(stretch.open(0, document.total_size, 1));
  ASSERT_TRUE(open_reader(reader, 10));
  while (reader.pos() < document.total_size) {
    int peak = 0;
    for (int i = 0; i < 400; ++i) peak = std::max<int>(peak, reader.read_peak(10));
    EXPECT_EQ(stretch.read(), peak);
    EXPECT_EQ(stretch.pos(), reader.pos());
  }
  EXPECT_EQ(stretch.frames(), 11U * 830);
}

TEST_F(Samples, OfAacBeginBehindTheFrameThatOpensItsDecoder) {
  ASSERT_TRUE(open_sample("speech.aac"));
  seek_to(playback, document.total_size / 2);
  const EditPosition cursor = selection.cursor;
  SampleReader reader(document);
  ASSERT_TRUE(open_reader(reader, 100));
  EXPECT_GT(reader.pos(), cursor);
  reader.move_to(0);
  std::size_t size = 0;
  while (reader.pos() < document.total_size) size += reader.read(100).size();
  EXPECT_EQ(reader.frames(), 875U);
  EXPECT_EQ(size, 874U * 1024 * 2);
  EXPECT_EQ(selection.cursor, cursor);
}

TEST_F(Samples, TellsWhatToInstall) {
  const Bytes aac = Mp3Builder{}.adts(20, 200).bytes();
  const Bytes layer2 = frames(20, {.layer = 2});
  struct Row {
    const char* name;
    Bytes bytes;
    std::uint32_t use_mpglib;
    const char* caption;
    const char* last_line;
  };
  const Row table[] = {
      {"a.mp3", frames(20), 0, "Could not open ACM Codec: mpglib installation", "libmpg123-0"},
      {"a.mp3", frames(20), 1, "Could not load mpglib.dll: mpglib installation", "libmpg123-0"},
      {"a.mp2", layer2, 1, "Could not load mpglib.dll: mpglib installation", "libmpg123-0"},
      {"a.mp2", layer2, 0, "Layer 2 only supported with mpglib.dll: mpglib", "libmpg123-0"},
      {"a.aac", aac, 0, "libfaad2.dll needed for AAC playback: AAC decoder", "libfaad2"},
  };
  // Without the libraries, and with ones that are others than their names say.
  for (const bool are_there : {false, true}) {
    library_folder = folder.path(are_there ? "others" : "none");
    std::filesystem::create_directory(library_folder);
    if (are_there)
      for (const char* name : {"/libmpg123.so.0", "/libfaad.so.2"})
        std::filesystem::create_symlink("/proc/self/exe", library_folder + name);
    for (const Row& row : table) {
      SCOPED_TRACE(row.caption);
      ASSERT_TRUE(open(row.name, row.bytes));
      settings.use_mpglib = row.use_mpglib;
      SampleReader reader(document);
      EXPECT_FALSE(open_reader(reader));
      ASSERT_EQ(host.boxes.size(), row.bytes == aac ? 2U : 1U);
      if (row.bytes == aac) {
        EXPECT_EQ(host.boxes[0].caption, "Error");  // the system's reason
      }
      const std::string box = take_box();
      EXPECT_TRUE(box.starts_with(row.caption)) << box;
      EXPECT_TRUE(box.ends_with(std::string("install the package ") + row.last_line)) << box;
      EXPECT_EQ(reader.read_peak(1), 0);
    }
  }
}

TEST_F(Samples, TellsWhyAacCanNotBegin) {
  ASSERT_TRUE(open_sample("speech.aac"));
  selection.cursor = document.total_size;
  SampleReader reader(document);
  EXPECT_FALSE(open_reader(reader));
  EXPECT_EQ(take_box(), "Decoder init error: There is no whole frame from here on.");
}

TEST_F(Samples, KeepsTheBuffersOfPlaybackInTheirLimits) {
  struct Row {
    const char* name;
    FrameShape shape;
    unsigned buffer_frm, buffer_max;
    unsigned then_frm, then_max, bytes;
  };
  const Row table[] = {
      {"a.mp3", {}, 8, 32, 6, 32, 32768},
      {"a.mp3", {}, 8, 40, 8, 40, 40960},
      {"a.mp3", {}, 0, 99, 1, 64, 65536},
      {"a.mp3", {.version = 2, .sample_rate = 22050}, 2, 32, 2, 32, 16384},
  };
  for (const Row& row : table) {
    ASSERT_TRUE(open(row.name, frames(20, row.shape)));
    settings.buffer_frm = static_cast<std::uint16_t>(row.buffer_frm);
    settings.buffer_max = static_cast<std::uint16_t>(row.buffer_max);
    DecoderSession session;
    playback_buffers_configure(session, document);
    EXPECT_EQ(settings.buffer_frm, row.then_frm);
    EXPECT_EQ(settings.buffer_max, row.then_max);
    EXPECT_EQ(session.pcm_buffer_bytes, row.bytes);
  }
  // A Layer II frame of a low rate has twice the samples that the room was meant for.
  ASSERT_TRUE(open("a.mp2", frames(20, {.version = 2, .layer = 2, .sample_rate = 22050})));
  settings.use_mpglib = 1;
  settings.buffer_frm = 6;
  settings.buffer_max = 32;
  playback_buffers_configure(playback.decoder, document);
  FrameCursor at = edit_cursor(document, selection);
  ASSERT_TRUE(decoder_open(playback.decoder, document, at));
  Bytes room(playback.decoder.pcm_buffer_bytes);
  playback.end_limit = document.total_size;
  std::size_t total = 0;
  while (selection.cursor < document.total_size) total += fill_from_stream(playback, room, 6);
  EXPECT_EQ(total, 20U * 1152 * 4);
  decoder_close(playback.decoder);
}

// Whole frames of a shipped sample, a few at a time to each decoder in turn.
TEST_F(Samples, DecodersWorkBesideEachOther) {
  struct Stream {
    std::unique_ptr<FrameDecoder> decoder;
    std::vector<Bytes> blocks;
    Bytes samples;

    void decode(std::size_t block) {
      if (block >= blocks.size()) return;
      Bytes room(65536);
      const DecodedBlock decoded = decode_with(*decoder, blocks[block], room);
      samples.insert(samples.end(), room.begin(),
                     room.begin() + static_cast<std::ptrdiff_t>(decoded.size));
    }
  };
  const auto opened = [this](const std::string& name) {
    EXPECT_TRUE(open_sample(name));
    Stream opened_stream;
    for (FrameCursor cursor; cursor.pos < document.total_size;) {
      Bytes block(20000);
      block.resize(read_frames(document, block, cursor, document.total_size, 5).size);
      if (!block.empty()) opened_stream.blocks.push_back(std::move(block));
    }
    if (document.stream.is_aac != 0) {
      auto decoder = std::make_unique<AacDecoder>();
      EXPECT_EQ(decoder->open(document.kind.sample_rate).fault, DecoderFault::none);
      EXPECT_TRUE(decoder->begin(opened_stream.blocks[0]));
      opened_stream.decoder = std::move(decoder);
    } else {
      auto decoder = std::make_unique<MpegDecoder>();
      EXPECT_EQ(decoder->open(2).fault, DecoderFault::none);
      opened_stream.decoder = std::move(decoder);
    }
    return opened_stream;
  };
  const std::vector<std::string> names = {"cbr128.mp3", "vbr.mp3", "layer2.mp2", "speech.aac"};
  std::vector<Stream> together;
  for (const std::string& name : names) together.push_back(opened(name));
  for (std::size_t block = 0; block < 40; ++block)
    for (Stream& each : together) each.decode(block);
  for (std::size_t i = 0; i < names.size(); ++i) {
    Stream alone = opened(names[i]);
    for (std::size_t block = 0; block < 40; ++block) alone.decode(block);
    EXPECT_FALSE(alone.samples.empty());
    EXPECT_TRUE(together[i].samples == alone.samples) << names[i];
  }
}

}  // namespace
}  // namespace corvelin::test

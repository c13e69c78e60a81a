// Writing of VBR/Info headers.
#include "exchange/vbr_header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

#include "exchange/settings.h"
#include "model/document.h"
#include "platform/bytes.h"

namespace corvelin {

namespace {

// Places in the frame, from its marker on.
constexpr std::size_t flags_place = 4;
constexpr std::size_t frames_place = 8;
constexpr std::size_t bytes_place = 12;
constexpr std::size_t toc_place = 16;
constexpr std::size_t quality_place = 119;  // the low byte of four
constexpr std::size_t tag_place = 120;
constexpr std::size_t tag_size = 32;          // 28 bytes of the encoder's and the audio length
constexpr std::size_t tag_length_place = 28;  // in the tag
constexpr std::size_t header_end = 156;

constexpr std::uint32_t has_frames = 1;
constexpr std::uint32_t has_bytes = 2;
constexpr std::uint32_t has_toc = 4;
constexpr std::uint32_t has_quality = 8;

bool is_variable() { return stream.vbr != vbr_constant; }

// The stream's header without CRC word and padding; a variable stream's frame is one of 128
// kilobits in MPEG 1 and 64 in MPEG 2 and 2.5, which has room for all fields.
FrameInfo shape_of_vbr_frame(const FrameInfo& frame) {
  auto bytes = frame.header_bytes;
  bytes[1] |= 1;
  bytes[2] = static_cast<std::uint8_t>(bytes[2] & ~2u);
  if (is_variable()) {
    const unsigned bitrate_index = frame.version == 1 && frame.layer == 3 ? 9 : 8;
    bytes[2] = static_cast<std::uint8_t>((bytes[2] & 0x0F) | bitrate_index << 4);
  }
  FrameInfo shape;
  decode_frame_header(shape, std::span(bytes).first(4));
  return shape;
}

// Reads headers of a file in ascending order through a window, so that a walk over a million frames
// takes few calls of the system.
class HeaderWalk {
 public:
  explicit HeaderWalk(const OutputFile& file) : file_(file), window_(std::size_t{64} * 1024) {}

  // The length of the frame at `offset`, or nothing when none is there.
  std::optional<std::uint32_t> frame_length_at(std::uint64_t offset) {
    if (offset < start_ || offset + header_size > start_ + got_) {
      start_ = offset;
      got_ = file_.read_at(offset, window_);
    }
    const std::span<const std::uint8_t> rest =
        std::span(window_).first(got_).subspan(static_cast<std::size_t>(offset - start_));
    FrameInfo frame;
    if (!decode_frame_header(frame, rest)) return std::nullopt;
    return frame.frame_length;
  }

 private:
  const OutputFile& file_;
  std::vector<std::uint8_t> window_;
  std::uint64_t start_ = 0;
  std::size_t got_ = 0;
};

// Entry i of the table is the place in the file, in 1/256 of `bytes`, of the frame at i per cent of
// their number. The header's own frame is the first. False when the walk met a bad frame.
bool build_toc(std::span<std::uint8_t> toc, const OutputFile& target, std::uint64_t offset,
               std::uint32_t bytes, std::uint32_t frame_count, std::span<const FrameMark> marks) {
  HeaderWalk walk(target);
  const float step = static_cast<float>(frame_count) / 100;
  float due = 0;
  FrameMark place = {.frame = 0, .offset = offset};
  for (std::uint8_t& entry : toc) {
    const auto due_frame = static_cast<std::uint32_t>(due);
    for (; !marks.empty() && marks.front().frame <= due_frame; marks = marks.subspan(1))
      place = marks.front();
    for (; place.frame < due_frame; ++place.frame) {
      const auto length = walk.frame_length_at(place.offset);
      if (!length) return false;
      place.offset += *length;
    }
    const double part = static_cast<double>(place.offset - offset) / bytes * 256;
    entry = static_cast<std::uint8_t>(std::min(std::lround(part), 255L));
    due += step;
  }
  return true;
}

bool has_encoder_tag() { return stream.encoder_tag[0] >= 1 && stream.encoder_tag[0] <= 127; }

}  // namespace

std::error_code write_vbr_frame(OutputFile& target, const FrameInfo& frame) {
  stream.vbr_frame_size = 0;
  if (stream.is_aac != 0 || frame.version == 0) return {};
  const FrameInfo shape = shape_of_vbr_frame(frame);
  const std::size_t marker = vbr_header_offset(shape);
  if (shape.frame_length < marker + toc_place) return {};

  std::array<std::uint8_t, frame_unit> bytes = {};
  std::copy_n(shape.header_bytes.begin(), 4, bytes.begin());
  put_mark(bytes, marker, is_variable() ? "Xing" : "Info");
  stream.vbr_frame_size = shape.frame_length;
  return target.write(std::span(bytes).first(shape.frame_length));
}

VbrHeaderResult finish_vbr_header(OutputFile& target, std::uint64_t offset,
                                  std::uint32_t frame_count, std::span<const FrameMark> marks) {
  VbrHeaderResult result;
  if (stream.is_aac != 0 || stream.vbr_frame_size == 0) return result;

  std::array<std::uint8_t, header_end> header = {};  // from the marker on
  const auto bytes = static_cast<std::uint32_t>(target.size() - offset);
  std::uint32_t flags = has_frames | has_bytes;
  put_big_endian_u32(header, frames_place, frame_count);
  put_big_endian_u32(header, bytes_place, bytes);
  if (is_variable()) {
    const std::span<std::uint8_t> toc = std::span(header).subspan(toc_place, stream.toc.size());
    result.is_complete = build_toc(toc, target, offset, bytes, frame_count, marks);
    if (result.is_complete) flags |= has_toc;
    // The quality is one encoder's word about one file.
    if (document.files.size() > 1) stream.xing_quality = no_xing_quality;
    if (stream.xing_quality != no_xing_quality) {
      flags |= has_quality;
      header[quality_place] = stream.xing_quality;
    }
  }
  put_big_endian_u32(header, flags_place, flags);

  std::array<std::uint8_t, header_size> first = {};
  const std::size_t got = target.read_at(offset, first);
  FrameInfo frame;
  if (!decode_frame_header(frame, std::span(first).first(got)))
    return {.error = std::make_error_code(std::errc::io_error), .is_complete = false};
  const std::size_t marker = vbr_header_offset(frame);
  const std::size_t room = frame.frame_length - marker;

  if (has_encoder_tag()) {
    put_big_endian_u32(stream.encoder_tag, tag_length_place,
                       stream.vbr_frame_size + document.total_size);
    // Half a tag would have decoders read the gaps at both ends of the audio out of the next frame.
    if (settings.keep_lame != 0 && room >= tag_place + tag_size)
      std::copy_n(stream.encoder_tag.begin(), tag_size, header.begin() + tag_place);
  }

  // At low bitrates the frame of a constant stream ends before the header does.
  const std::size_t size = std::min(room, header.size());
  result.error = target.write_at(offset + marker + flags_place,
                                 std::span(header).first(size).subspan(flags_place));
  return result;
}

}  // namespace corvelin

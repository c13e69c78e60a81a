// SPDX-License-Identifier: GPL-2.0-or-later
// Writing of VBR/Info headers.
#include "exchange/vbr_header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

#include "frames/vbr_layout.h"
#include "model/document.h"
#include "platform/files/file_window.h"
#include "platform/text/bytes.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

bool is_variable(const Document& document) { return document.stream.vbr != vbr_constant; }

// The stream's header without CRC word and padding; a variable stream's frame is one of 128
// kilobits in MPEG 1 and 64 in MPEG 2 and 2.5, which has room for all fields.
FrameInfo shape_of_vbr_frame(const Document& document, const FrameInfo& frame) {
  auto bytes = frame.header_bytes;
  bytes[1] |= 1;
  bytes[2] = static_cast<std::uint8_t>(bytes[2] & ~2u);
  if (is_variable(document)) {
    const unsigned bitrate_index = frame.version == 1 && frame.layer == 3 ? 9 : 8;
    bytes[2] = static_cast<std::uint8_t>((bytes[2] & 0x0F) | bitrate_index << 4);
  }
  FrameInfo shape;
  decode_frame_header(shape, std::span(bytes).first(4), FrameFormat::mpeg);
  return shape;
}

// The length of the frame at `offset` of the file, or nothing when none is there.
std::optional<std::uint32_t> frame_length_at(FileWindow& window, const OutputFile& file,
                                             std::uint64_t offset) {
  FrameInfo frame;
  if (!decode_frame_header(frame, window.bytes_at(file, offset, header_size), FrameFormat::mpeg))
    return std::nullopt;
  return frame.frame_length;
}

// Entry i of the table is the place in the file, in 1/256 of `bytes`, of the frame at i per cent of
// their number. The header's own frame is the first. False when the walk met a bad frame.
bool build_toc(std::span<std::uint8_t> toc, const OutputFile& target, std::uint64_t offset,
               std::uint32_t bytes, std::uint32_t frame_count, std::span<const FrameMark> marks) {
  FileWindow window;
  const float step = static_cast<float>(frame_count) / 100;
  float due = 0;
  FrameMark place = {.frame = 0, .offset = offset};
  for (std::uint8_t& entry : toc) {
    const auto due_frame = static_cast<std::uint32_t>(due);
    for (; !marks.empty() && marks.front().frame <= due_frame; marks = marks.subspan(1))
      place = marks.front();
    for (; place.frame < due_frame; ++place.frame) {
      const auto length = frame_length_at(window, target, place.offset);
      if (!length) return false;
      place.offset += *length;
    }
    const double part = static_cast<double>(place.offset - offset) / bytes * 256;
    entry = static_cast<std::uint8_t>(std::min(std::lround(part), 255L));
    due += step;
  }
  return true;
}

bool has_encoder_tag(const Document& document) {
  return document.stream.encoder_tag[0] >= 1 && document.stream.encoder_tag[0] <= 127;
}

}  // namespace

std::vector<std::uint8_t> make_vbr_frame(const Document& document, const FrameInfo& frame) {
  if (document.stream.is_aac != 0 || frame.version == 0) return {};
  const FrameInfo shape = shape_of_vbr_frame(document, frame);
  const std::size_t marker = vbr_header_offset(shape);
  if (shape.frame_length < marker + vbr_toc_place) return {};

  std::vector<std::uint8_t> bytes(shape.frame_length);
  std::copy_n(shape.header_bytes.begin(), 4, bytes.begin());
  put_mark(bytes, marker, is_variable(document) ? "Xing" : "Info");
  return bytes;
}

std::uint8_t header_quality(const Document& document) {
  if (is_variable(document) && document.files.size() > 1) return no_xing_quality;
  return document.stream.xing_quality;
}

VbrHeaderFields make_vbr_header(const Document& document, const OutputFile& target,
                                std::uint64_t offset, std::uint32_t frame_count,
                                std::span<const FrameMark> marks) {
  VbrHeaderFields result;
  std::array<std::uint8_t, vbr_header_size> header = {};  // from the marker on
  const auto bytes = static_cast<std::uint32_t>(target.size() - offset);
  std::uint32_t flags = vbr_has_frames | vbr_has_bytes;
  put_big_endian_u32(header, vbr_frames_place, frame_count);
  put_big_endian_u32(header, vbr_bytes_place, bytes);
  if (is_variable(document)) {
    const std::span<std::uint8_t> toc =
        std::span(header).subspan(vbr_toc_place, document.stream.toc.size());
    result.is_complete = build_toc(toc, target, offset, bytes, frame_count, marks);
    if (result.is_complete) flags |= vbr_has_toc;
    if (const std::uint8_t quality = header_quality(document); quality != no_xing_quality) {
      flags |= vbr_has_quality;
      header[vbr_quality_place] = quality;
    }
  }
  put_big_endian_u32(header, vbr_flags_place, flags);

  std::array<std::uint8_t, header_size> first = {};
  const std::size_t got = target.read_at(offset, first);
  if (const std::error_code error = target.read_error())
    return {.error = error, .is_complete = false};
  FrameInfo frame;
  if (!decode_frame_header(frame, std::span(first).first(got), FrameFormat::mpeg))
    return {.error = std::make_error_code(std::errc::io_error), .is_complete = false};
  const std::size_t marker = vbr_header_offset(frame);
  const std::size_t room = frame.frame_length - marker;

  // Half a tag would have decoders read the gaps at both ends of the audio out of the next frame.
  if (has_encoder_tag(document) && settings.keep_lame != 0 &&
      room >= vbr_tag_place + vbr_kept_tag_size) {
    std::copy_n(document.stream.encoder_tag.begin(), vbr_tag_size, header.begin() + vbr_tag_place);
    put_big_endian_u32(header, vbr_tag_place + vbr_tag_length_place, bytes);
  }

  // At low bitrates the frame of a constant stream ends before the header does.
  const auto fields =
      std::span(header).first(std::min(room, header.size())).subspan(vbr_flags_place);
  result.place = offset + marker + vbr_flags_place;
  result.fields.assign(fields.begin(), fields.end());
  return result;
}

}  // namespace corvelin

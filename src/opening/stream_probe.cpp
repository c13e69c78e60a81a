// SPDX-License-Identifier: GPL-2.0-or-later
// The probe of a stream.
#include "opening/stream_probe.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <vector>

#include "frames/vbr_layout.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "opening/frame_sweep.h"
#include "opening/tag_bounds.h"
#include "platform/text/bytes.h"

namespace corvelin {

namespace {

constexpr std::uint32_t constant_probe_size = 100000;   // bytes that decide about the bitrate
constexpr std::uint32_t variable_probe_size = 5000000;  // most bytes that are sampled
constexpr int bitrate_tolerance = 2;                    // kilobits per second

bool is_letter(std::uint8_t byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

// What a "Xing" header holds beyond the fields that it shares with an "Info" header. Fields lie at
// fixed places behind the marker, whatever the flags say.
void take_xing_header(std::span<const std::uint8_t> marker, std::uint32_t first_audio,
                      std::uint32_t audio_bytes, StreamInfo& info) {
  constexpr std::int64_t tolerated_difference = 3000;  // bytes
  const std::uint32_t flags = big_endian_u32(marker, vbr_flags_place);
  info.vbr = vbr_header;
  if ((flags & vbr_has_toc) != 0) {
    std::copy_n(marker.begin() + vbr_toc_place, info.toc.size(), info.toc.begin());
    info.toc[0] = 0;
    info.vbr = vbr_header | vbr_toc_usable;
  }
  if ((flags & vbr_has_quality) != 0) info.xing_quality = marker[vbr_quality_place];
  // A file that was cut or joined since isn't what its header says.
  const std::int64_t difference =
      std::int64_t{first_audio} + audio_bytes - std::int64_t{info.audio_end};
  if (std::abs(difference) > tolerated_difference) info.vbr = vbr_constant;
}

// The header of another family of encoders stands at one place whatever the frame's mode, and may
// differ from the music in its mode and CRC flag. It is left out; the frames tell what it would.
bool is_vbri_frame(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t place = 36;
  return stands_at(bytes, place, "VBRI");
}

// Joint stereo and plain stereo take turns in one stream, so that the channel mode is left out.
bool is_same_kind(const StreamKind& a, const StreamKind& b) {
  return a.version == b.version && a.layer == b.layer && a.sample_rate == b.sample_rate;
}

// The first frame behind the tag in front: searched in steps of 20 bytes, up to the end of the
// file's first mebibyte.
std::optional<FramePlace> find_first_frame(FrameSweep& sweep, std::uint32_t from,
                                           std::uint32_t audio_end) {
  constexpr std::uint32_t step = 20;                // bytes
  constexpr std::uint32_t highest_start = 0xFFFFF;  // of a further search
  auto found = sweep.find(from);
  for (; !found && from + step < audio_end && from + step <= highest_start; from += step)
    found = sweep.find(from + step);
  return found;
}

// Walks the frames from `pos`: all of the first 100,000 bytes, and of a variable stream 50 frames
// in every 50,000 bytes until 5,000,000. Sets `vbr` and, unless a header gave it, `avg_frame_size`.
// Returns the last frame that was found, `sample` if none.
FrameInfo sample_frames(FrameSweep& sweep, std::uint32_t pos, FrameInfo sample,
                        StreamInfo& stream) {
  constexpr std::uint32_t frames_in_turn = 50;
  constexpr std::uint32_t skipped_in_turn = 50000;  // bytes
  constexpr std::uint32_t other_kind_step = 10;     // bytes behind a frame of other parameters
  const std::uint32_t last_start =
      stream.audio_end - frame_unit;  // wraps in a tiny file: no limit then
  std::uint32_t count = 0;
  std::uint64_t sum = 0;  // bytes
  while (pos < last_start && pos < stream.first_audio + variable_probe_size) {
    const bool is_decided = stream.vbr == vbr_constant || stream.avg_frame_size > 0;
    if (pos > stream.first_audio + constant_probe_size && is_decided) break;

    const auto found = sweep.find(pos, sample.sample_rate);
    if (!found) {
      pos += frame_unit;
      continue;
    }
    const FrameInfo& frame = found->frame;
    if (is_same_kind(kind_of(frame), kind_of(sample))) {
      if (stream.vbr == vbr_constant &&
          std::abs(frame.bitrate - sample.bitrate) > bitrate_tolerance)
        stream.vbr = vbr_seen;
      ++count;
      sum += frame.frame_length;
      pos += frame.frame_length;
      if (stream.vbr != vbr_constant && count % frames_in_turn == 0) pos += skipped_in_turn;
    } else {
      pos += other_kind_step;
    }
    sample = frame;
  }
  if (count == 0) {  // all of the audio lies in the margin before the end
    count = 1;
    sum = sample.frame_length;
  }
  if (stream.avg_frame_size == 0)
    stream.avg_frame_size = static_cast<float>(static_cast<double>(sum) / count);
  return sample;
}

// Bits per second of frames of the average size with the parameters of `frame`.
float average_bitrate(const StreamInfo& stream, const FrameInfo& frame) {
  const double bytes = double{stream.avg_frame_size} * frame.sample_rate;
  if (stream.is_aac != 0) return static_cast<float>(bytes / 128);
  const bool is_half_length = frame.layer == 3 && frame.version != 1;
  return static_cast<float>(bytes / 144 * (is_half_length ? 2 : 1));
}

}  // namespace

std::uint32_t probe_stream(const InputFile& file, std::uint32_t size, StreamInfo& stream,
                           FrameInfo& last_frame) {
  stream.audio_end = size;
  stream.id3v2_size = id3v2_tag_size(file);
  FrameSweep sweep(file, frame_format(stream), size);
  auto first = find_first_frame(sweep, stream.id3v2_size, size);
  if (!first) return no_position;

  stream.avg_frame_size = 0;
  stream.vbr = vbr_constant;
  stream.first_audio = stream.is_aac != 0 ? first->pos : read_vbr_header(file, first->pos, stream);

  // A "Xing" frame takes part in the sampling, the others don't.
  const bool is_xing = (stream.vbr & vbr_header) != 0 || stream.xing_frames != 0;
  if (stream.has_info_header != 0 || !is_xing) {
    const auto behind = sweep.find(stream.first_audio, first->frame.sample_rate);
    if (behind) first = behind;
  }
  last_frame = sample_frames(sweep, first->pos, first->frame, stream);
  stream.avg_bitrate = average_bitrate(stream, last_frame);
  return stream.first_audio;
}

std::uint32_t read_vbr_header(const InputFile& file, std::uint32_t first, StreamInfo& info) {
  std::array<std::uint8_t, 2000> block = {};  // what the file lacks counts as zeros
  const std::size_t got = file.read_at(first, block);
  if (got == 0) return first;
  info.xing_quality = no_xing_quality;
  info.encoder_tag = {};
  FrameInfo frame;
  if (!decode_frame_header(frame, block, FrameFormat::mpeg)) return first;

  const bool moves = is_followed(std::span(block).first(got), 0, frame.frame_length);
  const std::uint32_t first_audio = moves ? first + frame.frame_length : first;
  if (is_vbri_frame(block)) return first_audio;

  const std::span<const std::uint8_t> marker =
      std::span(block).subspan(vbr_header_offset(frame), vbr_tag_place + vbr_tag_size);
  const bool is_info = stands_at(marker, 0, "Info");
  if (!is_info && !stands_at(marker, 0, "Xing")) return first;

  if (is_letter(marker[vbr_tag_place]))
    std::copy_n(marker.begin() + vbr_tag_place, vbr_tag_size, info.encoder_tag.begin());
  const std::uint32_t frames = big_endian_u32(marker, vbr_frames_place);
  const std::uint32_t audio_bytes = big_endian_u32(marker, vbr_bytes_place);
  info.avg_frame_size =
      frames == 0 ? 0.0F : static_cast<float>(static_cast<double>(audio_bytes) / frames);
  info.xing_frames = frames;
  if (is_info) {
    info.has_info_header = 1;
  } else {
    take_xing_header(marker, first_audio, audio_bytes, info);
  }
  return first_audio;
}

std::uint32_t trim_to_last_frame(const InputFile& file, FrameFormat format, std::uint32_t end,
                                 const StreamKind& kind) {
  if (end < frame_unit) return end;
  std::vector<std::uint8_t> tail(std::min(end, longest_frame(format)));
  const std::uint32_t start = end - static_cast<std::uint32_t>(tail.size());
  tail.resize(file.read_at(start, tail));
  const std::span<const std::uint8_t> bytes = tail;
  std::uint32_t cut_off = end;
  for (std::size_t at = bytes.size(); at-- > 0;) {
    FrameInfo frame;
    if (!has_sync(bytes, at) || !decode_frame_header(frame, bytes.subspan(at), format)) continue;
    if (!is_same_kind(kind_of(frame), kind)) continue;
    const std::size_t behind = at + frame.frame_length;
    // What looks like a frame that is cut off was payload when an earlier one ends with the audio.
    if (behind == bytes.size()) return end;
    if (cut_off != end || frame.channel_mode != kind.channel_mode) continue;
    if (behind < bytes.size()) return end;
    cut_off = start + static_cast<std::uint32_t>(at);
  }
  return cut_off;
}

}  // namespace corvelin

// Times from bytes or frames, and back.
#include "exchange/cue_time.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace corvelin {

namespace {

constexpr double cue_frames_per_second = 75;

// Cuts off what stands behind the last colon, as a number. 0 without a colon.
double take_last_field(std::string_view& time) {
  const std::size_t colon = time.rfind(':');
  if (colon == std::string_view::npos) return 0;
  const double field = leading_decimal(time.substr(colon + 1));
  time = time.substr(0, colon);
  return field;
}

// Times are summed up in single precision, so that a sheet gives the same places as ever.
float single_precision(double seconds) {
  constexpr double beyond_all = 1e30;
  return static_cast<float>(std::clamp(seconds, -beyond_all, beyond_all));
}

// Frames per second of the stream. A frame of MPEG 2 and 2.5 counts as half a frame's samples.
double frame_rate() {
  const FrameInfo& frame = stream.current_frame;
  return frame.sample_rate / 1152.0 * (frame.version != 1 ? 2 : 1);
}

// The length of the frame at the walk's place in the first source file. 0 where there is none, also
// behind the file's audio.
std::uint32_t frame_length_at(VbrWalk& walk) {
  const SourceFile& file = document.files[0];
  const std::uint64_t offset = std::uint64_t{file.first_audio} + walk.position;
  if (offset >= file.audio_end) return 0;
  const std::span<const std::uint8_t> header =
      walk.window.bytes_at(file.handle, offset, header_size);
  if (!has_sync(header, 0) || header.size() < header_size) return 0;
  std::uint16_t& length = walk.lengths[header[1] * 256U + header[2]];
  FrameInfo frame;
  if (length == 0 && decode_frame_header(frame, header, frame_format()))
    length = frame.frame_length;
  return length;
}

// Counts the frame at the walk's place, which is in front of the end, and moves behind it.
//
// Where the file has no header, the locator finds the next frame of the edited stream, and the
// stretch up to it counts as a frame too. If that frame stands here, the walk is beyond what the
// first file can tell (in a file that was appended, say), and goes on by the edited stream.
void count_frame(VbrWalk& walk) {
  ++walk.frame_count;
  std::uint32_t length = frame_length_at(walk);
  if (length == 0) {
    const EditPosition next = frame_at(walk.position);
    if (next != walk.position) {
      walk.position = next;
      return;
    }
    length = stream.current_frame.frame_length;
  }
  walk.position += std::min(length, document.total_size - walk.position);
}

// Puts a walk that goes on onto a frame, and that frame into `stream.current_frame`.
void align(VbrWalk& walk) {
  if (walk.position != no_position)
    walk.position = scan_forward(part_at(walk.position), walk.position);
}

}  // namespace

bool needs_vbr_walk() { return stream.vbr != vbr_constant && stream.is_aac == 0; }

std::uint32_t cue_time_to_bytes(std::string_view time) {
  if (time.empty()) return document.total_size;
  float seconds = single_precision(take_last_field(time) / cue_frames_per_second);
  seconds = single_precision(seconds + take_last_field(time));
  seconds = single_precision(seconds + leading_decimal(time) * 60);
  return time_to_position(seconds);
}

EditPosition vbr_walk_to_time(VbrWalk& walk, std::string_view time) {
  align(walk);
  const double seconds = cue_time_to_bytes(time) * 8.0 / stream.avg_bitrate;
  const std::uint32_t target = whole_part(seconds * frame_rate());
  while (walk.frame_count < target && walk.position < document.total_size) count_frame(walk);
  return walk.position == no_position ? no_position : frame_at(walk.position);
}

double vbr_walk_to_position(VbrWalk& walk, EditPosition target) {
  align(walk);
  const double rate = frame_rate();
  while (walk.position < std::min(target, document.total_size)) count_frame(walk);
  return rate > 0 ? walk.frame_count / rate : 0;
}

std::string format_cue_time(double seconds) {
  const std::uint32_t whole = whole_part(seconds);
  const std::uint32_t frames = whole_part((seconds - whole) * cue_frames_per_second, 74);
  return fmt::format("{:02}:{:02}:{:02}", whole / 60, whole % 60, frames);
}

}  // namespace corvelin

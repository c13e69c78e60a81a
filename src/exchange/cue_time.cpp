// Times from bytes or frames, and back.
#include "exchange/cue_time.h"

#include <fmt/format.h>

#include <algorithm>

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
  return stream_kind.sample_rate / 1152.0 * (stream_kind.version != 1 ? 2 : 1);
}

void begin(VbrWalk& walk) {
  const SourceFile& file = document.files[0];
  walk.in_file.emplace(file.handle, file.first_audio, file.audio_end);
  walk.goes_on_in_file = walk.in_file->next();
  if (walk.goes_on_in_file) walk.position = walk.in_file->offset() - file.first_audio;
}

// Counts the frame at the walk's place, which is in front of the end, and moves behind it. A
// damaged stretch counts as a frame too.
void count_frame(VbrWalk& walk) {
  if (!walk.in_file) begin(walk);
  ++walk.frame_count;
  if (walk.goes_on_in_file) {
    const std::uint32_t first_audio = document.files[0].first_audio;
    const EditPosition frame = walk.in_file->offset() - first_audio;
    const bool is_damaged = walk.position < frame;
    walk.position = is_damaged ? frame : walk.in_file->behind() - first_audio;
    if (!is_damaged) walk.goes_on_in_file = walk.in_file->next();
    return;
  }
  // Beyond what the first file can tell, in a file that was appended, say.
  const FramePlace found = find_frame_forward(part_at(walk.position), walk.position);
  const EditPosition left = document.total_size - walk.position;
  const bool is_here = found.pos == walk.position;
  walk.position =
      is_here ? walk.position + std::min<EditPosition>(found.frame.frame_length, left) : found.pos;
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
  const double seconds = cue_time_to_bytes(time) * 8.0 / stream.avg_bitrate;
  const std::uint32_t target = whole_part(seconds * frame_rate());
  while (walk.frame_count < target && walk.position < document.total_size) count_frame(walk);
  return walk.position == no_position ? no_position : frame_at(walk.position);
}

double vbr_walk_to_position(VbrWalk& walk, EditPosition target) {
  while (walk.position < std::min(target, document.total_size)) count_frame(walk);
  const double rate = frame_rate();
  return rate > 0 ? walk.frame_count / rate : 0;
}

std::string format_cue_time(double seconds) {
  const std::uint32_t whole = whole_part(seconds);
  const std::uint32_t frames = whole_part((seconds - whole) * cue_frames_per_second, 74);
  return fmt::format("{:02}:{:02}:{:02}", whole / 60, whole % 60, frames);
}

}  // namespace corvelin

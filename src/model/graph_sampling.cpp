// SPDX-License-Identifier: GPL-2.0-or-later
// The walk from frame to frame, and what is marked at each.
#include "model/graph_sampling.h"

#include <algorithm>

#include "frames/frame_loudness.h"
#include "model/fade.h"
#include "model/frame_locator.h"
#include "platform/text/numbers.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr FrameSlot blank_in_front = {.sample_flags = sample_is_outside};

FrameSlot blank_behind(const Document& document) {
  return {
      .sample_flags = sample_is_outside, .sample_bitrate = 1, .sample_pos = document.total_size};
}

// Where a level of `gain` steps stands between the highest, at 0, and the bottom of the graph.
std::int32_t handle_of(std::int16_t gain) { return (32 - std::int32_t{gain}) * 2; }

std::uint8_t with(std::uint8_t flags, SampleFlag flag) {
  return static_cast<std::uint8_t>(flags | flag);
}

std::uint32_t second_at(const StreamInfo& stream, EditPosition pos) {
  const double rate = stream.avg_bitrate;
  return rate > 0 ? whole_part(pos / rate * 8) : 0;
}

// The second in which the frame before one begins, so that a mark doesn't come and go at the view's
// edge.
std::uint32_t second_before(const StreamInfo& stream, EditPosition pos) {
  const std::uint32_t frame = whole_part(stream.avg_frame_size);
  return second_at(stream, pos > frame ? pos - frame : 0);
}

// A place in the edited stream on its way from frame to frame.
struct Walk {
  const Document& document;
  PartIndex part = 0;
  EditPosition pos = 0;
  bool part_has_gain = false;

  void enter(PartIndex index) {
    part = index;
    part_has_gain = corvelin::part_has_gain(document, index);
  }
  // False behind the last part.
  bool go_to_next_part() {
    const std::size_t next = part + std::size_t{1};
    if (next >= document.parts.size()) return false;
    enter(static_cast<PartIndex>(next));
    pos = document.parts[next].part_beg;
    return true;
  }
};

Walk walk_from(const Document& document, EditPosition pos) {
  Walk walk = {.document = document};
  walk.enter(part_at(document, pos));
  const EditPosition frame = find_frame(document, walk.part, pos, document.kind.sample_rate).pos;
  walk.pos = frame == no_position ? pos : frame;
  if (walk.pos >= part_end(document, walk.part)) walk.go_to_next_part();
  return walk;
}

// Fills slots one by one.
class Sampler {
 public:
  Sampler(const Document& document, const Selection& selection, EditPosition first,
          EditPosition centre)
      : document_(document),
        selection_(selection),
        centre_(centre),
        last_second_(second_before(document.stream, first)) {}

  FrameSlot slot_of(const Walk& walk, EditPosition pos, const SampledFrame& frame) {
    FrameSlot slot = {.sample_bitrate = frame.bitrate, .sample_pos = pos};
    const Part& part = document_.parts[walk.part];
    if (pos == part.part_beg) mark_border(slot, walk.part);
    if (has_selection(selection_) && pos >= selection_.sel_beg && pos <= selection_.sel_end)
      slot.sample_flags = with(slot.sample_flags, sample_is_selected);
    if (pos == centre_) slot.sample_flags = with(slot.sample_flags, sample_at_cursor);
    if (settings.time_marks != 0) mark_second(slot, pos);
    set_height(slot, walk, pos, frame.loudness);
    return slot;
  }

 private:
  void mark_border(FrameSlot& slot, PartIndex index) const {
    const Part& part = document_.parts[index];
    slot.sample_flags =
        with(sample_is_border, part.part_iscue != 0 ? sample_is_cue : sample_is_cut);
    if (index == document_.current_part && selection_.cursor < document_.total_size)
      slot.sample_flags = with(slot.sample_flags, sample_is_current);
    slot.sample_handle = handle_of(part.part_gainbeg);
  }

  void mark_second(FrameSlot& slot, EditPosition pos) {
    const std::uint32_t second = second_at(document_.stream, pos);
    if (second > last_second_) slot.sample_second = second;
    last_second_ = second;
  }

  void set_height(FrameSlot& slot, const Walk& walk, EditPosition pos,
                  const FrameLoudness& loudness) {
    const unsigned level = settings.graph_level;
    switch (document_.kind.layer) {
      case 3: {
        const int gain = walk.part_has_gain ? gain_at(document_, pos, walk.part) : 0;
        if (walk.part_has_gain) slot.sample_flags = with(slot.sample_flags, sample_has_gain);
        slot.sample_height = heights_.layer3(loudness, gain, level);
        break;
      }
      case 2:
        slot.sample_height = heights_.layer2(loudness, level);
        break;
      default:
        slot.sample_height = GraphHeights::aac(loudness, level);
    }
  }

  const Document& document_;
  const Selection& selection_;
  EditPosition centre_;
  std::uint32_t last_second_;
  GraphHeights heights_;
};

// The stream's end is the first of the blank slots behind it, and where frames share a column or
// not, the last frame shows its level too.
void mark_end(const Document& document, EditPosition cursor, std::vector<FrameSlot>& slots,
              std::size_t end, bool also_before) {
  const bool is_current = cursor == document.total_size;
  const auto flags =
      static_cast<std::uint8_t>(sample_is_border | (is_current ? sample_is_current : 0));
  const auto mark = [&document, flags](FrameSlot& slot) {
    slot.sample_flags = static_cast<std::uint8_t>(slot.sample_flags | flags);
    slot.sample_handle |= handle_of(document.end_gain);
  };
  mark(slots[end]);
  if (also_before && end > 0) mark(slots[end - 1]);
}

}  // namespace

void sample_frames(GraphSamples& samples, const Document& document, const Selection& selection,
                   EditPosition centre, std::uint32_t view_frames, std::uint32_t fold) {
  std::vector<FrameSlot>& slots = samples.slots;
  slots.clear();
  if (document.parts.empty()) {
    slots.resize(view_frames + std::size_t{1}, blank_behind(document));
    return;
  }
  const double frame_size = document.stream.avg_frame_size;
  std::uint32_t half = whole_part(frame_size * view_frames * 0.5);
  if (centre < half && frame_size > 0) {
    const std::uint32_t blank = whole_part((half - centre) / frame_size) + 1;
    slots.resize(std::min(blank, view_frames + 1), blank_in_front);
    half = centre;
  }

  Walk walk = walk_from(document, centre - std::min(half, centre));
  samples.view_first_pos = walk.pos;
  samples.frames.begin(document);
  Sampler sampler(document, selection, walk.pos, centre);
  while (slots.size() <= view_frames) {
    const EditPosition end = part_end(document, walk.part);
    const std::uint32_t left = end - std::min(walk.pos, end);
    const std::uint32_t from = file_pos_of(document, walk.part, walk.pos);
    const SampledFrame frame =
        samples.frames.frame_from(document, document.parts[walk.part].part_file, from);
    const std::uint32_t skipped = frame.begin - from;  // bytes that are no frame
    const bool is_found = frame.frame_length != 0 && skipped < left;
    if (is_found) {
      slots.push_back(sampler.slot_of(walk, walk.pos + skipped, frame));
      walk.pos += std::min(skipped + frame.frame_length, left);
    }
    if ((!is_found || walk.pos == end) && !walk.go_to_next_part()) break;
  }
  samples.frames.end();
  samples.view_last_pos = walk.pos;

  const std::size_t sampled = slots.size();
  slots.resize(view_frames + std::size_t{1}, blank_behind(document));
  if (sampled < slots.size())
    mark_end(document, selection.cursor, slots, sampled, view_frames > fold);
}

}  // namespace corvelin

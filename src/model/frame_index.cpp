// Making and asking of an index.
#include "model/frame_index.h"

#include <algorithm>
#include <iterator>

#include "model/frame_locator.h"
#include "model/frame_walk.h"

namespace corvelin {

namespace {

constexpr std::uint32_t frames_a_place = 128;

// Behind a stretch without frames of this length there is always a place in the index, so that a
// question never searches farther.
constexpr std::uint32_t longest_unindexed_gap = search_block_size;
constexpr std::uint32_t blocks_searched = 1;

void count(IndexPlace& place, const FrameWalk& walk) {
  place.ticks += walk.ticks();
  place.offset = walk.behind();
  ++place.frames;
}

}  // namespace

void FrameIndex::build(const InputFile& file, std::uint32_t first_audio, std::uint32_t audio_end) {
  *this = {};
  is_built_ = true;
  audio_end_ = audio_end;
  IndexPlace place = {.offset = first_audio};
  FrameWalk walk(file, first_audio, audio_end);
  while (walk.next()) {
    const bool is_behind_gap = walk.offset() - place.offset >= longest_unindexed_gap;
    place.offset = walk.offset();
    if (places_.empty() || is_behind_gap || place.frames - places_.back().frames >= frames_a_place)
      places_.push_back(place);
    count(place, walk);
  }
  places_.shrink_to_fit();
  end_ = place;
}

IndexPlace FrameIndex::at_offset(const InputFile& file, std::uint32_t offset) {
  constexpr std::size_t most_answers = 4096;
  const auto known = asked_.find(offset);
  if (known != asked_.end()) return known->second;
  if (asked_.size() >= most_answers) asked_.clear();
  return asked_[offset] = walk_to_offset(file, offset);
}

IndexPlace FrameIndex::walk_to_offset(const InputFile& file, std::uint32_t offset) const {
  if (offset >= end_.offset || places_.empty()) return end_;
  const auto behind = std::ranges::upper_bound(places_, offset, {}, &IndexPlace::offset);
  if (behind == places_.begin()) return places_.front();
  IndexPlace place = *std::prev(behind);
  FrameWalk walk(file, place.offset, audio_end_);
  while (walk.behind() < offset && walk.next(blocks_searched) && walk.behind() <= offset)
    count(place, walk);
  return place;
}

IndexPlace FrameIndex::at_ticks(const InputFile& file, std::uint64_t ticks) const {
  if (ticks >= end_.ticks || places_.empty()) return end_;
  const auto behind = std::ranges::lower_bound(places_, ticks, {}, &IndexPlace::ticks);
  if (behind == places_.begin()) return *behind;
  IndexPlace place = *std::prev(behind);
  FrameWalk walk(file, place.offset, audio_end_);
  while (place.ticks < ticks && walk.next(blocks_searched)) count(place, walk);
  // Now the place is behind a frame. The next one begins here unless the file is damaged.
  if (walk.next(blocks_searched)) place.offset = walk.offset();
  return behind != places_.end() && place.frames >= behind->frames ? *behind : place;
}

}  // namespace corvelin

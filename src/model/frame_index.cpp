// SPDX-License-Identifier: GPL-2.0-or-later
// Making and asking of an index.
#include "model/frame_index.h"

#include <algorithm>
#include <iterator>

#include "model/frame_walk.h"

namespace corvelin {

namespace {

constexpr std::uint32_t frames_an_entry = 128;

}  // namespace

// A walk over the codes from an entry on.
class FrameIndex::Steps {
 public:
  Steps(const FrameIndex& index, const Entry& entry)
      : codes_(&index.codes_), entry_(entry), begin_(entry.place.offset) {
    look_ahead();
  }

  [[nodiscard]] const IndexPlace& place() const { return entry_.place; }  // behind a frame
  [[nodiscard]] bool has_next() const { return length_ != 0; }
  [[nodiscard]] std::uint32_t begin_of_next() const { return begin_; }
  [[nodiscard]] std::uint32_t end_of_next() const { return begin_ + length_; }

  void next() {
    entry_.place.ticks += entry_.ticks_of_a_frame;
    entry_.place.offset = begin_ = end_of_next();
    ++entry_.place.frames;
    look_ahead();
  }

 private:
  // Reads up to the length of the next frame.
  void look_ahead() {
    length_ = 0;
    while (length_ == 0 && entry_.code < codes_->size()) {
      const std::uint16_t code = (*codes_)[entry_.code++];
      if (code == gap_code) {
        begin_ += take_number();
      } else if (code == ticks_code) {
        entry_.ticks_of_a_frame = take_number();
      } else {
        length_ = code;
      }
    }
  }

  std::uint32_t take_number() {
    const std::uint32_t low = (*codes_)[entry_.code++];
    return low | std::uint32_t{(*codes_)[entry_.code++]} << 16;
  }

  const std::vector<std::uint16_t>* codes_;
  Entry entry_;
  std::uint32_t begin_;
  std::uint32_t length_ = 0;  // 0 behind the last frame
};

FrameIndex::FrameIndex(const InputFile& file, FrameFormat format, std::uint32_t first_audio,
                       std::uint32_t audio_end) {
  Entry now = {.place = {.offset = first_audio}};
  FrameWalk walk(file, format, first_audio, audio_end);
  while (walk.next()) {
    now.code = codes_.size();
    if (now.place.frames % frames_an_entry == 0) entries_.push_back(now);
    if (walk.offset() != now.place.offset) add_number(gap_code, walk.offset() - now.place.offset);
    const auto ticks = static_cast<std::uint32_t>(walk.ticks());
    if (ticks != now.ticks_of_a_frame) add_number(ticks_code, ticks);
    codes_.push_back(static_cast<std::uint16_t>(walk.behind() - walk.offset()));
    now.ticks_of_a_frame = ticks;
    now.place.ticks += ticks;
    now.place.offset = walk.behind();
    ++now.place.frames;
  }
  codes_.shrink_to_fit();
  entries_.shrink_to_fit();
  end_ = now.place;
}

void FrameIndex::add_number(std::uint16_t code, std::uint32_t number) {
  codes_.insert(codes_.end(), {code, static_cast<std::uint16_t>(number),
                               static_cast<std::uint16_t>(number >> 16)});
}

IndexPlace FrameIndex::at_offset(std::uint32_t offset) const {
  if (entries_.empty() || offset >= end_.offset) return end_;
  const auto offset_of = [](const Entry& entry) { return entry.place.offset; };
  const auto behind = std::ranges::upper_bound(entries_, offset, {}, offset_of);
  if (behind == entries_.begin()) return behind->place;
  Steps steps(*this, *std::prev(behind));
  while (steps.has_next() && steps.end_of_next() <= offset) steps.next();
  return steps.place();
}

IndexPlace FrameIndex::at_ticks(std::uint64_t ticks) const {
  if (entries_.empty() || ticks >= end_.ticks) return end_;
  const auto ticks_of = [](const Entry& entry) { return entry.place.ticks; };
  const auto behind = std::ranges::lower_bound(entries_, ticks, {}, ticks_of);
  Steps steps(*this, behind == entries_.begin() ? *behind : *std::prev(behind));
  while (steps.has_next() && steps.place().ticks < ticks) steps.next();
  IndexPlace place = steps.place();
  if (steps.has_next()) place.offset = steps.begin_of_next();
  return place;
}

const FrameIndex& SharedIndex::of(const InputFile& file, FrameFormat format,
                                  std::uint32_t first_audio, std::uint32_t audio_end) const {
  std::call_once(cell_->is_made,
                 [&] { cell_->index.emplace(file, format, first_audio, audio_end); });
  return *cell_->index;
}

}  // namespace corvelin

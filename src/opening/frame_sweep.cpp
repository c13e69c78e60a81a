// SPDX-License-Identifier: GPL-2.0-or-later
// The sweep.
#include "opening/frame_sweep.h"

#include <algorithm>
#include <iterator>

namespace corvelin {

namespace {

constexpr std::size_t follower_size = 2;  // bytes of the next header that are compared

bool has_rate(const FrameInfo& frame, std::uint32_t rate) {
  return rate == any_sample_rate || frame.sample_rate == rate;
}

}  // namespace

std::optional<FramePlace> FrameSweep::find(std::uint32_t from, std::uint32_t rate_before) {
  if (from >= audio_end_) return std::nullopt;
  if (audio_end_ - from <= longest_adts_frame) {  // here the last frame of a file may stand alone
    auto found = find_frame_in_block(window_.bytes_at(file_, from, search_read_size),
                                     audio_end_ - from, format_, rate_before);
    if (found) found->pos += from;
    return found;
  }
  const auto at_once = frame_at(from);
  if (at_once && has_rate(at_once->frame, rate_before)) return at_once;
  forget_before(from);
  scan(from);
  if (believed_.empty()) return std::nullopt;
  const auto& [first_offset, first] = *believed_.begin();
  if (has_rate(first, rate_before)) return FramePlace{.pos = first_offset, .frame = first};
  if (confirmed_.empty()) return std::nullopt;
  const std::uint32_t offset = *confirmed_.begin();
  return FramePlace{.pos = offset, .frame = believed_[offset]};
}

// Most searches begin at a frame.
std::optional<FramePlace> FrameSweep::frame_at(std::uint32_t from) {
  const auto bytes = window_.bytes_at(file_, from, longest_adts_frame + follower_size);
  FramePlace place = {.pos = from};
  const bool is_frame = has_sync(bytes, 0) && decode_frame_header(place.frame, bytes, format_) &&
                        is_followed(bytes, 0, place.frame.frame_length);
  return is_frame ? std::optional(place) : std::nullopt;
}

// Takes in what a search from `from` sees more than the one before it.
void FrameSweep::scan(std::uint32_t from) {
  const std::uint32_t end = std::min(audio_end_ - from, search_block_size) + from;
  scanned_ = std::max(scanned_, from);
  while (scanned_ < end) {
    const std::size_t wanted = end - scanned_ + std::size_t{longest_adts_frame} + follower_size;
    const auto bytes = window_.bytes_at(file_, scanned_, wanted);
    const std::size_t room = std::min<std::size_t>(bytes.size(), end - scanned_);
    const std::size_t at = find_sync(bytes, 0, room);
    if (at == room) {
      scanned_ = end;
      break;
    }
    FramePlace place = {.pos = scanned_ + static_cast<std::uint32_t>(at)};
    scanned_ = place.pos + 1;
    if (decode_frame_header(place.frame, bytes.subspan(at), format_) &&
        is_followed(bytes, at, place.frame.frame_length))
      waiting_.emplace(std::uint64_t{place.pos} + place.frame.frame_length + follower_size, place);
  }
  const std::uint64_t seen_to = std::uint64_t{from} + search_block_size;
  for (; !waiting_.empty() && waiting_.begin()->first <= seen_to; waiting_.erase(waiting_.begin()))
    if (waiting_.begin()->second.pos >= from) believe(waiting_.begin()->second);
}

void FrameSweep::believe(const FramePlace& place) {
  const auto added = believed_.emplace(place.pos, place.frame).first;
  const auto confirm = [this](auto header) {
    const bool has_same_rate = header != believed_.begin() &&
                               std::prev(header)->second.sample_rate == header->second.sample_rate;
    if (has_same_rate) {
      confirmed_.insert(header->first);
    } else {
      confirmed_.erase(header->first);
    }
  };
  confirm(added);
  if (std::next(added) != believed_.end()) confirm(std::next(added));
}

void FrameSweep::forget_before(std::uint32_t from) {
  const auto first_kept = believed_.lower_bound(from);
  if (first_kept == believed_.begin()) return;
  believed_.erase(believed_.begin(), first_kept);
  const std::uint32_t first_offset = believed_.empty() ? from : believed_.begin()->first;
  confirmed_.erase(confirmed_.begin(), confirmed_.upper_bound(first_offset));
}

}  // namespace corvelin

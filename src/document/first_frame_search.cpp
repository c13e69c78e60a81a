// The first-frame search in time linear in the bytes.
//
// The windows of consecutive searches overlap, so that each byte of junk lies in 500 of them. But
// most searches are known to fail beforehand: one can succeed only when its window holds a
// believable header, which is followed by another within the window. So a sweep over the junk keeps
// the believable headers of the window, and `find_frame` runs only where one of them might be
// taken.
#include "document/first_frame_search.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <vector>

#include "model/frame_locator.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

constexpr std::uint32_t search_step = 20;         // bytes
constexpr std::uint32_t highest_start = 0xFFFFF;  // of a search

// Slides the window of the locator over bytes that are held in memory, a step at a time.
class WindowSweep {
 public:
  explicit WindowSweep(std::span<const std::uint8_t> bytes) : bytes_(bytes) { extend(); }

  // Whether the window lies whole within the bytes. If not, only the locator can tell.
  [[nodiscard]] bool fits() const { return begin_ + search_block_size <= bytes_.size(); }

  // Whether a search here might find a frame.
  [[nodiscard]] bool may_find() const { return !believed_.empty() || may_find_in_tail(); }

  void advance() {
    begin_ += search_step;
    believed_.erase(believed_.begin(), believed_.lower_bound(begin_));
    extend();
  }

 private:
  [[nodiscard]] std::span<const std::uint8_t> window() const {
    const std::size_t left = bytes_.size() - std::min(begin_, bytes_.size());
    return bytes_.subspan(bytes_.size() - left, std::min<std::size_t>(search_block_size, left));
  }

  // Takes in what the window has come to cover: new candidates, and those whose following header
  // lies inside only now.
  void extend() {
    const std::size_t end = begin_ + window().size();
    for (; scanned_ + 1 < end; ++scanned_) {
      FrameInfo frame;
      if (!has_sync(bytes_, scanned_)) continue;
      if (!decode_frame_header(frame, bytes_.subspan(scanned_), frame_format())) continue;
      if (!is_followed(bytes_, scanned_, frame.frame_length)) continue;
      const std::size_t covered_at =
          scanned_ + std::max<std::size_t>(frame.frame_length + 2, header_size);
      waiting_.emplace(covered_at, scanned_);
    }
    for (; !waiting_.empty() && waiting_.begin()->first <= end; waiting_.erase(waiting_.begin()))
      if (waiting_.begin()->second >= begin_) believed_.insert(waiting_.begin()->second);
  }

  // The locator sees only half of a header at the window's end, and half an ADTS header can stand
  // for so short a frame that another seems to follow it.
  [[nodiscard]] bool may_find_in_tail() const {
    if (frame_format() != FrameFormat::adts) return false;
    const std::span<const std::uint8_t> block = window();
    for (std::size_t at = block.size() - std::min(block.size(), header_size); at < block.size();
         ++at) {
      FrameInfo frame;
      if (has_sync(block, at) && decode_frame_header(frame, block.subspan(at), frame_format()) &&
          is_followed(block, at, frame.frame_length))
        return true;
    }
    return false;
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t begin_ = 0;                            // of the window
  std::size_t scanned_ = 0;                          // candidates before this offset are known
  std::multimap<std::size_t, std::size_t> waiting_;  // headers, by where a window must end for them
  std::set<std::size_t> believed_;                   // the headers of the window
};

// The bytes from `from` on in which a search's window can lie whole in front of the audio's end.
std::vector<std::uint8_t> bytes_to_sweep(EditPosition from) {
  const SourceFile& file = document.files[0];
  const std::uint32_t end =
      std::min(std::max(file.audio_end, 1U) - 1, highest_start + search_block_size);
  std::vector<std::uint8_t> bytes(end > from ? end - from : 0);
  bytes.resize(file.handle.read_at(from, bytes));
  return bytes;
}

}  // namespace

FramePlace find_first_frame(EditPosition from) {
  const FramePlace at_once = find_frame(0, from);
  if (at_once.pos != no_position) return at_once;

  const std::vector<std::uint8_t> bytes = bytes_to_sweep(from);
  WindowSweep sweep(bytes);
  for (EditPosition pos = from + search_step; pos < document.total_size && pos <= highest_start;
       pos += search_step) {
    sweep.advance();
    if (sweep.fits() && !sweep.may_find()) continue;
    const FramePlace found = find_frame(0, pos);
    if (found.pos != no_position) return found;
  }
  return {};
}

}  // namespace corvelin

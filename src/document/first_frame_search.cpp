// The first-frame search in time linear in the bytes.
//
// The windows of consecutive searches overlap, so that each byte of junk lies in 500 of them. But
// most searches are known to fail beforehand: one can succeed only when its window holds a
// believable header, which is followed by another within the window. So a sweep over the junk keeps
// the believable headers of the window, and `locate_frame` runs only where one of them might be
// taken.
#include "document/first_frame_search.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <span>
#include <vector>

#include "model/frame_locator.h"
#include "stream/frame_header.h"

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

  // Whether a search that comes with `saved` as the frame before it might take a frame. A header is
  // taken when the one believed before it has the same sample rate, or when there was none.
  [[nodiscard]] bool may_find(const FrameInfo& saved) const {
    if (may_find_in_tail()) return true;
    if (believed_.empty()) return false;
    return saved.version == 0 || saved.sample_rate == believed_.begin()->second ||
           equal_neighbours_ > 0;
  }

  // What a search in vain leaves behind: the last candidate of the window, decoded.
  void leave_behind(FrameInfo& frame) const {
    if (has_candidate_ && last_candidate_ >= begin_)
      decode_frame_header(frame, window().subspan(last_candidate_ - begin_));
  }

  void advance() {
    begin_ += search_step;
    while (!believed_.empty() && believed_.begin()->first < begin_) {
      const auto next = std::next(believed_.begin());
      if (next != believed_.end() && next->second == believed_.begin()->second) --equal_neighbours_;
      believed_.erase(believed_.begin());
    }
    extend();
  }

 private:
  struct Header {
    std::size_t at;
    std::uint32_t rate;
  };

  [[nodiscard]] std::span<const std::uint8_t> window() const {
    const std::size_t left = bytes_.size() - std::min(begin_, bytes_.size());
    return bytes_.subspan(bytes_.size() - left, std::min<std::size_t>(search_block_size, left));
  }

  // Takes in what the window has come to cover: new candidates, and those whose following header
  // lies inside only now.
  void extend() {
    const std::size_t end = begin_ + window().size();
    for (; scanned_ + 1 < end; ++scanned_) {
      if (!has_sync(bytes_, scanned_)) continue;
      has_candidate_ = true;
      last_candidate_ = scanned_;
      FrameInfo frame;
      if (!decode_frame_header(frame, bytes_.subspan(scanned_))) continue;
      if (!is_followed(bytes_, scanned_, frame.frame_length)) continue;
      const std::size_t covered_at =
          scanned_ + std::max<std::size_t>(frame.frame_length + 2, header_size);
      waiting_.emplace(covered_at, Header{scanned_, frame.sample_rate});
    }
    for (; !waiting_.empty() && waiting_.begin()->first <= end; waiting_.erase(waiting_.begin()))
      believe(waiting_.begin()->second);
  }

  void believe(const Header& header) {
    if (header.at < begin_) return;
    const auto added = believed_.emplace(header.at, header.rate).first;
    const auto next = std::next(added);
    const bool has_next = next != believed_.end();
    const bool has_previous = added != believed_.begin();
    if (has_next && next->second == header.rate) ++equal_neighbours_;
    if (!has_previous) return;
    const std::uint32_t previous_rate = std::prev(added)->second;
    if (previous_rate == header.rate) ++equal_neighbours_;
    if (has_next && next->second == previous_rate) --equal_neighbours_;
  }

  // The locator sees only half of a header at the window's end, and half an ADTS header can stand
  // for so short a frame that another seems to follow it.
  [[nodiscard]] bool may_find_in_tail() const {
    if (stream.is_aac == 0) return false;
    const std::span<const std::uint8_t> block = window();
    for (std::size_t at = block.size() - std::min(block.size(), header_size); at < block.size();
         ++at) {
      FrameInfo frame;
      if (has_sync(block, at) && decode_frame_header(frame, block.subspan(at)) &&
          is_followed(block, at, frame.frame_length))
        return true;
    }
    return false;
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t begin_ = 0;    // of the window
  std::size_t scanned_ = 0;  // candidates before this offset are known
  bool has_candidate_ = false;
  std::size_t last_candidate_ = 0;
  std::multimap<std::size_t, Header> waiting_;     // by where the window must end to believe them
  std::map<std::size_t, std::uint32_t> believed_;  // sample rates of the window's headers, by place
  // How many of these have the rate of the one before them. While there is one, a search that has
  // come past the first header believes a second.
  int equal_neighbours_ = 0;
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

EditPosition find_first_frame(EditPosition from) {
  const EditPosition at_once = locate_frame(0, from);
  if (at_once != no_position) return at_once;

  const std::vector<std::uint8_t> bytes = bytes_to_sweep(from);
  WindowSweep sweep(bytes);
  for (EditPosition pos = from + search_step; pos < document.total_size && pos <= highest_start;
       pos += search_step) {
    sweep.advance();
    if (sweep.fits() && !sweep.may_find(stream.current_frame)) {
      sweep.leave_behind(stream.current_frame);
      continue;
    }
    const EditPosition frame = locate_frame(0, pos);
    if (frame != no_position) return frame;
  }
  return no_position;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Many small reads of one file, mostly forwards, through a window of it in memory: a walk from
// frame to frame looks at a few bytes of each, and must not call the system for every one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvelin {

class FileWindow {
 public:
  /// Up to `count` bytes of `file` at `offset`, fewer at its end. They stay until the next call.
  /// All calls name the same file, one that is read or one that is written, and `count` is small.
  template <typename File>
  std::span<const std::uint8_t> bytes_at(const File& file, std::uint64_t offset,
                                         std::size_t count) {
    const bool reaches_end = !block_.empty() && size_ < window_size;  // of the file
    const bool is_inside = offset >= begin_ && offset <= begin_ + size_;
    if (!is_inside || (offset + count > begin_ + size_ && !reaches_end)) {
      block_.resize(window_size);
      begin_ = offset;
      size_ = file.read_at(offset, block_);
    }
    const auto at = static_cast<std::size_t>(offset - begin_);
    return std::span(block_).subspan(at, std::min(count, size_ - at));
  }

 private:
  static constexpr std::size_t window_size = 0x20000;  // stays in the processor's cache

  std::vector<std::uint8_t> block_;  // empty until the first read
  std::uint64_t begin_ = 0;          // file offset of the block's first byte
  std::size_t size_ = 0;             // bytes of the block that were read
};

}  // namespace corvelin

// Many small reads of one file, mostly forwards, through a window of it in memory: a walk from
// frame to frame looks at a few bytes of each, and must not call the system for every one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/file.h"

namespace corvelin {

class FileWindow {
 public:
  /// Up to `count` bytes of `file` at `offset`, fewer at its end. They stay until the next call.
  /// All calls name the same file, and `count` is small.
  std::span<const std::uint8_t> bytes_at(const InputFile& file, std::uint64_t offset,
                                         std::size_t count);

 private:
  std::vector<std::uint8_t> block_;  // empty until the first read
  std::uint64_t begin_ = 0;          // file offset of the block's first byte
  std::size_t size_ = 0;             // bytes of the block that were read
};

}  // namespace corvelin

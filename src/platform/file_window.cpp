// The window that follows the reads.
#include "platform/file_window.h"

#include <algorithm>

namespace corvelin {

std::span<const std::uint8_t> FileWindow::bytes_at(const InputFile& file, std::uint64_t offset,
                                                   std::size_t count) {
  constexpr std::size_t window_size = 0x20000;  // stays in the processor's cache
  if (offset < begin_ || offset + count > begin_ + size_) {
    block_.resize(window_size);
    begin_ = offset;
    size_ = file.read_at(offset, block_);
  }
  const auto at = static_cast<std::size_t>(offset - begin_);
  return std::span(block_).subspan(at, std::min(count, size_ - at));
}

}  // namespace corvelin

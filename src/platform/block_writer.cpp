// The buffer in front of a file.
#include "platform/block_writer.h"

#include <sys/mman.h>

#include <algorithm>

namespace corvelin {

namespace {

constexpr std::size_t alignment = std::size_t{64} * 1024;  // of the file offsets between blocks

}  // namespace

BlockWriter::BlockWriter(OutputFile& file) : file_(file), buffer_(new Buffer) {
  ::madvise(buffer_.get(), buffer_size, MADV_HUGEPAGE);  // advice: it may be refused
}

std::span<std::uint8_t> BlockWriter::room() { return std::span(buffer_->bytes).subspan(filled_); }

std::error_code BlockWriter::commit(std::size_t size) {
  filled_ += size;
  if (buffer_size - filled_ >= least_room) return {};
  const auto odd = static_cast<std::size_t>(offset() % alignment);
  const std::size_t block = filled_ - std::min(odd, filled_);
  const std::error_code error = file_.write(std::span(buffer_->bytes).first(block));
  std::copy(buffer_->bytes.begin() + block, buffer_->bytes.begin() + filled_,
            buffer_->bytes.begin());
  filled_ -= block;
  return error;
}

std::error_code BlockWriter::flush() {
  const std::error_code error = file_.write(std::span(buffer_->bytes).first(filled_));
  filled_ = 0;
  return error;
}

}  // namespace corvelin

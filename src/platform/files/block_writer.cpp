// SPDX-License-Identifier: GPL-2.0-or-later
// The two buffers in front of a file.
#include "platform/files/block_writer.h"

#include <sys/mman.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace corvelin {

namespace {

constexpr std::size_t alignment = std::size_t{64} * 1024;  // of the file offsets between blocks

}  // namespace

BlockWriter::BlockWriter(OutputFile& file) : file_(file) {
  for (const Block& block : blocks_)
    ::madvise(block.buffer.get(), buffer_size, MADV_HUGEPAGE);  // advice: it may be refused
}

void BlockWriter::begin() {
  wait();
  error_.clear();
  has_failed_ = false;
  filled_ = 0;
  start_ = file_.size();
}

bool BlockWriter::has_room(std::chrono::milliseconds in_time) {
  Block& block = blocks_[current_];
  if (!thread_.is_done(block.written, in_time)) return false;
  std::ranges::copy(std::exchange(carried_, {}), block.buffer->bytes.begin());
  return true;
}

std::span<std::uint8_t> BlockWriter::room() {
  return std::span(blocks_[current_].buffer->bytes).subspan(filled_);
}

void BlockWriter::commit(std::size_t size) {
  filled_ += size;
  if (buffer_size - filled_ >= least_room) return;
  const auto odd = static_cast<std::size_t>(offset() % alignment);
  hand_over(filled_ - std::min(odd, filled_));
}

void BlockWriter::commit(std::span<const std::uint8_t> bytes) {
  std::ranges::copy(bytes, room().begin());
  commit(bytes.size());
}

void BlockWriter::flush() {
  if (filled_ != 0) hand_over(filled_);
}

// The bytes behind the first `size` ones go on to the other buffer, when that is free.
void BlockWriter::hand_over(std::size_t size) {
  Block& block = blocks_[current_];
  const auto made = std::span<const std::uint8_t>(block.buffer->bytes).first(filled_);
  block.written = give([this, bytes = made.first(size)] { return file_.write(bytes); });
  carried_ = made.subspan(size);
  start_ += size;
  filled_ = carried_.size();
  current_ = 1 - current_;
}

void BlockWriter::write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  give([this, offset, bytes = std::vector(bytes.begin(), bytes.end())] {
    return file_.write_at(offset, bytes);
  });
}

PatientThread::Ticket BlockWriter::give(std::function<std::error_code()> work) {
  last_ = thread_.give([this, work = std::move(work)] {
    if (has_failed_) return;
    error_ = work();
    if (error_) has_failed_ = true;
  });
  return last_;
}

bool BlockWriter::is_idle(std::chrono::milliseconds in_time) {
  return thread_.is_done(last_, in_time);
}

void BlockWriter::wait() { thread_.wait(last_); }

}  // namespace corvelin

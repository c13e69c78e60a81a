// SPDX-License-Identifier: GPL-2.0-or-later
// The search for frames to sample, and the memory of those found.
#include "model/sampled_frames.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace corvelin {

namespace {

constexpr std::size_t block_size = 62000;             // bytes of one read
constexpr std::uint32_t longest_search = 10'000'000;  // bytes

// Frames are kept until they are so many times what a sampling asks for.
constexpr std::size_t kept_samplings = 4;
constexpr std::size_t least_kept = 10'000;  // frames

auto place_of(const SampledFrame& frame) { return std::tuple(frame.file, frame.searched_from); }

bool is_before(const SampledFrame& a, const SampledFrame& b) { return place_of(a) < place_of(b); }

bool is_same(const FileFacts& a, const FileFacts& b) {
  return a.identity == b.identity && a.size == b.size &&
         a.write_time.tv_sec == b.write_time.tv_sec && a.write_time.tv_nsec == b.write_time.tv_nsec;
}

// The offset of the first header of `kind` in `block`, decoded into `info`, or the block's size.
std::size_t find_header(std::span<const std::uint8_t> block, FrameFormat format,
                        const StreamKind& kind, FrameInfo& info) {
  for (std::size_t at = find_sync(block, 0, block.size()); at < block.size();
       at = find_sync(block, at + 1, block.size())) {
    if (decode_frame_header(info, block.subspan(at), format) && info.frame_length != 0 &&
        info.version == kind.version && info.sample_rate == kind.sample_rate)
      return at;
  }
  return block.size();
}

}  // namespace

void SampledFrames::begin(const Document& document) {
  const StreamKind& kind = document.kind;
  if (kind.version != kind_.version || kind.sample_rate != kind_.sample_rate ||
      kind.layer != kind_.layer)
    forget();
  kind_ = kind;
  format_ = frame_format(document.stream);
  files_.resize(document.files.size());
  checked_.assign(document.files.size(), false);
  block_size_ = 0;
  next_ = 0;
  asked_ = 0;
}

void SampledFrames::look_at(std::uint16_t gain_bit) {
  if (gain_bit != gain_bit_) forget();
  gain_bit_ = gain_bit;
}

SampledFrame SampledFrames::frame_from(const Document& document, std::uint16_t file,
                                       std::uint32_t offset) {
  const InputFile& handle = *document.files[file].handle;
  check_file(handle, file);
  ++asked_;
  const SampledFrame wanted = {.searched_from = offset, .file = file};
  if (next_ >= known_.size() || place_of(known_[next_]) != place_of(wanted)) {
    const auto found = std::ranges::lower_bound(known_, wanted, is_before);
    next_ = static_cast<std::size_t>(found - known_.begin());
  }
  if (next_ < known_.size() && place_of(known_[next_]) == place_of(wanted)) return known_[next_++];
  new_.push_back(search(handle, file, offset));
  return new_.back();
}

void SampledFrames::end() {
  if (new_.empty()) return;
  if (known_.size() + new_.size() > std::max(kept_samplings * asked_, least_kept)) known_.clear();
  std::ranges::sort(new_, is_before);
  const auto old_size = static_cast<std::ptrdiff_t>(known_.size());
  known_.insert(known_.end(), new_.begin(), new_.end());
  std::inplace_merge(known_.begin(), known_.begin() + old_size, known_.end(), is_before);
  new_.clear();
}

// Another program may have written to a source: then nothing that was read of it holds.
void SampledFrames::check_file(const InputFile& handle, std::uint16_t file) {
  if (checked_[file]) return;
  checked_[file] = true;
  const FileFacts facts = handle.facts();
  if (!is_same(facts, files_[file])) forget();
  files_[file] = facts;
}

void SampledFrames::forget() {
  known_.clear();
  new_.clear();
  block_size_ = 0;
}

SampledFrame SampledFrames::search(const InputFile& handle, std::uint16_t file,
                                   std::uint32_t offset) {
  SampledFrame frame = {.searched_from = offset, .begin = offset, .file = file};
  for (std::uint64_t at = offset; at - offset < longest_search;) {
    const std::span<const std::uint8_t> block = block_at(handle, file, at);
    const bool is_file_end = block.size() <= longest_adts_frame;
    FrameInfo info;
    const std::size_t found = find_header(block, format_, kind_, info);
    if (found + info.frame_length <= block.size() && info.frame_length != 0) {
      frame.begin = static_cast<std::uint32_t>(at + found);
      frame.frame_length = info.frame_length;
      frame.bitrate = info.bitrate;
      frame.loudness =
          measure_loudness(block.subspan(found, info.frame_length), info, kind_.layer, gain_bit_);
      break;
    }
    if (is_file_end) break;
    // A header at the block's very end may be half of one: the next block begins at it.
    at += found < block.size() ? found : block.size() - 1;
  }
  return frame;
}

// What is there of a file from `offset` on: more than a frame, unless the file ends.
std::span<const std::uint8_t> SampledFrames::block_at(const InputFile& handle, std::uint16_t file,
                                                      std::uint64_t offset) {
  const bool is_held = block_size_ != 0 && file == block_file_ && offset >= block_begin_ &&
                       offset < block_begin_ + block_size_;
  const std::uint64_t left = is_held ? block_begin_ + block_size_ - offset : 0;
  const bool is_last_block = block_size_ < block_size;
  if (left <= longest_adts_frame && !(is_held && is_last_block)) {
    block_.resize(block_size);
    block_size_ = handle.read_at(offset, block_);
    block_begin_ = offset;
    block_file_ = file;
  }
  return std::span(block_).first(block_size_).subspan(offset - block_begin_);
}

}  // namespace corvelin

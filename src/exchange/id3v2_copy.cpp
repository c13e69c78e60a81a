// SPDX-License-Identifier: GPL-2.0-or-later
// Copying of an ID3v2 tag, in blocks: a tag full of pictures is no reason to hold it in memory.
#include "exchange/id3v2_copy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "model/document.h"
#include "model/stream_info.h"
#include "platform/text/bytes.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::size_t block_size = 65536;
using Block = std::array<std::uint8_t, block_size>;

constexpr std::string_view duration_id = "TLEN";
constexpr std::string_view neutral_id = "TXXX";
constexpr std::size_t least_frame = 9;    // a match nearer to the tag's end isn't a frame
constexpr std::size_t low_size_byte = 7;  // of the frame's size, from its id on
constexpr std::size_t frame_header_size = 10;

}  // namespace

bool keeps_id3v2(const Document& document, bool split_active) {
  const std::uint32_t wish = split_active ? settings.split_id3v2 : settings.keep_id3v2;
  return document.stream.id3v2_size > 1 && wish != 0;
}

void Id3v2Copy::begin(const Document& document) {
  *this = {};
  source_ = document.files[0].handle;
  tag_size_ = std::min<std::uint64_t>(document.stream.id3v2_size, source_->facts().size);
  duration_ = find_duration();
}

std::optional<Id3v2Copy::DurationFrame> Id3v2Copy::find_duration() const {
  Block block;
  for (std::uint64_t start = 0; start + least_frame <= tag_size_;
       start += block_size - least_frame + 1) {
    const std::size_t wanted = std::min<std::uint64_t>(block_size, tag_size_ - start);
    const std::span<const std::uint8_t> bytes =
        std::span(block).first(source_->read_at(start, std::span(block).first(wanted)));
    for (std::size_t at = 0; at + least_frame <= bytes.size(); ++at) {
      if (!stands_at(bytes, at, duration_id)) continue;
      const std::uint64_t id = start + at;
      const std::uint64_t content = std::min(id + frame_header_size, tag_size_);
      return DurationFrame{id, content, std::min(content + bytes[at + low_size_byte], tag_size_)};
    }
  }
  return std::nullopt;
}

std::size_t Id3v2Copy::read(std::span<std::uint8_t> bytes) {
  const auto wanted = std::min<std::uint64_t>(bytes.size(), tag_size_ - read_);
  const std::size_t size = source_->read_at(read_, bytes.first(wanted));
  error_ = source_->read_error();
  if (error_) return 0;
  if (duration_) neutralise(bytes.first(size));
  read_ += size;
  return size;
}

// Makes the part of the duration's frame that lies in the bytes read next say nothing.
void Id3v2Copy::neutralise(std::span<std::uint8_t> bytes) const {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint64_t at = read_ + i;
    if (at >= duration_->id && at < duration_->id + neutral_id.size())
      bytes[i] = static_cast<std::uint8_t>(neutral_id[at - duration_->id]);
    if (at >= duration_->content && at < duration_->end) bytes[i] = 0;
  }
}

}  // namespace corvelin

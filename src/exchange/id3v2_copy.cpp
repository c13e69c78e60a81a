// Copying of an ID3v2 tag, in blocks: a tag full of pictures is no reason to hold it in memory.
#include "exchange/id3v2_copy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "model/document.h"
#include "model/stream_info.h"
#include "platform/bytes.h"
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

// The bytes of the tag's duration frame, as offsets in the file.
struct DurationFrame {
  std::uint64_t id;
  std::uint64_t content;
  std::uint64_t end;  // of the content, by the low byte of the frame's size, and within the tag
};

std::optional<DurationFrame> find_duration(const InputFile& file, std::uint64_t tag_size) {
  Block block;
  for (std::uint64_t start = 0; start + least_frame <= tag_size;
       start += block_size - least_frame + 1) {
    const std::size_t wanted = std::min<std::uint64_t>(block_size, tag_size - start);
    const std::span<const std::uint8_t> bytes =
        std::span(block).first(file.read_at(start, std::span(block).first(wanted)));
    for (std::size_t at = 0; at + least_frame <= bytes.size(); ++at) {
      if (!stands_at(bytes, at, duration_id)) continue;
      const std::uint64_t id = start + at;
      const std::uint64_t content = std::min(id + frame_header_size, tag_size);
      return DurationFrame{id, content, std::min(content + bytes[at + low_size_byte], tag_size)};
    }
  }
  return std::nullopt;
}

// Makes the part of the duration frame that lies in `bytes`, which stand at `start`, say nothing.
void neutralise(std::span<std::uint8_t> bytes, std::uint64_t start, const DurationFrame& frame) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint64_t at = start + i;
    if (at >= frame.id && at < frame.id + neutral_id.size())
      bytes[i] = static_cast<std::uint8_t>(neutral_id[at - frame.id]);
    if (at >= frame.content && at < frame.end) bytes[i] = 0;
  }
}

}  // namespace

bool keeps_id3v2(bool split_active) {
  const std::uint32_t wish = split_active ? settings.split_id3v2 : settings.keep_id3v2;
  return stream.id3v2_size > 1 && wish != 0;
}

Id3v2Copy copy_id3v2(OutputFile& target) {
  const InputFile& file = document.files[0].handle;
  const std::uint64_t tag_size = std::min<std::uint64_t>(stream.id3v2_size, file.facts().size);
  const std::optional<DurationFrame> duration = find_duration(file, tag_size);
  Id3v2Copy copy;
  Block block;
  while (copy.written < tag_size && !copy.error) {
    const std::size_t wanted = std::min<std::uint64_t>(block_size, tag_size - copy.written);
    const std::span<std::uint8_t> bytes =
        std::span(block).first(file.read_at(copy.written, std::span(block).first(wanted)));
    if (file.read_error()) copy.error = file.read_error();
    if (bytes.empty() || copy.error) break;
    if (duration) neutralise(bytes, copy.written, *duration);
    copy.error = target.write(bytes);
    copy.written += bytes.size();
  }
  return copy;
}

}  // namespace corvelin

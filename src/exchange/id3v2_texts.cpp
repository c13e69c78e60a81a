// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of ID3v2 frames by TagLib, from the bytes of the tag alone.
//
// The walk over the frames is ours, so that the library is given the few small ones that are asked
// for: a tag may hold any number of frames, pictures of many megabytes, and compressed content that
// unpacks to a thousand times its size.
#include "exchange/id3v2_texts.h"

#include <taglib/id3v2extendedheader.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2synchdata.h>
#include <taglib/textidentificationframe.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/document.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

namespace id3v2 = TagLib::ID3v2;

constexpr std::size_t most_read = std::size_t{16} << 20;  // bytes of a tag
constexpr std::size_t largest_text = 65536;               // bytes of a frame

struct FrameHeader : id3v2::Frame {
  using id3v2::Frame::Header;  // which the library keeps to itself
};

struct Field {
  std::string_view id;      // of ID3v2.3 and 2.4
  std::string_view old_id;  // of ID3v2.2
  std::string Id3v2Texts::*text;
};

constexpr Field fields[] = {
    {"TIT2", "TT2", &Id3v2Texts::title}, {"TPE1", "TP1", &Id3v2Texts::artist},
    {"TALB", "TAL", &Id3v2Texts::album}, {"TRCK", "TRK", &Id3v2Texts::track},
    {"TYER", "TYE", &Id3v2Texts::year},  {"TDRC", "", &Id3v2Texts::year},
};

std::string Id3v2Texts::*field_of(const TagLib::ByteVector& id) {
  const std::string_view name(id.data(), id.size());
  for (const Field& field : fields)
    if (name == field.id || name == field.old_id) return field.text;
  return nullptr;
}

TagLib::ByteVector read_tag(const Document& document, std::size_t size) {
  std::vector<std::uint8_t> bytes(std::min(size, most_read));
  bytes.resize(document.files[0].handle->read_at(0, bytes));
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<unsigned>(bytes.size())};
}

// The frames of a tag: its content without what may stand in front of them.
TagLib::ByteVector frames_of(const TagLib::ByteVector& tag, const id3v2::Header& header) {
  TagLib::ByteVector content = tag.mid(id3v2::Header::size());
  const bool is_whole = header.majorVersion() >= 4;  // from there on frames are treated one by one
  if (header.unsynchronisation() && !is_whole) content = id3v2::SynchData::decode(content);
  if (!header.extendedHeader()) return content;
  id3v2::ExtendedHeader extended;
  extended.setData(content);
  return content.mid(std::min(extended.size(), content.size()));
}

std::string text_of(const TagLib::ByteVector& frame, const id3v2::Header& header) {
  const std::unique_ptr<id3v2::Frame> made(
      id3v2::FrameFactory::instance()->createFrame(frame, &header));
  const auto* const text = dynamic_cast<const id3v2::TextIdentificationFrame*>(made.get());
  return text == nullptr ? std::string() : text->fieldList().toString(" / ").to8Bit(true);
}

Id3v2Texts read_frames_of(const TagLib::ByteVector& frames, const id3v2::Header& header) {
  Id3v2Texts texts;
  const unsigned version = header.majorVersion();
  const unsigned header_size = FrameHeader::Header::size(version);
  for (std::size_t at = 0; at + header_size < frames.size();) {
    const TagLib::ByteVector rest = frames.mid(static_cast<unsigned>(at));
    if (rest[0] == 0) break;  // padding
    const FrameHeader::Header frame(rest, version);
    std::string Id3v2Texts::*const field = field_of(frame.frameID());
    const bool is_plain = !frame.compression() && !frame.encryption();
    if (field != nullptr && is_plain && frame.frameSize() <= largest_text && (texts.*field).empty())
      texts.*field = text_of(rest, header);
    at += header_size + std::size_t{frame.frameSize()};
  }
  return texts;
}

}  // namespace

std::optional<Id3v2Texts> id3v2_texts(const Document& document) {
  if (document.files.empty() || document.stream.id3v2_size <= id3v2::Header::size())
    return std::nullopt;
  const TagLib::ByteVector tag = read_tag(document, document.stream.id3v2_size);
  if (tag.size() <= id3v2::Header::size()) return std::nullopt;
  const id3v2::Header header(tag);
  return read_frames_of(frames_of(tag, header), header);
}

}  // namespace corvelin

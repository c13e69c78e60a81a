// SPDX-License-Identifier: GPL-2.0-or-later
// Files that are something else.
#include "opening/file_fault.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <system_error>

#include "model/document.h"
#include "opening/tag_bounds.h"
#include "platform/files/file.h"
#include "platform/text/bytes.h"
#include "platform/text/path.h"

namespace corvelin {

namespace {

using namespace std::string_view_literals;

// A kind of file that a mark tells, at a place of its own.
struct Kind {
  std::size_t at;
  std::string_view mark;
  std::string_view name;
};

constexpr Kind kinds[] = {
    {8, "WAVE"sv, "a WAV file"},
    {8, "AVI "sv, "an AVI film"},
    {8, "AIFF"sv, "an AIFF file"},
    {8, "AIFC"sv, "an AIFF file"},
    {0, "OggS"sv, "an Ogg file"},
    {0, "fLaC"sv, "a FLAC file"},
    {4, "ftyp"sv, "an MP4 file"},
    {0, "\x1A\x45\xDF\xA3"sv, "a Matroska or WebM file"},
    {0, "\x30\x26\xB2\x75"sv, "a Windows Media file"},
    {0, "MAC "sv, "a Monkey's Audio file"},
    {0, "wvPk"sv, "a WavPack file"},
    {0, "MPCK"sv, "a Musepack file"},
    {0, "MP+"sv, "a Musepack file"},
    {0, ".snd"sv, "an AU file"},
    {0, "caff"sv, "a CAF file"},
    {0, "MThd"sv, "a MIDI file"},
    {0, "#!AMR"sv, "an AMR file"},
    {0, "PK\3\4"sv, "a ZIP archive"},
    {0, "\x1F\x8B"sv, "a gzip archive"},
    {0, "%PDF"sv, "a PDF document"},
    {0, "\x89PNG"sv, "a PNG picture"},
    {0, "\xFF\xD8\xFF"sv, "a JPEG picture"},
    {0, "<!DOCTYPE"sv, "a web page"},
    {0, "<html"sv, "a web page"},
};

// The file's first bytes behind an ID3v2 tag, which other kinds of audio carry too.
std::array<std::uint8_t, 16> first_bytes(const InputFile& file) {
  std::array<std::uint8_t, 16> bytes = {};
  file.read_at(id3v2_tag_size(file), bytes);
  return bytes;
}

// Whether a frame of the other family begins there: of ADTS in a file whose name says MPEG audio,
// or the other way round.
bool is_frame(std::span<const std::uint8_t> bytes, bool of_adts) {
  const bool has_sync = bytes[0] == 0xFF && (bytes[1] & 0xE0) == 0xE0;
  return has_sync && ((bytes[1] & 0x06) == 0) == of_adts;  // the layer, which ADTS has none of
}

}  // namespace

std::string reading_fault(const std::string& path) {
  InputFile file;
  if (const std::error_code error = file.open(path)) return error.message();
  const std::uint64_t size = file.facts_at_open().size;
  if (size > largest_file) return "The file is larger than 4 GB.";
  return size == 0 ? "The file is empty." : "";
}

std::string audio_fault(const std::string& path) {
  std::string fault = reading_fault(path);
  if (!fault.empty()) return fault;
  InputFile file;
  if (const std::error_code error = file.open(path)) return error.message();
  const std::array<std::uint8_t, 16> bytes = first_bytes(file);
  const auto* const kind = std::ranges::find_if(
      kinds, [&](const Kind& known) { return stands_at(bytes, known.at, known.mark); });
  if (kind != std::end(kinds))
    return fmt::format("This is {}; MPEG audio and AAC in ADTS are what can be edited.",
                       kind->name);
  if (is_frame(bytes, true) && !has_extension(path, ".aac"))
    return "This looks like AAC in ADTS, which a name ending in .aac opens.";
  if (is_frame(bytes, false) && has_extension(path, ".aac"))
    return "This looks like MPEG audio, which a name ending in .mp3 opens.";
  if (file.read_error()) return file.read_error().message();
  return "There are no frames of MPEG audio or ADTS in it.";
}

}  // namespace corvelin

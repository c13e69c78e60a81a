// SPDX-License-Identifier: GPL-2.0-or-later
// Extensions and what they stand for.
#include "opening/file_kind.h"

#include <algorithm>
#include <iterator>

#include "platform/text/path.h"

namespace corvelin {

namespace {

struct KnownExtension {
  std::string_view extension;
  FileKind kind;
};

constexpr KnownExtension known_extensions[] = {
    {".mp3", FileKind::mpeg_audio}, {".mp2", FileKind::mpeg_audio}, {".mpa", FileKind::mpeg_audio},
    {".aac", FileKind::aac},        {".mp4", FileKind::mp4},        {".m4a", FileKind::mp4},
    {".m3u", FileKind::playlist},   {".m3u8", FileKind::playlist},  {".cue", FileKind::cue_sheet},
    {".cvp", FileKind::project}};

}  // namespace

FileKind file_kind(std::string_view path) {
  const auto* const known = std::ranges::find_if(
      known_extensions,
      [path](const KnownExtension& row) { return has_extension(path, row.extension); });
  return known == std::end(known_extensions) ? FileKind::other : known->kind;
}

}  // namespace corvelin

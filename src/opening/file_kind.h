// SPDX-License-Identifier: GPL-2.0-or-later
// What a file is, by the extension of its name: the one place that knows which names are opened
// and saved as what.
#pragma once

#include <cstdint>
#include <string_view>

namespace corvelin {

enum class FileKind : std::uint8_t { other, mpeg_audio, aac, mp4, playlist, cue_sheet, project };

FileKind file_kind(std::string_view path);

}  // namespace corvelin

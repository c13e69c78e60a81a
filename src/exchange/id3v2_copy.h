// The ID3v2 tag of the first source on its way into a saved file.
#pragma once

#include <cstdint>
#include <system_error>

#include "platform/file.h"

namespace corvelin {

/// Whether a save carries the tag along. A piece of a split has a setting of its own for that: the
/// tag says nothing of the piece.
bool keeps_id3v2(bool split_active);

struct Id3v2Copy {
  std::error_code error;
  std::uint64_t written = 0;  // bytes: all that the file really has of the tag
};

/// Copies the tag of source file 0 to the target's end, bit for bit but for its duration, which an
/// edit has made untrue: the first frame "TLEN" becomes a "TXXX" of zeros, of the same size. The
/// letters are searched for without regard to the tag's structure, so they are found inside a text
/// too.
Id3v2Copy copy_id3v2(OutputFile& target);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The texts of the first source's ID3v2 tag that people go by, for them to be shown. The tag itself
// is carried along by saves as it stands.
#pragma once

#include <optional>
#include <string>

#include "model/document.h"

namespace corvelin {

/// In UTF-8; a text that the tag lacks is empty.
struct Id3v2Texts {
  std::string title;
  std::string artist;  // several are parted by " / "
  std::string album;
  std::string year;   // or the whole date of the recording, as the tag has it
  std::string track;  // "3" or "3/12"
};

/// Nothing without a tag. What is malformed reads as far as it makes sense.
std::optional<Id3v2Texts> id3v2_texts(const Document& document);

}  // namespace corvelin

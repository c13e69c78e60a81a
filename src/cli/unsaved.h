// SPDX-License-Identifier: GPL-2.0-or-later
// Whether the document has been edited since it was opened or something of it was saved: what a
// run that ends like that has done for nothing.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/document.h"

namespace corvelin {

/// All of a document that a save would write, as it was when the document was opened or saved.
struct SavedContent {
  std::vector<Part> parts;
  std::int16_t end_gain = 0;
  std::u16string sheet_title;
  std::u16string sheet_artist;
  HeaderRewrite header_bits;
  std::array<std::uint8_t, 128> id3v1 = {};
  bool operator==(const SavedContent&) const = default;
};

SavedContent content_of(const Document& document);

/// Tells, if the document is another one by now, that nothing saved it. Steps that were taken back
/// leave nothing to be saved.
void tell_unsaved_edits(const Document& document, const SavedContent& saved);

}  // namespace corvelin

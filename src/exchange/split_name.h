// SPDX-License-Identifier: GPL-2.0-or-later
// The names of the pieces of a split, made from the pattern `split_pattern`:
//
//   %N  number of the track          %M  number of the last track
//   %T  title of the track           %A  artist of the track
//   %C  title of the album           %D  artist of the album
//   %F  name of the source file      %S  start time of the track
//
// A piece lies in the folder that was asked for, whatever the texts and the pattern hold.
#pragma once

#include <cstdint>
#include <string>

#include "model/document.h"

namespace corvelin {

/// Puts the name of a piece behind the folder of `path`, in place.
///
/// `done` counts the pieces from 1 on, this one included, `total` all of the run; `first_number` is
/// the number of the first. `part` is the part at which the piece begins. What the document doesn't
/// know is left out. A name ends with the pattern's step that takes the path beyond 250 characters.
/// It gets the extension of `audio_name`, and with that it has at most 255 bytes: where that is too
/// little the longest texts are shortened, never the numbers that tell the pieces apart.
void make_split_name(const Document& document, std::string& path, std::uint16_t done,
                     std::uint16_t first_number, std::uint16_t total, PartIndex part,
                     const std::string& audio_name);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// AAC out of an MP4 container: the editor knows frames, not containers, so another program
// (`ffmpeg`, as the settings name it) copies the track, without encoding it anew, into a file
// beside the container.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/document.h"

namespace corvelin {

/// Copies the AAC track of a file into one beside it, and returns the name of that: song.m4a gives
/// song.aac. A file of that name is replaced if the user wants that.
///
/// Nothing, and silent, without a program in the settings and where the user thought better of it;
/// nothing and a box when not all of the track came out. What did is left beside the name then,
/// song.aac.~~~.aac, and a file of that name stands as it was.
///
/// A source of the open document, or one of `kept`, is never replaced: it is taken if it holds the
/// same track.
std::optional<std::string> extract_aac(const Document& document, const std::string& source,
                                       std::span<const std::string> kept = {});

/// `names` as they can be appended to the document: if that is AAC, the track of each MP4 file in
/// the place of the file. When one doesn't come out, those before it. Without a program in the
/// settings all stay what they are.
std::vector<std::string> extract_tracks(const Document& document,
                                        std::span<const std::string> names);

}  // namespace corvelin

// AAC out of an MP4 container: the editor knows frames, not containers, so another program
// (`ffmpeg`, as the settings name it) copies the track, without encoding it anew, into a file
// beside the container.
#pragma once

#include <optional>
#include <string>

namespace corvelin {

/// Copies the AAC track of a file into one beside it, and returns the name of that: song.m4a gives
/// song.aac. A file of that name is replaced if the user wants that.
///
/// Nothing, and silent, without a program in the settings and where the user thought better of it;
/// nothing and a box when not all of the track came out. What did is left beside the name then,
/// song.aac.~~~.aac, and a file of that name stands as it was.
std::optional<std::string> extract_aac(const std::string& source);

}  // namespace corvelin

// AAC out of an MP4 container: the editor knows frames, not containers, so another program
// (`ffmpeg`, as the settings name it) copies the track, without encoding it anew, into a file
// beside the container.
#pragma once

namespace corvelin {

/// Copies the AAC track of `open_state.audio_name` and puts the name of the file that holds it in
/// its place: song.m4a gives song.aac. A file of that name is replaced if the user wants that.
///
/// False, and silent, without a program in the settings and where the user thought better of it;
/// false with a box when the program can't be started or makes no file.
bool extract_aac();

}  // namespace corvelin

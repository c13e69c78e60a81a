// From the name of an audio file to an open document: the bounds of the audio in the file, and what
// the probe finds out about the stream.
#pragma once

namespace corvelin {

/// Opens the file `open_state.audio_name`: takes the tags off its ends, probes the stream, and
/// makes all of its audio one part. Shows no message; a failure leaves no document.
bool open_audio_file();

}  // namespace corvelin

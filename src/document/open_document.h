// From a file name to an open document, and back to none.
#pragma once

#include <string_view>
#include <vector>

namespace corvelin {

/// A kind of file that is no audio itself but describes a document, and names the audio in it.
struct DescriptionFormat {
  std::string_view extension;  // with its point
  /// Reads the file `open_state.project_name` into a document that is closed. Silent; false leaves
  /// the names in `open_state` for the message and whatever was read for `close_all`.
  bool (*read)();
};

/// The formats that `open_document` hands on, filled in at the start of the program by those who
/// own them.
extern std::vector<DescriptionFormat> description_formats;

/// Opens what `open_state.audio_name` names, by its extension. The document before it has been
/// closed. Shows a box when that fails, but for an MP4 file and for a playlist that can't be read.
bool open_document();

enum class OpenFailure { unreadable, unsupported_type };

/// Shows the box for a document that didn't open, with the names in `open_state`, and takes them
/// off the recent list. `audio_name` is empty then.
void report_open_failure(OpenFailure failure);

/// Opens one audio file: takes the tags off its ends, makes it one part, and probes the stream.
/// Silent; a failure leaves no document.
bool open_audio_file();

/// Closes the document and all that lives with it.
void close_all();

/// Told by `close_all`: the modules above that hold something of the document.
extern std::vector<void (*)()> close_listeners;

/// How far `reset_state` goes, each level with the ones before it.
enum class ResetLevel {
  new_stream = 1,  // selection, cursor, stream, flags
  no_name = 2,     // also the name of the audio file
  start = 3,       // also the document and all settings: the state of a process that just started
};

void reset_state(ResetLevel level);

}  // namespace corvelin

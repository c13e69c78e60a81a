// SPDX-License-Identifier: GPL-2.0-or-later
// Appending of files: each becomes one more source file and one more part at the end of the stream.
// No probe: a file fits when its first frame has the parameters of the stream, which goes on to
// describe the whole document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/document.h"
#include "platform/files/file.h"

namespace corvelin {

enum class AppendResult {
  appended = 0,
  table_full = 1,        // the document has all the parts that it can have
  other_parameters = 2,  // the file has frames, but none of the stream's kind
  no_sync = 3,           // the file has no frames
  not_opened = 4,        // also when the document has all the files that it can have
  bad_name = 5,          // without an extension
  other_format = 6,      // MPEG audio for an AAC stream or the other way round, by the extension
  bad_size = 7,
  too_large = 8,  // the stream would be longer than 4 GiB
  no_audio = 9,   // a folder, a project, a list
};

/// Where the audio of a file lies: file offsets of its first byte and behind its last one.
struct AudioBounds {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

/// The bounds that a file would be appended with. Nothing when it has no frames of the stream's
/// kind. An APE tag in front of the ID3v1 tag counts as audio.
std::optional<AudioBounds> find_audio_to_append(const Document& document, const InputFile& file);

/// Appends a file to the open document, without a message. A failure leaves the document as it was,
/// except that the file stays in the table of files when it was `table_full` that failed.
AppendResult append_file(Document& document, const std::string& name);

/// The same, and tells a failure: in a box, or as a line added to `list` when that is not null.
/// Returns whether it went well. The box names those that are `left_out` then, too.
bool append_file_reported(Document& document, const std::string& name,
                          std::vector<std::string>* list,
                          std::span<const std::string> left_out = {});

/// Whether all of these files fit, one behind the other. Those that don't are told, each in a box.
/// The document stays as it was.
bool can_append_files(const Document& document, std::span<const std::string> names);

/// What became of several files that were to make a document or to be appended.
struct Joined {
  std::size_t count = 0;  // of those that were opened or appended
  std::string failed;     // the one behind them, which was not; empty when all were
};

/// Appends files in their order until one fails, which is told in a box, with those behind it.
Joined append_files(Document& document, std::span<const std::string> names);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Opening of one audio file.
#include "opening/open_audio_file.h"

#include <system_error>

#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/file_fault.h"
#include "opening/file_kind.h"
#include "opening/open_state.h"
#include "opening/stream_probe.h"
#include "opening/tag_bounds.h"
#include "platform/text/bytes.h"
#include "platform/text/path.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::uint64_t smallest_file = 10;  // bytes

// Reads the file's last 128 bytes and takes them off the audio when they are a tag.
void take_off_id3v1(Document& document, OpenState& open_state, SourceFile& file) {
  if (file.audio_end < id3v1_size) return;
  file.handle->read_at(file.audio_end - id3v1_size, document.stream.id3v1);
  if (!stands_at(document.stream.id3v1, 0, "TAG")) return;
  file.audio_end -= id3v1_size;
  open_state.keep_id3v1 = settings.save_id3v1 != 0;
}

void take_off_ape(Document& document, SourceFile& file) {
  document.stream.ape_size = ape_tag_size(*file.handle, file.audio_end);
  file.audio_end -= document.stream.ape_size;
}

// Finds the bounds of the audio in source file 0, which is one part from its first byte on.
bool find_audio(Document& document, Selection& selection, SourceFile& file) {
  file.first_audio =
      probe_stream(*file.handle, file.audio_end, document.stream, selection.current_frame);
  if (file.first_audio == no_position) return false;
  file.audio_end = trim_to_last_frame(*file.handle, frame_format(document.stream), file.audio_end,
                                      kind_of(selection.current_frame));
  file.first_audio = locate_frame(document, 0, file.first_audio, selection.current_frame);
  if (file.first_audio >= file.audio_end) return false;  // `no_position` is
  document.kind = kind_of(selection.current_frame);
  return true;
}

void narrow_to_audio(Document& document, const SourceFile& file) {
  Part& part = document.parts[0];
  part.part_filepos = file.first_audio;
  part.part_size = file.audio_end - file.first_audio;
  part.part_iscue = 1;  // the first part of a file is a track's start
  recompute_total(document);
}

void take_over_header_bits(Document& document, const FrameInfo& frame) {
  document.header_rewrite = {.rewrite_header = false,
                             .rewrite_copyright = frame.copyright,
                             .rewrite_original = frame.original,
                             .rewrite_private = frame.private_bit};
}

bool open_added_file(Document& document, Selection& selection, OpenState& open_state,
                     SourceFile& file) {
  const std::uint64_t size = file.handle->facts().size;
  if (size < smallest_file || size > largest_file) return false;
  file.audio_end = static_cast<std::uint32_t>(size);
  open_state.keep_id3v1 = false;
  take_off_id3v1(document, open_state, file);
  take_off_ape(document, file);
  if (add_part(document, 0, 0, 0, file.audio_end) == no_part ||
      !find_audio(document, selection, file))
    return false;

  narrow_to_audio(document, file);
  selection.cursor = locate_frame(document, 0, selection.cursor, selection.current_frame);
  open_state.save_name.clear();
  take_over_header_bits(document, selection.current_frame);
  return true;
}

}  // namespace

std::string open_audio_file(Document& document, Selection& selection, OpenState& open_state,
                            const std::string& name) {
  open_state.audio_name = name;
  if (extension_of(name).empty())
    return "The name of an audio file ends in .mp3, .mp2, .mpa or .aac.";
  if (document.files.size() > 1) return "A document is open.";
  document.stream.is_aac = file_kind(name) == FileKind::aac ? 1 : 0;
  std::string cause;
  const auto index = add_source_file(document, name, &cause);
  if (!index) return cause;
  if (open_added_file(document, selection, open_state, document.files[*index])) return {};
  const std::error_code error = document.files[*index].handle->read_error();
  close_document(document);
  selection.current_frame = {};
  return error ? error.message() : audio_fault(name);
}

}  // namespace corvelin

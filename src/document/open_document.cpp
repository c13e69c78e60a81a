// Opening and closing of documents.
#include "document/open_document.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "document/open_state.h"
#include "document/playlist.h"
#include "document/stream_probe.h"
#include "document/tag_bounds.h"
#include "exchange/settings.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "platform/bytes.h"
#include "platform/message_box.h"
#include "platform/path.h"
#include "shell/ui_text.h"
#include "stream/frame_header.h"

namespace corvelin {

namespace {

constexpr std::uint64_t smallest_file = 10;  // bytes

// Reads the file's last 128 bytes and takes them off the audio when they are a tag.
void take_off_id3v1(SourceFile& file) {
  if (file.audio_end < id3v1_size) return;
  file.handle.read_at(file.audio_end - id3v1_size, stream.id3v1);
  if (!stands_at(stream.id3v1, 0, "TAG")) return;
  file.audio_end -= id3v1_size;
  open_state.keep_id3v1 = settings.save_id3v1 != 0;
}

void take_off_ape(SourceFile& file) {
  stream.ape_size = ape_tag_size(file.handle, file.audio_end);
  file.audio_end -= stream.ape_size;
}

// Finds the bounds of the audio in source file 0, which is one part from its first byte on.
bool find_audio(SourceFile& file) {
  file.first_audio = probe_stream(file.handle, file.audio_end);
  if (file.first_audio == no_position) return false;
  file.audio_end = trim_to_last_frame(file.handle, file.audio_end);
  file.first_audio = locate_frame(0, file.first_audio);
  return file.first_audio < file.audio_end;  // `no_position` isn't
}

void narrow_to_audio(const SourceFile& file) {
  Part& part = document.parts[0];
  part.part_filepos = file.first_audio;
  part.part_size = file.audio_end - file.first_audio;
  part.part_iscue = 1;  // the first part of a file is a track's start
  recompute_total();
}

void take_over_header_bits(const FrameInfo& frame) {
  header_rewrite = {.rewrite_header = false,
                    .rewrite_copyright = frame.copyright,
                    .rewrite_original = frame.original,
                    .rewrite_private = frame.private_bit};
}

bool open_added_file(SourceFile& file) {
  const std::uint64_t size = file.handle.facts().size;
  if (size < smallest_file || size > largest_file) return false;
  file.audio_end = static_cast<std::uint32_t>(size);
  open_state.keep_id3v1 = false;
  take_off_id3v1(file);
  take_off_ape(file);
  if (add_part(0, 0, 0, file.audio_end) == no_part || !find_audio(file)) return false;

  narrow_to_audio(file);
  selection.cursor = locate_frame(0, selection.cursor);
  open_state.save_name.clear();
  take_over_header_bits(stream.current_frame);
  return true;
}

bool open_audio() {
  if (!open_audio_file()) return false;
  add_recent(open_state.audio_name);
  return true;
}

// A description that names no audio makes no document, however well it reads.
bool open_description(const DescriptionFormat& format) {
  open_state.project_name = open_state.audio_name;
  close_all();
  reset_state(ResetLevel::no_name);
  if (!format.read() || document.parts.empty()) return false;
  add_recent(open_state.project_name);
  return true;
}

}  // namespace

OpenState open_state;
bool batch_active = false;
std::vector<DescriptionFormat> description_formats;
std::vector<void (*)()> close_listeners;

void report_open_failure(OpenFailure failure) {
  std::string text;
  if (!open_state.project_name.empty())
    text += fmt::format("{}: {}\n\n", ui_text(msg, 12), open_state.project_name);
  text += fmt::format("{}: {}\n", ui_text(msg, 11), open_state.audio_name);
  if (failure == OpenFailure::unsupported_type) text += fmt::format("\n\n{}", ui_text(msg, 18));
  show_message_box(
      {.caption = std::string(ui_text(msg, 10)), .text = text, .icon = BoxIcon::warning});
  remove_recent(open_state.project_name);
  remove_recent(open_state.audio_name);
  open_state.audio_name.clear();
}

bool open_document() {
  const std::string name = open_state.audio_name;
  open_state.project_name.clear();
  if (extension_of(name).empty()) {
    report_open_failure(OpenFailure::unsupported_type);
    return false;
  }
  reset_state(ResetLevel::new_stream);
  if (has_extension(name, ".mp4") || has_extension(name, ".m4a")) return false;
  if (has_extension(name, ".m3u") || has_extension(name, ".m3u8")) return read_playlist();

  const bool is_audio = has_extension(name, ".mp3") || has_extension(name, ".mp2") ||
                        has_extension(name, ".mpa") || has_extension(name, ".aac");
  const auto format = std::ranges::find_if(
      description_formats,
      [&](const DescriptionFormat& known) { return has_extension(name, known.extension); });
  bool is_open = false;
  if (is_audio) {
    is_open = open_audio();
  } else if (format != description_formats.end()) {
    is_open = open_description(*format);
  }
  if (!is_open) report_open_failure(OpenFailure::unreadable);
  return is_open;
}

bool open_audio_file() {
  const std::string& name = open_state.audio_name;
  if (name.empty() || document.files.size() > 1 || extension_of(name).empty()) return false;
  stream.is_aac = has_extension(name, ".aac") ? 1 : 0;
  const auto index = add_source_file(name);
  if (!index) return false;
  if (open_added_file(document.files[*index])) return true;
  close_document();
  return false;
}

void close_all() {
  close_document();
  selection = {};
  for (void (*const forget)() : close_listeners) forget();
}

void reset_state(ResetLevel level) {
  frame_block.fill(0);
  selection = {};
  stream = {};
  open_state.document_modified = false;
  open_state.selection_only = false;
  document.sheet_title.clear();
  document.sheet_artist.clear();
  if (level == ResetLevel::new_stream) return;

  open_state.audio_name.clear();
  if (level == ResetLevel::no_name) return;

  document = {};
  open_state = {};
  header_rewrite = {};
  resync_count = 0;
  batch_active = false;
  settings = default_settings();
}

}  // namespace corvelin

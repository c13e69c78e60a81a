// SPDX-License-Identifier: GPL-2.0-or-later
// Appending of files.
#include "opening/append.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/stream_info.h"
#include "opening/file_fault.h"
#include "opening/file_kind.h"
#include "opening/stream_probe.h"
#include "opening/tag_bounds.h"
#include "platform/files/file_window.h"
#include "platform/host.h"
#include "platform/text/bytes.h"
#include "platform/text/path.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::uint64_t smallest_file = 1000;  // bytes

struct FoundFrame {
  std::uint32_t at = 0;  // file offset
  FrameInfo info;
};

// Stricter than the locator: the CRC flag must be the same, too.
bool has_equal_follower(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t length) {
  const std::size_t next = at + length;
  return next + 1 < bytes.size() && bytes[next] == 0xFF && bytes[next + 1] == bytes[at + 1];
}

// Looks through the whole file for a frame that fits the stream. `other_parameters` when there were
// frames and none did: `found` is the first of them; `no_sync` when there were none.
AppendResult find_fitting_frame(const Document& document, const InputFile& file,
                                FoundFrame& found) {
  constexpr std::uint32_t step = search_block_size - frame_unit;
  AppendResult result = AppendResult::no_sync;
  FileWindow window;
  for (std::uint64_t offset = id3v2_tag_size(file);; offset += step) {
    const auto bytes = window.bytes_at(file, offset, search_block_size);
    if (bytes.size() <= frame_unit) return result;
    const std::size_t end = bytes.size() - frame_unit;
    for (std::size_t i = find_sync(bytes, 0, end); i < end; i = find_sync(bytes, i + 1, end)) {
      FrameInfo frame;
      if (!decode_frame_header(frame, bytes.subspan(i), frame_format(document.stream))) continue;
      if (!has_equal_follower(bytes, i, frame.frame_length)) continue;
      const bool fits = kind_of(frame) == document.kind;
      if (fits || result == AppendResult::no_sync)
        found = {.at = static_cast<std::uint32_t>(offset + i), .info = frame};
      if (fits) return AppendResult::appended;
      result = AppendResult::other_parameters;
    }
  }
}

// The file offset behind the audio. An APE tag in front of the ID3v1 tag counts as audio here.
std::uint32_t end_of_audio(const Document& document, const InputFile& file, std::uint32_t size) {
  std::array<std::uint8_t, id3v1_size> tail = {};
  file.read_at(size - id3v1_size, tail);
  return trim_to_last_frame(file, frame_format(document.stream),
                            stands_at(tail, 0, "TAG") ? size - id3v1_size : size, document.kind);
}

// What a failure tells beyond its result.
struct Detail {
  StreamKind other;   // of the file's frames, where that is another one than the stream's
  std::string cause;  // of a file that could not be opened or read
};

// Nothing when there is but a header and half a frame.
std::optional<AudioBounds> bounds_of(const Document& document, const InputFile& file,
                                     std::uint32_t size, std::uint32_t first_frame) {
  StreamInfo own = {.audio_end = size};  // what its header says means nothing to the stream
  const AudioBounds bounds = {
      .begin = document.stream.is_aac != 0 ? first_frame : read_vbr_header(file, first_frame, own),
      .end = end_of_audio(document, file, size)};
  return bounds.begin < bounds.end ? std::optional(bounds) : std::nullopt;
}

// A source that is open already keeps its bounds, which its parts and earlier states count on.
bool find_bounds(const Document& document, SourceFile& file, std::uint32_t size,
                 std::uint32_t first_frame) {
  if (file.audio_end != 0) return true;
  const auto bounds = bounds_of(document, *file.handle, size, first_frame);
  if (!bounds) return false;
  file.first_audio = bounds->begin;
  file.audio_end = bounds->end;
  return true;
}

AppendResult append_source(Document& document, std::uint16_t index, Detail& detail) {
  SourceFile& file = document.files[index];
  const std::uint64_t file_size = file.handle->facts().size;
  if (file_size < smallest_file || file_size > largest_file) return AppendResult::bad_size;
  if (!has_room_for(document, file_size)) return AppendResult::too_large;
  const auto size = static_cast<std::uint32_t>(file_size);

  FoundFrame first;
  const AppendResult search = find_fitting_frame(document, *file.handle, first);
  if (const std::error_code error = file.handle->read_error()) detail.cause = error.message();
  if (search == AppendResult::other_parameters) detail.other = kind_of(first.info);
  if (search != AppendResult::appended) return search;
  if (!find_bounds(document, file, size, first.at)) return AppendResult::no_sync;
  const std::uint32_t begin = file.first_audio;
  const std::uint32_t end = file.audio_end;

  const EditPosition place = document.total_size;
  if (make_border(document, place) == no_part) return AppendResult::table_full;
  const PartIndex part = add_part(document, place, index, begin, end - begin);
  if (part == no_part) return AppendResult::table_full;
  document.parts[part].part_iscue = 1;
  take_in_bitrate(document.stream, first.info);
  return AppendResult::appended;
}

std::string_view reason_of(AppendResult result, bool in_box) {
  switch (result) {
    case AppendResult::appended:
      break;
    case AppendResult::table_full:
      return "Part creation failed";
    case AppendResult::other_parameters:
      return in_box ? ui_text(row::parameters_do_not_match) : ui_text(row::different_parameters);
    case AppendResult::no_sync:
      return ui_text(row::no_sync_found);
    case AppendResult::not_opened:
      return ui_text(row::file_open_failed);
    case AppendResult::bad_name:
      return ui_text(row::invalid_filename);
    case AppendResult::other_format:
      return "MP3 / AAC";
    case AppendResult::bad_size:
      return "Invalid file size";
    case AppendResult::too_large:
      return "Total size too large (max 4 GB)";
    case AppendResult::no_audio:
      return ui_text(row::unsupported_type);
  }
  return {};
}

// What is no audio but may well be opened, in words; empty for all else.
std::string_view kind_without_audio(const std::string& name) {
  if (file_facts(name).is_folder) return "a folder";
  const FileKind kind = file_kind(name);
  if (kind == FileKind::cue_sheet) return "a cue sheet";
  if (kind == FileKind::project) return "a project";
  return kind == FileKind::playlist ? "a playlist" : "";
}

// What the reason doesn't say of the file itself.
std::string cause_of(const Document& document, AppendResult result, const std::string& name,
                     const Detail& detail) {
  if (!detail.cause.empty()) return detail.cause;
  if (result == AppendResult::other_parameters)
    return fmt::format("its frames are {}\nthose of the document {}", text_of(detail.other),
                       text_of(document.kind));
  if (result == AppendResult::no_audio)
    return fmt::format("This is {}; only audio files can be appended.", kind_without_audio(name));
  if (result == AppendResult::bad_size) return reading_fault(name);
  return result == AppendResult::no_sync ? audio_fault(name) : std::string();
}

AppendResult append_named(Document& document, const std::string& name, Detail& detail) {
  if (!kind_without_audio(name).empty()) return AppendResult::no_audio;
  if (extension_of(name).empty()) return AppendResult::bad_name;
  if ((file_kind(name) == FileKind::aac) != (document.stream.is_aac != 0))
    return AppendResult::other_format;
  const auto index = add_source_file(document, name, &detail.cause);
  if (!index) return AppendResult::not_opened;
  const AppendResult result = append_source(document, *index, detail);
  if (result != AppendResult::appended && result != AppendResult::table_full)
    remove_last_source_file(document);
  return result;
}

std::string names_of(std::span<const std::string> paths) {
  constexpr std::size_t most_names = 10;
  std::string names;
  for (const std::string& path : paths.first(std::min(paths.size(), most_names)))
    names.append(names.empty() ? "" : ", ").append(name_of(path));
  return paths.size() <= most_names ? names
                                    : fmt::format("{}, … (+{})", names, paths.size() - most_names);
}

}  // namespace

std::optional<AudioBounds> find_audio_to_append(const Document& document, const InputFile& file) {
  const std::uint64_t size = file.facts().size;
  FoundFrame first;
  if (size < smallest_file || size > largest_file ||
      find_fitting_frame(document, file, first) != AppendResult::appended)
    return std::nullopt;
  return bounds_of(document, file, static_cast<std::uint32_t>(size), first.at);
}

AppendResult append_file(Document& document, const std::string& name) {
  Detail detail;
  return append_named(document, name, detail);
}

bool append_file_reported(Document& document, const std::string& name,
                          std::vector<std::string>* list, std::span<const std::string> left_out) {
  Detail detail;
  const AppendResult result = append_named(document, name, detail);
  if (result == AppendResult::appended) return true;
  const std::string_view reason = reason_of(result, list == nullptr);
  if (list != nullptr) {
    list->push_back(fmt::format("{} ({}): {}", ui_text(row::append_failed), reason, name_of(name)));
  } else {
    std::string cause = cause_of(document, result, name, detail);
    if (!left_out.empty()) {
      if (!cause.empty()) cause += "\n\n";
      cause += format_row(ui_text(row::also_left_out), names_of(left_out));
    }
    host().show_message_box(
        {.caption = std::string(ui_text(row::not_possible)),
         .text = fmt::format("{}: {}\n\n{}", ui_text(row::append_failed), reason, name_of(name)),
         .cause = std::move(cause),
         .icon = BoxIcon::warning});
  }
  return false;
}

bool can_append_files(const Document& document, std::span<const std::string> names) {
  Document trial = document;
  bool all_fit = true;
  for (const std::string& name : names)
    all_fit = append_file_reported(trial, name, nullptr) && all_fit;
  return all_fit;
}

Joined append_files(Document& document, std::span<const std::string> names) {
  for (std::size_t i = 0; i < names.size(); ++i)
    if (!append_file_reported(document, names[i], nullptr, names.subspan(i + 1)))
      return {.count = i, .failed = names[i]};
  return {.count = names.size(), .failed = {}};
}

}  // namespace corvelin

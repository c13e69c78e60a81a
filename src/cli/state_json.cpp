// SPDX-License-Identifier: GPL-2.0-or-later
// The JSON of the state.
#include "cli/state_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>

#include "cli/times.h"
#include "edit/editor.h"
#include "edit/undo.h"
#include "exchange/id3v1.h"
#include "exchange/id3v2_texts.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/open_state.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t tag_bytes = 28;  // of the encoder, in front of the length that a save adds

std::string hex(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += fmt::format("{:02x}", byte);
  return text;
}

Json text_or_null(const std::u16string& text) {
  return text.empty() ? Json(nullptr) : Json(wide_to_bytes(text, true));
}

Json position_or_null(EditPosition pos) { return pos == no_position ? Json(nullptr) : Json(pos); }

Json encoder_tag_or_null(const Document& document) {
  const std::span<const std::uint8_t> tag = std::span(document.stream.encoder_tag).first(tag_bytes);
  const bool is_empty = std::ranges::all_of(tag, [](std::uint8_t byte) { return byte == 0; });
  return is_empty ? Json(nullptr) : Json(hex(tag));
}

Json frame_json(const FrameInfo& frame) {
  return {{"frame_length", frame.frame_length}, {"bitrate", frame.bitrate},
          {"sample_rate", frame.sample_rate},   {"header_bytes", hex(frame.header_bytes)},
          {"channel_mode", frame.channel_mode}, {"padding", frame.padding},
          {"version", frame.version},           {"layer", frame.layer},
          {"has_crc", frame.has_crc},           {"copyright", frame.copyright},
          {"original", frame.original},         {"private_bit", frame.private_bit}};
}

Json stream_json(const Editor& editor) {
  const bool is_open = !editor.document.files.empty();
  return {{"first_audio", is_open ? editor.document.files[0].first_audio : 0},
          {"audio_end", is_open ? editor.document.files[0].audio_end : 0},
          {"id3v2_size", editor.document.stream.id3v2_size},
          {"ape_size", editor.document.stream.ape_size},
          {"xing_frames", editor.document.stream.xing_frames},
          {"xing_quality", editor.document.stream.xing_quality},
          {"toc", editor.document.stream.toc},
          {"encoder_tag", encoder_tag_or_null(editor.document)},
          {"vbr", editor.document.stream.vbr},
          {"is_aac", editor.document.stream.is_aac},
          {"has_info_header", editor.document.stream.has_info_header},
          {"avg_bitrate", editor.document.stream.avg_bitrate},
          {"avg_frame_size", editor.document.stream.avg_frame_size},
          {"current_frame", frame_json(editor.selection.current_frame)}};
}

Json files_json(const Document& document) {
  Json files = Json::array();
  for (const SourceFile& file : document.files) {
    files.push_back({{"file_name", file.file_name},
                     {"first_audio", file.first_audio},
                     {"audio_end", file.audio_end}});
  }
  return files;
}

Json parts_json(const Document& document) {
  Json parts = Json::array();
  double begin = 0;
  for (const Part& part : document.parts) {
    const double end = seconds_at(document, part.part_beg + part.part_size);
    parts.push_back({{"part_file", part.part_file},
                     {"part_filepos", part.part_filepos},
                     {"part_size", part.part_size},
                     {"part_beg", part.part_beg},
                     {"part_gainbeg", part.part_gainbeg},
                     {"part_iscue", part.part_iscue},
                     {"part_title", text_or_null(part.part_title)},
                     {"part_artist", text_or_null(part.part_artist)},
                     {"begin_s", begin},
                     {"length_s", end - begin}});
    begin = end;
  }
  return parts;
}

Json id3v1_json(const Editor& editor) {
  if (!has_id3v1(editor.document)) return nullptr;
  const TagDialog tag = tag_dialog_load(editor.document);
  const auto text = [](const std::u16string& wide) { return wide_to_bytes(wide, true); };
  return {{"title", text(tag.title)}, {"artist", text(tag.artist)},   {"album", text(tag.album)},
          {"year", text(tag.year)},   {"comment", text(tag.comment)}, {"track", tag.track},
          {"genre", tag.genre}};
}

Json id3v2_json(const Document& document) {
  const std::optional<Id3v2Texts> tag = id3v2_texts(document);
  if (!tag) return nullptr;
  return {{"title", tag->title},
          {"artist", tag->artist},
          {"album", tag->album},
          {"year", tag->year},
          {"track", tag->track}};
}

Json undo_json(const Editor& editor) {
  Json labels = Json::array();
  for (const UndoEntry& entry : editor.undo_stack) labels.push_back(entry.undo_label);
  return labels;
}

Json messages_json(const std::vector<MessageBox>& messages) {
  Json list = Json::array();
  for (const MessageBox& box : messages)
    list.push_back({{"caption", box.caption}, {"text", box.text}});
  return list;
}

}  // namespace

std::string state_as_json(const Editor& editor, const std::vector<MessageBox>& messages) {
  const Json state = {
      {"stream", stream_json(editor)},
      {"files", files_json(editor.document)},
      {"parts", parts_json(editor.document)},
      {"current_part", editor.document.current_part},
      {"total_size", editor.document.total_size},
      {"total_s", total_seconds(editor.document)},
      {"end_gain", editor.document.end_gain},
      {"cursor", editor.selection.cursor},
      {"sel_beg", position_or_null(editor.selection.sel_beg)},
      {"sel_end", position_or_null(editor.selection.sel_end)},
      {"sel_gain", editor.selection.sel_gain},
      {"sel_gain_end", editor.selection.sel_gain_end},
      {"sel_iscue", editor.selection.sel_iscue},
      {"sel_cue_locked", editor.selection.sel_cue_locked},
      {"sel_title", text_or_null(editor.selection.sel_title)},
      {"sel_artist", text_or_null(editor.selection.sel_artist)},
      {"sheet_title", text_or_null(editor.document.sheet_title)},
      {"sheet_artist", text_or_null(editor.document.sheet_artist)},
      {"document_modified", editor.open_state.document_modified},
      {"tags", {{"id3v1", id3v1_json(editor)}, {"id3v2", id3v2_json(editor.document)}}},
      {"undo", undo_json(editor)},
      {"messages", messages_json(messages)}};
  // Paths may hold bytes that are no UTF-8, which JSON can't.
  return state.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace corvelin

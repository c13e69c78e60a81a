// SPDX-License-Identifier: GPL-2.0-or-later
// Summary, header bits and save options.
#include "edit/file_info_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "edit/commands.h"
#include "edit/editor.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"
#include "platform/text/numbers.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string in_bytes(std::uint32_t value) { return group_thousands(value) + " bytes"; }

std::string kilobits(double value) { return fmt::format("{:3.1f} kbit/s", value); }

std::string vbr_header_value(const Document& document) {
  std::string text = (document.stream.vbr & vbr_header) != 0 ? "Xing"
                     : document.stream.has_info_header != 0  ? "Info"
                                                             : std::string(ui_text(row::no));
  if (document.stream.xing_frames != 0)
    text +=
        " (" +
        format_row(ui_text(row::number_of_frames), group_thousands(document.stream.xing_frames)) +
        ")";
  return text;
}

// The encoder's name and version.
std::string encoder_value(const Document& document) {
  constexpr std::size_t shown = 9;
  std::string text;
  for (const std::uint8_t byte : std::span(document.stream.encoder_tag).first(shown)) {
    if (byte == 0) break;
    text += byte < 0x80 ? static_cast<char>(byte) : '?';
  }
  return printable(std::move(text));
}

std::string id3v2_value(const Document& document) {
  if (document.stream.id3v2_size == 0) return std::string(ui_text(row::no));
  return fmt::format("{} ({})", ui_text(row::yes), in_bytes(document.stream.id3v2_size));
}

// Takes a line off the labels, which are one text: a translation may have fewer lines.
std::string take_label(std::string_view& labels) {
  const std::size_t end = std::min(labels.find('\n'), labels.size());
  std::string label(labels.substr(0, end));
  labels.remove_prefix(std::min(end + 1, labels.size()));
  return label;
}

}  // namespace

std::vector<InfoLine> file_info_lines(const Editor& editor, EditPosition pos) {
  if (editor.document.parts.empty()) return {};
  const FrameInfo& frame = editor.selection.current_frame;
  const std::uint32_t first_audio = editor.document.parts[0].part_filepos;
  const std::uint32_t file = editor.document.parts[editor.document.current_part].part_file + 1U;
  std::vector<InfoLine> lines;
  std::string_view labels = ui_text(row::file_info_labels);
  const auto add = [&](std::string value) {
    lines.push_back({take_label(labels), std::move(value)});
  };
  add(in_bytes(editor.document.total_size));
  add(in_bytes(first_audio));
  add(in_bytes(pos + first_audio));
  add(kilobits(frame.bitrate));
  add(kilobits(editor.document.stream.avg_bitrate / 1000.0));
  add(fmt::format("{} bytes", frame.frame_length));
  add(fmt::format("{:4.0f} bytes", editor.document.stream.avg_frame_size));
  add(vbr_header_value(editor.document));
  add(encoder_value(editor.document));
  add(id3v2_value(editor.document));
  add(fmt::format("{} / {}", file, file_count(editor.document)));
  if (editor.document.stream.ape_size != 0)
    lines.push_back(
        {std::string(ui_text(row::ape_tag)), in_bytes(editor.document.stream.ape_size)});
  return lines;
}

void FileInfoDialog::begin() {
  tag = tag_dialog_load(editor.document);
  rewrite_header = editor.document.header_rewrite.rewrite_header;
  rewrite_copyright = editor.document.header_rewrite.rewrite_copyright != 0;
  rewrite_original = editor.document.header_rewrite.rewrite_original != 0;
  rewrite_private = editor.document.header_rewrite.rewrite_private != 0;
  write_xing = settings.write_xing != 0;
  keep_info = settings.keep_info != 0;
  keep_lame = settings.keep_lame != 0;
  keep_id3v2 = settings.keep_id3v2 != 0;
  can_edit_boxes = editor.document.stream.is_aac == 0;
}

Outcome FileInfoDialog::write() const {
  tag_dialog_apply(editor.document, editor.open_state, tag);
  editor.document.header_rewrite.rewrite_header = rewrite_header;
  if (rewrite_header) {
    editor.document.header_rewrite.rewrite_copyright = rewrite_copyright ? 1 : 0;
    editor.document.header_rewrite.rewrite_original = rewrite_original ? 1 : 0;
    editor.document.header_rewrite.rewrite_private = rewrite_private ? 1 : 0;
  }
  change_setting(&Settings::keep_id3v2, keep_id3v2 ? 1 : 0);
  change_setting(&Settings::write_xing, write_xing ? 1 : 0);
  change_setting(&Settings::keep_lame, keep_lame ? 1 : 0);
  change_setting(&Settings::keep_info, keep_info ? 1 : 0);
  return Result::done;
}

bool FileInfoDialog::accept() {
  return carry_out(editor, *command_of(editor, command::file_info_dialog),
                   [this] { return write(); }) == Result::done;
}

}  // namespace corvelin

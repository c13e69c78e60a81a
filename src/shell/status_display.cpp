// SPDX-License-Identifier: GPL-2.0-or-later
// The texts of the status.
#include "shell/status_display.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "audio/decoder_bridge.h"
#include "audio/level_meter.h"
#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "opening/open_state.h"
#include "platform/processes/program.h"
#include "platform/text/bytes.h"
#include "platform/text/numbers.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "shell/meter_drawing.h"
#include "shell/record_panel.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr const char* blank = " ";

std::string time_at(const Document& document, std::uint32_t scaled) {
  return format_time(scaled, document.stream.avg_bitrate);
}

std::string title(const Editor& editor) {
  std::string text;
  if (!editor.open_state.project_name.empty())
    text = fmt::format("{} / ", name_of(editor.open_state.project_name));
  return fmt::format("{}{} - {}", text, name_of(editor.open_state.audio_name), program_name);
}

std::string selection_text(const Editor& editor) {
  const std::uint32_t begin = to_time_scale(editor.document, editor.selection.sel_beg);
  const std::uint32_t end = to_time_scale(editor.document, editor.selection.sel_end);
  return fmt::format(" {}: {} - {} ({})", ui_text(row::selection), time_at(editor.document, begin),
                     time_at(editor.document, end),
                     time_at(editor.document, end > begin ? end - begin : 0));
}

std::string part_text(const Document& document) {
  const PartIndex index = document.current_part;
  const Part& part = document.parts[index];
  std::string text =
      fmt::format(" {} ({} / {}): {} - {}", ui_text(row::part), index + 1, part_count(document),
                  time_at(document, to_time_scale(document, part.part_beg)),
                  time_at(document, to_time_scale(document, part_end(document, index))));
  if (document.stream.vbr == vbr_constant)
    text += fmt::format(" ({})", time_at(document, part.part_size));
  return text;
}

std::string range_text(const Editor& editor) {
  if (has_selection(editor.selection)) return selection_text(editor);
  return editor.document.parts.empty() ? blank : part_text(editor.document);
}

std::string stream_text(const Document& document, const FrameInfo& frame) {
  if (frame.version == 0) return " No sync";
  const std::uint32_t khz = frame.sample_rate / 1000;
  const float average = document.stream.avg_bitrate / 1000;
  if (document.stream.is_aac != 0)
    return fmt::format("  AAC-LC/ADTS (MPEG {})  -  {} kbps (ABR {:.0f} kbps)  -  {} kHz  -  ",
                       frame.version, frame.bitrate, average, khz);
  const double version = frame.version == 3 ? 2.5 : frame.version;
  const std::string kind = fmt::format("  MPEG {:.1f} Layer {}  -  ", version, frame.layer);
  if (document.stream.vbr == vbr_constant)
    return fmt::format("{}{} kbps  -  {} kHz  -  ", kind, frame.bitrate, khz);
  return fmt::format("{}{} kbps, VBR ({:.0f} kbps)  -  {} kHz  -  ", kind, frame.bitrate, average,
                     khz);
}

std::string channels_text(const FrameInfo& frame) {
  constexpr std::string_view modes[] = {"", "Stereo", "Joint Stereo", "Dual Channel", "Mono"};
  if (frame.version == 0 || frame.channel_mode >= std::size(modes)) return {};
  std::string text(surround_name(frame.channels));
  if (text.empty()) text = modes[frame.channel_mode];
  if (frame.has_crc != 0) text += ",  CRC";
  if (frame.copyright != 0) text += ",  ©";
  return text;
}

std::string_view yes_or_no(bool is_yes) { return ui_text(dlg, is_yes ? 3 : 4); }

// Whether there is a tag, and if so what a save does with it.
std::string tag_text(bool has_tag, std::string_view what_a_save_does, bool does_it) {
  if (!has_tag) return std::string(yes_or_no(false));
  return fmt::format("{} / {}{}", yes_or_no(true), what_a_save_does, yes_or_no(does_it));
}

std::string info_text(const Editor& editor) {
  constexpr std::uint32_t smallest_id3v2 = 2;
  const FrameInfo& frame = editor.selection.current_frame;
  return fmt::format("{}{}     |     ID3v1: {}  -  ID3v2: {}     |     {}{}",
                     stream_text(editor.document, frame), channels_text(frame),
                     tag_text(stands_at(editor.document.stream.id3v1, 0, "TAG"),
                              ui_text(row::save_tag), settings.save_id3v1 != 0),
                     tag_text(editor.document.stream.id3v2_size >= smallest_id3v2,
                              ui_text(row::keep_tag), settings.keep_id3v2 != 0),
                     ui_text(row::play_decoder), decoder_name(chosen_decoder(editor.document)));
}

std::string position_text(const Editor& editor, std::uint32_t scaled) {
  const std::uint32_t percent =
      whole_part(static_cast<double>(scaled) / editor.document.total_size * 100);
  if (editor.selection.current_frame.frame_length == 0) return fmt::format(" ({}%) ", percent);
  return fmt::format(" {}: {}   {}: {}   ({}%)", ui_text(row::total),
                     time_at(editor.document, editor.document.total_size), ui_text(row::now),
                     time_at(editor.document, scaled), percent);
}

double margin_in_db(std::uint8_t raw) { return -20 * std::log10(raw / 127.001); }

std::string margin_text(const Editor& editor) {
  const double right = margin_in_db(editor.level_meter.meter_margin[1]);
  if (has_mono_meter(editor)) return fmt::format("{:2.1f}", right);
  return fmt::format(" {:2.1f}  /  {:2.1f}", margin_in_db(editor.level_meter.meter_margin[0]),
                     right);
}

// The decibels that a bar stands for: its scale is a compressed one, which this undoes.
double level_in_db(std::uint8_t level) {
  constexpr double lowest = -48;
  const double raw = -60 * std::log(1 - level / 144.0);
  return raw < 1 ? lowest : 20 * std::log10(raw / highest_meter);
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

Refresh effective_level(const Editor& editor, Refresh level) {
  if (editor.document.total_size != 0 || level <= Refresh::no_document) return level;
  return editor.recorder.is_armed ? Refresh::recording_state : Refresh::no_document;
}

void clear(StatusDisplay& status) {
  status.title = program_name;
  status.position_field = status.range_field = status.info_bar = blank;
  status.scroll_position = 0;
  status.has_scroll_bar = false;
}

void show_position(const Editor& editor, StatusDisplay& status) {
  const std::uint32_t scaled = to_time_scale(editor.document, play_position(editor.playback));
  status.position_field = position_text(editor, scaled);
  status.scroll_position =
      static_cast<int>(std::uint64_t{scaled} * scroll_end / editor.document.total_size);
  status.has_scroll_bar = true;
}

void show_recording(const Editor& editor, StatusDisplay& status) {
  if (!editor.recorder.is_armed) {
    status.position_field = status.info_bar = blank;
    return;
  }
  status.position_field = recording_place_text(editor);
  if (editor.recorder.rec_writing) {
    status.range_field = recording_cues_text(editor);
  } else {
    status.info_bar = encoder_text();
  }
}

}  // namespace

Refresh refresh_status(const Editor& editor, StatusDisplay& status, Refresh level) {
  level = effective_level(editor, level);
  if (level == Refresh::no_document) clear(status);
  if (level == Refresh::recording_state) show_recording(editor, status);
  if (level >= Refresh::all && !editor.open_state.audio_name.empty()) status.title = title(editor);
  if (level >= Refresh::places) {
    status.range_field = range_text(editor);
    status.info_bar = info_text(editor);
  }
  if (level >= Refresh::playing) show_position(editor, status);
  const bool is_buffer = level == Refresh::playing || level == Refresh::recording;
  if (is_buffer && settings.margin != 0) status.margin = margin_text(editor);
  return level;
}

std::string view_in_words(const Editor& editor) {
  if (editor.recorder.is_armed) return recording_in_words(editor);
  if (editor.document.parts.empty()) return {};
  std::string words(trimmed(
      position_text(editor, to_time_scale(editor.document, play_position(editor.playback)))));
  words.append("; ").append(trimmed(part_text(editor.document)));
  if (has_selection(editor.selection)) words.append("; ").append(trimmed(selection_text(editor)));
  return words;
}

std::string meter_in_words(const Editor& editor) {
  const double right = level_in_db(editor.level_meter.meter_level[1]);
  if (has_mono_meter(editor)) return fmt::format("{:.0f} dB", right);
  return fmt::format("{:.0f} dB / {:.0f} dB", level_in_db(editor.level_meter.meter_level[0]),
                     right);
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Texts of a recording.
#include "shell/record_panel.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "audio/encoder_settings.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "model/time_mapping.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string recorder_time(const Editor& editor, std::int64_t length) {
  const auto shown = static_cast<std::uint32_t>(std::clamp<std::int64_t>(length, 0, 0xFFFFFFFF));
  return format_time(shown, editor.recorder.rec_rate, SecondsForm::recording);
}

// A file that is gone on with says nothing of its time at a variable bit rate: the time is that of
// this take alone.
std::string recorded_time(const Editor& editor) {
  const std::string time =
      recorder_time(editor, static_cast<std::int64_t>(recorded_length(editor.recorder)));
  return editor.recorder.rec_by_pcm && settings.rec_appenddata != 0 ? "(" + time + ")" : time;
}

std::string remaining_time_or_backlog(const Editor& editor) {
  if (settings.rec_time != 0) return recorder_time(editor, editor.recorder.rec_remaining);
  return fmt::format("{} %", editor.recorder.rec_backlog * 100 / recording_buffers);
}

std::string_view label_of_remaining() { return ui_text(win, settings.rec_time != 0 ? 24 : 27); }

std::string special_kind(const Editor& editor) {
  if (editor.recorder.rec_speed > 0) return menu_text_plain(ui_text(row::high_speed_recording));
  if (editor.recorder.rec_level_on) return menu_text_plain(ui_text(row::level_activated_recording));
  return {};
}

std::string lame_text() {
  std::string text = fmt::format("Lame: {}", settings.enc_lam_bitrate);
  if (is_lame_vbr()) {
    text += fmt::format("-{} kbps (VBR, Q{}), ", settings.enc_lam_bitrate_max,
                        settings.enc_lam_vbr_quality);
  } else if (settings.enc_lam_vbr_method == lame_method_abr) {
    text += fmt::format("-{} kbps (ABR {} kbps), ", settings.enc_lam_bitrate_max,
                        settings.enc_lam_abr_bitrate);
  } else {
    text += " kbps, ";
  }
  text += fmt::format("{} kHz, ", settings.enc_lam_samplerate / 1000);
  if (settings.enc_lam_mode == lame_mode_mono) return text + "Mono";
  return text + (settings.enc_lam_mode == lame_mode_joint_stereo ? "Joint Stereo" : "Stereo");
}

std::string codec_manager_text() {
  return fmt::format("ACM: {} kbps, {} kHz, {}", settings.enc_acm_bitrate / 1000,
                     settings.enc_acm_samplerate / 1000,
                     settings.enc_acm_channels == 1 ? "Mono" : "Stereo");
}

}  // namespace

void draw_record_panel(const Editor& editor, const ViewLayout& layout, Canvas& canvas) {
  const int height = std::min(120, layout.height / 3);  // of the recorded time
  const int label_height = height / 3;
  const int below_middle = height / 4;
  const int centre = layout.width / 2;
  const int middle = layout.height / 2;
  const auto label = [&](int y, std::string_view text) {
    canvas.text(centre - 20, y, text,
                {.height = label_height, .colour = settings.rgb_mpeg, .align = TextAlign::right});
  };
  const auto value = [&](int y, std::string_view text, int text_height, Colour colour) {
    if (!text.empty()) canvas.text(centre, y, text, {.height = text_height, .colour = colour});
  };
  label(label_height + middle - height, ui_text(row::recording_time));
  label(middle + below_middle, label_of_remaining());
  // In as many lines as it needs in front of the meter and its scale.
  const Rect place = {centre, height * 7 / 10 + middle, layout.meter_left - 3 * layout.small_font_h,
                      layout.height};
  if (const std::string kind = special_kind(editor); !kind.empty())
    canvas.paragraph(place, kind, {.height = label_height, .colour = settings.rgb_selection});
  value(middle + below_middle, remaining_time_or_backlog(editor), label_height,
        settings.rgb_cursor);
  value(middle - height + below_middle, recorded_time(editor), height, settings.rgb_cursor);
}

std::string recording_in_words(const Editor& editor) {
  std::string words =
      fmt::format("{}: {}; {}: {}", ui_text(row::recording_time), recorded_time(editor),
                  label_of_remaining(), remaining_time_or_backlog(editor));
  const std::string special = special_kind(editor);
  return special.empty() ? words : words + "; " + special;
}

std::string encoder_text() {
  const bool is_lame = settings.enc_type == static_cast<std::uint8_t>(EncoderType::lame);
  return "  Encoder = " + (is_lame ? lame_text() : codec_manager_text());
}

std::string recording_place_text(const Editor& editor) {
  if (!editor.recorder.rec_writing) return std::string(ui_text(row::press_play_to_record));
  return fmt::format(" {} '{}'", ui_text(row::writing), editor.recorder.rec_file_name);
}

std::string recording_cues_text(const Editor& editor) {
  if (!editor.recorder.rec_writing) return {};
  if (editor.recorder.rec_cues.empty()) return std::string(ui_text(row::press_begin_for_cues));
  const auto place = static_cast<std::int64_t>(editor.recorder.rec_cues.back().recorded_at);
  return fmt::format(" Cue ({}): {}", editor.recorder.rec_cues.size(),
                     recorder_time(editor, place));
}

}  // namespace corvelin

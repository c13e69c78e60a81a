// SPDX-License-Identifier: GPL-2.0-or-later
// The table of the controls and what some of them do of their own.
#include "edit/config_controls.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/config_dialog.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "platform/processes/program.h"
#include "platform/processes/system.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings_storage.h"
#include "text/boxes.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

using S = Settings;
using enum ControlKind;
using enum SettingPage;
using Dialogue = const ConfigDialog&;

// When controls are live.

bool is_silent(Dialogue dialog) {
  return !dialog.editor.playback.is_playing && !dialog.editor.playback.is_requested;
}
bool is_unarmed(Dialogue dialog) { return !dialog.editor.recorder.is_armed; }
bool uses_lame(Dialogue dialog) {
  return is_unarmed(dialog) && settings.enc_type == static_cast<std::uint8_t>(EncoderType::lame);
}
bool uses_codec_manager(Dialogue dialog) {
  return is_unarmed(dialog) &&
         settings.enc_type == static_cast<std::uint8_t>(EncoderType::codec_manager);
}
bool uses_varying_rate(Dialogue dialog) {
  return uses_lame(dialog) && settings.enc_lam_vbr_method != lame_method_cbr;
}
bool uses_vbr(Dialogue dialog) { return uses_lame(dialog) && is_lame_vbr(); }
bool uses_abr(Dialogue dialog) {
  return uses_lame(dialog) && settings.enc_lam_vbr_method == lame_method_abr;
}
bool has_lame(Dialogue dialog) { return is_unarmed(dialog) && dialog.lame.is_found; }
bool has_codec(Dialogue dialog) { return is_unarmed(dialog) && dialog.codec_manager.is_found; }
bool has_working_dir(Dialogue) { return !settings.working_dir.empty(); }
bool has_user_settings(Dialogue) { return settings_storage == SettingsStorage::user_profile; }
bool has_hidden_notes(Dialogue) { return settings.msg_hide != 0; }

// On a display of normal scale large symbols have pictures and padding of their own.
bool has_enlarged_symbols() { return settings.large_symbols != 0 && display.scale == 1.0F; }
bool may_vary_symbols(Dialogue) { return !has_enlarged_symbols(); }

// The page "Operation".

std::vector<EncoderChoice> language_choices(Dialogue dialog) {
  std::vector<EncoderChoice> choices;
  for (const Language& language : dialog.languages)
    choices.push_back({static_cast<std::int32_t>(choices.size()), language.entry()});
  return choices;
}

std::int64_t chosen_language(Dialogue dialog) {
  const std::string name = wide_to_bytes(settings.language, true);
  const auto found = std::ranges::find(dialog.languages, name, &Language::name);
  return found == dialog.languages.end() ? 0 : found - dialog.languages.begin();
}

void choose_language(ConfigDialog& dialog, std::int64_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= dialog.languages.size()) return;
  const std::u16string before = settings.language;
  const std::string entry = dialog.languages[static_cast<std::size_t>(index)].entry();
  change_setting(&S::language, bytes_to_wide(language_of_entry(entry), true));
  if (settings.language != before) dialog.offers_restart = true;
}

// The skip buttons, and what they do.
std::string small_skip_text(Dialogue) { return fmt::format("<  >  {}", label_text(row::skips)); }
std::string big_skip_text(Dialogue) { return fmt::format("<<  >>  {}", label_text(row::skips)); }

// The page "Layout".

struct Theme {
  std::uint32_t background, mpeg, cuts, cursor, vumeter, selection, actual, win;
  std::uint16_t layout;
  std::uint32_t darkmode;
};

constexpr Theme dark_theme = {0x3C3C3C, 0xA27900, 0x8C8C8C, 0x00FFFF, 0x00FF00,
                              0xFFDF80, 0xBEBEBE, 0x202020, 1,        1};
constexpr Theme bright_theme = {0xC9B187, 0x553700, 0x525252, 0x00FFFF, 0x00FF00,
                                0xFFFF00, 0x8A8A8A, 0xF8F8F8, 2,        0};

void take_theme(ConfigDialog& dialog, const Theme& theme) {
  change_setting(&S::rgb_background, theme.background);
  change_setting(&S::rgb_mpeg, theme.mpeg);
  change_setting(&S::rgb_cuts, theme.cuts);
  change_setting(&S::rgb_cursor, theme.cursor);
  change_setting(&S::rgb_vumeter, theme.vumeter);
  change_setting(&S::rgb_selection, theme.selection);
  change_setting(&S::rgb_actual, theme.actual);
  change_setting(&S::rgb_win, theme.win);
  change_setting(&S::layout, theme.layout);
  change_setting(&S::darkmode, theme.darkmode);
  change_setting(&S::no_padding, 0);
  change_setting(&S::large_symbols, default_settings().large_symbols);
  dialog.offers_restart = true;
}

void take_dark_theme(ConfigDialog& dialog, std::int64_t) { take_theme(dialog, dark_theme); }
void take_bright_theme(ConfigDialog& dialog, std::int64_t) { take_theme(dialog, bright_theme); }

// The value that layout 0 stands for, too.
std::int64_t is_dark_symbols_1(Dialogue) {
  return settings.layout == 2 || settings.layout == 0 ? 1 : 0;
}

void fit_to_large_symbols(ConfigDialog&) {
  if (!has_enlarged_symbols()) return;
  if (settings.layout == 1) change_setting(&S::layout, 4);
  if (settings.layout == 2) change_setting(&S::layout, 5);
  change_setting(&S::no_padding, 0);
}

// The grey of the handles is how the mouse finds them, so nothing else in the view may have it.
template <std::uint32_t S::*Colour>
void choose_colour(ConfigDialog& dialog, std::int64_t) {
  constexpr std::uint32_t handle_grey = 0x808080;
  constexpr std::uint32_t grey_beside_it = 0x949494;
  const auto chosen = host().ask_for_colour(settings.*Colour);
  if (!chosen) return;
  constexpr bool is_in_graph = Colour != &S::rgb_vumeter && Colour != &S::rgb_win;
  const std::uint32_t before = settings.*Colour;
  change_setting(Colour, is_in_graph && *chosen == handle_grey ? grey_beside_it : *chosen);
  if (Colour == &S::rgb_win && settings.*Colour != before) dialog.offers_restart = true;
}

// The page "Devices".

std::vector<EncoderChoice> device_choices(const std::vector<std::string>& names,
                                          std::string_view none) {
  if (names.empty()) return {{0, std::string(none)}};
  std::vector<EncoderChoice> choices = {{0, "Wave Mapper"}};
  for (const std::string& name : names)
    choices.push_back({static_cast<std::int32_t>(choices.size()), name});
  return choices;
}

std::vector<EncoderChoice> output_choices(Dialogue dialog) {
  return device_choices(dialog.outputs, ui_text(row::no_output_devices));
}
std::vector<EncoderChoice> input_choices(Dialogue dialog) {
  return device_choices(dialog.inputs, ui_text(row::no_input_devices));
}

// A buffer holds so many frames in any case.
constexpr std::uint16_t kilobytes_of_frame = 5;

void fit_frames(ConfigDialog&) {
  if (settings.buffer_frm * kilobytes_of_frame > settings.buffer_max)
    settings.buffer_frm = static_cast<std::uint16_t>(settings.buffer_max / kilobytes_of_frame);
}
void fit_buffer(ConfigDialog&) {
  settings.buffer_max = std::max<std::uint16_t>(
      settings.buffer_max, static_cast<std::uint16_t>(settings.buffer_frm * kilobytes_of_frame));
}

std::string buffer_text(Dialogue) {
  return fmt::format("{}  {} KB", ui_text(row::wave_buffer_size), settings.buffer_max);
}
std::string frames_text(Dialogue) {
  return fmt::format("{}  {} {}", ui_text(row::frames_a_buffer), settings.buffer_frm,
                     ui_text(row::frames));
}

std::int64_t threshold(Dialogue) { return settings.rec_threshold & 0xFF; }
std::int64_t pause_seconds(Dialogue) { return settings.rec_threshold >> 8; }

void set_threshold(ConfigDialog&, std::int64_t value) {
  value = std::clamp<std::int64_t>(value, 1, 64);
  change_setting(&S::rec_threshold,
                 static_cast<std::uint16_t>((settings.rec_threshold & 0xFF00) | value));
}
void set_pause_seconds(ConfigDialog&, std::int64_t value) {
  value = std::clamp<std::int64_t>(value, 1, 30);
  change_setting(&S::rec_threshold,
                 static_cast<std::uint16_t>((settings.rec_threshold & 0xFF) | value << 8));
}

std::string threshold_text(Dialogue dialog) {
  const double share = static_cast<double>(std::max<std::int64_t>(threshold(dialog), 1)) / 127;
  return fmt::format("{}  {:.1f} dB", ui_text(row::threshold), 20 * std::log10(share));
}
std::string pause_text(Dialogue dialog) {
  return fmt::format("{}  {}", ui_text(row::pause_after), pause_seconds(dialog));
}

// The page "Decoder".

void choose_ffmpeg(ConfigDialog&, std::int64_t) {
  const auto path = host().ask_for_existing_file(
      {.title = "ffmpeg", .path = settings.ffmpeg, .types = {{"ffmpeg", "*"}}});
  if (path) change_setting(&S::ffmpeg, *path);
}

// The page "Encoder".

std::string lame_text(Dialogue dialog) { return dialog.lame.text; }
std::string codec_manager_text(Dialogue dialog) { return dialog.codec_manager.text; }

template <auto Choices>
std::vector<EncoderChoice> choices_of(Dialogue) {
  return Choices();
}

std::int64_t codec_manager_format(Dialogue) { return chosen_codec_manager_format(); }
void set_codec_manager_format(ConfigDialog&, std::int64_t value) {
  choose_codec_manager_format(static_cast<std::int32_t>(value));
}

void set_bitrate(ConfigDialog&, std::int64_t value) {
  choose_lame_bitrate(static_cast<std::uint16_t>(value));
}
void set_bitrate_max(ConfigDialog&, std::int64_t value) {
  choose_lame_bitrate_max(static_cast<std::uint16_t>(value));
}
void set_quality(ConfigDialog&, std::int64_t value) {
  choose_lame_quality(static_cast<std::uint32_t>(value));
}
void set_abr_bitrate(ConfigDialog&, std::int64_t value) {
  choose_lame_abr_bitrate(static_cast<std::int32_t>(std::clamp<std::int64_t>(value, 0, 1000)));
}
void correct_encoder(ConfigDialog&) { correct_lame_settings(); }

std::vector<EncoderChoice> preset_choices(Dialogue) {
  std::vector<EncoderChoice> choices = {{0, std::string(ui_text(row::user_presets))}};
  for (const std::string& line : settings.enc_lam_preset)
    choices.push_back(
        {static_cast<std::int32_t>(choices.size()), std::string(lame_preset_name(line))});
  return choices;
}

std::int64_t chosen_preset(Dialogue dialog) { return static_cast<std::int64_t>(dialog.preset); }

void choose_preset(ConfigDialog& dialog, std::int64_t value) {
  if (value < 0 || static_cast<std::size_t>(value) > settings.enc_lam_preset.size()) return;
  dialog.preset = static_cast<std::size_t>(value);
  dialog.preset_name.clear();
  if (dialog.preset == 0) return;
  dialog.preset_name = lame_preset_name(settings.enc_lam_preset[dialog.preset - 1]);
  apply_lame_preset(dialog.preset - 1);
}

bool may_store_preset(Dialogue dialog) {
  const std::string& name = dialog.preset_name;
  return uses_lame(dialog) && !name.empty() && name != ui_text(row::user_presets) &&
         std::ranges::find(settings.enc_lam_preset, name, lame_preset_name) ==
             settings.enc_lam_preset.end();
}
bool may_delete_preset(Dialogue dialog) { return uses_lame(dialog) && dialog.preset != 0; }

void add_preset(ConfigDialog& dialog, std::int64_t) {
  if (store_lame_preset(dialog.preset_name)) dialog.preset = settings.enc_lam_preset.size();
}

void remove_preset(ConfigDialog& dialog, std::int64_t) {
  delete_lame_preset(dialog.preset - 1);
  dialog.preset = 0;
  dialog.preset_name.clear();
}

// The page "Folders".

std::string working_dir_text(Dialogue) {
  return settings.working_dir.empty() ? "..." : settings.working_dir;
}

void choose_working_dir(ConfigDialog&, std::int64_t) {
  auto folder = host().ask_for_folder(settings.working_dir);
  if (!folder || folder->empty()) return;
  if (!folder->ends_with('/')) *folder += '/';
  change_setting(&S::working_dir, *folder);
}

void delete_working_dir(ConfigDialog&, std::int64_t) { change_setting(&S::working_dir, {}); }

std::string recording_text(Dialogue) { return settings.file_savepath; }

// The extension, and whatever else follows a point, is made anew for each recording.
void choose_recording(ConfigDialog&, std::int64_t) {
  const auto path =
      host().ask_for_new_file({.title = std::string(ui_text(row::record_base_filename)),
                               .path = settings.file_savepath,
                               .types = {{"MP3", "*.mp3"}}});
  if (!path) return;
  const std::string_view name = name_of(*path);
  const std::string_view base = name.substr(0, name.find('.'));
  change_setting(&S::file_savepath, std::string(folder_of(*path)).append(base));
}

void behind_add_date(ConfigDialog&) {
  if (settings.rec_adddate != 0) {
    change_setting(&S::rec_appenddata, 0);
  } else {
    change_setting(&S::rec_split, 0);
  }
}
void behind_append(ConfigDialog&) {
  if (settings.rec_appenddata == 0) return;
  change_setting(&S::rec_adddate, 0);
  change_setting(&S::rec_split, 0);
}
void behind_split(ConfigDialog&) {
  if (settings.rec_split == 0) return;
  change_setting(&S::rec_adddate, 1);
  change_setting(&S::rec_appenddata, 0);
}

std::int64_t remote_control(Dialogue dialog) { return dialog.editor.remote_control_on ? 1 : 0; }

void set_remote_control(ConfigDialog& dialog, std::int64_t value) {
  dialog.editor.remote_control_on = value != 0;
}

std::int64_t portable(Dialogue dialog) { return dialog.is_portable ? 1 : 0; }

void set_portable(ConfigDialog& dialog, std::int64_t value) {
  dialog.is_portable = force_portable(value != 0);
}

std::string settings_path_text(Dialogue) { return settings_path; }

void explore_settings(ConfigDialog&, std::int64_t) {
  open_for_user(std::string(folder_of(settings_path)));
}

bool user_agrees(std::string text) {
  return host().show_message_box({.caption = std::string(program_name),
                                  .text = std::move(text),
                                  .icon = BoxIcon::question,
                                  .buttons = BoxButtons::yes_no,
                                  .default_answer = BoxAnswer::no}) == BoxAnswer::yes;
}

void uninstall_settings(ConfigDialog&, std::int64_t) {
  const std::string folder(folder_of(settings_path));
  if (!user_agrees(fmt::format("{}\n{}", ui_text(row::really_delete_settings), folder))) return;
  if (const std::error_code error = remove_user_settings()) {
    return show_error(fmt::format("{}\n{}\n{}", ui_text(row::could_not_remove_settings), folder,
                                  error.message()));
  }
  if (user_agrees(std::string(ui_text(row::settings_removed))))
    open_for_user(std::string(folder_of(program_path())));
}

// The page "Misc".

std::int64_t never(Dialogue) { return 0; }
void show_all_notes(ConfigDialog&, std::int64_t) { change_setting(&S::msg_hide, 0); }

// Rows in short form.

constexpr ConfigControl frame(SettingPage page, std::string_view name, TextRow row,
                              std::string_view english = {}) {
  return {.kind = ControlKind::group, .page = page, .name = name, .row = row, .english = english};
}

constexpr ConfigControl bound(ControlKind kind, SettingPage page, std::string_view key,
                              TextRow row) {
  return {.kind = kind, .page = page, .name = key, .key = key, .row = row};
}

constexpr ConfigControl flag(SettingPage page, std::string_view key, TextRow row) {
  return bound(box, page, key, row);
}

constexpr ConfigControl form(std::string_view name, std::int64_t value, TextRow row) {
  return {.kind = radio, .page = layout, .name = name, .key = "layout", .row = row, .value = value};
}

template <std::uint32_t S::*Colour>
constexpr ConfigControl colour_row(std::string_view key, std::uint32_t number) {
  return {.kind = colour,
          .page = layout,
          .name = key,
          .key = key,
          .row = {cfg, number},
          .set = choose_colour<Colour>};
}

constexpr ConfigControl with_live(ConfigControl control, bool (*is_live)(Dialogue)) {
  control.is_live = is_live;
  return control;
}

constexpr ConfigControl with_then(ConfigControl control, void (*then)(ConfigDialog&)) {
  control.then = then;
  return control;
}

constexpr ConfigControl with_words(ConfigControl control, std::string_view behind) {
  control.behind = behind;
  return control;
}

constexpr ConfigControl device(std::string_view key, TextRow row, bool (*is_live)(Dialogue),
                               std::vector<EncoderChoice> (*choices)(Dialogue)) {
  ConfigControl control = with_live(bound(list, devices, key, row), is_live);
  control.choices = choices;
  return control;
}

constexpr ConfigControl encoder_list(std::string_view key, TextRow row,
                                     std::vector<EncoderChoice> (*choices)(Dialogue),
                                     bool (*is_live)(Dialogue) = uses_lame,
                                     void (*set)(ConfigDialog&, std::int64_t) = nullptr) {
  return {.kind = list,
          .page = encoder,
          .name = key,
          .key = key,
          .row = row,
          .is_live = is_live,
          .set = set,
          .then = correct_encoder,
          .choices = choices};
}

constexpr ConfigControl push(SettingPage page, std::string_view name, TextRow row,
                             std::string_view english, void (*press)(ConfigDialog&, std::int64_t),
                             bool (*is_live)(Dialogue) = nullptr) {
  return {.kind = button,
          .page = page,
          .name = name,
          .row = row,
          .english = english,
          .is_live = is_live,
          .set = press};
}

// clang-format off
constexpr ConfigControl table[] = {
    frame(operation, "language_group", {dlg, 96}),
    {.kind = list, .page = operation, .name = "language", .key = "language", .row = {cfg, 34}, .get = chosen_language, .set = choose_language, .choices = language_choices},
    frame(operation, "skip_group", {cfg, 28}),
    {.kind = number, .page = operation, .name = "frameskiplo", .key = "frameskiplo", .behind_row = {cfg, 35}, .text = small_skip_text},
    {.kind = number, .page = operation, .name = "frameskiphi", .key = "frameskiphi", .behind_row = {cfg, 35}, .text = big_skip_text},
    bound(number, operation, "prelisten_time", {cfg, 36}),
    frame(operation, "mouse_group", {cfg, 30}),
    {.kind = radio, .page = operation, .name = "mouse_method_0", .key = "mouse_method", .row = {cfg, 31}, .value = 0},
    {.kind = radio, .page = operation, .name = "mouse_method_1", .key = "mouse_method", .row = {cfg, 32}, .value = 1},

    frame(layout, "colour_group", {cfg, 37}),
    push(layout, "dark_theme", {cfg, 67}, {}, take_dark_theme),
    push(layout, "bright_theme", {cfg, 68}, {}, take_bright_theme),
    flag(layout, "darkmode", {cfg, 80}),
    flag(layout, "scrollbar_arrows", {cfg, 76}),
    bound(number, layout, "timer_height", {cfg, 46}),
    colour_row<&S::rgb_background>("rgb_background", 38),
    colour_row<&S::rgb_mpeg>("rgb_mpeg", 39),
    colour_row<&S::rgb_cuts>("rgb_cuts", 42),
    colour_row<&S::rgb_cursor>("rgb_cursor", 40),
    colour_row<&S::rgb_vumeter>("rgb_vumeter", 44),
    colour_row<&S::rgb_selection>("rgb_selection", 41),
    colour_row<&S::rgb_actual>("rgb_actual", 43),
    colour_row<&S::rgb_win>("rgb_win", 62),
    frame(layout, "form_group", {cfg, 51}),
    with_live(form("layout_1", 1, row::bright_symbols_1), may_vary_symbols),
    form("layout_4", 4, row::bright_symbols_2),
    {.kind = radio, .page = layout, .name = "layout_2", .key = "layout", .row = row::dark_symbols_1, .value = 2, .is_live = may_vary_symbols, .get = is_dark_symbols_1},
    form("layout_5", 5, row::dark_symbols_2),
    form("layout_3", 3, {cfg, 65}),
    form("layout_16", 16, {cfg, 57}),
    form("layout_17", 17, {cfg, 58}),
    form("layout_18", 18, {cfg, 59}),
    with_then(flag(layout, "large_symbols", {cfg, 81}), fit_to_large_symbols),
    with_live(flag(layout, "no_padding", {cfg, 78}), may_vary_symbols),

    frame(devices, "output_group", {cfg, 12}),
    device("device_out", {cfg, 12}, is_silent, output_choices),
    {.kind = slider, .page = devices, .name = "buffer_max", .key = "buffer_max", .lowest = 32, .highest = 64, .text = buffer_text, .is_live = is_silent, .then = fit_frames},
    {.kind = slider, .page = devices, .name = "buffer_frm", .key = "buffer_frm", .lowest = 1, .highest = 8, .text = frames_text, .is_live = is_silent, .then = fit_buffer},
    flag(devices, "keep_dev_open", {cfg, 79}),
    frame(devices, "input_group", {cfg, 20}),
    device("device_in", {cfg, 20}, is_unarmed, input_choices),
    flag(devices, "peakbeep", {cfg, 21}),
    flag(devices, "rec_level_act", {cfg, 73}),
    {.kind = slider, .page = devices, .name = "rec_threshold", .key = "rec_threshold", .lowest = 1, .highest = 64, .text = threshold_text, .get = threshold, .set = set_threshold},
    {.kind = slider, .page = devices, .name = "rec_pause", .key = "rec_threshold", .lowest = 1, .highest = 30, .text = pause_text, .get = pause_seconds, .set = set_pause_seconds},

    frame(decoder, "decoder_group", {cfg, 10}),
    {.kind = radio, .page = decoder, .name = "use_mpglib_0", .key = "use_mpglib", .english = "System (&ACM)", .value = 0, .is_live = is_silent},
    {.kind = radio, .page = decoder, .name = "use_mpglib_1", .key = "use_mpglib", .english = "&mpglib.dll", .value = 1, .is_live = is_silent},
    frame(decoder, "ffmpeg_group", {cfg, 71}),
    {.kind = line, .page = decoder, .name = "ffmpeg", .key = "ffmpeg", .row = {cfg, 72}},
    push(decoder, "choose_ffmpeg", no_label, "...", choose_ffmpeg),

    frame(encoder, "lame_group", no_label, "Lame"),
    {.kind = radio, .page = encoder, .name = "enc_type_2", .key = "enc_type", .value = 2, .text = lame_text, .is_live = has_lame},
    {.kind = presets, .page = encoder, .name = "enc_lam_preset", .key = "enc_lam_preset", .row = {cfg, 16}, .is_live = uses_lame, .get = chosen_preset, .set = choose_preset, .choices = preset_choices},
    push(encoder, "add_preset", {cfg, 17}, {}, add_preset, may_store_preset),
    push(encoder, "delete_preset", {cfg, 18}, {}, remove_preset, may_delete_preset),
    encoder_list("enc_lam_vbr_method", row::method, choices_of<lame_method_choices>),
    encoder_list("enc_lam_bitrate", row::bit_rate, choices_of<lame_bitrate_choices>, uses_lame, set_bitrate),
    encoder_list("enc_lam_bitrate_max", row::maximum_bit_rate, choices_of<lame_bitrate_max_choices>, uses_varying_rate, set_bitrate_max),
    encoder_list("enc_lam_vbr_quality", row::vbr_quality, choices_of<lame_vbr_quality_choices>, uses_vbr),
    {.kind = number, .page = encoder, .name = "enc_lam_abr_bitrate", .key = "enc_lam_abr_bitrate", .english = "ABR (kbps):", .is_live = uses_abr, .set = set_abr_bitrate},
    encoder_list("enc_lam_samplerate", row::sample_rate, choices_of<lame_samplerate_choices>),
    encoder_list("enc_lam_mode", row::channel_mode, choices_of<lame_mode_choices>),
    encoder_list("enc_lam_quality", row::quality, choices_of<lame_quality_choices>, uses_lame, set_quality),
    frame(encoder, "acm_group", no_label, "ACM"),
    {.kind = radio, .page = encoder, .name = "enc_type_1", .key = "enc_type", .value = 1, .text = codec_manager_text, .is_live = has_codec},
    {.kind = list, .page = encoder, .name = "acm_format", .key = "enc_acm_bitrate", .row = row::format, .is_live = uses_codec_manager, .get = codec_manager_format, .set = set_codec_manager_format, .choices = choices_of<codec_manager_choices>},
    with_live(flag(encoder, "enc_acm_highquality", {cfg, 19}), uses_codec_manager),

    frame(folders, "working_dir_group", {cfg, 55}),
    {.kind = button, .page = folders, .name = "working_dir", .key = "working_dir", .text = working_dir_text, .set = choose_working_dir},
    with_live(flag(folders, "workdir_onsave", {cfg, 56}), has_working_dir),
    push(folders, "delete_working_dir", row::delete_folder, {}, delete_working_dir, has_working_dir),
    frame(folders, "recording_group", {cfg, 22}),
    {.kind = button, .page = folders, .name = "file_savepath", .key = "file_savepath", .text = recording_text, .is_live = is_unarmed, .set = choose_recording},
    with_live(with_then(flag(folders, "rec_adddate", {cfg, 23}), behind_add_date), is_unarmed),
    with_live(with_then(flag(folders, "rec_appenddata", {cfg, 24}), behind_append), is_unarmed),
    bound(number, folders, "rec_time", {cfg, 69}),
    with_then(flag(folders, "rec_split", {cfg, 70}), behind_split),
    {.kind = box, .page = folders, .name = "remote_control", .row = {cfg, 77}, .get = remote_control, .set = set_remote_control},
    frame(folders, "storage_group", {cfg, 27}),
    {.kind = words, .page = folders, .name = "settings_path", .text = settings_path_text},
    {.kind = box, .page = folders, .name = "portable", .row = {cfg, 45}, .get = portable, .set = set_portable},
    push(folders, "explore_settings", {cfg, 54}, {}, explore_settings),
    push(folders, "uninstall_settings", {cfg, 53}, {}, uninstall_settings, has_user_settings),

    frame(misc, "misc_group", {cfg, 3}),
    with_words(bound(number, misc, "max_recent", {cfg, 15}), "(0 - 9)"),
    with_words(bound(number, misc, "max_undo", {cfg, 9}), "(1 - 50)"),
    with_words(bound(number, misc, "lowest_gain", {cfg, 61}), "- dB"),
    {.kind = box, .page = misc, .name = "warn_unsaved", .key = "warn", .row = {cfg, 48}, .value = warn_of_unsaved_changes},
    {.kind = box, .page = misc, .name = "warn_replacing", .key = "warn", .row = {cfg, 52}, .value = warn_of_replacing},
    flag(misc, "warn_existing", {cfg, 82}),
    flag(misc, "nokeep_savewin", {dlg, 7}),
    flag(misc, "save_quit", {cfg, 83}),
    flag(misc, "high_pri", {cfg, 47}),
    flag(misc, "showtt", {cfg, 49}),
    {.kind = button, .page = misc, .name = "show_all_notes", .key = "msg_hide", .row = {cfg, 50}, .is_live = has_hidden_notes, .get = never, .set = show_all_notes},
};
// clang-format on

}  // namespace

std::span<const ConfigControl> config_controls() { return table; }

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// All user choices: one flat record that the code reads when it needs a value. What a setting may
// be, its default and what a change brings about stand in setting_table, the file form in
// settings_file, the choice of the file in settings_storage.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

// A field a key of the file, in the file's order and in the width in which the file's numbers are
// taken. Any field may hold any value: the file is read as it stands.
struct Settings {
  std::vector<std::string> file_recent;
  std::string file_savepath;
  std::string working_dir;
  std::u16string split_pattern;
  std::string ffmpeg;
  std::u16string language;
  std::u16string version;
  std::int32_t window_x = 0;
  std::int32_t window_y = 0;
  std::int32_t window_w = 0;
  std::int32_t window_h = 0;
  std::uint16_t device_out = 0;
  std::uint16_t buffer_max = 0;
  std::uint16_t buffer_frm = 0;
  std::uint16_t volume = 0;
  std::uint32_t use_mpglib = 0;
  std::uint32_t high_pri = 0;
  std::uint16_t warn = 0;
  std::uint32_t warn_existing = 0;
  std::uint32_t showtt = 0;
  std::uint32_t nokeep_savewin = 0;
  std::uint32_t save_quit = 0;
  std::uint16_t msg_hide = 0;
  std::uint16_t lowest_gain = 0;
  std::uint32_t write_xing = 0;
  std::uint32_t keep_lame = 0;
  std::uint32_t keep_info = 0;
  std::uint32_t big_timer = 0;
  std::uint32_t big_relative = 0;
  std::uint32_t big_total = 0;
  std::uint32_t show_milisec = 0;
  std::uint32_t time_marks = 0;
  std::uint32_t map_names = 0;
  std::uint32_t bitrate_graph = 0;
  std::uint32_t db_scale = 0;
  std::uint32_t use_toc = 0;
  std::uint16_t graph_level = 0;
  std::uint32_t margin = 0;
  std::uint16_t keep_date = 0;
  std::uint32_t keep_id3v2 = 0;
  std::uint32_t save_id3v1 = 0;
  std::uint16_t mouse_method = 0;
  std::uint16_t zoom = 0;
  std::uint16_t frameskiplo = 0;
  std::uint16_t frameskiphi = 0;
  std::uint16_t prelisten_time = 0;
  std::uint16_t autocue = 0;
  std::uint16_t autocue_last = 0;
  std::uint32_t autocue_names = 0;
  std::uint16_t silence_level = 0;
  std::uint16_t silence_duration = 0;
  std::uint16_t silence_skip = 0;
  std::uint16_t silence_offset = 0;
  std::uint32_t silence_cut = 0;
  std::uint32_t rgb_background = 0;
  std::uint32_t rgb_mpeg = 0;
  std::uint32_t rgb_cuts = 0;
  std::uint32_t rgb_cursor = 0;
  std::uint32_t rgb_vumeter = 0;
  std::uint32_t rgb_selection = 0;
  std::uint32_t rgb_actual = 0;
  std::uint32_t rgb_win = 0;
  std::uint16_t timer_height = 0;
  std::uint16_t max_recent = 0;
  std::uint16_t max_undo = 0;
  std::uint32_t split_id3v11 = 0;
  std::uint32_t split_id3v2 = 0;
  std::uint16_t split_overlap = 0;
  std::uint32_t rec_adddate = 0;
  std::uint32_t rec_appenddata = 0;
  std::uint16_t rec_time = 0;
  std::uint32_t rec_split = 0;
  std::uint32_t rec_level_act = 0;
  std::uint16_t rec_threshold = 0;
  std::uint32_t workdir_onsave = 0;
  std::uint16_t device_in = 0;
  std::uint32_t peakbeep = 0;
  std::uint32_t keep_dev_open = 0;
  std::uint16_t layout = 0;
  std::uint32_t darkmode = 0;
  std::uint32_t scrollbar_arrows = 0;
  std::uint32_t no_padding = 0;
  std::uint32_t large_symbols = 0;
  std::uint16_t tabsel = 0;
  std::uint16_t char_enc = 0;
  std::uint8_t enc_type = 0;
  std::uint32_t enc_acm_bitrate = 0;
  std::uint32_t enc_acm_samplerate = 0;
  std::uint8_t enc_acm_channels = 0;
  std::uint32_t enc_acm_highquality = 0;
  std::uint16_t enc_acm_blocksize = 0;
  std::uint32_t enc_lam_samplerate = 0;
  std::uint8_t enc_lam_mode = 0;
  std::uint16_t enc_lam_bitrate = 0;
  std::uint16_t enc_lam_bitrate_max = 0;
  std::uint32_t enc_lam_quality = 0;
  std::int32_t enc_lam_vbr_method = 0;
  std::uint8_t enc_lam_vbr_quality = 0;
  std::uint16_t enc_lam_abr_bitrate = 0;
  std::vector<std::string> enc_lam_preset;
};

extern Settings settings;

/// Bits of the setting `keep_date`.
constexpr std::uint16_t keep_date_of_source = 1;
constexpr std::uint16_t keep_date_on_new = 2;

/// Bits of the setting `warn`.
constexpr std::uint16_t warn_of_unsaved_changes = 1;
constexpr std::uint16_t warn_of_replacing = 2;

constexpr std::u16string_view default_split_pattern = u"%F Track %N";

/// The longest path or text of a setting, in UTF-16 code units.
constexpr std::size_t longest_setting = 400;

/// Most entries of the recent list, whatever `max_recent` says, and of the encoder's presets.
constexpr std::size_t most_recent_files = 9;
constexpr std::size_t most_presets = 19;

/// The documents folder's "Recording" and "%F Track %N" where a name is still empty.
void complete_settings();

/// Puts a file on top of the recent list, unless it stands there anywhere already.
void add_recent(const std::string& path);

void remove_recent(const std::string& path);

}  // namespace corvelin

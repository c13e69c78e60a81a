// SPDX-License-Identifier: GPL-2.0-or-later
// The settings of the MP3 encoder as a user chooses them: which values there are, how they are
// called, which choice pulls others along, and the user's presets. Works on `settings` alone; the
// encoder itself is not needed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings.h"

namespace corvelin {

/// Values of `enc_type`.
enum class EncoderType : std::uint8_t { none = 0, codec_manager = 1, lame = 2 };

/// The encoder that the settings name.
EncoderType encoder_type();

/// Values of `enc_lam_mode`, `enc_lam_quality` and `enc_lam_vbr_method` that have a meaning of
/// their own.
constexpr std::uint8_t lame_mode_joint_stereo = 1;
constexpr std::uint8_t lame_mode_mono = 3;
constexpr std::uint32_t lame_quality_voice = 3;
constexpr std::int32_t lame_method_cbr = -1;
constexpr std::int32_t lame_method_vbr = 0;
constexpr std::int32_t lame_method_abr = 4;

/// Whether the encoder chooses the bit rate frame by frame, so that a file's length says nothing of
/// its time.
bool is_lame_vbr();

/// One row of a list to choose from.
struct EncoderChoice {
  std::int32_t value = 0;
  std::string text;
};

std::vector<EncoderChoice> lame_bitrate_choices();
std::vector<EncoderChoice> lame_bitrate_max_choices();
std::vector<EncoderChoice> lame_samplerate_choices();
std::vector<EncoderChoice> lame_mode_choices();
std::vector<EncoderChoice> lame_quality_choices();
std::vector<EncoderChoice> lame_method_choices();
std::vector<EncoderChoice> lame_vbr_quality_choices();

/// Brings values that are on no list to the nearest meaning, as the lists are shown.
void correct_lame_settings();

/// Takes a bit rate. One that is not below the highest moves that along in CBR; in VBR and ABR it
/// is refused: false, and nothing changes.
bool choose_lame_bitrate(std::uint16_t kbit_s);

/// Takes the highest bit rate. False, and nothing changes, when it is not above the lowest.
bool choose_lame_bitrate_max(std::uint16_t kbit_s);

/// Takes the average of ABR, between 8 and 320 kbit/s.
void choose_lame_abr_bitrate(std::int32_t kbit_s);

/// Takes a quality; "Voice" brings a method, a bit rate and mono with it.
void choose_lame_quality(std::uint32_t quality);

/// The formats of the codec manager, best first within a sample rate; which of them is set, -1 for
/// another one, which then stands on top of the list; and the taking of one.
std::vector<EncoderChoice> codec_manager_choices();
std::int32_t chosen_codec_manager_format();
void choose_codec_manager_format(std::int32_t value);

constexpr std::size_t most_lame_presets = 19;

/// The name of a stored preset; empty for a line that is too short to have one.
std::string_view lame_preset_name(std::string_view line);

/// Sets the encoder as the stored preset says. Fields that are no numbers count as 0 and are
/// corrected like all others.
void apply_lame_preset(std::size_t index);

/// Stores the present values under a name that is not in the list yet. False when it is, when it
/// is empty, and when the list is full.
bool store_lame_preset(std::string_view name);

/// Takes a preset off the list.
void delete_lame_preset(std::size_t index);

}  // namespace corvelin

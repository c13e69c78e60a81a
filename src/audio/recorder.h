// SPDX-License-Identifier: GPL-2.0-or-later
// Recording: samples from an input device go to the encoder as they come and from there into an MP3
// file; none are kept. Owns the device, the file and the recorded time. What a recording is for the
// document, and when it starts and ends, is the business of the commands.
//
//   idle -> record_arm -> armed -> record_start_writing -> writing -> record_stop -> idle
//
// Armed means that the device runs and the meter shows its input, while nothing is written yet.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "audio/encoder_bridge.h"
#include "audio/level_meter.h"
#include "audio/recording_file.h"
#include "audio/speed_conversion.h"
#include "platform/devices/wave_device.h"

namespace corvelin {

constexpr std::size_t most_recording_cues = 60;

struct RecordingCue {
  std::uint32_t position = 0;     // bytes in the file
  std::uint64_t recorded_at = 0;  // the recorded time, in the unit of `rec_rate`
  std::string name;               // of a cue that tells the time; empty for one of the user
};

/// A file that is whole, while the recording goes on in the next one.
struct FinishedRecording {
  std::string name;
  std::uint64_t size = 0;  // bytes
  std::vector<RecordingCue> cues;
};

/// All that is of one recording.
struct Recording {
  bool is_armed = false;
  bool rec_writing = false;                 // what comes in goes to the file
  std::unique_ptr<RecordingFile> rec_file;  // until it is finished
  std::string rec_file_name;
  bool is_name_given = false;     // by the user for this one, so that no date is put into it
  bool has_header_place = false;  // the encoder's first frame is one to be filled in at the end
  bool has_failed = false;        // it did not end as it should, which the user has been told
  std::vector<WaveHeader> rec_buffers;
  std::size_t rec_buffer_bytes = 0;
  unsigned channels = 2;
  std::uint32_t sample_rate = 44100;

  std::uint64_t rec_file_bytes = 0;  // for the file, in an append with those that were there
  std::int64_t rec_pcm_clock = 0;    // bytes of input of this take / 100
  std::size_t rec_pcm_rest = 0;      // bytes of input that the clock doesn't count yet
  bool rec_by_pcm = false;  // time goes by that clock: the file tells it at a constant bitrate only
  double rec_rate = 0;      // a second of recorded time in the unit of `recorded_length`, times 8
  std::int64_t rec_limit = 0;      // the time limit in that unit
  bool is_limit_reached = false;   // and nothing behind it belongs to the recording
  std::int64_t rec_remaining = 0;  // what is left of it

  float rec_speed = 0;             // the stretch of a record played at the wrong speed; 0 for none
  SpeedConversion rec_conversion;  // by that
  bool rec_level_on = false;       // this one is activated by level
  bool rec_active = false;         // and a sound is being written
  std::int64_t rec_active_until = -1;                 // milliseconds of `input_time`
  std::array<std::vector<std::uint8_t>, 3> rec_prev;  // the last three buffers, the newest first
  std::uint64_t input_bytes = 0;                      // that the device delivered
  std::uint64_t written_out_at = 0;  // `input_bytes` when the file was brought to disk last
  std::uint64_t lost_bytes = 0;      // of input, that came too fast for the system or the disk

  std::vector<RecordingCue> rec_cues;   // of this file, at most `most_recording_cues`
  std::int64_t rec_last_time_cue = -1;  // milliseconds of `input_time`; -1 for none yet
  std::size_t rec_backlog = 0;          // full buffers that wait
  std::vector<FinishedRecording> finished_files;
};

/// A recording at a time, and what it is made with. It stays where it is while it is armed.
struct Recorder : Recording {
  WaveInput wave_in;  // open while a recording is armed
  EncoderSession encoder;
};

/// How many buffers a device is lent: about three seconds.
constexpr std::size_t recording_buffers = 32;

/// Opens the encoder and the device, which reports to `events`. False after a failure, which the
/// user has been told; all is idle then.
bool record_arm(Recorder& recorder, LevelMeter& meter, WaveEvents events);

/// The name of a recording that starts now, by the settings.
std::string recording_name();

/// `name`, or where something has that name, the next one that is free: a.mp3, a (2).mp3.
std::string free_recording_name(const std::string& name);

/// Opens the file `rec_file_name`: to go on at its end with `rec_appenddata`, else anew. An error
/// when it can't, also because something has that name.
std::error_code record_start_writing(Recorder& recorder);

/// What became of a buffer.
enum class RecordStep {
  done,           // the meter, and perhaps the file, went on
  new_file,       // the limit was reached and the recording goes on in a new file
  cue,            // a cue that tells the time was set
  limit_reached,  // the recording is to be stopped
  write_failed,   // likewise
};

/// Takes a buffer that the device has filled, and lends it again.
RecordStep record_buffer_done(Recorder& recorder, LevelMeter& meter, WaveHeader& header);

/// Sets a cue here. False with a full list, and where the last one is not behind yet.
bool record_add_cue(Recorder& recorder);

/// What the end of a recording came to.
struct RecordingEnd {
  std::error_code error;    // of the file
  double lost_seconds = 0;  // of sound that came too fast for the system or the disk
  bool has_file = false;    // there is something to open
};

/// Lets go of the device. What it still has goes to the file with the encoder's last frames; that
/// the file is on disk is waited for by `record_stop`. Does nothing when idle.
void record_end_input(Recorder& recorder, LevelMeter& meter);

/// Ends everything. The encoder's header frame, where it has one, is written to the finished file.
/// Does nothing when idle.
RecordingEnd record_stop(Recorder& recorder, LevelMeter& meter);

/// The recorded time in the unit of `rec_rate`, of the file with what is not written yet.
std::uint64_t recorded_length(const Recording& recording);

/// Milliseconds that the device has delivered. It is the clock of all that waits in a recording, so
/// that a stalled system stretches no pause.
std::int64_t input_time(const Recording& recording);

}  // namespace corvelin

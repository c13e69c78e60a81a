// SPDX-License-Identifier: GPL-2.0-or-later
// The states of a recording, and the way of a buffer into the file.
#include "audio/recorder.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <span>
#include <utility>

#include "audio/encoder_settings.h"
#include "model/document.h"
#include "platform/host.h"
#include "platform/processes/system.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::int64_t time_cue_distance = 1'200'000;  // milliseconds

// A file that could not be opened as a document is no use, so a longer recording goes on in a new
// one.
constexpr std::uint64_t longest_recording = largest_file - 1'000'000;

bool uses_lame() { return settings.enc_type == static_cast<std::uint8_t>(EncoderType::lame); }

std::tm local_time() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  ::localtime_r(&now, &local);
  return local;
}

// What the encoder wants to be given.
void choose_input_format(Recorder& recorder) {
  if (uses_lame()) {
    recorder.channels = settings.enc_lam_mode == lame_mode_mono ? 1 : 2;
    recorder.sample_rate = settings.enc_lam_samplerate;
  } else {
    recorder.channels = settings.enc_acm_channels == 1 ? 1 : 2;
    recorder.sample_rate = settings.enc_acm_samplerate;
  }
}

// The unit of recorded time: bytes of the file, or of the input where those tell nothing of time,
// as the average that the encoder is asked for is reached by no real sound.
void set_clocks(Recorder& recorder) {
  const std::int64_t seconds = std::int64_t{settings.rec_time} * 60;
  if (!uses_lame()) {
    recorder.rec_rate = settings.enc_acm_bitrate;
    recorder.rec_limit = std::int64_t{settings.enc_acm_bitrate / 8} * seconds;
  } else if (settings.enc_lam_vbr_method != lame_method_cbr) {
    recorder.rec_by_pcm = true;
    recorder.rec_rate = settings.enc_lam_samplerate * 16.0 / 100 * recorder.channels;
    recorder.rec_limit =
        2 * seconds * std::int64_t{settings.enc_lam_samplerate} * recorder.channels / 100;
  } else {
    const std::int64_t kbit_s = settings.enc_lam_bitrate;
    recorder.rec_rate = static_cast<double>(kbit_s * 1000);
    recorder.rec_limit = seconds * kbit_s * 125;
  }
  recorder.rec_remaining = recorder.rec_limit;
}

EncoderUse encoder_use() {
  if (settings.rec_split != 0) return EncoderUse::record_split;
  return settings.rec_appenddata != 0 ? EncoderUse::record_behind : EncoderUse::record;
}

std::size_t buffer_size(const Recorder& recorder) {
  if (uses_lame()) return std::size_t{recorder.encoder.lame_samples} * 2;
  const std::size_t size = recorder.channels == 2 ? 16384 : 8192;
  return recorder.sample_rate < 32000 ? size / 2 : size;
}

bool open_device(Recorder& recorder, LevelMeter& meter, WaveEvents events) {
  const WaveFormat format =
      pcm_16_bit(static_cast<std::uint16_t>(recorder.channels), recorder.sample_rate);
  recorder.rec_buffer_bytes = buffer_size(recorder);
  const std::string reason = recorder.wave_in.open(
      settings.device_in, format, recorder.rec_buffer_bytes * recording_buffers, std::move(events));
  if (!reason.empty()) {
    record_stop(recorder, meter);
    show_error(fmt::format("{}\n{}", ui_text(row::no_wave_device), reason));
    return false;
  }
  recorder.rec_buffers.resize(recording_buffers);
  for (WaveHeader& header : recorder.rec_buffers) {
    header.data.resize(recorder.rec_buffer_bytes);
    recorder.wave_in.add(header);
  }
  return true;
}

std::uint64_t input_bytes_a_second(const Recording& recorder) {
  return std::uint64_t{2} * recorder.channels * recorder.sample_rate;
}

std::span<const std::int16_t> samples_of(std::span<const std::uint8_t> pcm) {
  return {reinterpret_cast<const std::int16_t*>(pcm.data()), pcm.size() / sizeof(std::int16_t)};
}

void give(Recorder& recorder, std::span<const std::uint8_t> encoded) {
  recorder.rec_file->give(encoded);
  recorder.rec_file_bytes += encoded.size();
}

std::string next_file_name(const Recording& recorder) {
  if (settings.rec_adddate != 0 && !recorder.is_name_given) return recording_name();
  return recorder.finished_files.empty() ? recorder.rec_file_name
                                         : recorder.finished_files.front().name;
}

// The encoder goes on as if nothing had happened: a frame that lies across the change is whole in
// one of the two files.
RecordStep go_on_in_new_file(Recorder& recorder) {
  const std::string name = free_recording_name(next_file_name(recorder));
  recorder.rec_file->go_on_in(name);
  recorder.finished_files.push_back({.name = std::exchange(recorder.rec_file_name, name),
                                     .size = std::exchange(recorder.rec_file_bytes, 0),
                                     .cues = std::exchange(recorder.rec_cues, {})});
  if (recorder.rec_by_pcm) recorder.rec_pcm_clock = 0;
  recorder.rec_remaining = recorder.rec_limit;
  return RecordStep::new_file;
}

// What was to go into a file that could not be begun stands at the end of the one before.
void return_to_reached_file(Recorder& recorder) {
  while (recorder.rec_file_name != recorder.rec_file->name() && !recorder.finished_files.empty()) {
    FinishedRecording before = std::move(recorder.finished_files.back());
    recorder.finished_files.pop_back();
    for (RecordingCue& cue : recorder.rec_cues)
      cue.position += static_cast<std::uint32_t>(before.size);
    before.cues.insert(before.cues.end(), recorder.rec_cues.begin(), recorder.rec_cues.end());
    recorder.rec_file_name = std::move(before.name);
    recorder.rec_cues = std::move(before.cues);
  }
}

// The recorded time that a block will take, in the unit of `recorded_length`.
std::int64_t length_of(const Recording& recorder, std::span<const std::uint8_t> pcm) {
  const double seconds =
      static_cast<double>(pcm.size()) / (2.0 * recorder.channels * recorder.sample_rate);
  const double stretched = recorder.rec_speed > 0 ? seconds * recorder.rec_speed : seconds;
  return static_cast<std::int64_t>(stretched * recorder.rec_rate / 8);
}

// A recording ends in front of the block that would go beyond the limit. That block isn't encoded:
// what the encoder gives for it begins with the end of sound from before the limit, and the two
// can't be told apart.
bool is_limit_in(const Recording& recorder, std::span<const std::uint8_t> pcm) {
  return settings.rec_time != 0 && settings.rec_split == 0 &&
         recorder.rec_remaining < length_of(recorder, pcm);
}

void measure_remaining(Recorder& recorder) {
  if (settings.rec_time == 0) return;
  recorder.rec_remaining =
      recorder.rec_limit - static_cast<std::int64_t>(recorded_length(recorder));
}

// False while the file has no room for what the samples may make: they are lost then, and the
// frames in front and behind still fit together.
bool encode_samples(Recorder& recorder, std::span<const std::int16_t> samples) {
  std::vector<std::uint8_t> encoded(encoder_room(samples.size()));
  if (!recorder.rec_file->has_room(encoded.size())) return false;
  encoded.resize(encode_block(recorder.encoder, samples, encoded).value_or(0));
  give(recorder, encoded);
  // With what the last blocks left over: else an hour would be told as a quarter of a minute less.
  recorder.rec_pcm_rest += samples.size_bytes();
  recorder.rec_pcm_clock += static_cast<std::int64_t>(recorder.rec_pcm_rest / 100);
  recorder.rec_pcm_rest %= 100;
  return true;
}

void encode(Recorder& recorder, std::span<const std::uint8_t> pcm) {
  const std::span<const std::int16_t> samples = samples_of(pcm);
  const bool is_taken = recorder.rec_speed > 0
                            ? encode_samples(recorder, recorder.rec_conversion.stretch(samples))
                            : encode_samples(recorder, samples);
  if (!is_taken) recorder.lost_bytes += pcm.size();
}

RecordStep record_write_block(Recorder& recorder, std::span<const std::uint8_t> pcm) {
  recorder.is_limit_reached = is_limit_in(recorder, pcm);
  if (recorder.is_limit_reached) return RecordStep::limit_reached;
  encode(recorder, pcm);
  measure_remaining(recorder);
  if (settings.rec_time != 0 && recorder.rec_remaining < 0) return go_on_in_new_file(recorder);
  if (recorder.rec_file_bytes > longest_recording) return go_on_in_new_file(recorder);
  return RecordStep::done;
}

void add_cue(Recorder& recorder, std::string name) {
  recorder.rec_cues.push_back({.position = static_cast<std::uint32_t>(recorder.rec_file_bytes),
                               .recorded_at = recorded_length(recorder),
                               .name = std::move(name)});
}

// Writes while it is loud and for a while after, and what came just before: so the start of the
// sound that set it off is kept.
RecordStep record_by_level(Recorder& recorder, const LevelMeter& meter,
                           std::span<const std::uint8_t> pcm) {
  const auto threshold = static_cast<std::uint8_t>(settings.rec_threshold & 0xFF);
  const std::int64_t pause = std::int64_t{1000} * (settings.rec_threshold >> 8);  // milliseconds
  const std::int64_t now = input_time(recorder);
  if (meter.meter_overall > threshold) recorder.rec_active_until = now + pause;
  if (recorder.rec_active_until < now) {
    recorder.rec_active = false;
    return RecordStep::done;
  }
  RecordStep result = RecordStep::done;
  const auto write = [&recorder, &result](std::span<const std::uint8_t> block) {
    const RecordStep step = record_write_block(recorder, block);
    if (step != RecordStep::done) result = step;
    return step == RecordStep::done || step == RecordStep::new_file;
  };
  if (!std::exchange(recorder.rec_active, true)) {
    for (std::size_t i = recorder.rec_prev.size(); i-- > 0;)
      if (!write(std::exchange(recorder.rec_prev.at(i), {}))) return result;
  }
  if (!write(pcm)) return result;
  const bool is_due =
      recorder.rec_last_time_cue < 0 || now > recorder.rec_last_time_cue + time_cue_distance;
  if (!is_due || recorder.rec_cues.size() >= most_recording_cues) return result;
  recorder.rec_last_time_cue = now;
  const std::tm time = local_time();
  add_cue(recorder, fmt::format("{:02}-{:02}-{:02}--{:02}-{:02}", time.tm_year + 1900,
                                time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min));
  return RecordStep::cue;
}

void remember(Recorder& recorder, std::span<const std::uint8_t> pcm) {
  std::rotate(recorder.rec_prev.begin(), recorder.rec_prev.end() - 1, recorder.rec_prev.end());
  recorder.rec_prev.front().assign(pcm.begin(), pcm.end());
}

// The sound that the device has delivered up to now and nobody fetched yet.
void take_what_is_left(Recorder& recorder) {
  std::vector<std::uint8_t> bytes(recorder.rec_buffer_bytes * recording_buffers);
  bytes.resize(recorder.wave_in.take_rest(bytes));
  recorder.input_bytes += bytes.size();
  if (recorder.rec_level_on && !recorder.rec_active) return;
  for (std::span<const std::uint8_t> rest = bytes; !rest.empty();) {
    const std::size_t size = std::min(rest.size(), recorder.rec_buffer_bytes);
    encode(recorder, rest.first(size));
    rest = rest.subspan(size);
  }
  if (recorder.rec_speed > 0) encode_samples(recorder, recorder.rec_conversion.rest());
}

// By the time alone: what stands here when the machine fails is lost, at the lowest bitrate too.
void write_out_when_due(Recorder& recorder) {
  if (recorder.input_bytes - recorder.written_out_at < input_bytes_a_second(recorder)) return;
  recorder.written_out_at = recorder.input_bytes;
  recorder.rec_file->write_out();
}

}  // namespace

bool record_arm(Recorder& recorder, LevelMeter& meter, WaveEvents events) {
  const float speed = recorder.rec_speed;
  const bool by_level = recorder.rec_level_on;
  static_cast<Recording&>(recorder) = {};
  recorder.rec_speed = speed;
  recorder.rec_level_on = by_level;
  choose_input_format(recorder);
  const EncoderUse use = encoder_use();
  recorder.has_header_place = use == EncoderUse::record;
  if (!open_encoder(recorder.encoder, use, static_cast<std::uint16_t>(recorder.channels),
                    recorder.sample_rate))
    return false;
  recorder.rec_file_name = recording_name();
  if (settings.rec_appenddata != 0)
    recorder.rec_file_bytes = file_facts(recorder.rec_file_name).size;
  set_clocks(recorder);
  if (recorder.rec_speed > 0 &&
      !recorder.rec_conversion.begin(recorder.rec_speed, recorder.channels)) {
    record_stop(recorder, meter);
    show_error("Memory allocation error!");
    return false;
  }
  if (!open_device(recorder, meter, std::move(events))) return false;
  recorder.is_armed = true;
  return true;
}

std::string recording_name() {
  if (settings.rec_adddate == 0) return settings.file_savepath + ".mp3";
  const std::tm time = local_time();
  return fmt::format("{}-{:02}-{:02}-{:02}--{:02}-{:02}-{:02}.mp3", settings.file_savepath,
                     time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min,
                     time.tm_sec);
}

std::string free_recording_name(const std::string& name) {
  std::string free = name;
  const std::string_view extension = extension_of(name);
  const std::string_view stem = std::string_view(name).substr(0, name.size() - extension.size());
  for (int number = 2; is_name_taken(free); ++number)
    free = fmt::format("{} ({}){}", stem, number, extension);
  return free;
}

std::error_code record_start_writing(Recorder& recorder) {
  const std::string& name = recorder.rec_file_name;
  const std::string documents = documents_folder();  // which a new user has not got yet
  if (folder_of(name) == documents + "/") create_folders(documents);
  const bool goes_on = settings.rec_appenddata != 0 && file_facts(name).found;
  auto file = std::make_unique<RecordingFile>();
  if (const std::error_code error = file->open(name, goes_on)) return error;
  recorder.rec_file_bytes = file->size();
  recorder.rec_file = std::move(file);
  recorder.rec_writing = true;
  return {};
}

RecordStep record_buffer_done(Recorder& recorder, LevelMeter& meter, WaveHeader& header) {
  const std::span<const std::uint8_t> pcm = std::span(header.data).first(header.length);
  recorder.input_bytes += pcm.size();
  level_meter_feed(meter, pcm, static_cast<int>(recorder.channels), MeterUse::recording);
  RecordStep step = RecordStep::done;
  if (recorder.rec_writing) {
    step = recorder.rec_level_on ? record_by_level(recorder, meter, pcm)
                                 : record_write_block(recorder, pcm);
    if (recorder.rec_level_on) remember(recorder, pcm);
    write_out_when_due(recorder);
    if (recorder.rec_file->error()) step = RecordStep::write_failed;
  }
  recorder.wave_in.add(header);
  recorder.rec_backlog = recorder.wave_in.waiting(recorder.rec_buffer_bytes);
  return step;
}

bool record_add_cue(Recorder& recorder) {
  const std::vector<RecordingCue>& cues = recorder.rec_cues;
  if (!recorder.rec_writing || cues.size() >= most_recording_cues) return false;
  if (recorder.rec_file_bytes <= (cues.empty() ? 0 : cues.back().position)) return false;
  add_cue(recorder, {});
  return true;
}

void record_end_input(Recorder& recorder, LevelMeter& meter) {
  if (recorder.rec_writing) {
    if (!recorder.is_limit_reached) take_what_is_left(recorder);
    std::vector<std::uint8_t> tail(encoder_room(0) * 2);
    tail.resize(encode_rest(recorder.encoder, tail));
    give(recorder, tail);
    recorder.rec_file->finish();
    recorder.lost_bytes += recorder.wave_in.lost_bytes();
  }
  recorder.wave_in.close();
  recorder.rec_writing = false;
  recorder.is_armed = false;
  level_meter_clear(meter);
}

RecordingEnd record_stop(Recorder& recorder, LevelMeter& meter) {
  record_end_input(recorder, meter);
  RecordingEnd end;
  if (recorder.rec_file) {
    recorder.rec_file->wait();
    return_to_reached_file(recorder);
    end.error = recorder.rec_file->error();
    end.has_file = recorder.rec_file->size() > 0 && is_name_taken(recorder.rec_file_name);
    end.lost_seconds = static_cast<double>(recorder.lost_bytes) /
                       static_cast<double>(input_bytes_a_second(recorder));
  }
  const bool wants_header = recorder.rec_file && !end.error && recorder.has_header_place &&
                            recorder.finished_files.empty();
  const std::error_code header_error =
      close_encoder(recorder.encoder, wants_header ? recorder.rec_file_name : std::string());
  if (!end.error) end.error = header_error;
  recorder.rec_file.reset();
  recorder.rec_speed = 0;
  recorder.rec_level_on = false;
  recorder.rec_buffers.clear();
  return end;
}

std::uint64_t recorded_length(const Recording& recording) {
  return recording.rec_by_pcm ? static_cast<std::uint64_t>(recording.rec_pcm_clock)
                              : recording.rec_file_bytes;
}

std::int64_t input_time(const Recording& recording) {
  return static_cast<std::int64_t>(recording.input_bytes * 1000 / input_bytes_a_second(recording));
}

}  // namespace corvelin

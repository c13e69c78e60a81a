// SPDX-License-Identifier: GPL-2.0-or-later
// The ring of buffers, and what is played.
#include "audio/playback.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <new>
#include <span>
#include <string>

#include "audio/decoder_bridge.h"
#include "audio/fast_play.h"
#include "audio/fill_step.h"
#include "audio/level_meter.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "platform/host.h"
#include "platform/numbers.h"
#include "platform/wave_device.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::size_t ring_count = 4;

WaveOutput wave_out;
std::array<WaveHeader, ring_count> wave_header;
std::vector<std::int16_t> fast_play_block;
std::deque<WaveHeader*> idle_headers;  // those that the device doesn't have
bool end_is_queued = false;            // the device has the last of all buffers
EditPosition lowest_place = 0;         // from which on was played
std::string fault_before;              // of the sources, when the play began

WaveOutput keep_alive_out;

struct Place {
  EditPosition cursor = 0;
  PartIndex part = 0;
};

Place current_place() { return {selection.cursor, document.current_part}; }

void go_to(const Place& place) {
  selection.cursor = place.cursor;
  document.current_part = place.part;
}

void go_to_frame_at(EditPosition pos) {
  const EditPosition frame = frame_at(document, pos, selection.current_frame);
  selection.cursor = frame == no_position ? pos : frame;  // the reader finds the next one
  document.current_part = part_at(document, selection.cursor);
}

EditPosition behind(EditPosition pos, std::uint32_t bytes, EditPosition limit) {
  return static_cast<EditPosition>(std::min<std::uint64_t>(std::uint64_t{pos} + bytes, limit));
}

EditPosition in_front_of(EditPosition pos, std::uint32_t bytes) {
  return pos > bytes ? pos - bytes : 0;
}

// Moves the cursor to where the play begins and sets where it ends. False without the selection
// that a prelisten is about.
bool set_range() {
  playback.end_limit = document.total_size;
  document.current_part = part_at(document, selection.cursor);
  if (playback.prelisten_mode == plain_play) return true;
  if (!has_selection(selection)) {
    playback.prelisten_mode = plain_play;
    return false;
  }
  const EditPosition begin = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  const std::uint32_t stretch = prelisten_bytes();
  playback.saved_cursor = selection.cursor;
  switch (playback.prelisten_mode) {
    case prelisten_as_cut:
    case prelisten_to_begin:
      go_to_frame_at(in_front_of(begin, stretch));
      playback.end_limit = begin;
      break;
    case prelisten_from_begin:
      go_to_frame_at(begin);
      playback.end_limit = behind(begin, stretch, end);
      break;
    case prelisten_to_end:
      go_to_frame_at(std::max(in_front_of(end, stretch), begin));
      playback.end_limit = end;
      break;
    case prelisten_from_end:
      go_to_frame_at(end);
      playback.end_limit = behind(end, stretch, document.total_size);
      break;
    case loop_selection:
      go_to_frame_at(begin);
      playback.end_limit = end;
      break;
    case plain_play:
      break;
  }
  return true;
}

// An edit may have changed what there is to be played.
void follow_edits() {
  if (playback.prelisten_mode == plain_play) playback.end_limit = document.total_size;
  if (playback.prelisten_mode == loop_selection && has_selected_range(selection))
    playback.end_limit = selection.sel_end;
  playback.end_limit = std::min(playback.end_limit, document.total_size);
}

bool is_at_end() {
  const bool has_second_leg = playback.prelisten_mode == prelisten_as_cut && !playback.has_jumped;
  return !has_second_leg && selection.cursor >= playback.end_limit;
}

std::size_t play_faster(std::span<std::uint8_t> pcm) {
  const std::span samples = std::span(fast_play_block).first(pcm.size() / sizeof(std::int16_t));
  std::memcpy(samples.data(), pcm.data(), samples.size_bytes());
  const std::size_t left = fast_play_compress(samples, playback.fast_play_level);
  std::memcpy(pcm.data(), samples.data(), left * sizeof(std::int16_t));
  return left * sizeof(std::int16_t);
}

std::size_t fill(std::span<std::uint8_t> room) {
  constexpr std::uint32_t frames_of_fast_play = 6;  // room for several cycles
  if (playback.fast_play_level == 0) return fill_from_stream(room, settings.buffer_frm, nullptr);
  return play_faster(room.first(fill_from_stream(room, frames_of_fast_play, nullptr)));
}

// Silence keeps the ring turning where frames yield no samples.
std::size_t fill_with_silence(std::span<std::uint8_t> room) {
  const std::size_t size = room.size() / 2;
  std::ranges::fill(room.first(size), std::uint8_t{0});
  return size;
}

void fill_and_write(WaveHeader& header) {
  follow_edits();
  header.length = fill(header.data);
  if (!playback.is_playing) return;  // the decoder gave up
  header.user = selection.cursor;
  header.is_end = end_is_queued = is_at_end();
  if (header.length == 0 && !header.is_end) header.length = fill_with_silence(header.data);
  wave_out.write(header);
}

// Gives the device all buffers that it doesn't have, up to the last one of the stream.
void turn_ring() {
  while (!idle_headers.empty() && !end_is_queued && playback.is_playing) {
    WaveHeader* const header = idle_headers.front();
    idle_headers.pop_front();
    fill_and_write(*header);
  }
}

void end_playback(PlayEnd how);

// The reader takes a failing disk, or a file that was cut off, for the end of the audio.
std::string fault_of_sources() {
  std::string fault = read_fault(document);
  return fault == fault_before ? shrunk_source(document, lowest_place, playback.end_limit) : fault;
}

void run_out() {
  const std::string fault = fault_of_sources();
  end_playback(PlayEnd::ran_out);
  if (fault.empty()) return;
  playback.ended_by = PlayEnd::cut_off;
  host().refresh_view(Refresh::playing);
  show_error(fault);
}

void buffer_returned(WaveHeader& header) {
  idle_headers.push_back(&header);
  if (header.was_played) {
    playback.played_pos = std::min(header.user, document.total_size);
    level_meter_feed(std::span(header.data).first(header.length),
                     decoder_session.pcm_format.channels);
  }
  if (playback.stops_at_buffer) {
    end_playback(PlayEnd::stopped);
  } else if (header.was_played && header.is_end) {
    run_out();
  } else {
    turn_ring();
  }
  host().refresh_view(Refresh::playing);
}

void tell_no_device(const std::string& reason) {
  host().show_message_box({.caption = std::string(ui_text(row::error)),
                           .text = std::string(ui_text(row::no_wave_device)),
                           .cause = reason,
                           .icon = BoxIcon::error});
}

void device_lost() {
  end_playback(PlayEnd::lost);
  host().refresh_view(Refresh::playing);
  tell_no_device("the device is gone");
}

bool make_buffers() {
  try {
    for (WaveHeader& header : wave_header) header.data.resize(decoder_session.pcm_buffer_bytes);
    fast_play_block.resize(decoder_session.pcm_buffer_bytes / sizeof(std::int16_t));
  } catch (const std::bad_alloc&) {
    host().show_message_box({.caption = "Play init error",
                             .text = "Memory allocation error.",
                             .icon = BoxIcon::warning});
    return false;
  }
  return true;
}

void free_buffers() {
  wave_header = {};
  fast_play_block = {};
}

bool open_device() {
  const std::size_t queue_size = ring_count * std::size_t{decoder_session.pcm_buffer_bytes};
  const std::string reason =
      wave_out.open(settings.device_out, decoder_session.pcm_format, queue_size,
                    {.buffer_done = buffer_returned, .lost = device_lost});
  if (!wave_out.is_open()) tell_no_device(reason);
  return wave_out.is_open();
}

bool open_session() {
  playback_buffers_configure();
  if (!decoder_open()) return false;
  if (open_device() && make_buffers()) return true;
  wave_out.close();
  free_buffers();
  decoder_close();
  return false;
}

void start_ring() {
  playback.played_pos = lowest_place = selection.cursor;
  fault_before = read_fault(document);
  end_is_queued = false;
  idle_headers.clear();
  for (WaveHeader& header : wave_header) idle_headers.push_back(&header);
  turn_ring();
}

// A prelisten that has come to its end, or nearly so.
bool is_near_end() {
  const EditPosition cursor = selection.cursor;
  const EditPosition distance =
      cursor > playback.end_limit ? cursor - playback.end_limit : playback.end_limit - cursor;
  constexpr float frames = 6;
  return static_cast<float>(distance) < frames * document.stream.avg_frame_size;
}

void end_playback(PlayEnd how) {
  const bool was_playing = playback.is_playing;
  if (was_playing) {
    playback.ended_by = how;
    const EditPosition frame = frame_at(document, playback.played_pos, selection.current_frame);
    selection.cursor = frame == no_position ? playback.played_pos : frame;
    playback.is_playing = false;
    wave_out.close();
    free_buffers();
    const bool is_prelisten = playback.prelisten_mode != plain_play;
    if (is_prelisten && (how == PlayEnd::ran_out || is_near_end()))
      selection.cursor = std::min(playback.saved_cursor, document.total_size);
    document.current_part = part_at(document, selection.cursor);
  }
  playback.prelisten_mode = plain_play;
  playback.playback_running = false;
  level_meter_clear();
  decoder_close();
  if (was_playing) host().show_transport();
}

}  // namespace

Playback playback;

bool start_playback() {
  if (playback.is_playing) return false;
  const Place before = current_place();
  playback.fast_play_level = 0;
  fast_play_begin();
  playback.has_jumped = false;
  playback.stops_at_buffer = false;
  playback.ended_by = PlayEnd::failed;
  if (!set_range() || !open_session()) {
    go_to(before);
    return false;
  }
  level_meter_clear();
  playback.is_playing = true;
  start_ring();
  host().show_transport();
  playback.playback_running = playback.is_playing;
  return playback.is_playing;
}

void stop_playback() { end_playback(PlayEnd::stopped); }

EditPosition play_position() {
  return playback.is_playing ? playback.played_pos : selection.cursor;
}

void seek_to(EditPosition pos) {
  if (pos > highest_position) return;
  if (playback.playback_running) {
    wave_out.reset();  // all buffers come back and are filled anew
    decoder_reset();
    end_is_queued = false;
  }
  move_cursor(document, selection, pos);
  lowest_place = std::min(lowest_place, selection.cursor);
  playback.played_pos = selection.cursor;
}

std::uint32_t prelisten_bytes() {
  constexpr double bits_per_byte_and_tenths = 80;
  return whole_part(settings.prelisten_time * double{document.stream.avg_bitrate} /
                    bits_per_byte_and_tenths);
}

std::uint32_t playback_underruns() { return wave_out.underruns(); }

void apply_volume() {
  const int share = std::min<int>(settings.volume, 100);  // per cent; a file may say more
  wave_volume(static_cast<std::uint16_t>(share * 65535 / 100));
}

void device_keepalive(bool open) {
  keep_alive_out.close();
  if (!open || settings.keep_dev_open == 0) return;
  constexpr WaveFormat format = pcm_16_bit(2, 44100);
  keep_alive_out.open(settings.device_out, format, 0, {.lost = [] { keep_alive_out.close(); }});
}

}  // namespace corvelin

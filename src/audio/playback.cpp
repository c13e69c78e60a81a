// SPDX-License-Identifier: GPL-2.0-or-later
// The ring of buffers, and what is played.
#include "audio/playback.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <span>
#include <string>

#include "audio/fill_step.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/host.h"
#include "platform/text/numbers.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

struct Place {
  EditPosition cursor = 0;
  PartIndex part = 0;
};

Place current_place(const Playback& playback) {
  return {playback.selection.cursor, playback.document.current_part};
}

void go_to(Playback& playback, const Place& place) {
  playback.selection.cursor = place.cursor;
  playback.document.current_part = place.part;
}

void go_to_frame_at(Playback& playback, EditPosition pos) {
  Document& document = playback.document;
  Selection& selection = playback.selection;
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
bool set_range(Playback& playback) {
  Document& document = playback.document;
  const Selection& selection = playback.selection;
  playback.end_limit = document.total_size;
  document.current_part = part_at(document, selection.cursor);
  if (playback.prelisten_mode == plain_play) return true;
  if (!has_selection(selection)) {
    playback.prelisten_mode = plain_play;
    return false;
  }
  const EditPosition begin = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  const std::uint32_t stretch = prelisten_bytes(document.stream);
  playback.saved_cursor = selection.cursor;
  switch (playback.prelisten_mode) {
    case prelisten_as_cut:
    case prelisten_to_begin:
      go_to_frame_at(playback, in_front_of(begin, stretch));
      playback.end_limit = begin;
      break;
    case prelisten_from_begin:
      go_to_frame_at(playback, begin);
      playback.end_limit = behind(begin, stretch, end);
      break;
    case prelisten_to_end:
      go_to_frame_at(playback, std::max(in_front_of(end, stretch), begin));
      playback.end_limit = end;
      break;
    case prelisten_from_end:
      go_to_frame_at(playback, end);
      playback.end_limit = behind(end, stretch, document.total_size);
      break;
    case loop_selection:
      go_to_frame_at(playback, begin);
      playback.end_limit = end;
      break;
    case plain_play:
      break;
  }
  return true;
}

// An edit may have changed what there is to be played.
void follow_edits(Playback& playback) {
  const Document& document = playback.document;
  const Selection& selection = playback.selection;
  if (playback.prelisten_mode == plain_play) playback.end_limit = document.total_size;
  if (playback.prelisten_mode == loop_selection && has_selected_range(selection))
    playback.end_limit = selection.sel_end;
  playback.end_limit = std::min(playback.end_limit, document.total_size);
}

bool is_at_end(const Playback& playback) {
  const bool has_second_leg = playback.prelisten_mode == prelisten_as_cut && !playback.has_jumped;
  return !has_second_leg && playback.selection.cursor >= playback.end_limit;
}

std::size_t play_faster(Playback& playback, std::span<std::uint8_t> pcm) {
  const std::span samples =
      std::span(playback.fast_play_block).first(pcm.size() / sizeof(std::int16_t));
  std::memcpy(samples.data(), pcm.data(), samples.size_bytes());
  const std::size_t left =
      playback.fast_play.compress(samples, playback.document.kind, playback.fast_play_level);
  std::memcpy(pcm.data(), samples.data(), left * sizeof(std::int16_t));
  return left * sizeof(std::int16_t);
}

std::size_t fill(Playback& playback, std::span<std::uint8_t> room) {
  constexpr std::uint32_t frames_of_fast_play = 6;  // room for several cycles
  if (playback.fast_play_level == 0) return fill_from_stream(playback, room, settings.buffer_frm);
  return play_faster(playback, room.first(fill_from_stream(playback, room, frames_of_fast_play)));
}

// Silence keeps the ring turning where frames yield no samples.
std::size_t fill_with_silence(std::span<std::uint8_t> room) {
  const std::size_t size = room.size() / 2;
  std::ranges::fill(room.first(size), std::uint8_t{0});
  return size;
}

void fill_and_write(Playback& playback, WaveHeader& header) {
  follow_edits(playback);
  header.length = fill(playback, header.data);
  if (!playback.is_playing) return;  // the decoder gave up
  header.user = playback.selection.cursor;
  header.is_end = playback.ring.end_is_queued = is_at_end(playback);
  if (header.length == 0 && !header.is_end) header.length = fill_with_silence(header.data);
  playback.ring.device.write(header);
}

// Gives the device all buffers that it doesn't have, up to the last one of the stream.
void turn_ring(Playback& playback) {
  PlayRing& ring = playback.ring;
  while (!ring.idle.empty() && !ring.end_is_queued && playback.is_playing) {
    WaveHeader* const header = ring.idle.front();
    ring.idle.pop_front();
    fill_and_write(playback, *header);
  }
}

void end_playback(Playback& playback, PlayEnd how);

// The reader takes a failing disk, or a file that was cut off, for the end of the audio.
std::string fault_of_sources(const Playback& playback) {
  std::string fault = read_fault(playback.document);
  if (fault != playback.fault_before) return fault;
  return shrunk_source(playback.document, playback.lowest_place, playback.end_limit);
}

void run_out(Playback& playback) {
  const std::string fault = fault_of_sources(playback);
  end_playback(playback, PlayEnd::ran_out);
  if (fault.empty()) return;
  playback.ended_by = PlayEnd::cut_off;
  host().refresh_view(Refresh::playing);
  show_error(fault);
}

void buffer_returned(Playback& playback, WaveHeader& header) {
  playback.ring.idle.push_back(&header);
  if (header.was_played) {
    playback.played_pos = std::min(header.user, playback.document.total_size);
    level_meter_feed(playback.level_meter, std::span(header.data).first(header.length),
                     playback.decoder.pcm_format.channels, MeterUse::playing);
  }
  if (playback.stops_at_buffer) {
    end_playback(playback, PlayEnd::stopped);
  } else if (header.was_played && header.is_end) {
    run_out(playback);
  } else {
    turn_ring(playback);
  }
  host().refresh_view(Refresh::playing);
}

void tell_no_device(const std::string& reason) {
  host().show_message_box({.caption = std::string(ui_text(row::error)),
                           .text = std::string(ui_text(row::no_wave_device)),
                           .cause = reason,
                           .icon = BoxIcon::error});
}

void device_lost(Playback& playback) {
  end_playback(playback, PlayEnd::lost);
  host().refresh_view(Refresh::playing);
  tell_no_device("the device is gone");
}

bool make_buffers(Playback& playback) {
  const std::size_t size = playback.decoder.pcm_buffer_bytes;
  try {
    for (WaveHeader& header : playback.ring.headers) header.data.resize(size);
    playback.fast_play_block.resize(size / sizeof(std::int16_t));
  } catch (const std::bad_alloc&) {
    host().show_message_box({.caption = "Play init error",
                             .text = "Memory allocation error.",
                             .icon = BoxIcon::warning});
    return false;
  }
  return true;
}

void free_buffers(Playback& playback) {
  playback.ring.headers = {};
  playback.fast_play_block = {};
}

bool open_device(Playback& playback) {
  PlayRing& ring = playback.ring;
  const std::string reason = ring.device.open(
      settings.device_out, playback.decoder.pcm_format,
      ring.headers.size() * playback.decoder.pcm_buffer_bytes,
      {.buffer_done = [&playback](WaveHeader& header) { buffer_returned(playback, header); },
       .lost = [&playback] { device_lost(playback); }});
  if (!ring.device.is_open()) tell_no_device(reason);
  return ring.device.is_open();
}

bool open_session(Playback& playback) {
  playback_buffers_configure(playback.decoder, playback.document);
  FrameCursor at = edit_cursor(playback.document, playback.selection);
  const bool is_open = decoder_open(playback.decoder, playback.document, at);
  put_edit_cursor(playback.document, playback.selection, at);
  if (!is_open) return false;
  if (open_device(playback) && make_buffers(playback)) return true;
  playback.ring.device.close();
  free_buffers(playback);
  decoder_close(playback.decoder);
  return false;
}

void start_ring(Playback& playback) {
  PlayRing& ring = playback.ring;
  playback.played_pos = playback.lowest_place = playback.selection.cursor;
  playback.fault_before = read_fault(playback.document);
  ring.end_is_queued = false;
  ring.idle.clear();
  for (WaveHeader& header : ring.headers) ring.idle.push_back(&header);
  turn_ring(playback);
}

// A prelisten that has come to its end, or nearly so.
bool is_near_end(const Playback& playback) {
  const EditPosition cursor = playback.selection.cursor;
  const EditPosition distance =
      cursor > playback.end_limit ? cursor - playback.end_limit : playback.end_limit - cursor;
  constexpr float frames = 6;
  return static_cast<float>(distance) < frames * playback.document.stream.avg_frame_size;
}

void end_playback(Playback& playback, PlayEnd how) {
  Document& document = playback.document;
  Selection& selection = playback.selection;
  const bool was_playing = playback.is_playing;
  if (was_playing) {
    playback.ended_by = how;
    const EditPosition frame = frame_at(document, playback.played_pos, selection.current_frame);
    selection.cursor = frame == no_position ? playback.played_pos : frame;
    playback.is_playing = false;
    playback.ring.device.close();
    free_buffers(playback);
    const bool is_prelisten = playback.prelisten_mode != plain_play;
    if (is_prelisten && (how == PlayEnd::ran_out || is_near_end(playback)))
      selection.cursor = std::min(playback.saved_cursor, document.total_size);
    document.current_part = part_at(document, selection.cursor);
  }
  playback.prelisten_mode = plain_play;
  playback.playback_running = false;
  level_meter_clear(playback.level_meter);
  decoder_close(playback.decoder);
  if (was_playing) host().show_transport();
}

}  // namespace

bool start_playback(Playback& playback) {
  if (playback.is_playing) return false;
  const Place before = current_place(playback);
  playback.fast_play_level = 0;
  playback.fast_play = {};
  playback.has_jumped = false;
  playback.stops_at_buffer = false;
  playback.ended_by = PlayEnd::failed;
  if (!set_range(playback) || !open_session(playback)) {
    go_to(playback, before);
    return false;
  }
  level_meter_clear(playback.level_meter);
  playback.is_playing = true;
  start_ring(playback);
  host().show_transport();
  playback.playback_running = playback.is_playing;
  return playback.is_playing;
}

void stop_playback(Playback& playback) { end_playback(playback, PlayEnd::stopped); }

EditPosition play_position(const Playback& playback) {
  return playback.is_playing ? playback.played_pos : playback.selection.cursor;
}

void seek_to(Playback& playback, EditPosition pos) {
  if (pos > highest_position) return;
  if (playback.playback_running) {
    playback.ring.device.reset();  // all buffers come back and are filled anew
    decoder_reset(playback.decoder);
    playback.ring.end_is_queued = false;
  }
  move_cursor(playback.document, playback.selection, pos);
  const EditPosition cursor = playback.selection.cursor;
  playback.lowest_place = std::min(playback.lowest_place, cursor);
  playback.played_pos = cursor;
}

std::uint32_t prelisten_bytes(const StreamInfo& stream) {
  constexpr double bits_per_byte_and_tenths = 80;
  return whole_part(settings.prelisten_time * double{stream.avg_bitrate} /
                    bits_per_byte_and_tenths);
}

std::uint32_t playback_underruns(const Playback& playback) {
  return playback.ring.device.underruns();
}

void apply_volume() {
  const int share = std::min<int>(settings.volume, 100);  // per cent; a file may say more
  wave_volume(static_cast<std::uint16_t>(share * 65535 / 100));
}

void device_keepalive(Playback& playback, bool open) {
  WaveOutput& device = playback.keep_alive;
  device.close();
  if (!open || settings.keep_dev_open == 0) return;
  constexpr WaveFormat format = pcm_16_bit(2, 44100);
  device.open(settings.device_out, format, 0, {.lost = [&device] { device.close(); }});
}

}  // namespace corvelin

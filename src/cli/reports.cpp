// Summary and frame list.
#include "cli/reports.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "cli/messages.h"
#include "document/open_state.h"
#include "edit/file_info_dialog.h"
#include "exchange/id3v1.h"
#include "model/document.h"
#include "model/fade.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "stream/frame_gain.h"

namespace corvelin {

namespace {

std::string id3v1_text() {
  if (!has_id3v1()) return "No";
  return open_state.keep_id3v1 ? "Yes" : "Yes (not keeping)";
}

std::string format_text(const FrameInfo& frame) {
  constexpr std::array<std::string_view, 5> modes = {"-", "stereo", "joint stereo", "dual channel",
                                                     "mono"};
  const std::string_view channels = modes[std::min<std::size_t>(frame.channel_mode, 4)];
  std::string kind;
  if (stream.is_aac != 0) {
    kind = fmt::format("ADTS AAC (MPEG-{})", frame.version);
  } else {
    const std::string_view version = frame.version == 3 ? "2.5" : frame.version == 2 ? "2" : "1";
    kind = fmt::format("MPEG {} Layer {}", version, frame.layer == 3 ? "III" : "II");
  }
  return fmt::format("{}, {} Hz, {}, CRC: {}", kind, frame.sample_rate, channels,
                     frame.has_crc != 0 ? "yes" : "no");
}

// The time from one place in the edited stream to another.
std::string time_text(EditPosition pos, EditPosition from) {
  return format_time(to_time_scale(pos) - to_time_scale(from), double{stream.avg_bitrate});
}

std::string place_text(EditPosition pos) {
  return fmt::format("{} ({})", group_thousands(pos), time_text(pos, 0));
}

std::string part_line(std::size_t index) {
  const Part& part = document.parts[index];
  std::string line =
      fmt::format("  {:3}  {}  {}  {}  position {}  size {}  file {}  offset {}", index,
                  part.part_iscue != 0 ? "cue" : "cut", time_text(part.part_beg, 0),
                  time_text(part_end(static_cast<PartIndex>(index)), part.part_beg),
                  group_thousands(part.part_beg), group_thousands(part.part_size), part.part_file,
                  group_thousands(part.part_filepos));
  if (part.part_gainbeg != 0) line += fmt::format("  gain {:+.1f} dB", part.part_gainbeg * 1.5);
  if (!part.part_artist.empty()) line += "  " + wide_to_bytes(part.part_artist, true);
  if (!part.part_title.empty()) line += "  \"" + wide_to_bytes(part.part_title, true) + "\"";
  return line + "\n";
}

}  // namespace

std::string stream_summary() {
  std::string text;
  const auto line = [&text](std::string_view label, std::string_view value) {
    fmt::format_to(std::back_inserter(text), "{:23}{}\n", label, value);
  };
  line("File:", document.files[0].file_name);
  for (const InfoLine& info : file_info_lines(selection.cursor))
    line(info.label, info.value.empty() ? "-" : info.value);
  line("ID3v1 tag:", id3v1_text());
  line("Stream:", format_text(stream.current_frame));
  line("Total time:", time_text(document.total_size, 0));
  line("Source files:", std::to_string(document.files.size()));
  for (std::size_t i = 1; i < document.files.size(); ++i)
    line(fmt::format("  file {}:", i), document.files[i].file_name);
  line("Cursor:", place_text(selection.cursor));
  if (has_selection()) {
    line("Selection:",
         fmt::format("{} - {}", place_text(selection.sel_beg), place_text(selection.sel_end)));
  }
  line("Parts:", fmt::format("{} (number, kind, start, length)", document.parts.size()));
  for (std::size_t i = 0; i < document.parts.size(); ++i) text += part_line(i);
  return printable(std::move(text));
}

void print_frames() {
  fmt::memory_buffer lines;
  FrameCursor cursor = frame_cursor_at(0);
  while (cursor.pos < document.total_size) {
    const EditPosition start = cursor.pos;
    const PartIndex start_part = cursor.part;
    const std::span<std::uint8_t> block = std::span(frame_block).first(frame_block_limit);
    const std::size_t size = read_frames(block, cursor, document.total_size).size;
    for (std::size_t at = 0; at < size;) {
      FrameInfo frame;
      if (!decode_frame_header(frame, block.subspan(at), frame_format())) break;
      const EditPosition place = start + static_cast<EditPosition>(at);
      const int gain = part_has_gain(start_part) ? gain_at(place, start_part) : 0;
      fmt::format_to(std::back_inserter(lines), "{} {} {} {} {} {}\n", place,
                     document.parts[start_part].part_file, file_pos_of(start_part, place),
                     frame.frame_length, frame.bitrate, gain);
      at += frame.frame_length;
    }
    print({lines.data(), lines.size()});
    lines.clear();
  }
}

}  // namespace corvelin

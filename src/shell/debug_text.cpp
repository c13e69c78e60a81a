// SPDX-License-Identifier: GPL-2.0-or-later
// The text of the debug window.
#include "shell/debug_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "platform/host.h"
#include "platform/system.h"
#include "stream/frame_gain.h"
#include "stream/frame_loudness.h"

namespace corvelin {

namespace {

// The bit of a frame's first `global_gain`, or the one that is looked at in its place.
int first_gain_bit() {
  if (graph_gain_bit != 0) return graph_gain_bit;
  const FrameInfo frame = {.channel_mode = document.kind.channel_mode,
                           .version = document.kind.version,
                           .layer = document.kind.layer,
                           .has_crc = document.kind.has_crc ? 1U : 0U};
  return gain_positions(frame)[0];
}

}  // namespace

std::string debug_text() {
  constexpr std::size_t longest = 1000;  // bytes
  std::string text = fmt::format("Size all: {}\nCursor: {}\nGG bit: {}\n", document.total_size,
                                 selection.cursor, first_gain_bit());
  const std::string end = fmt::format("Info header: {}\n\ndpi factor: {:1.2f}\n",
                                      document.stream.has_info_header, display.scale);
  for (std::size_t i = 0; i < document.parts.size(); ++i) {
    const Part& part = document.parts[i];
    const std::string line = fmt::format("Part: {:02}  beg: {}  fpos: {}  size: {}\n", i,
                                         part.part_beg, part.part_filepos, part.part_size);
    if (text.size() + line.size() + end.size() > longest) break;
    text += line;
  }
  return text + end;
}

void set_gain_bit(std::uint16_t bit) {
  graph_gain_bit = std::min(bit, last_gain_bit);
  host().refresh_view(Refresh::all);
}

}  // namespace corvelin

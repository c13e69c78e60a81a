// SPDX-License-Identifier: GPL-2.0-or-later
// The text of the debug window.
#include "shell/debug_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/editor.h"
#include "frames/frame_gain.h"
#include "frames/frame_loudness.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/host.h"
#include "platform/processes/system.h"

namespace corvelin {

namespace {

// The bit of a frame's first `global_gain`, or the one that is looked at in its place.
int first_gain_bit(const Editor& editor) {
  if (editor.graph_gain_bit != 0) return editor.graph_gain_bit;
  const FrameInfo frame = {.channel_mode = editor.document.kind.channel_mode,
                           .version = editor.document.kind.version,
                           .layer = editor.document.kind.layer,
                           .has_crc = editor.document.kind.has_crc ? 1U : 0U};
  return gain_positions(frame)[0];
}

}  // namespace

std::string debug_text(const Editor& editor) {
  constexpr std::size_t longest = 1000;  // bytes
  std::string text =
      fmt::format("Size all: {}\nCursor: {}\nGG bit: {}\n", editor.document.total_size,
                  editor.selection.cursor, first_gain_bit(editor));
  const std::string end = fmt::format("Info header: {}\n\ndpi factor: {:1.2f}\n",
                                      editor.document.stream.has_info_header, display.scale);
  for (std::size_t i = 0; i < editor.document.parts.size(); ++i) {
    const Part& part = editor.document.parts[i];
    const std::string line = fmt::format("Part: {:02}  beg: {}  fpos: {}  size: {}\n", i,
                                         part.part_beg, part.part_filepos, part.part_size);
    if (text.size() + line.size() + end.size() > longest) break;
    text += line;
  }
  return text + end;
}

void set_gain_bit(Editor& editor, std::uint16_t bit) {
  editor.graph_gain_bit = std::min(bit, last_gain_bit);
  host().refresh_view(Refresh::all);
}

}  // namespace corvelin

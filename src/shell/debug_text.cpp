// The text of the debug window.
#include "shell/debug_text.h"

#include <fmt/format.h>

#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/system.h"
#include "stream/frame_gain.h"

namespace corvelin {

namespace {

// The bit of a frame's first `global_gain`.
int first_gain_bit() {
  const FrameInfo frame = {.channel_mode = stream_kind.channel_mode,
                           .version = stream_kind.version,
                           .layer = stream_kind.layer,
                           .has_crc = stream_kind.has_crc ? 1U : 0U};
  return gain_positions(frame)[0];
}

}  // namespace

std::string debug_text() {
  constexpr std::size_t longest = 1000;  // bytes
  std::string text = fmt::format("Size all: {}\nCursor: {}\nGG bit: {}\n", document.total_size,
                                 selection.cursor, first_gain_bit());
  const std::string end = fmt::format("Info header: {}\n\ndpi factor: {:1.2f}\n",
                                      stream.has_info_header, display.scale);
  for (std::size_t i = 0; i < document.parts.size(); ++i) {
    const Part& part = document.parts[i];
    const std::string line = fmt::format("Part: {:02}  beg: {}  fpos: {}  size: {}\n", i,
                                         part.part_beg, part.part_filepos, part.part_size);
    if (text.size() + line.size() + end.size() > longest) break;
    text += line;
  }
  return text + end;
}

}  // namespace corvelin

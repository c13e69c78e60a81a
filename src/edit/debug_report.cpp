// Numbers of the model.
#include "edit/debug_report.h"

#include <fmt/format.h>

#include <algorithm>

#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/host.h"
#include "platform/system.h"
#include "stream/frame_gain.h"
#include "stream/frame_loudness.h"

namespace corvelin {

std::string debug_report() {
  constexpr std::size_t room = 1000;  // bytes
  const int bit = graph_gain_bit != 0 ? graph_gain_bit : gain_positions(stream.current_frame)[0];
  std::string text = fmt::format("Size all: {}\r\nCursor: {}\r\nGG bit: {}\r\n",
                                 document.total_size, selection.cursor, bit);
  const std::string end = fmt::format("Info header: {}\r\n\r\ndpi factor: {:1.2f}\r\n",
                                      stream.has_info_header, display.scale);
  for (std::size_t i = 0; i < document.parts.size(); ++i) {
    const Part& part = document.parts[i];
    const std::string line = fmt::format("Part: {:02}  beg: {}  fpos: {}  size: {}\r\n", i,
                                         part.part_beg, part.part_filepos, part.part_size);
    if (text.size() + line.size() + end.size() > room) break;
    text += line;
  }
  return text + end;
}

void set_gain_bit(std::uint16_t bit) {
  graph_gain_bit = std::min(bit, last_gain_bit);
  host().refresh_view(Refresh::all);
}

}  // namespace corvelin

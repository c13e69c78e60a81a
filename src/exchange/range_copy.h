// SPDX-License-Identifier: GPL-2.0-or-later
// The audio of a range copied frame by frame as the reader delivers it, in the way in which it is
// written fast, with a VBR/Info header where one is wanted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "exchange/range_writer.h"
#include "exchange/vbr_header.h"
#include "model/document.h"
#include "model/frame_reader.h"

namespace corvelin {

class RangeCopy : public RangeWriter {
 public:
  /// The header frame has the shape of the frame that was found last. One of several sources tells
  /// no quality, and the document forgets it.
  RangeCopy(Document& document, const Selection& selection, OutputFile& file)
      : RangeWriter(document, file),
        quality_(document.stream.xing_quality),
        selection_(selection) {}

  // Whether a header was begun, and whether it tells all of the frames.
  [[nodiscard]] bool has_header() const { return has_header_; }
  [[nodiscard]] bool is_header_complete() const { return is_header_complete_; }
  [[nodiscard]] bool has_problem() const override;

 private:
  void begin_frames() override;
  std::error_code write_header_frame() override;
  std::error_code write_frames() override;
  std::error_code finish_header() override;
  [[nodiscard]] EditPosition position() const override { return cursor_.pos; }
  [[nodiscard]] std::string log_of_frames() const override;

  std::uint8_t& quality_;
  const Selection& selection_;
  FrameCursor cursor_;
  std::size_t block_size_ = 0;    // of the next read
  std::vector<FrameMark> marks_;  // a frame in every megabyte, for the seek table
  bool has_header_ = false;
  bool is_header_complete_ = false;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The whole edited stream decoded and encoded anew on its way into a file, by the decoder that
// plays it and the encoder of recordings. What is heard of cuts and levels is what is encoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "exchange/range_writer.h"
#include "platform/replacing_file.h"

namespace corvelin {

/// Whether the encoder, as it is set, takes the samples of the stream: as many channels, and where
/// it can't change the sample rate, the same one.
bool encoder_matches_stream();

class RangeReencode : public RangeWriter {
 public:
  explicit RangeReencode(ReplacingFile& target) : RangeWriter(target.file), target_(target) {}
  ~RangeReencode() override;

  /// Opens the decoder and the encoder.
  bool open() override;

  [[nodiscard]] std::string source_fault() const override;

 private:
  void begin_frames() override;
  std::error_code write_frames() override;
  std::error_code write_rest() override;
  std::error_code finish_header() override;
  [[nodiscard]] EditPosition position() const override { return position_; }
  [[nodiscard]] std::string log_of_frames() const override;

  void encode(std::size_t bytes);
  void close_decoder();

  const ReplacingFile& target_;
  std::vector<std::uint8_t> samples_;  // of one block; none when the decoder is closed
  EditPosition position_ = 0;
  std::uint32_t resyncs_before_ = 0;
  bool is_stuck_ = false;  // the decoder gave up in front of the end
  PartIndex part_before_ = 0;
  std::string log_;
};

}  // namespace corvelin

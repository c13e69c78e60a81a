// SPDX-License-Identifier: GPL-2.0-or-later
// The whole edited stream decoded and encoded anew on its way into a file, by the decoder that
// plays it and the encoder of recordings. What is heard of cuts and levels is what is encoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>

#include "audio/encoder_bridge.h"
#include "audio/sample_reader.h"
#include "exchange/range_writer.h"
#include "model/document.h"
#include "platform/files/replacing_file.h"

namespace corvelin {

/// Whether the encoder, as it is set, takes the samples of the stream: as many channels, and where
/// it can't change the sample rate, the same one.
bool encoder_matches_stream(const Document& document);

class RangeReencode : public RangeWriter {
 public:
  RangeReencode(const Document& document, ReplacingFile& target)
      : RangeWriter(document, target.file), target_(target) {}
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

  void encode(std::span<const std::int16_t> pcm);

  const ReplacingFile& target_;
  SampleReader reader_{document_};
  EncoderSession encoder_;
  EditPosition position_ = 0;
  bool is_stuck_ = false;  // the decoder gave up in front of the end
  std::string log_;
};

}  // namespace corvelin

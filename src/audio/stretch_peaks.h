// SPDX-License-Identifier: GPL-2.0-or-later
// The peak of a long stretch of MPEG audio, on two cores: two decoders work at once, each on its
// half of what is read, behind some frames in front of it that are thrown away. The peak is that of
// one decoder's run, to the bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/document.h"
#include "model/frame_reader.h"
#include "platform/codecs/mpeg_decoder.h"

namespace corvelin {

/// Whether both cores are used. Not where every core has a file of its own already.
extern bool stretch_peaks_on_two_cores;

class StretchPeaks {
 public:
  /// The document stays where it is, and as it is while a stretch is read.
  explicit StretchPeaks(const Document& document);

  /// Begins a stretch of the edited stream. False without the decoder's library.
  bool open(EditPosition begin, EditPosition end, int channels);

  /// The highest sample magnitude (0 to 32768) of the next 4000 frames, or of what is left.
  std::uint16_t read();

  /// How far it has come, and by how many frames.
  [[nodiscard]] EditPosition pos() const { return reader_.pos; }
  [[nodiscard]] std::uint32_t frames() const { return frames_; }

 private:
  struct Half {
    MpegDecoder decoder;
    std::vector<std::uint8_t> lead_in;  // the last frames in front of these
    std::vector<std::uint8_t> frames;
    std::size_t tail = 0;  // where the last of them begin: the lead-in of what follows
  };

  void append_frames(std::vector<std::uint8_t>& bytes, std::uint32_t count);
  void fill(Half& half, const Half& before);

  const Document& document_;
  FrameCursor reader_;
  EditPosition end_ = 0;
  std::uint32_t frames_ = 0;
  Half halves_[2];
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The edited stream as samples, from any place on: what measures, and what a save that encodes anew
// reads. Each reader has a place and a decoder of its own, so several work beside each other and
// beside what plays. Levels that were set are heard and measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "audio/decoder_bridge.h"
#include "audio/frame_feed.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/selection.h"

namespace corvelin {

class SampleReader {
 public:
  /// The document stays where it is, and may be edited between two reads.
  explicit SampleReader(const Document& document);

  /// Opens the decoder at `place`, for reads of at most `frames_per_step` frames up to `end`. The
  /// decoder of AAC uses up the frame there. False when nothing can be decoded, which the user has
  /// been told.
  bool open(const FrameCursor& place, EditPosition end, std::uint32_t frames_per_step);

  [[nodiscard]] bool is_open() const { return session_.decoder_ready; }
  void close() { decoder_close(session_); }

  /// The next up to `frames` frames as samples, all channels side by side; none when nothing is
  /// left to read, or nothing can be decoded. Good until the next call.
  std::span<const std::int16_t> read(std::uint32_t frames);

  /// The highest magnitude (0 to 32768) of the samples that the next `frames` frames give.
  std::uint16_t read_peak(std::uint32_t frames);

  /// Goes on at another place, of the document as it is now.
  void move_to(EditPosition pos);

  /// Where the reading ends.
  void set_end(EditPosition end) { end_ = end; }

  /// Where it stands, and the frame that it read last.
  [[nodiscard]] const FrameCursor& place() const { return place_; }
  [[nodiscard]] EditPosition pos() const { return place_.pos; }

  [[nodiscard]] const WaveFormat& pcm_format() const { return session_.pcm_format; }

  /// How many frames were read, how many bytes they have, and how often no frame stood where one
  /// had to begin.
  [[nodiscard]] std::uint32_t frames() const { return frames_; }
  [[nodiscard]] std::uint32_t bytes() const { return feed_.bytes(); }
  [[nodiscard]] std::uint32_t resyncs() const { return feed_.resyncs(); }

 private:
  [[nodiscard]] std::span<std::uint8_t> room();

  const Document& document_;
  DecoderSession session_;
  FrameFeed feed_;
  FrameCursor place_;
  EditPosition end_ = 0;
  std::uint32_t frames_ = 0;
  std::vector<std::int16_t> samples_;
};

/// Opens the decoder where the user's cursor stands. It goes on by the frame that the decoder of
/// AAC uses up there.
bool open_at_cursor(SampleReader& reader, Document& document, Selection& selection,
                    EditPosition end, std::uint32_t frames_per_step);

/// The highest magnitude among samples.
std::uint16_t highest_magnitude(std::span<const std::int16_t> values);

}  // namespace corvelin

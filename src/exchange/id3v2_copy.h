// SPDX-License-Identifier: GPL-2.0-or-later
// The ID3v2 tag of the first source on its way into a saved file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <system_error>

#include "model/document.h"

namespace corvelin {

/// Whether a save carries the tag along. A piece of a split has a setting of its own for that: the
/// tag says nothing of the piece.
bool keeps_id3v2(const Document& document, bool split_active);

/// The tag of source file 0 bit for bit but for its duration, which an edit has made untrue: the
/// first frame "TLEN" becomes a "TXXX" of zeros, of the same size. The letters are searched for
/// without regard to the tag's structure, so they are found inside a text too.
class Id3v2Copy {
 public:
  /// Goes to the start of the tag of the document's first source.
  void begin(const Document& document);

  /// Reads what comes next into `bytes`, and returns how much: 0 behind the last of what the file
  /// really has of the tag, and after a failure.
  std::size_t read(std::span<std::uint8_t> bytes);
  [[nodiscard]] std::error_code error() const { return error_; }
  [[nodiscard]] std::uint64_t size() const { return read_; }  // bytes read so far

 private:
  // The duration's frame, as offsets in the file.
  struct DurationFrame {
    std::uint64_t id;
    std::uint64_t content;
    std::uint64_t end;  // of the content, by the low byte of the frame's size, and within the tag
  };

  [[nodiscard]] std::optional<DurationFrame> find_duration() const;
  void neutralise(std::span<std::uint8_t> bytes) const;

  std::shared_ptr<const InputFile> source_;
  std::uint64_t tag_size_ = 0;
  std::uint64_t read_ = 0;
  std::optional<DurationFrame> duration_;
  std::error_code error_;
};

}  // namespace corvelin

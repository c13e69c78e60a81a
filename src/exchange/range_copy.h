// A range of the edited stream on its way into a file. Owns the order of what stands in a file that
// is saved, whole or a piece of a split, and the way in which it is written fast: the ID3v2 tag of
// the first source, a VBR/Info frame, the frames as the reader delivers them, and the ID3v1 tag.
// What the file is called, and what a failure means for the user, is the business of those who
// save.
#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "exchange/vbr_header.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "platform/block_writer.h"
#include "platform/file.h"

namespace corvelin {

/// A range of the edited stream: from a frame's start to that of the first frame left out.
struct EditRange {
  EditPosition begin = 0;
  EditPosition end = 0;
};

EditRange whole_stream();

/// Gives a file the date of the first source.
std::error_code give_date_of_source(OutputFile& file);

/// The tags that go into a file beside the audio.
struct TagsToWrite {
  bool id3v2 = false;
  bool id3v1 = false;
};

class RangeCopy {
 public:
  /// What is written next, in the order of the file. The fields of the VBR/Info header are filled
  /// in when the frames are there.
  enum class Phase : std::uint8_t { id3v2, header_frame, frames, header, id3v1, over };

  /// Writes into `file`, which is open and empty when a copy begins. One `RangeCopy` can write one
  /// file after the other.
  explicit RangeCopy(OutputFile& file) : file_(file), writer_(file) {}

  /// Takes up a range, and sets space aside for it.
  void begin(EditRange range, TagsToWrite tags);

  /// Writes the next piece: a tag, a header, or up to two megabytes of frames. After a failure the
  /// phase tells what could not be written.
  std::error_code step();
  [[nodiscard]] Phase phase() const { return phase_; }

  /// Why what was read is not all that it should be, in lines that name the source; empty when all
  /// was there. Known when the frames are written.
  ///
  /// The reader takes a failing disk or a file that was cut off for the end of the audio. A save
  /// must not: what it left out would be missed only when the source is gone.
  [[nodiscard]] std::string source_fault() const;

  [[nodiscard]] std::uint32_t frames() const { return frames_; }  // without a VBR/Info frame
  [[nodiscard]] std::uint32_t resyncs() const { return resyncs_; }
  [[nodiscard]] int percent_done() const;  // 0 to 100

  // What was written beside the frames.
  [[nodiscard]] std::uint64_t id3v2_size() const { return id3v2_size_; }
  [[nodiscard]] bool has_header() const { return has_header_; }
  [[nodiscard]] bool is_header_complete() const { return is_header_complete_; }
  [[nodiscard]] bool has_id3v1() const { return tags_.id3v1 && phase_ == Phase::over; }

 private:
  std::error_code write_id3v2();
  std::error_code write_header_frame();
  std::error_code copy_frames();
  std::error_code finish_header();
  [[nodiscard]] bool has_more() const { return cursor_.pos < range_.end; }

  OutputFile& file_;
  BlockWriter writer_;
  EditRange range_;
  TagsToWrite tags_;
  Phase phase_ = Phase::over;
  FrameCursor cursor_;
  std::uint32_t frames_ = 0;
  std::uint32_t resyncs_ = 0;
  std::size_t block_size_ = 0;    // of the next read
  std::vector<FrameMark> marks_;  // a frame in every megabyte, for the seek table
  std::uint64_t id3v2_size_ = 0;
  bool has_header_ = false;
  bool is_header_complete_ = false;
};

}  // namespace corvelin

// A range of the edited stream on its way into a file: the ID3v2 tag of the first source, a
// VBR/Info frame, the frames as the reader delivers them, and the ID3v1 tag. Owns the file, the
// order of what stands in it and the way in which it is written fast. What the file is called, and
// what a failure means for the user, is the business of those who save.
#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "exchange/id3v2_copy.h"
#include "exchange/vbr_header.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "platform/block_writer.h"
#include "platform/file.h"

namespace corvelin {

/// The steps are called in the order in which they are declared, on a target that has just been
/// created. One `RangeCopy` can write one file after the other.
class RangeCopy {
 public:
  OutputFile target;

  /// Takes up the frames from `begin` to `end`, and sets space aside for them.
  void begin(EditPosition begin, EditPosition end);

  /// The tag in front; only where `keeps_id3v2` says so.
  Id3v2Copy write_id3v2() { return copy_id3v2(target); }

  /// The place of the VBR/Info header, where the settings and the stream ask for one.
  std::error_code write_header_frame();

  /// Copies some more of the frames, up to two megabytes.
  std::error_code copy_frames();
  [[nodiscard]] bool has_more() const { return cursor_.pos < end_; }

  /// Writes what is still in memory.
  std::error_code end_frames() { return writer_.flush(); }

  /// What became of the sources of the range while it was read, as a text that names the file;
  /// empty when all of it was there.
  ///
  /// The reader takes a failing disk or a file that was cut off for the end of the audio. A save
  /// must not: what it left out would be missed only when the source is gone.
  [[nodiscard]] std::string source_fault() const;

  /// Fills in the VBR/Info header. Nothing to do without one.
  [[nodiscard]] bool has_header() const { return has_header_; }
  VbrHeaderResult finish_header();

  /// The tag behind the audio; only where `keeps_id3v1` says so.
  std::error_code write_id3v1();

  /// Closes the target as far as it is written, and forgets the frames.
  void give_up();

  [[nodiscard]] std::uint32_t frames() const { return frames_; }  // without a VBR/Info frame
  [[nodiscard]] std::uint32_t resyncs() const { return resyncs_; }
  [[nodiscard]] int percent_done() const;  // 0 to 100

 private:
  BlockWriter writer_{target};
  std::size_t block_size_ = 0;    // of the next read
  std::vector<FrameMark> marks_;  // a frame in every megabyte, for the seek table
  EditPosition begin_ = 0;
  EditPosition end_ = 0;
  FrameCursor cursor_;
  std::uint32_t frames_ = 0;
  std::uint32_t resyncs_ = 0;
  bool has_header_ = false;
  std::uint64_t header_offset_ = 0;  // of the VBR/Info frame
};

}  // namespace corvelin

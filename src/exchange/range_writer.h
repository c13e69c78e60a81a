// SPDX-License-Identifier: GPL-2.0-or-later
// A range of the edited stream on its way into a file. Owns the order of what stands in a file that
// is saved, whole or a piece of a split: the ID3v2 tag of the first source, a header frame, the
// audio, and the ID3v1 tag. How the audio gets there is told by those who derive from it. What the
// file is called, and what a failure means for the user, is the business of those who save.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "exchange/id3v2_copy.h"
#include "exchange/left_out.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "platform/files/block_writer.h"
#include "platform/files/file.h"

namespace corvelin {

/// A range of the edited stream: from a frame's start to that of the first frame left out.
struct EditRange {
  EditPosition begin = 0;
  EditPosition end = 0;
};

EditRange whole_stream(const Document& document);

/// Gives a file the date of the first source.
std::error_code give_date_of_source(const Document& document, OutputFile& file);

/// The tags that go into a file beside the audio.
struct TagsToWrite {
  bool id3v2 = false;  // that of the first source
  std::optional<Id3v1Record> id3v1;
};

class RangeWriter {
 public:
  /// What is written next, in the order of the file. The fields of the header are filled in when
  /// the frames are there.
  enum class Phase : std::uint8_t { id3v2, header_frame, frames, header, id3v1, over };

  /// Writes ranges of the document, which stays where it is and as it is meanwhile, into `file`,
  /// which is open and empty when a range begins. One writer can write one file after the other.
  RangeWriter(const Document& document, OutputFile& file)
      : document_(document), file_(file), writer_(file) {}
  virtual ~RangeWriter() = default;
  RangeWriter(const RangeWriter&) = delete;
  RangeWriter& operator=(const RangeWriter&) = delete;

  /// Makes ready what the writing needs besides the file. False after a failure, which the user has
  /// been told.
  virtual bool open() { return true; }

  /// Takes up a range, and sets space aside for it.
  void begin(EditRange range, TagsToWrite tags);

  /// Makes the next piece to be written: of a tag, a header, or some of the frames. Waits a moment
  /// where the disk falls behind, so that the file may need more steps than there are pieces. After
  /// a failure the phase tells what could not be written.
  std::error_code step();

  /// Whether nothing is being written. The file is touched by nobody else before that.
  [[nodiscard]] bool is_idle() { return writer_.is_idle({}); }
  void wait() { writer_.wait(); }

  [[nodiscard]] Phase phase() const { return phase_; }

  /// Why what was read is not all that it should be, in lines that name the source; empty when all
  /// was there. Known when the frames are written.
  ///
  /// The reader takes a failing disk or a file that was cut off for the end of the audio. A save
  /// must not: what it left out would be missed only when the source is gone.
  [[nodiscard]] virtual std::string source_fault() const;

  /// What the frames don't hold of the range, in a sentence that tells how many seconds are missing
  /// and where. Empty for no more than the usual loss. Known when the frames are written.
  [[nodiscard]] const std::string& missing() const { return missing_; }

  [[nodiscard]] std::uint32_t frames() const { return frames_; }  // read, without a header frame
  [[nodiscard]] std::uint32_t resyncs() const { return resyncs_; }
  [[nodiscard]] int percent_done() const;  // 0 to 100

  /// What was written beside the frames, in lines ended by CR LF.
  [[nodiscard]] std::string log() const;

  /// Whether the user should know that not all went as it should.
  [[nodiscard]] virtual bool has_problem() const { return resyncs_ != 0; }

 protected:
  virtual void begin_frames() = 0;
  virtual std::error_code write_header_frame() { return {}; }
  virtual std::error_code write_frames() = 0;
  virtual std::error_code write_rest() { return {}; }  // behind the last frames
  virtual std::error_code finish_header() { return {}; }
  [[nodiscard]] virtual EditPosition position() const = 0;  // up to where was read
  [[nodiscard]] virtual std::string log_of_frames() const = 0;

  [[nodiscard]] bool has_more() const { return position() < range_.end; }

  const Document& document_;
  OutputFile& file_;
  BlockWriter writer_;
  EditRange range_;
  std::uint32_t frames_ = 0;
  std::uint32_t resyncs_ = 0;
  Id3v2Copy id3v2_;
  LeftOut left_out_;

 private:
  std::error_code write_piece();
  std::error_code write_id3v2();

  // How far the phase is. What it made is written before the next one begins.
  enum class State : std::uint8_t { goes_on, is_made, is_handed_over };

  TagsToWrite tags_;
  std::string missing_;
  Phase phase_ = Phase::over;
  State state_ = State::goes_on;
};

}  // namespace corvelin

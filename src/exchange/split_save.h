// SPDX-License-Identifier: GPL-2.0-or-later
// Split save: the edited stream in several files, one for each region that begins with a cue, named
// by a pattern. Frames are copied as in any save, and each piece may get a version of the ID3v1
// record. No file that exists is ever replaced.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/id3v1.h"
#include "exchange/range_copy.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "platform/long_run.h"
#include "platform/processes/patient_thread.h"

namespace corvelin {

/// Bit of the setting `split_overlap` that switches the overlap on; the lower ones are seconds.
constexpr unsigned split_overlap_on = 128;

/// What a step of the run came to.
enum class SplitResult : std::uint8_t {
  more = 0,
  finished = 1,
  create_error = 2,  // the name can't be created, or exists
  id3v2_error = 3,
  write_error = 4,  // of the audio, or of what makes the file complete
  xing_error = 5,   // the VBR/Info header could not be completed
  id3v1_error = 6,
  not_whole = 7,  // all pieces are written, but of some more is missing than usual
};

/// How many files a split would make: one more than there are cues behind the first part.
std::uint16_t count_split_regions(const Document& document);

class SplitRun : public LongRun {
 public:
  /// Splits the document, which stays where it is and as it is meanwhile. `folder`, with its "/",
  /// is where the files go; `first_number` is the first one's number.
  SplitRun(Document& document, Selection& selection, OpenState& open_state, std::string folder,
           std::uint16_t first_number, bool batch_active = false);
  ~SplitRun() override { thread_.wait(closing_); }
  SplitRun(const SplitRun&) = delete;
  SplitRun& operator=(const SplitRun&) = delete;

  /// Writes up to two megabytes of a region.
  bool step() override;

  /// Gives up between two regions: a file that is not complete goes, the ones before it stay.
  void cancel() override;
  [[nodiscard]] bool try_cancel() override;

  [[nodiscard]] int percent_done() const override;
  [[nodiscard]] std::string progress_text() const override;  // "3 / 12"
  [[nodiscard]] std::string report() const override { return report_; }

  [[nodiscard]] SplitResult result() const { return result_; }
  /// The words for a failure: "Create error!". Empty without one.
  [[nodiscard]] std::string_view status() const;
  /// The names of the files that are complete, in lines ended by CR LF.
  [[nodiscard]] std::string log() const override { return log_; }

 private:
  SplitResult begin_piece();
  EditPosition find_region_end();
  SplitResult write_piece();
  SplitResult close_piece();
  SplitResult look_at_closing();
  SplitResult pass_over_piece();
  SplitResult end_piece();
  std::error_code drop_piece();
  SplitResult failed(SplitResult failure, std::error_code error);
  void finish();
  [[nodiscard]] int regions_written() const { return split_done_ - (is_in_piece_ ? 1 : 0); }

  Document& document_;
  Selection& selection_;
  OpenState& open_state_;
  std::string path_;  // the folder, then the piece being written
  std::uint16_t first_number_;
  bool batch_active_;                // nobody is told of re-syncs
  PartIndex split_region_part_ = 0;  // the part at which the region begins
  PartIndex split_scan_ = 1;         // the next part to be tested for a cue
  std::uint16_t split_done_ = 0;     // regions written, and the one that is being written
  std::uint16_t split_total_;
  std::uint32_t split_resyncs_ = 0;
  std::optional<Id3v1Record> id3v1_ = kept_id3v1(document_, open_state_);  // of the piece
  OutputFile file_;                                                        // the piece
  RangeCopy copy_{document_, selection_, file_};
  bool is_in_piece_ = false;

  // The closing of a piece, on a thread: a disk may need long until it has all.
  PatientThread thread_;
  PatientThread::Ticket closing_ = 0;
  bool is_closing_ = false;
  std::error_code closing_error_;  // the thread's while it is at work

  SplitResult result_ = SplitResult::more;
  bool is_over_ = false;
  std::string reason_;       // of a failure
  std::string losses_;       // pieces that are not whole, in lines ended by CR LF
  std::string passed_over_;  // names of pieces without a frame, in lines ended by CR LF
  std::string report_;
  std::string log_;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// One save of a range of the edited stream into a file. The run knows no window and changes nothing
// but files: it is given a name, does its work in slices, and tells a log, a count of frames and a
// result.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "exchange/range_writer.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "platform/files/replacing_file.h"
#include "platform/long_run.h"
#include "platform/processes/patient_thread.h"

namespace corvelin {

/// What the name of the file beside a source has behind it until it takes its place: song.mp3 is
/// written as song.mp3.~~~.mp3, which a person can make out should the replacement fail.
constexpr std::string_view temporary_mark = ".~~~";

/// How the audio gets into the file.
enum class SaveMode { copy, reencode };

class SaveRun : public LongRun {
 public:
  /// Saves a range of the document, which stays where it is and as it is meanwhile, with its tags
  /// as `open_state` says. `name` is the file to end up with. With `replaced` it is that source
  /// file of the document, whose place the finished file takes.
  SaveRun(Document& document, const Selection& selection, const OpenState& open_state,
          const std::string& name, EditRange range,
          std::optional<std::uint16_t> replaced = std::nullopt, SaveMode mode = SaveMode::copy);
  ~SaveRun() override;
  SaveRun(const SaveRun&) = delete;
  SaveRun& operator=(const SaveRun&) = delete;

  /// Creates the target. False when that fails, when a source could not be read in full since it
  /// was opened, when the source to be replaced isn't the file any more that was opened, and when
  /// the stream can't be encoded anew; the user has been told.
  bool begin();

  bool step() override;

  /// Gives up, and tells what is left: a new file stays as far as it is written, and so does the
  /// one beside a source, unless the whole program is being interrupted. A file that was to be
  /// replaced stands as it was.
  void cancel() override;
  [[nodiscard]] bool try_cancel() override;

  [[nodiscard]] int percent_done() const override { return audio_->percent_done(); }
  [[nodiscard]] std::string progress_text() const override;
  [[nodiscard]] std::string report() const override;

  /// Frames written, without a VBR/Info frame. 0 when the run was cancelled.
  [[nodiscard]] std::uint32_t result() const { return is_cancelled_ ? 0 : audio_->frames(); }
  [[nodiscard]] bool has_failed() const { return has_failed_; }

  /// Whether all was written, and whether it then took the place of the source.
  [[nodiscard]] bool is_written() const { return is_over_ && !is_cancelled_; }
  [[nodiscard]] bool has_replaced() const { return target_.has_its_name(); }

  /// What was written beside the frames, in lines ended by CR LF.
  [[nodiscard]] std::string log() const override;

 private:
  std::error_code lock_source();
  void step_audio();
  void check_sources();
  void complete();
  void look_at_completion();
  void finish();
  void abandon();
  bool check(std::error_code error);
  void give_up(const std::string& reason);
  [[nodiscard]] bool has_problem() const;
  [[nodiscard]] std::string not_whole() const;

  const Document& document_;
  const OpenState& open_state_;
  std::string name_;
  EditRange range_;
  std::optional<std::uint16_t> replaced_;
  std::shared_ptr<InputFile> source_ = std::make_shared<InputFile>();  // replaced, and locked
  ReplacingFile target_;
  std::unique_ptr<RangeWriter> audio_;
  bool is_over_ = false;
  bool is_cancelled_ = false;
  bool has_failed_ = false;
  std::string report_;  // of a run that was cancelled

  // The end of the run, on a thread: a disk may need long until it has all.
  PatientThread thread_;
  PatientThread::Ticket completion_ = 0;
  bool is_completing_ = false;
  std::atomic<bool> is_unwanted_ = false;  // so the file isn't put in its place any more
  std::error_code completion_error_;       // these two are the thread's while it is at work
  std::error_code commit_error_;
};

}  // namespace corvelin

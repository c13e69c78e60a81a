// One save of the edited stream: an ID3v2 tag, a VBR/Info frame, the surviving frames as the reader
// delivers them, and an ID3v1 tag. Frames are copied, never encoded anew. The run knows no window:
// it is given a name, does its work in slices, and tells a log, a count of frames and a result.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <system_error>

#include "exchange/range_copy.h"
#include "platform/long_run.h"

namespace corvelin {

class SaveRun : public LongRun {
 public:
  /// `name` is the file to end up with. With `replaces_source` it is a source of the document,
  /// which is closed before the finished file takes its place.
  SaveRun(const std::string& name, bool replaces_source);

  /// Creates the target and writes what stands in front of the frames. False when that fails; the
  /// user has been told.
  bool begin();

  bool step() override;

  /// Gives up. A new file stays as far as it is written, and so does the one beside a source; an
  /// existing file that was to be overwritten stands as it was.
  void cancel() override;

  [[nodiscard]] int percent_done() const override;
  [[nodiscard]] std::string progress_text() const override;
  [[nodiscard]] std::string report() const override;

  /// Frames written, without a VBR/Info frame. 0 when the run was cancelled.
  [[nodiscard]] std::uint32_t result() const { return copy_.frames(); }
  [[nodiscard]] bool has_failed() const { return has_failed_; }
  [[nodiscard]] std::string log() const override { return log_; }

 private:
  enum class Phase { frames, header, finish, over };

  bool write_front();
  bool frames_step();
  bool sources_are_whole();
  bool has_frames();
  bool header_step();
  bool finish();
  bool complete_target();
  void replace_source();
  bool check(std::error_code error);
  bool give_up(const std::string& reason);

  std::string name_;     // what the file is to be called
  std::string written_;  // what it is called until it is finished
  bool replaces_source_;
  RangeCopy copy_;
  Phase phase_ = Phase::frames;
  std::timespec write_time_ = {};  // of source file 0
  bool problem_ = false;           // the user has to see the log
  bool has_failed_ = false;
  std::string log_;  // lines ended by CR LF
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Work that takes a while and is done in slices, so that a window stays alive meanwhile. The run
// does the work; the host steps it, from a timer or in a plain loop, and shows how far it is.
#pragma once

#include <chrono>
#include <string>

namespace corvelin {

/// How long a slice waits at most for a disk or another program, so that it neither holds up a
/// window nor keeps a processor busy.
constexpr std::chrono::milliseconds slice_patience(5);

class LongRun {
 public:
  virtual ~LongRun() = default;

  /// Does the next slice. False when there is none left.
  virtual bool step() = 0;

  /// Ends the run before its time. What it wrote so far stays as the run itself decides. Does
  /// nothing behind the end.
  virtual void cancel() = 0;

  /// Cancels unless that would have to wait for the system, which may be busy with something for
  /// the run. False: the run goes no further, and wants to be asked again.
  [[nodiscard]] virtual bool try_cancel() {
    cancel();
    return true;
  }

  [[nodiscard]] virtual int percent_done() const = 0;           // 0 to 100
  [[nodiscard]] virtual std::string progress_text() const = 0;  // one line

  /// What was done so far, in lines ended by CR LF.
  [[nodiscard]] virtual std::string log() const { return {}; }

  /// What the user has to see after the end, in lines ended by CR LF; empty when all went well.
  [[nodiscard]] virtual std::string report() const = 0;
};

}  // namespace corvelin

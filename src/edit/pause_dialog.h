// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "Pause detection": it decodes the stream frame by frame and sets a cue at the end of
// each quiet stretch, or takes the stretch out. A record that a host shows and, while it scans,
// steps. The sliders and the check box are the settings `silence_level`, `silence_duration`,
// `silence_offset` and `silence_cut`, and the field is `silence_skip`.
#pragma once

#include <cstdint>
#include <string>

#include "audio/sample_reader.h"
#include "edit/editor.h"
#include "model/document.h"
#include "platform/host.h"
#include "platform/long_run.h"

namespace corvelin {

struct PauseDialog : Dialog, LongRun {
  Editor& editor;

  explicit PauseDialog(Editor& opened_for) : editor(opened_for) {}

  bool pause_running = false;  // while it is, the button "&Start" reads "St&op"
  int pause_found = 0;
  bool has_broken_off = false;  // at a pause that could not be marked, which the user was told

  void begin() override {}

  /// "&Start": takes an undo step, selects the whole stream if nothing is, and begins the scan.
  /// With a beep, false where nothing can be decoded.
  bool accept() override;

  /// Up to 1500 frames.
  bool step() override;

  /// "St&op" and "&Close": the cues set so far stay.
  void cancel() override;

  /// Asks, and sets all controls to their defaults.
  static void restore_defaults();

  [[nodiscard]] int percent_done() const override { return percent_; }
  [[nodiscard]] std::string progress_text() const override;  // "Found: 3"
  [[nodiscard]] std::string report() const override;

  // The texts beside the sliders.
  [[nodiscard]] static std::string level_text();    // "-31.2 dB"
  [[nodiscard]] std::string duration_text() const;  // "> 1.3 sec"
  [[nodiscard]] static std::string offset_text();   // "-10 frames"

 private:
  bool end_pause();
  [[nodiscard]] EditPosition cue_place() const;
  void skip_on();

  SampleReader reader_{editor.document};
  EditPosition pause_scan_start_ = 0;
  EditPosition pause_scan_end_ = 0;  // moves down when a pause is cut out
  EditPosition pause_start_ = 0;     // behind the first quiet frame; `no_position` for none
  std::uint32_t pause_frames_ = 0;   // of the quiet stretch so far
  std::int16_t pause_gain_ = 0;      // of every part that is made
  int percent_ = 0;
};

/// The dialog for the selection, or for the whole stream without one.
bool pause_dialog(Editor& editor);

}  // namespace corvelin

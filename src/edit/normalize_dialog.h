// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "Normalize level": it looks for the highest sample of the selection and offers the
// change that brings it to full scale. A record that a host shows and steps.
#pragma once

#include <cstdint>
#include <string>

#include "audio/stretch_peaks.h"
#include "edit/editor.h"
#include "platform/host.h"
#include "platform/long_run.h"

namespace corvelin {

struct NormalizeDialog : Dialog, LongRun {
  Editor& editor;

  explicit NormalizeDialog(Editor& opened_for) : editor(opened_for) {}

  static constexpr int lowest_change = -16;  // steps of 1.5 dB
  static constexpr int highest_change = 32;

  enum class State {
    scanning,
    stopped,     // by the user, or before it began
    full_scale,  // the peak was found to fill the range, which ended the scan
    finished,
  };

  static constexpr std::uint8_t batch_level_unchanged = 16;
  std::uint8_t batch_level = batch_level_unchanged;  // what a batch adds to the change, plus 16

  State state = State::stopped;
  int norm_peak = 0;    // the highest sample magnitude so far, 0 to 32768
  int norm_change = 0;  // steps: as computed by the last step, or set by hand since

  /// Starts the scan of the selection. It doesn't begin without a decoder, which has been told.
  void begin() override;

  /// A few thousand frames.
  bool step() override;

  /// "St&op" and "&Cancel": what was found so far stays.
  void cancel() override;

  void set_change(int steps);  // the slider

  [[nodiscard]] int percent_done() const override { return percent_; }
  [[nodiscard]] std::string progress_text() const override;  // peak and change
  [[nodiscard]] std::string report() const override;
  [[nodiscard]] std::string peak_text() const;    // "-3.52 dB"
  [[nodiscard]] std::string change_text() const;  // "+3.0 dB"

  /// Applies the change. False, and nothing done, when nothing but digital silence was found and no
  /// change set by hand, and with too many parts; that is told.
  bool accept() override;

  /// What a run without a person does behind the scan: OK, or Cancel where the peak fills the
  /// range.
  bool close_unattended();

 private:
  [[nodiscard]] int batch_offset() const { return batch_level - batch_level_unchanged; }
  void take_peak();

  StretchPeaks peaks_{editor.document};
  EditPosition scan_end_ = 0;
  int percent_ = 0;
};

/// The dialog for the selection, or for the whole stream without one.
bool normalize_dialog(Editor& editor);

}  // namespace corvelin

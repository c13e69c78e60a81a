// SPDX-License-Identifier: GPL-2.0-or-later
// The factor of a recording, and the recording that begins with it.
#include "edit/speed_dialog.h"

#include <fmt/format.h>

#include <algorithm>

#include "audio/recorder.h"
#include "audio/speed_conversion.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

// With a point or, as many a keyboard has it, a comma.
double speed_in(std::string text) {
  std::ranges::replace(text, ',', '.');
  return leading_decimal(text);
}

}  // namespace

void SpeedDialog::fill(const Preset& preset) {
  original = preset.original;
  recording = preset.recording;
}

float SpeedDialog::factor() const { return rec_speed_of(speed_in(original), speed_in(recording)); }

std::string SpeedDialog::factor_text() const { return fmt::format("=> {:.2f}x", factor()); }

bool SpeedDialog::accept() {
  editor.recorder.rec_speed = factor();
  return true;
}

Outcome record_at_other_speed(Editor& editor) {
  SpeedDialog dialog(editor);
  if (!show_dialog(dialog)) return Result::refused;
  if (initialize_recording(editor)) return Result::done;
  editor.recorder.rec_speed = 0;  // it held for this recording alone
  return Result::refused;
}

}  // namespace corvelin

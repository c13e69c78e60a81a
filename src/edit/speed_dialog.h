// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "High speed" recording: a record that is played at another speed than its own is
// stretched back to its true length while it is recorded.
#pragma once

#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct SpeedDialog : Dialog {
  Editor& editor;

  explicit SpeedDialog(Editor& opened_for) : editor(opened_for) {}

  /// A button that fills both fields.
  struct Preset {
    std::string_view text;
    std::string_view original;
    std::string_view recording;
  };
  static constexpr Preset presets[] = {
      {"33 > 45", "33.3333", "45.0"}, {"78 > 45", "78.0", "45.0"}, {"2x", "1.0", "2.0"}};

  // The speeds as they are typed; both in the same unit, whichever that is.
  std::string original;
  std::string recording;

  void begin() override { fill(presets[0]); }
  void fill(const Preset& preset);

  /// 0.5 to 2; 0, and nothing is stretched, where the fields give none of these.
  [[nodiscard]] float factor() const;
  [[nodiscard]] std::string factor_text() const;  // "=> 1.35x"

  /// The next recording takes the factor.
  bool accept() override;
};

/// Shows the dialog, and makes the recorder ready with the factor that it was closed with.
Outcome record_at_other_speed(Editor& editor);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "Change level": two sliders for the levels at the begin and the end of the selection.
// While it is shown only the selection's record holds them; OK makes the borders.
#pragma once

#include <cstdint>
#include <string>

#include "edit/outcome.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct LevelDialog : Dialog {
  Editor& editor;

  explicit LevelDialog(Editor& opened_for) : editor(opened_for) {}

  bool locks_sliders = false;  // each one takes the other along

  /// Takes the levels that the selection has at parts that begin or end with it.
  void begin() override;

  /// The sliders: steps of 1.5 dB, kept in the range that a person may set.
  void set_from(int gain) const;
  void set_to(int gain) const;

  // The buttons that set both.
  void fade_in();
  void fade_out();
  void flat();
  void silence();

  /// The field "Bottom level", in dB; what it is then.
  static std::uint16_t set_bottom_level(std::uint32_t decibels);

  /// Asks, and sets both levels to 0 and the bottom level to its default.
  void restore_defaults();

  /// The texts beside the sliders: "from  -3.0 dB".
  [[nodiscard]] std::string from_text() const;
  [[nodiscard]] std::string to_text() const;

  /// Sets the levels, which slide from and to those around over one frame on each side where the
  /// selection is long enough for that. False, and nothing done, for a selection without length and
  /// with too many parts.
  bool accept() override;

 private:
  Outcome write();
};

/// The dialog, for a selection inside one part.
bool level_dialog(Editor& editor);

}  // namespace corvelin

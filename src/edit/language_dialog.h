// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog of the first start: which language, and whether the settings stay beside the program.
// It speaks the chosen language itself; the rest of the program follows with the new start that OK
// brings about.
#pragma once

#include <cstddef>
#include <vector>

#include "edit/outcome.h"
#include "platform/host.h"
#include "text/language_list.h"

namespace corvelin {

struct Editor;

struct LanguageDialog : Dialog {
  Editor& editor;

  explicit LanguageDialog(Editor& opened_for) : editor(opened_for) {}

  std::vector<Language> languages;  // English first
  std::size_t chosen = 0;
  bool is_portable = false;

  /// Proposes the language of the user's system, if there is a file for it.
  void begin() override;

  /// The texts are those of this language from now on.
  void choose(std::size_t language);

  /// Acts at once. Where the program's folder can't be written to, the box stays clear.
  void set_portable(bool on);

  /// False when there are unsaved changes that the user wants to go on with.
  bool accept() override;

  /// The texts are again those of the program.
  void cancel() override;
};

/// The dialog, behind which the program starts anew. Nothing where there is no language but
/// English.
Outcome language_dialog(Editor& editor);

}  // namespace corvelin

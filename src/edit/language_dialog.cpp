// SPDX-License-Identifier: GPL-2.0-or-later
// The choice of a language before there is one.
#include "edit/language_dialog.h"

#include <algorithm>

#include "edit/save_project.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "settings/settings_storage.h"
#include "text/language_file.h"

namespace corvelin {

void LanguageDialog::begin() {
  languages = language_list(language_home());
  is_portable = local_marker(MarkerOperation::test);
  const auto own = std::ranges::find(languages, language_by_user_default(), &Language::name);
  choose(own == languages.end() ? 0 : static_cast<std::size_t>(own - languages.begin()));
}

void LanguageDialog::choose(std::size_t language) {
  chosen = language;
  load_ui_text(languages[chosen].name);
}

void LanguageDialog::set_portable(bool on) { is_portable = force_portable(on); }

bool LanguageDialog::accept() {
  if (!confirm_discard_changes(editor)) return false;
  settings.language = bytes_to_wide(language_of_entry(languages[chosen].entry()), true);
  return true;
}

void LanguageDialog::cancel() { load_ui_text(wide_to_bytes(settings.language, true)); }

Outcome language_dialog(Editor& editor) {
  if (language_list(language_home()).size() < 2) return Result::refused;
  LanguageDialog dialog(editor);
  if (!show_dialog(dialog)) return Result::refused;
  host().restart();
  return Result::done;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Help and windows.
#include "edit/window_commands.h"

#include <fmt/format.h>

#include <string_view>

#include "platform/files/file.h"
#include "platform/processes/process.h"
#include "platform/processes/program.h"
#include "platform/processes/system.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

MessageBox error_box(std::string text) {
  return {
      .caption = std::string(ui_text(row::error)), .text = std::move(text), .icon = BoxIcon::error};
}

Outcome open_page(std::string_view name) {
  const std::string path = program_file(name);
  const std::error_code missing = std::make_error_code(std::errc::no_such_file_or_directory);
  if (!file_facts(path).found)
    return {Result::refused, error_box(fmt::format("{}\n{}", path, missing.message()))};
  return open_for_user(path) ? Result::done : Result::refused;
}

// Who made the translation that is shown, if there is one.
std::string translation_credits() {
  if (!has_ui_text(dlg, translation_language)) return {};
  std::string text = fmt::format("\n\n{} translation*", ui_text(dlg, translation_language));
  if (has_ui_text(dlg, translation_composer))
    text += fmt::format(" by {}", ui_text(dlg, translation_composer));
  if (has_ui_text(dlg, translation_version))
    text += fmt::format(" for version {}", ui_text(dlg, translation_version));
  return text + "\n\n* The English texts are the binding ones.";
}

std::string text_of_file(std::string_view name) {
  constexpr std::size_t largest_text = std::size_t{256} * 1024;  // bytes
  std::string text;
  read_whole_file(program_file(name), largest_text, text);
  return text;
}

}  // namespace

void focus_now_field() { host().enter_field(StatusField::position); }
void focus_selection_field() { host().enter_field(StatusField::range); }
void debug_window() { host().show_debug_window(); }

Outcome new_window() {
  const std::string path = program_path();
  if (const std::error_code error = start_program({path}))
    return {Result::refused, error_box(fmt::format("{}\n{}", path, error.message()))};
  return Result::done;
}

Outcome manual() { return open_page("Manual.htm"); }
Outcome faq() { return open_page("FAQ.htm"); }

void AboutDialog::begin() {
  text =
      fmt::format("Version {}\n{}{}\n\n{}\n\n{}", program_version, program_notice,
                  translation_credits(), text_of_file("Version.txt"), text_of_file("License.txt"));
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Names, locks and the question.
#include "unattended/batch_leftovers.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "exchange/save_run.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool wants_removal(const std::vector<std::string>& names) {
  constexpr std::size_t most_shown = 10;
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), most_shown); ++i) list += names[i] + "\n";
  if (names.size() > most_shown) list += "...\n";
  const MessageBox box = {.caption = std::string(ui_text(row::warning)),
                          .text = format_row(ui_text(row::remove_leftovers), names.size(), list),
                          .icon = BoxIcon::question,
                          .buttons = BoxButtons::yes_no,
                          .default_answer = BoxAnswer::no};
  return host().show_message_box(box) == BoxAnswer::yes;
}

}  // namespace

bool is_leftover(std::string_view name) {
  const std::size_t mark = name.rfind(temporary_mark);
  return mark != std::string_view::npos && mark != 0 &&
         name.substr(mark + temporary_mark.size()).starts_with('.');
}

// A save holds a lock on the source until what it wrote has taken its place.
bool is_given_up(const std::string& leftover) {
  InputFile source;
  const std::string name = leftover.substr(0, leftover.rfind(temporary_mark));
  return source.open(name) || !source.lock();
}

std::string told_of_leftover(const std::string& name) {
  return format_row(ui_text(row::leftover), name);
}

void offer_removal_of_leftovers(BatchJob& job) {
  std::vector<std::string> given_up;
  for (const std::string& name : job.leftovers)
    if (is_given_up(job.source_folder + name)) given_up.push_back(name);
  if (given_up.empty() || !wants_removal(given_up)) return;
  for (const std::string& name : given_up) {
    const std::error_code error = remove_file(job.source_folder + name);
    if (error) show_error(error.message() + "\n" + job.source_folder + name);
    if (!error) std::erase(job.leftovers, name);
  }
}

}  // namespace corvelin

// Opening and closing by command.
#include "edit/document_commands.h"

#include <string>
#include <system_error>
#include <vector>

#include "audio/playback.h"
#include "document/append.h"
#include "document/close_all.h"
#include "document/open_state.h"
#include "edit/commands.h"
#include "edit/open_dialog.h"
#include "edit/save_project.h"
#include "exchange/cue_sheet.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/file.h"
#include "platform/host.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

bool open_by_dialog() { return confirm_discard_changes() && open_file_dialog(); }

bool close() {
  if (!confirm_discard_changes()) return false;
  close_all();
  return true;
}

bool (*open_batch_dialog)() = nullptr;

bool batch() { return close() && open_batch_dialog != nullptr && open_batch_dialog(); }

bool open_recent(std::size_t index) {
  if (!confirm_discard_changes()) return false;
  if (open_in_place(settings.file_recent[index])) return true;
  std::erase_if(settings.file_recent,
                [](const std::string& name) { return static_cast<bool>(InputFile().open(name)); });
  host().rebuild_recent_menu();
  return false;
}

std::size_t open_files(std::span<const std::string> names) {
  if (!open_in_place(names.front())) return 0;
  const std::size_t appended = append_files(names.subspan(1));
  name_parts_from_files();
  return 1 + appended;
}

std::size_t append_in_one_step(std::span<const std::string> names) {
  std::size_t count = 0;
  carry_out(append_change, [&] {
    count = append_files(names);
    clear_selection();
    seek_to(document.total_size);
    return count != 0 ? Result::done : Result::refused;
  });
  return count;
}

bool load_cue_sheet_over_audio() {
  if (!choose_cue_sheet()) return false;
  const auto load = [] { return load_cue_sheet(true) ? Result::done : Result::refused; };
  return carry_out(*command_of(command::load_cue_sheet_over_audio), load) == Result::done;
}

bool edit_cue_sheet() {
  const std::string& sheet = open_state.project_name;
  if (!save_project(true, true) || !file_facts(sheet).found) return false;
  if (!open_for_user(sheet)) return false;
  const BoxAnswer answer =
      host().show_message_box({.caption = "Corvelin",
                               .text = std::string(ui_text(row::reload_cue_sheet)),
                               .icon = BoxIcon::question,
                               .buttons = BoxButtons::yes_no,
                               .default_answer = BoxAnswer::yes});
  return answer != BoxAnswer::yes || open_in_place(sheet);
}

}  // namespace corvelin

// The hooks of the lower levels, tied to one host.
#include "shell/host.h"

#include <utility>

#include "edit/commands.h"
#include "edit/file_info_dialog.h"
#include "edit/names_dialog.h"
#include "edit/split_dialog.h"
#include "platform/close_request.h"

namespace corvelin {

namespace {

Host* current_host = nullptr;

// Hands a dialog that begins to the host, and takes over what the user made of it.
template <typename Dialog>
bool run_dialog() {
  if (current_host == nullptr) return false;
  Dialog dialog;
  dialog.begin();
  if (!current_host->edit(dialog)) return false;
  dialog.accept();
  return true;
}

bool run_split_dialog() {
  if (current_host == nullptr) return false;
  SplitDialog dialog;
  dialog.begin();
  return current_host->run(dialog);
}

}  // namespace

std::vector<std::string> Host::ask_for_existing_files(const FileDialog& dialog) {
  std::optional<std::string> name = ask_for_existing_file(dialog);
  return name ? std::vector{std::move(*name)} : std::vector<std::string>{};
}

void install_host(Host* host) {
  current_host = host;
  dialog_commands = {.split = run_split_dialog,
                     .file_info = run_dialog<FileInfoDialog>,
                     .names = run_dialog<NamesDialog>};
  message_box_handler = nullptr;
  note_handler = nullptr;
  beep_handler = nullptr;
  new_file_handler = nullptr;
  existing_file_handler = nullptr;
  existing_files_handler = nullptr;
  long_run_driver = nullptr;
  close_request_handler = nullptr;
  if (host == nullptr) return;
  message_box_handler = [host](const MessageBox& box) { return host->show_message_box(box); };
  note_handler = [host](const MessageBox& note) { return host->show_note(note); };
  beep_handler = [host] { host->beep(); };
  new_file_handler = [host](const FileDialog& dialog) { return host->ask_for_new_file(dialog); };
  existing_file_handler = [host](const FileDialog& dialog) {
    return host->ask_for_existing_file(dialog);
  };
  existing_files_handler = [host](const FileDialog& dialog) {
    return host->ask_for_existing_files(dialog);
  };
  long_run_driver = [host](LongRun& run) { host->drive(run); };
  close_request_handler = [host] { host->request_close(); };
}

}  // namespace corvelin

// The hooks of the lower levels, tied to one host.
#include "shell/host.h"

#include <utility>

#include "platform/close_request.h"

namespace corvelin {

std::vector<std::string> Host::ask_for_existing_files(const FileDialog& dialog) {
  std::optional<std::string> name = ask_for_existing_file(dialog);
  return name ? std::vector{std::move(*name)} : std::vector<std::string>{};
}

void install_host(Host* host) {
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

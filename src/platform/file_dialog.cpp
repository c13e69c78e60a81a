// The way of a file dialog to the host.
#include "platform/file_dialog.h"

namespace corvelin {

FileDialogHandler new_file_handler;
FileDialogHandler existing_file_handler;
std::function<std::vector<std::string>(const FileDialog&)> existing_files_handler;

std::optional<std::string> ask_for_new_file(const FileDialog& dialog) {
  return new_file_handler ? new_file_handler(dialog) : std::nullopt;
}

std::optional<std::string> ask_for_existing_file(const FileDialog& dialog) {
  return existing_file_handler ? existing_file_handler(dialog) : std::nullopt;
}

std::vector<std::string> ask_for_existing_files(const FileDialog& dialog) {
  return existing_files_handler ? existing_files_handler(dialog) : std::vector<std::string>{};
}

}  // namespace corvelin

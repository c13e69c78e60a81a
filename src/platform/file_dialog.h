// The questions for the name of a file. The host fills in the handlers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvelin {

struct FileType {
  std::string name;     // "MP3"
  std::string pattern;  // "*.mp3"
};

struct FileDialog {
  std::string title;
  std::string path;  // what the dialog starts with
  std::vector<FileType> types;
  bool warn_existing = false;  // ask before an existing file is taken
};

/// Asks for the name of a file to be written. Returns the path chosen, or nothing when the user
/// cancels or no host is there.
std::optional<std::string> ask_for_new_file(const FileDialog& dialog);

/// The same for a file to be read, which exists.
std::optional<std::string> ask_for_existing_file(const FileDialog& dialog);

/// The same for one or more files to be read. None when the user cancels.
std::vector<std::string> ask_for_existing_files(const FileDialog& dialog);

using FileDialogHandler = std::function<std::optional<std::string>(const FileDialog&)>;
extern FileDialogHandler new_file_handler;
extern FileDialogHandler existing_file_handler;
extern std::function<std::vector<std::string>(const FileDialog&)> existing_files_handler;

}  // namespace corvelin

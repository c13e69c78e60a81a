// Who sits in front of the core: a desktop, a headless run, or a test. All that the core has to
// show or to ask goes through here.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/file_dialog.h"
#include "platform/long_run.h"
#include "platform/message_box.h"

namespace corvelin {

struct FileInfoDialog;
struct NamesDialog;
struct SplitDialog;

class Host {
 public:
  virtual ~Host() = default;

  virtual BoxAnswer show_message_box(const MessageBox& box) = 0;

  /// Shows a note. Returns whether the user doesn't want to see it again.
  virtual bool show_note(const MessageBox& note) = 0;

  /// The sound for a command that found nothing to do.
  virtual void beep() = 0;

  /// The name for a new file, or nothing when the user cancels.
  virtual std::optional<std::string> ask_for_new_file(const FileDialog& dialog) = 0;

  /// The name of a file that exists, or nothing when the user cancels.
  virtual std::optional<std::string> ask_for_existing_file(const FileDialog& dialog) = 0;

  /// The names of one or more files that exist, or none when the user cancels. A host that can't
  /// ask for several asks for one.
  virtual std::vector<std::string> ask_for_existing_files(const FileDialog& dialog);

  /// Show a dialog's record, which has begun, for the user to edit. Whether it was closed by OK.
  virtual bool edit(NamesDialog& dialog) = 0;
  virtual bool edit(FileInfoDialog& dialog) = 0;

  /// Shows the dialog of a split, which has begun, and runs the split from there. Whether all files
  /// were written.
  virtual bool run(SplitDialog& dialog) = 0;

  /// Steps a run to its end and shows how far it is.
  virtual void drive(LongRun& run) = 0;

  /// A command wishes the program to end after it.
  virtual void request_close() = 0;
};

/// Lets `host` answer from now on; null for nobody. The host outlives its use.
void install_host(Host* host);

}  // namespace corvelin

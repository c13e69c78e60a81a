// SPDX-License-Identifier: GPL-2.0-or-later
// Who sits in front of the core: a desktop, a headless run, or a test. All that the core has to
// show, to ask or to have brought up to date goes through the one host that is installed, each
// thread's own. What it looks like, and whether there is a person to read it, is the host's
// business.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/files/clipboard.h"
#include "platform/long_run.h"

namespace corvelin {

enum class BoxIcon { none, information, warning, error, question };
enum class BoxButtons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class BoxAnswer { ok, yes, no, cancel };

struct MessageBox {
  std::string caption;
  std::string text;   // lines parted by "\n"
  std::string cause;  // what the system or a file says of a failure, for a line below the text
  BoxIcon icon = BoxIcon::none;
  BoxButtons buttons = BoxButtons::ok;
  BoxAnswer default_answer = BoxAnswer::ok;
};

struct FileType {
  std::string name;     // "MP3"
  std::string pattern;  // "*.mp3"; several are parted by ";"
};

/// A question for the name of a file.
struct FileDialog {
  std::string title;
  std::string path;  // what the dialog starts with
  std::vector<FileType> types;
  bool warn_existing = false;  // ask before an existing file is taken
};

/// The record behind a dialog: the fields that it shows and what its buttons do. Each dialog
/// derives its own; a host knows the windows for them by their types.
class Dialog {
 public:
  virtual ~Dialog() = default;

  /// Fills the fields with what they are to show.
  virtual void begin() = 0;

  /// OK: carries out what the fields say. False when they can't be taken; the dialog stays open.
  virtual bool accept() = 0;

  /// Closed in any other way.
  virtual void cancel() {}
};

/// How much of what is shown is out of date. A level above 0 takes the lower ones along.
enum class Refresh : std::int8_t {
  all = 3,               // a setting or the document: also check marks and the title
  places = 2,            // the cursor or the selection: also the range and the stream's parameters
  playing = 1,           // the position of the listener
  no_document = 0,       // nothing is open any more
  recording = -1,        // the level of a recording
  recording_state = -2,  // what a recording does
};

/// Which menu entries and buttons may have turned grey or live. The bits of a mask.
enum MenuStates : std::uint8_t {
  undo_states = 1,
  stopped_states = 8,     // of commands that ask for silence
  transport_states = 16,  // of commands for a document or a recording
  document_states = 32,   // of commands for a document, and for one with levels
  all_states = 255,
};

/// The fields in which times can be typed.
enum class StatusField : std::uint8_t { position, range };

/// What each host can do. What one leaves out is answered as if nobody were there: a box by its
/// default, a question for a name by a cancel; a run is stepped in a plain loop.
class Host {
 public:
  virtual ~Host() = default;

  /// Shows the box and waits for the answer.
  virtual BoxAnswer show_message_box(const MessageBox& box) { return box.default_answer; }

  /// Shows a note with a box "Don't show this message again". Returns whether that was set.
  virtual bool show_note(const MessageBox& note);

  /// The sound for a command that found nothing to do.
  virtual void beep() {}

  /// The name for a file to be written, or nothing when the user cancels.
  virtual std::optional<std::string> ask_for_new_file(const FileDialog& dialog);

  /// The name of a file that exists, or nothing when the user cancels.
  virtual std::optional<std::string> ask_for_existing_file(const FileDialog& dialog);

  /// The names of one or more files that exist; none when the user cancels. A host that can't ask
  /// for several asks for one.
  virtual std::vector<std::string> ask_for_existing_files(const FileDialog& dialog);

  /// The folder that the user chooses, or nothing when that is cancelled. `path` is where the
  /// choice begins.
  virtual std::optional<std::string> ask_for_folder(const std::string& path);

  /// The colour, 0xBBGGRR, that the user chooses in the place of `colour`, or nothing when that is
  /// cancelled.
  virtual std::optional<std::uint32_t> ask_for_colour(std::uint32_t colour);

  /// Shows a dialog that has begun until it is closed. True when `accept` took its fields and,
  /// where that started a run, all went well.
  virtual bool show(Dialog& dialog);

  /// Steps a run to its end and shows how far it is. Called through `drive` alone.
  virtual void drive(LongRun& run);

  /// Ends the program, after the question about unsaved changes. Called through `request_close`.
  virtual void close() {}

  /// Ends the program and starts it anew. The user has been asked about unsaved changes.
  virtual void restart() {}

  /// Replaces the clipboard's text; an empty one empties it. False, and the old text stays, when
  /// that fails. Without a desktop the clipboard is a file.
  virtual bool set_clipboard_text(std::string_view text);

  /// Fetches the clipboard's text. `text` is untouched unless that is the answer.
  virtual ClipboardContent get_clipboard_text(std::string& text);

  /// Opens a file or a folder with `viewer`. An error when that can't be started. That it found no
  /// program for the file is a host's own to tell.
  virtual std::error_code open_in_viewer(const std::string& path);

  // What is on screen is out of date. The state to be shown is in the records.
  virtual void refresh_view(Refresh level);
  virtual void rebuild_part_list() {}    // the entries of the List menu
  virtual void rebuild_recent_menu() {}  // the recent files in the File menu
  virtual void update_menu_state(std::uint8_t mask);
  virtual void lay_out() {}  // a setting that the window's layout goes by

  /// The buttons of play and record may look different now.
  virtual void show_transport() {}

  /// Calls `operation` once, from the event loop, when `pause` is over; at once without such a
  /// loop.
  virtual void call_later(std::chrono::milliseconds pause, const std::function<void()>& operation);

  /// A setting was changed that takes a new start to hold in full.
  virtual void offer_restart() {}

  /// Puts the input into a field of the status.
  virtual void enter_field(StatusField) {}

  /// Opens the window of the inner state, unless it is open.
  virtual void show_debug_window() {}
};

/// Finds the program that the user has for a kind of file, and starts it.
constexpr const char* viewer = "xdg-open";

/// The host that is installed, or one that is nobody.
Host& host();

/// Lets `host` answer from now on; null for nobody. It outlives its use.
void install_host(Host* host);

/// Fills a dialog's fields and shows it. True as for `Host::show`.
bool show_dialog(Dialog& dialog);

/// While one lives the program is in the middle of something, perhaps with an event loop of its own
/// inside. No command begins meanwhile, and a wish to close waits for the end.
class Busy {
 public:
  Busy();
  ~Busy();
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
};

bool is_busy();

/// Steps a run to its end through the host.
void drive(LongRun& run);

/// The wish that the program ends: at once, or when it is no longer busy.
void request_close();

}  // namespace corvelin

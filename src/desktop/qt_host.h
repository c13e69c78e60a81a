// SPDX-License-Identifier: GPL-2.0-or-later
// The host of the desktop: boxes, file dialogs, dialogs and runs as windows over the main window,
// and the clipboard of the desktop.
#pragma once

#include <QPointer>
#include <functional>

#include "desktop/debug_window.h"
#include "desktop/main_window.h"
#include "desktop/sound_events.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

class QtHost : public Host {
 public:
  /// The editor and the window outlive the host.
  QtHost(Editor& editor, MainWindow& window)
      : editor_(editor), window_(window), sound_events_(new SoundEvents(editor, window)) {}

  BoxAnswer show_message_box(const MessageBox& box) override;
  bool show_note(const MessageBox& note) override;
  void beep() override;
  std::optional<std::string> ask_for_new_file(const FileDialog& dialog) override;
  std::optional<std::string> ask_for_existing_file(const FileDialog& dialog) override;
  std::vector<std::string> ask_for_existing_files(const FileDialog& dialog) override;
  std::optional<std::string> ask_for_folder(const std::string& path) override;
  std::optional<std::uint32_t> ask_for_colour(std::uint32_t colour) override;
  bool show(Dialog& dialog) override;
  void drive(LongRun& run) override;
  void close() override;
  void restart() override { restart_program(); }
  bool set_clipboard_text(std::string_view text) override;
  ClipboardContent get_clipboard_text(std::string& text) override;
  std::error_code open_in_viewer(const std::string& path) override;
  void refresh_view(Refresh level) override;
  void rebuild_part_list() override { window_.rebuild_part_list(); }
  void rebuild_recent_menu() override { window_.rebuild_recent_menu(); }
  void update_menu_state(std::uint8_t mask) override { window_.update_menu_state(mask); }
  void show_transport() override;
  void call_later(std::chrono::milliseconds pause, const std::function<void()>& operation) override;
  void lay_out() override { window_.lay_out(); }
  void enter_field(StatusField field) override;
  void show_debug_window() override;

  /// Ends the program from outside: what is open is closed as by Esc, and then the window.
  void end();

  /// What ends the program and starts it anew.
  std::function<void()> restart_program = [] {};

 private:
  void close_dialogs();
  void offer_graph_note();

  Editor& editor_;
  MainWindow& window_;
  std::string noted_;          // the document whose graph the user was told about
  SoundEvents* sound_events_;  // the window's
  QPointer<DebugWindow> debug_window_;
  bool is_ending_ = false;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The installed host, and what a host does that is nobody.
#include "platform/host.h"

#include <utility>

#include "platform/processes/process.h"

namespace corvelin {

namespace {

Host nobody;

// Who sits in front of a thread. In front of one that works beside the main thread that is nobody.
struct Seat {
  Host* installed = &nobody;
  int busy_depth = 0;
  bool close_is_wanted = false;
};
thread_local Seat seat;

}  // namespace

bool Host::show_note(const MessageBox&) { return false; }

std::optional<std::string> Host::ask_for_new_file(const FileDialog&) { return std::nullopt; }

std::optional<std::string> Host::ask_for_existing_file(const FileDialog&) { return std::nullopt; }

std::vector<std::string> Host::ask_for_existing_files(const FileDialog& dialog) {
  std::optional<std::string> name = ask_for_existing_file(dialog);
  return name ? std::vector{std::move(*name)} : std::vector<std::string>{};
}

std::optional<std::string> Host::ask_for_folder(const std::string&) { return std::nullopt; }

std::optional<std::uint32_t> Host::ask_for_colour(std::uint32_t) { return std::nullopt; }

bool Host::show(Dialog& dialog) {
  dialog.cancel();
  return false;
}

void Host::drive(LongRun& run) {
  while (run.step()) {
  }
}

bool Host::set_clipboard_text(std::string_view text) { return write_clipboard_file(text); }

ClipboardContent Host::get_clipboard_text(std::string& text) { return read_clipboard_file(text); }

std::error_code Host::open_in_viewer(const std::string& path) {
  return start_program({viewer, path});
}

void Host::refresh_view(Refresh) {}

void Host::update_menu_state(std::uint8_t) {}

void Host::call_later(std::chrono::milliseconds, const std::function<void()>& operation) {
  operation();
}

Host& host() { return *seat.installed; }

void install_host(Host* host) { seat.installed = host == nullptr ? &nobody : host; }

bool show_dialog(Dialog& dialog) {
  dialog.begin();
  return host().show(dialog);
}

Busy::Busy() { ++seat.busy_depth; }

Busy::~Busy() {
  --seat.busy_depth;
  if (seat.busy_depth == 0 && std::exchange(seat.close_is_wanted, false)) host().close();
}

bool is_busy() { return seat.busy_depth > 0; }

void drive(LongRun& run) {
  const Busy busy;
  host().drive(run);
}

void request_close() {
  if (is_busy()) {
    seat.close_is_wanted = true;
  } else {
    host().close();
  }
}

}  // namespace corvelin

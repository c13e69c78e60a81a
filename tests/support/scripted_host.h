// SPDX-License-Identifier: GPL-2.0-or-later
// The host of tests: records what was shown and answers from lists.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace corvelin::test {

class ScriptedHost : public Host {
 public:
  ScriptedHost() { install_host(this); }
  ~ScriptedHost() override { install_host(nullptr); }
  ScriptedHost(const ScriptedHost&) = delete;
  ScriptedHost& operator=(const ScriptedHost&) = delete;

  std::deque<BoxAnswer> answers;           // to the next boxes; then their defaults
  std::deque<std::string> new_files;       // to the next questions for a file; then cancel
  std::deque<std::string> existing_files;  // also all of them at once, where several may be chosen

  // What the user does in a dialog, and whether it ends with OK; without one it is cancelled.
  std::function<bool(Dialog&)> edit_dialog;
  template <typename Record, typename Edit>
  void edit(Edit edit_record) {
    edit_dialog = [edit_record](Dialog& dialog) {
      auto* const record = dynamic_cast<Record*>(&dialog);
      return record != nullptr && edit_record(*record);
    };
  }
  std::function<void()> while_answering;  // what happens while a box is on screen

  std::vector<MessageBox> boxes;  // shown so far
  std::vector<FileDialog> dialogs;
  bool hides_notes = false;  // the user doesn't want to see a note again
  int beeps = 0;
  bool close_requested = false;
  std::string calls;  // the boxes and refreshes in their order: "parts view2 box "
  std::vector<Refresh> refreshes;
  int layouts = 0;
  int restarts_offered = 0;

  BoxAnswer show_message_box(const MessageBox& box) override {
    boxes.push_back(box);
    calls += "box ";
    if (while_answering) while_answering();
    return take(answers).value_or(box.default_answer);
  }
  bool show_note(const MessageBox& note) override {
    boxes.push_back(note);
    return hides_notes;
  }
  void beep() override { ++beeps; }
  std::optional<std::string> ask_for_new_file(const FileDialog& dialog) override {
    dialogs.push_back(dialog);
    return take(new_files);
  }
  std::optional<std::string> ask_for_existing_file(const FileDialog& dialog) override {
    dialogs.push_back(dialog);
    return take(existing_files);
  }
  std::vector<std::string> ask_for_existing_files(const FileDialog& dialog) override {
    dialogs.push_back(dialog);
    std::vector<std::string> names(existing_files.begin(), existing_files.end());
    existing_files.clear();
    return names;
  }
  bool show(Dialog& dialog) override {
    return edit_dialog && edit_dialog(dialog) && dialog.accept();
  }
  void close() override { close_requested = true; }
  void refresh_view(Refresh level) override {
    refreshes.push_back(level);
    calls += "view" + std::to_string(static_cast<int>(level)) + " ";
  }
  void rebuild_part_list() override { calls += "parts "; }
  void rebuild_recent_menu() override { calls += "recent "; }
  void update_menu_state(std::uint8_t mask) override {
    calls += "menus" + std::to_string(mask) + " ";
  }
  void lay_out() override { ++layouts; }
  void offer_restart() override { ++restarts_offered; }

 private:
  template <typename Value>
  static std::optional<Value> take(std::deque<Value>& values) {
    if (values.empty()) return std::nullopt;
    Value value = std::move(values.front());
    values.pop_front();
    return value;
  }
};

}  // namespace corvelin::test

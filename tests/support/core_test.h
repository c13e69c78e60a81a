// SPDX-License-Identifier: GPL-2.0-or-later
// The fixture of tests that work on an editor: each has one of its own, with the settings of a
// process that just started, a folder of its own and a host that answers.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "edit/open_files.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/scripted_host.h"
#include "support/soundness.h"
#include "support/test_folder.h"

namespace corvelin::test {

constexpr std::uint32_t length = 417;  // bytes of the builder's standard frame
constexpr std::uint32_t none = no_position;

inline Bytes frames(int count, const FrameShape& shape = {}) {
  return Mp3Builder{}.shape(shape).frames(count).bytes();
}

class CoreTest : public ::testing::Test {
 protected:
  CoreTest() {
    connect_levels(editor);
    settings = default_settings();
  }
  ~CoreTest() override {
    expect_sound_document();
    close_all(editor);
    setting_listeners.clear();
  }

  /// Opens bytes as a file of this name.
  bool open(std::string_view name, const Bytes& bytes) { return open(folder.file(name, bytes)); }
  bool open(const std::string& path) {
    close_all(editor);
    return open_file(editor, path);
  }

  /// The box shown last, as "CAPTION: TEXT", and forgets them all; empty without one.
  std::string take_box() {
    if (host.boxes.empty()) return {};
    const MessageBox box = host.boxes.back();
    host.boxes.clear();
    return box.caption + ": " + box.text;
  }

  void expect_sound_document() const { EXPECT_EQ(document_fault(editor), ""); }

  Editor editor;
  Document& document = editor.document;
  Selection& selection = editor.selection;
  OpenState& open_state = editor.open_state;
  std::vector<UndoEntry>& undo_stack = editor.undo_stack;
  LevelMeter& level_meter = editor.level_meter;
  Playback& playback = editor.playback;
  Recorder& recorder = editor.recorder;
  TestFolder folder;
  ScriptedHost host;
};

}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The fixture of tests that work on the core's global records: each begins with the state of a
// process that just started, a folder of its own and a host that answers.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "document/open_state.h"
#include "edit/open_files.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
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
    connect_levels();
    start_anew();
  }
  ~CoreTest() override {
    expect_sound_document();
    close_all();
  }

  /// Opens bytes as a file of this name.
  bool open(std::string_view name, const Bytes& bytes) { return open(folder.file(name, bytes)); }
  static bool open(const std::string& path) {
    close_all();
    return open_file(path);
  }

  /// The box shown last, as "CAPTION: TEXT", and forgets them all; empty without one.
  std::string take_box() {
    if (host.boxes.empty()) return {};
    const MessageBox box = host.boxes.back();
    host.boxes.clear();
    return box.caption + ": " + box.text;
  }

  static void expect_sound_document() { EXPECT_EQ(document_fault(), ""); }

  TestFolder folder;
  ScriptedHost host;
};

}  // namespace corvelin::test

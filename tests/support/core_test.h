// The fixture of tests that work on the core's global records: each begins with the state of a
// process that just started, a folder of its own and a host that answers.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "document/open_document.h"
#include "document/open_state.h"
#include "model/document.h"
#include "model/selection.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/scripted_host.h"
#include "support/soundness.h"
#include "support/test_folder.h"

namespace corvelin::test {

class CoreTest : public ::testing::Test {
 protected:
  CoreTest() {
    connect_levels();
    reset_state(ResetLevel::start);
  }
  ~CoreTest() override {
    expect_sound_document();
    close_all();
  }

  /// Opens bytes as a file of this name.
  bool open(std::string_view name, const Bytes& bytes) {
    close_all();
    open_state.audio_name = folder.file(name, bytes);
    return open_document();
  }

  static void expect_sound_document() { EXPECT_EQ(document_fault(), ""); }

  TestFolder folder;
  ScriptedHost host;
};

}  // namespace corvelin::test

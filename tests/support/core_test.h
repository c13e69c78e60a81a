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

  /// What holds between any two operations.
  static void expect_sound_document() {
    EditPosition pos = 0;
    for (const Part& part : document.parts) {
      EXPECT_EQ(part.part_beg, pos);
      EXPECT_NE(part.part_size, 0U);
      EXPECT_LT(part.part_file, document.files.size());
      pos += part.part_size;
    }
    EXPECT_EQ(document.total_size, pos);
    EXPECT_TRUE(document.parts.empty() || document.current_part < document.parts.size());
    EXPECT_LE(document.parts.size(), most_parts);
    EXPECT_LE(document.files.size(), most_files);
    EXPECT_LE(selection.cursor, document.total_size);
    EXPECT_EQ(selection.sel_beg == no_position, selection.sel_end == no_position);
    if (selection.sel_beg == no_position) return;
    EXPECT_LE(selection.sel_beg, selection.sel_end);
    EXPECT_LE(selection.sel_end, document.total_size);
  }

  TestFolder folder;
  ScriptedHost host;
};

}  // namespace corvelin::test

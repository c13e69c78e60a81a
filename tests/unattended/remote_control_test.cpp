// SPDX-License-Identifier: GPL-2.0-or-later
// What the remote control file makes the program do, and what stands in it afterwards.
#include "unattended/remote_control.h"

#include <filesystem>

#include "audio/recorder.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "platform/files/file.h"
#include "settings/settings.h"
#include "support/core_test.h"
#include "support/scripted_wave_system.h"

namespace corvelin::test {
namespace {

class RemoteControl : public CoreTest {
 protected:
  RemoteControl() {
    settings.file_savepath = folder.path("take");
    settings.enc_lam_vbr_method = -1;
    settings.enc_lam_quality = 1;
    editor.remote_control_on = true;
  }
  ~RemoteControl() override {
    record_stop(recorder, level_meter);
    editor.remote_control_on = false;
  }

  // The status after a scan that finds this behind the prompt.
  std::string give(const std::string& command) {
    remote_scan(editor);
    std::string text = read_text(folder.path("corvlremote.txt"));
    const std::size_t prompt = text.find("COMMAND: ");
    EXPECT_EQ(text.substr(0, prompt), "[Corvelin remote control txt file]\r\n\r\n");
    text.insert(prompt + 9, command);
    folder.file("corvlremote.txt", text);
    remote_scan(editor);
    return status();
  }

  [[nodiscard]] std::string status() const {
    const std::string text = read_text(folder.path("corvlremote.txt"));
    EXPECT_NE(text.find("COMMAND: \r\n\r\nAvailable"), std::string::npos);
    const std::size_t begin = text.find("STATUS: ") + 8;
    return text.substr(begin, text.find("\r\n\r\nThis file is") - begin);
  }

  ScriptedWaveSystem system;
};

TEST_F(RemoteControl, RecordsStopsAndQuitsAndLosesNoEdit) {
  ASSERT_TRUE(open("talk.mp3", frames(50)));
  open_state.document_modified = true;
  EXPECT_EQ(give("-trec"), "Recording (level activated)\r\n\r\nFile: " + folder.path("take.mp3") +
                               "\r\nLength: 0'00.00");
  EXPECT_TRUE(is_name_taken(folder.path("talk.cvp")));
  EXPECT_EQ(give("-rec").substr(0, 27), "Recording (level activated)");  // it goes on
  EXPECT_EQ(give("-stop"), "Idle");
  close_all(editor);
  EXPECT_EQ(give("-save"), "Idle");
  EXPECT_FALSE(is_name_taken(folder.path("take.mp3.cvp")));  // there is no document

  ASSERT_TRUE(open("talk.mp3", frames(50)));
  folder.file("talk.mp3.cvp", frames(2));
  EXPECT_NE(give("-save").find("Error: "), std::string::npos);
  EXPECT_EQ(read_file(folder.path("talk.mp3.cvp")), frames(2));
  folder.file("talk.mp3.cvp", "");
  EXPECT_EQ(give("-save"), "Idle");
  EXPECT_EQ(open_state.project_name, folder.path("talk.mp3.cvp"));

  system.refusal = "no device";
  EXPECT_EQ(give("-rec"), "Idle\r\n\r\nError: Could not open wave/audio device\r\nno device");
  EXPECT_TRUE(host.boxes.empty());  // nobody is there to close it

  system.refusal.clear();
  EXPECT_EQ(give("-rec").substr(0, 9), "Recording");
  const std::string command = "COMMAND: -quit";
  folder.file("corvlremote.txt", command);
  {
    const Busy busy;
    remote_scan(editor);
    EXPECT_EQ(read_text(folder.path("corvlremote.txt")), command);  // it waits
  }
  remote_scan(editor);
  EXPECT_TRUE(host.close_requested);
  EXPECT_FALSE(recorder.is_armed);
  end_remote_control(editor);
  EXPECT_EQ(status(), "Program finished");
}

TEST_F(RemoteControl, TouchesNoFileButOneOfItsForm) {
  const std::string path = folder.path("corvlremote.txt");
  folder.file("corvlremote.txt", "my notes: -rec");
  remote_scan(editor);
  end_remote_control(editor);
  EXPECT_EQ(read_text(folder.path("corvlremote.txt")), "my notes: -rec");

  std::filesystem::remove(path);
  folder.file("elsewhere", "COMMAND: -rec");
  std::filesystem::create_symlink(folder.path("elsewhere"), path);
  remote_scan(editor);
  end_remote_control(editor);
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_FALSE(recorder.is_armed);

  std::filesystem::remove(path);
  editor.remote_control_on = false;
  remote_scan(editor);
  end_remote_control(editor);
  EXPECT_FALSE(is_name_taken(folder.path("corvlremote.txt")));
}

}  // namespace
}  // namespace corvelin::test

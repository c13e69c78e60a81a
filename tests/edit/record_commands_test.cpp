// SPDX-License-Identifier: GPL-2.0-or-later
// Recordings from a device that the test moves: what is in the file, under which name, and the
// document that it becomes.
#include "edit/record_commands.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <numbers>
#include <thread>

#include "audio/encoder_settings.h"
#include "audio/recorder.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "edit/speed_dialog.h"
#include "exchange/project_file.h"
#include "frames/frame_header.h"
#include "model/document.h"
#include "model/exact_time.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/files/system_calls.h"
#include "settings/settings.h"
#include "support/core_test.h"
#include "support/scripted_wave_system.h"

namespace corvelin::test {
namespace {

std::atomic<bool> disk_stands_still = false;

int wait_for_disk(int descriptor) {
  for (int turns = 1000; disk_stands_still && turns > 0; --turns)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  disk_stands_still = false;
  return original_system_calls.fsync(descriptor);
}

class RecordCommands : public CoreTest {
 protected:
  RecordCommands() {
    settings.enc_lam_vbr_method = -1;
    settings.enc_lam_bitrate = settings.enc_lam_bitrate_max = 128;
    settings.enc_lam_quality = 1;
    settings.file_savepath = folder.path("take");
  }
  ~RecordCommands() override {
    record_stop(recorder, level_meter);
    system_calls = original_system_calls;
  }

  // Lets so many seconds of a tone, or of silence, pass through the device.
  void hear(double seconds, int loudness = 10000) {
    constexpr std::size_t frames_a_turn = 4410;
    std::vector<std::int16_t> samples(2 * frames_a_turn);
    for (int turns = static_cast<int>(seconds * 10 + 0.5); turns > 0; --turns) {
      for (std::size_t i = 0; i < samples.size(); ++i) {
        const double angle = 2 * std::numbers::pi * 440 * static_cast<double>(i / 2) / 44100;
        samples[i] = static_cast<std::int16_t>(loudness * std::sin(angle));
      }
      system.record({reinterpret_cast<const std::uint8_t*>(samples.data()), samples.size() * 2});
      deliver();
    }
  }

  void deliver() {
    pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN, .revents = 0};
    do {
      deliver_wave_events();
    } while (recorder.wave_in.is_open() && ::poll(&due, 1, 0) > 0);
  }

  void wait_for_file() {
    if (recorder.rec_file) recorder.rec_file->wait();
  }

  [[nodiscard]] double seconds_of(const std::string& name) const {
    return static_cast<double>(file_facts(folder.path(name)).size) / 16000;
  }

  ScriptedWaveSystem system;
};

TEST_F(RecordCommands, RecordsAllThatWasHeardAndOpensItWithItsCues) {
  ASSERT_TRUE(initialize_recording(editor));
  hear(1);
  EXPECT_FALSE(is_name_taken(folder.path("take.mp3")));  // armed is not writing
  ASSERT_TRUE(start_recording(editor));
  hear(2);
  add_recording_cue(editor);
  add_recording_cue(editor);  // the same place again
  wait_for_file();
  EXPECT_GT(seconds_of("take.mp3"), 0.5);  // is safe already, whatever happens now
  hear(3);
  EXPECT_NEAR(static_cast<double>(recorded_length(recorder)) * 8 / recorder.rec_rate, 5, 0.2);
  stop_recording(editor);

  EXPECT_FALSE(recorder.is_armed);
  EXPECT_EQ(open_state.audio_name, folder.path("take.mp3"));
  EXPECT_NEAR(document.total_size / 16000.0, 5.05, 0.06);  // with what the encoder adds
  ASSERT_EQ(document.parts.size(), 2u);
  EXPECT_EQ(document.parts[1].part_iscue, 1u);
  EXPECT_NEAR(document.parts[1].part_beg / 16000.0, 2, 0.15);
  EXPECT_TRUE(open_state.document_modified);
  EXPECT_TRUE(system.opened.empty());
}

TEST_F(RecordCommands, KeepsAnEarlierRecordingOfThatNameUnlessItIsGivenUp) {
  folder.file("take.mp3", "precious");
  ASSERT_TRUE(initialize_recording(editor));
  host.answers = {BoxAnswer::cancel};
  ASSERT_TRUE(start_recording(editor));
  EXPECT_FALSE(recorder.rec_writing);
  EXPECT_EQ(take_box(), "Warning: File exists:\n\n" + folder.path("take.mp3"));

  ASSERT_TRUE(start_recording_unattended(editor, folder.path("take")));
  EXPECT_NE(take_box().find("The recording goes into "), std::string::npos);
  hear(1);
  stop_recording(editor);
  EXPECT_EQ(read_text(folder.path("take.mp3")), "precious");
  EXPECT_EQ(open_state.audio_name, folder.path("take (2).mp3"));

  settings.rec_appenddata = 1;
  settings.file_savepath = folder.path("take (2)");
  ASSERT_TRUE(initialize_recording(editor));
  ASSERT_TRUE(start_recording(editor));
  hear(1);
  stop_recording(editor);
  EXPECT_NEAR(seconds_of("take (2).mp3"), 2.1, 0.12);

  settings.rec_appenddata = 0;
  settings.file_savepath = folder.path("take");
  ASSERT_TRUE(initialize_recording(editor));
  host.answers = {BoxAnswer::ok};
  ASSERT_TRUE(start_recording(editor));
  hear(1);
  stop_recording(editor);
  EXPECT_NEAR(seconds_of("take.mp3"), 1.05, 0.06);
}

TEST_F(RecordCommands, MakesTheFolderOfDocumentsThatANewUserHasNot) {
  ::setenv("HOME", folder.path("home").c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", folder.path("config").c_str(), 1);
  settings.file_savepath.clear();
  complete_settings();
  ASSERT_TRUE(initialize_recording(editor));
  ASSERT_TRUE(start_recording(editor));
  hear(1);
  stop_recording(editor);
  EXPECT_EQ(open_state.audio_name, folder.path("home/Documents/Recording.mp3"));
}

TEST_F(RecordCommands, EndsAtTheLimitOrGoesOnInANewFile) {
  settings.rec_time = 1;
  for (const std::int32_t method : {lame_method_cbr, lame_method_abr, lame_method_vbr}) {
    settings.enc_lam_vbr_method = method;
    settings.rec_split = 0;
    ASSERT_TRUE(initialize_recording(editor));
    ASSERT_TRUE(start_recording_unattended(editor, folder.path("take")));
    hear(62);
    EXPECT_FALSE(recorder.is_armed);
    EXPECT_NEAR(exact_seconds(document, document.total_size), 60, 0.2) << method;
    if (method == lame_method_abr) continue;

    settings.rec_split = 1;
    const std::string name = "part" + std::to_string(method);
    settings.file_savepath = folder.path(name);
    ASSERT_TRUE(initialize_recording(editor));
    ASSERT_TRUE(start_recording(editor));
    hear(20);
    add_recording_cue(editor);
    hear(90);
    add_recording_cue(editor);
    hear(20);
    stop_recording(editor);
    ASSERT_EQ(document.parts.size(), 1u);  // the third file's, which has none
    EXPECT_FALSE(open_state.document_modified);
    double whole = exact_seconds(document, document.total_size);
    for (const std::string& file : {name, name + " (2)"}) {
      close_all(editor);
      open_state.project_name = folder.path(file + ".cvp");
      ASSERT_EQ(read_project(document, selection, open_state).cause, "") << file;
      ASSERT_EQ(document.parts.size(), 2u);
      EXPECT_EQ(document.parts[1].part_iscue, 1u);
      EXPECT_NEAR(exact_seconds(document, document.total_size), 60, 0.3) << file;
      whole += exact_seconds(document, document.total_size);
    }
    EXPECT_NEAR(whole, 130.05, 0.06);  // not a sample is missing in between
  }
}

TEST_F(RecordCommands, WritesOnlyWhileItIsLoudWithWhatWasJustBefore) {
  settings.rec_threshold = 2 * 256 + 16;  // 1/8 of full scale, 2 seconds
  ASSERT_TRUE(level_activated_recording(editor));
  ASSERT_TRUE(start_recording(editor));
  hear(5, 0);
  EXPECT_EQ(recorder.rec_file_bytes, 0u);
  hear(1);
  hear(5, 0);
  hear(1);
  hear(5, 0);
  stop_recording(editor);
  // Twice a second of sound, two of pause, and three buffers of a tenth in front.
  EXPECT_NEAR(document.total_size / 16000.0, 2 * 3.3, 0.4);
  EXPECT_FALSE(document.parts.at(1).part_title.empty());  // the time at which it began
}

TEST_F(RecordCommands, LosesNoSoundToADiskThatStandsStillForAMinute) {
  settings.enc_lam_bitrate = settings.enc_lam_bitrate_max = 320;
  system_calls.fsync = wait_for_disk;
  for (const double heard : {55, 90}) {
    disk_stands_still = true;
    ASSERT_TRUE(initialize_recording(editor));
    ASSERT_TRUE(start_recording_unattended(editor, {}));
    hear(heard);
    EXPECT_TRUE(disk_stands_still);  // nobody waited
    disk_stands_still = false;
    stop_recording(editor);
    const double recorded = document.total_size / 40000.0;
    if (heard < 60) {
      EXPECT_NEAR(recorded, heard, 0.1);
      EXPECT_EQ(take_box(), "");
    } else {
      EXPECT_NEAR(recorded, 60.5, 1);
      EXPECT_NE(take_box().find(fmt::format("{:.1f}", heard - recorded)), std::string::npos);
    }
  }
}

// The times of a recording that has run for weeks when the sound begins: 32 bits hold 49 days of
// milliseconds.
TEST_F(RecordCommands, WaitsForSoundThroughAnyTime) {
  struct {
    std::int64_t started;  // milliseconds before
    bool is_first;         // no cue that tells the time was set yet
    std::size_t cues;
  } const rows[] = {{0, true, 1},
                    {0x80000000 - 3000, true, 1},
                    {0x100000000 - 3000, true, 1},
                    {0x100000000 - 3000, false, 0},
                    {0x100000000 + 86'400'000, false, 0}};
  settings.rec_threshold = 2 * 256 + 16;
  for (const auto& row : rows) {
    ASSERT_TRUE(level_activated_recording(editor));
    ASSERT_TRUE(start_recording_unattended(editor, folder.path("take")));
    recorder.input_bytes = static_cast<std::uint64_t>(row.started) * 176'400 / 1000;
    if (!row.is_first) recorder.rec_last_time_cue = row.started - 1'000'000;
    hear(2, 0);
    EXPECT_FALSE(recorder.rec_active);
    hear(3);  // over the wrap
    EXPECT_TRUE(recorder.rec_active) << row.started;
    hear(4, 0);
    EXPECT_FALSE(recorder.rec_active) << row.started;
    EXPECT_EQ(recorder.rec_cues.size(), row.cues) << row.started;
    stop_recording(editor);
    EXPECT_NEAR(document.total_size / 16000.0, 3 + 2 + 0.3, 0.4) << row.started;
    open_state.document_modified = false;
  }
}

TEST_F(RecordCommands, KeepsWhatItHasWhenTheDeviceOrTheDiskFails) {
  ASSERT_TRUE(initialize_recording(editor));
  ASSERT_TRUE(start_recording(editor));
  hear(3);
  system.is_lost = true;
  deliver();
  EXPECT_FALSE(recorder.is_armed);
  EXPECT_NEAR(document.total_size / 16000.0, 3, 0.2);
  EXPECT_NE(take_box().find("device is gone"), std::string::npos);

  system.is_lost = false;
  ASSERT_TRUE(initialize_recording(editor));
  host.answers = {BoxAnswer::ok};  // a file of that name may go
  ASSERT_TRUE(start_recording(editor));
  remove_file(folder.path("take.mp3"));
  hear(2);
  wait_for_file();
  hear(0.2);
  EXPECT_FALSE(recorder.is_armed);
  EXPECT_NE(take_box().find("No such file"), std::string::npos);

  settings.rec_time = 1;
  settings.rec_split = 1;
  settings.file_savepath = folder.path("long");
  ASSERT_TRUE(initialize_recording(editor));
  ASSERT_TRUE(start_recording(editor));
  system_calls.open = [](const char* path, int flags, mode_t mode) {
    errno = ENOSPC;
    return (flags & O_CREAT) != 0 ? -1 : original_system_calls.open(path, flags, mode);
  };
  system_calls.fsync = wait_for_disk;
  disk_stands_still = true;
  hear(61);
  add_recording_cue(editor);
  disk_stands_still = false;
  wait_for_file();
  hear(0.5);
  system_calls.open = original_system_calls.open;
  EXPECT_NE(take_box().find("No space left"), std::string::npos);
  EXPECT_EQ(open_state.audio_name, folder.path("long.mp3"));
  EXPECT_NEAR(document.total_size / 16000.0, 61.3, 0.3);
  ASSERT_EQ(document.parts.size(), 2u);
  EXPECT_NEAR(document.parts[1].part_beg / 16000.0, 61, 0.2);
  settings.rec_time = 0;
  settings.rec_split = 0;
  open_state.document_modified = false;

  settings.file_savepath = folder.path("none") + "/take";
  ASSERT_TRUE(initialize_recording(editor));
  EXPECT_FALSE(start_recording(editor));
  EXPECT_FALSE(recorder.is_armed);
  EXPECT_NE(take_box().find("Could not create/write to file."), std::string::npos);

  system.refusal = "no such device";
  EXPECT_FALSE(initialize_recording(editor));
  EXPECT_EQ(take_box(), "Error: Could not open wave/audio device\nno such device");
}

TEST_F(RecordCommands, StretchesOneRecordThatIsPlayedTooFast) {
  host.edit<SpeedDialog>([](SpeedDialog& dialog) {
    EXPECT_EQ(dialog.factor_text(), "=> 1.35x");
    dialog.recording = "90";
    EXPECT_EQ(dialog.factor(), 0);
    dialog.original = "60,0";
    return true;
  });
  system.refusal = "no such device";
  EXPECT_EQ(dispatch_command(editor, 1043), DispatchResult::refused);
  EXPECT_EQ(recorder.rec_speed, 0);

  system.refusal.clear();
  ASSERT_EQ(dispatch_command(editor, 1043), DispatchResult::done);
  ASSERT_TRUE(start_recording(editor));
  hear(4);
  stop_recording(editor);
  EXPECT_NEAR(document.total_size / 16000.0, 6, 0.2);
  EXPECT_EQ(recorder.rec_speed, 0);
}

}  // namespace
}  // namespace corvelin::test

// Reads any bytes as a cue sheet: once with the audio that it names, once over audio of a variable
// bitrate. What is open then is written as a sheet, which has to read.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "document/open_document.h"
#include "document/open_state.h"
#include "exchange/cue_sheet.h"
#include "model/document.h"
#include "support/mp3_builder.h"

using namespace corvelin;

namespace {

void write(const std::string& path, const std::uint8_t* data, std::size_t size) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

std::string make_folder() {
  const std::string folder = "/tmp/corvelin-fuzz-" + std::to_string(::getpid()) + "-cue/";
  std::filesystem::create_directory(folder);
  const test::Bytes audio =
      test::Mp3Builder{}.frames(100).shape({.bitrate = 64}).frames(300).bytes();
  write(folder + "a.mp3", audio.data(), audio.size());
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove_all("/tmp/corvelin-fuzz-" + std::to_string(::getpid()) + "-cue/",
                                ignored);
  });
  return folder;
}

void check_round_trip(const std::string& folder) {
  if (document.parts.empty()) return;
  open_state.project_name = folder + "out.cue";
  if (save_cue_sheet() == CueSheetSave::failed) std::abort();
  // Cues are read back a little in front of where they were, as borders of their own.
  if (document.parts.size() < most_parts / 2 && !load_cue_sheet(true)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string folder = make_folder();
  write(folder + "s.cue", data, size);
  for (const bool over_current_audio : {false, true}) {
    reset_state(ResetLevel::start);
    open_state.audio_name = over_current_audio ? folder + "a.mp3" : "";
    if (over_current_audio && !open_audio_file()) std::abort();
    open_state.project_name = folder + "s.cue";
    load_cue_sheet(over_current_audio);
    check_round_trip(folder);
    close_all();
  }
  return 0;
}

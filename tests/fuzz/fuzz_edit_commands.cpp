// SPDX-License-Identifier: GPL-2.0-or-later
// Takes any bytes as a sequence of commands, two bytes each, on a small document: frames of several
// lengths, junk between them, and a second file of another sample rate. After each command the
// tables have to be sound.
#include <cstdint>
#include <iterator>
#include <string>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "document/open_audio_file.h"
#include "edit/commands.h"
#include "edit/open_files.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/soundness.h"
#include "support/test_folder.h"

using namespace corvelin;

namespace {

struct Sources {
  test::Bytes first_bytes = test::Mp3Builder{}
                                .frames(12)
                                .raw(test::Bytes(20, 0x55))
                                .shape({.bitrate = 320})
                                .frames(6)
                                .raw(test::Bytes(12000, 0xFF))
                                .frames(3)
                                .shape({.has_padding = true, .noisy = true})
                                .frames(12)
                                .id3v1("title")
                                .bytes();
  test::Bytes second_bytes = test::Mp3Builder{}.shape({.sample_rate = 48000}).frames(10).bytes();
  test::TestFolder folder;
  std::string first = folder.file("first.mp3", first_bytes);
  std::string second = folder.file("second.mp3", second_bytes);
};

void open(const Sources& sources) {
  start_anew();
  test::require(open_audio_file(sources.first).empty());
  const auto size = static_cast<std::uint32_t>(sources.second_bytes.size());
  const auto file = add_source_file(document, sources.second);
  test::require(file.has_value());
  document.files[*file].audio_end = size;
  add_part(document, document.total_size, *file, 0, size);
}

EditPosition place(std::uint8_t byte) {
  return frame_at(document,
                  static_cast<EditPosition>(std::uint64_t{document.total_size} * byte / 255),
                  selection.current_frame);
}

PartIndex part_of(std::uint8_t byte) { return static_cast<PartIndex>(byte % part_count(document)); }

using Arrangement = void (*)(std::uint8_t argument);

constexpr Arrangement arrangements[] = {
    [](std::uint8_t byte) { seek_to(playback, place(byte)); },
    [](std::uint8_t byte) { seek_to(playback, document.parts[part_of(byte)].part_beg); },
    [](std::uint8_t byte) { document.current_part = part_of(byte); },
    [](std::uint8_t byte) { set_sel_begin(document, selection, place(byte)); },
    [](std::uint8_t byte) { set_sel_end(document, selection, place(byte)); },
    [](std::uint8_t byte) {
      document.parts[document.current_part].part_gainbeg = static_cast<std::int8_t>(byte);
    },
};

constexpr CommandId edits[] = {152, 153, 1029, 1020, 1066, 1048, 1049, 1035, 204,  1074,
                               205, 206, 207,  208,  209,  210,  1072, 1046, 1022, 1036};

void run(std::uint8_t first, std::uint8_t second) {
  if (first % 3 == 0) {
    arrangements[first / 3 % std::size(arrangements)](second);
  } else {
    dispatch_command(edits[second % std::size(edits)]);
  }
}

// Edits alone never lead out of the audio of a file.
void check_document() {
  test::require_sound_document();
  test::require(!document.parts.empty());
  for (const Part& part : document.parts) {
    const SourceFile& file = document.files[part.part_file];
    test::require(part.part_filepos >= file.first_audio);
    test::require(std::uint64_t{part.part_filepos} + part.part_size <= file.audio_end);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t most_commands = 400;
  static const Sources sources;
  connect_levels();
  open(sources);
  for (std::size_t i = 0; i + 1 < size && i < 2 * most_commands; i += 2) {
    run(data[i], data[i + 1]);
    check_document();
  }
  close_all();
  return 0;
}

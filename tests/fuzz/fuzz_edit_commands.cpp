// SPDX-License-Identifier: GPL-2.0-or-later
// Takes any bytes as a sequence of commands, two bytes each, on a small document: frames of several
// lengths, junk between them, and a second file of another sample rate. After each command the
// tables have to be sound.
#include <cstdint>
#include <iterator>
#include <string>

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "opening/open_audio_file.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
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

void open(Editor& editor, const Sources& sources) {
  settings = default_settings();
  test::require(
      open_audio_file(editor.document, editor.selection, editor.open_state, sources.first).empty());
  const auto size = static_cast<std::uint32_t>(sources.second_bytes.size());
  const auto file = add_source_file(editor.document, sources.second);
  test::require(file.has_value());
  editor.document.files[*file].audio_end = size;
  add_part(editor.document, editor.document.total_size, *file, 0, size);
}

EditPosition place(Editor& editor, std::uint8_t byte) {
  return frame_at(editor.document,
                  static_cast<EditPosition>(std::uint64_t{editor.document.total_size} * byte / 255),
                  editor.selection.current_frame);
}

PartIndex part_of(Editor& editor, std::uint8_t byte) {
  return static_cast<PartIndex>(byte % part_count(editor.document));
}

using Arrangement = void (*)(Editor& editor, std::uint8_t argument);

constexpr Arrangement arrangements[] = {
    [](Editor& editor, std::uint8_t byte) { seek_to(editor.playback, place(editor, byte)); },
    [](Editor& editor, std::uint8_t byte) {
      seek_to(editor.playback, editor.document.parts[part_of(editor, byte)].part_beg);
    },
    [](Editor& editor, std::uint8_t byte) { editor.document.current_part = part_of(editor, byte); },
    [](Editor& editor, std::uint8_t byte) {
      set_sel_begin(editor.document, editor.selection, place(editor, byte));
    },
    [](Editor& editor, std::uint8_t byte) {
      set_sel_end(editor.document, editor.selection, place(editor, byte));
    },
    [](Editor& editor, std::uint8_t byte) {
      editor.document.parts[editor.document.current_part].part_gainbeg =
          static_cast<std::int8_t>(byte);
    },
};

constexpr CommandId edits[] = {152, 153, 1029, 1020, 1066, 1048, 1049, 1035, 204,  1074,
                               205, 206, 207,  208,  209,  210,  1072, 1046, 1022, 1036};

void run(Editor& editor, std::uint8_t first, std::uint8_t second) {
  if (first % 3 == 0) {
    arrangements[first / 3 % std::size(arrangements)](editor, second);
  } else {
    dispatch_command(editor, edits[second % std::size(edits)]);
  }
}

// Edits alone never lead out of the audio of a file.
void check_document(Editor& editor) {
  test::require_sound_document(editor);
  test::require(!editor.document.parts.empty());
  for (const Part& part : editor.document.parts) {
    const SourceFile& file = editor.document.files[part.part_file];
    test::require(part.part_filepos >= file.first_audio);
    test::require(std::uint64_t{part.part_filepos} + part.part_size <= file.audio_end);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Editor editor;
  constexpr std::size_t most_commands = 400;
  static const Sources sources;
  connect_levels(editor);
  open(editor, sources);
  for (std::size_t i = 0; i + 1 < size && i < 2 * most_commands; i += 2) {
    run(editor, data[i], data[i + 1]);
    check_document(editor);
  }
  close_all(editor);
  return 0;
}

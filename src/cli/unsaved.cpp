// SPDX-License-Identifier: GPL-2.0-or-later
// Comparing of the document with what was saved last.
#include "cli/unsaved.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/messages.h"
#include "edit/editor.h"
#include "model/document.h"
#include "model/frame_reader.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

// All that a save would write.
struct Content {
  std::vector<Part> parts;
  std::int16_t end_gain = 0;
  std::u16string sheet_title;
  std::u16string sheet_artist;
  HeaderRewrite header_bits;
  std::array<std::uint8_t, 128> id3v1 = {};
  bool operator==(const Content&) const = default;
};

Content content(const Editor& editor) {
  return {.parts = editor.document.parts,
          .end_gain = editor.document.end_gain,
          .sheet_title = editor.document.sheet_title,
          .sheet_artist = editor.document.sheet_artist,
          .header_bits = editor.document.header_rewrite,
          .id3v1 = editor.document.stream.id3v1};
}

Content saved;

}  // namespace

void remember_saved(const Editor& editor) { saved = content(editor); }

void tell_unsaved_edits(const Editor& editor) {
  if (editor.document.parts.empty() || content(editor) == saved) return;
  complain("nothing saved the edited document; -o PATH does, or the line save PATH");
}

}  // namespace corvelin

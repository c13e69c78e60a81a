// Pastes any bytes over a selection of a document. What stands then must be sound, and what was
// pasted must copy and paste again. "$" in the text is the folder with the files.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "document/open_document.h"
#include "document/open_state.h"
#include "edit/clipboard.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/clipboard.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/test_folder.h"

using namespace corvelin;

namespace {

std::string content;

void require(bool holds) {
  if (!holds) std::abort();
}

void require_sound_document() {
  EditPosition pos = 0;
  for (const Part& part : document.parts) {
    require(part.part_beg == pos && part.part_size != 0 && part.part_file < document.files.size());
    pos += part.part_size;
  }
  require(pos == document.total_size && document.current_part < document.parts.size());
  require(selection.sel_beg <= selection.sel_end && selection.sel_end <= pos);
  for (const SourceFile& file : document.files) require(file.first_audio < file.audio_end);
}

std::string with_folder(std::string text, const std::string& folder) {
  for (std::size_t at = text.find('$'); at != std::string::npos; at = text.find('$', at + 1))
    text.replace(at, 1, folder);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::TestFolder folder;
  static const std::string a = folder.file("a.mp3", test::Mp3Builder{}.frames(20).bytes());
  static const std::string b = folder.file("b.mp3", test::Mp3Builder{}.frames(10).bytes());
  clipboard_handler = {
      .set = [](std::string_view text) { return content = text, true; },
      .get = [](std::string& text) { return text = content, ClipboardContent::text; }};
  start_up(std::nullopt);
  require(open_file(a));
  set_sel_begin(417);
  set_sel_end(834);
  content = with_folder({reinterpret_cast<const char*>(data), size}, folder.path(""));
  const PasteResult result = paste_from_clipboard();
  if (result != PasteResult::foreign_text) require_sound_document();
  if (result == PasteResult::pasted && document.parts.size() < most_parts / 2 && copy()) {
    require(paste_from_clipboard() == PasteResult::pasted);
    require_sound_document();
  }
  shut_down();
  return 0;
}

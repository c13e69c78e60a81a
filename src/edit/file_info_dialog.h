// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "File info": a summary of the stream, the ID3v1 tag, the header bits to be written and
// what a save keeps. The summary is a list of lines that a host shows again and again while audio
// plays.
#pragma once

#include <string>
#include <vector>

#include "edit/outcome.h"
#include "exchange/id3v1.h"
#include "model/document.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct InfoLine {
  std::string label;  // as the text table has it, with its colon
  std::string value;
};

/// The summary, with `pos` as the current position: the cursor, or where the listener is. The line
/// of an APE tag is there only with one. Empty without a document.
std::vector<InfoLine> file_info_lines(const Editor& editor, EditPosition pos);

struct FileInfoDialog : Dialog {
  Editor& editor;

  explicit FileInfoDialog(Editor& opened_for) : editor(opened_for) {}

  TagDialog tag;
  bool rewrite_header = false;  // the box "Modify bits"; without it the three bits mean nothing
  bool rewrite_copyright = false;
  bool rewrite_original = false;
  bool rewrite_private = false;
  bool write_xing = false;
  bool keep_info = false;
  bool keep_lame = false;
  bool keep_id3v2 = false;
  bool can_edit_boxes = true;  // AAC has no such header, and the rest is not for it

  /// Takes the values of the document and the settings.
  void begin() override;

  [[nodiscard]] bool can_edit_bits() const { return rewrite_header && can_edit_boxes; }

  /// Writes the values back. The bits take effect in the frames when they are saved.
  bool accept() override;

 private:
  [[nodiscard]] Outcome write() const;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "Names and part properties": the texts and the cue flag of the current part, and the
// texts of the album.
#pragma once

#include <cstddef>
#include <string>

#include "edit/outcome.h"
#include "model/document.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct NamesDialog : Dialog {
  Editor& editor;

  explicit NamesDialog(Editor& opened_for) : editor(opened_for) {}

  /// Most characters of each text.
  static constexpr std::size_t text_limit = 400;

  PartIndex part = 0;  // fixed when the dialog begins
  std::u16string part_artist;
  std::u16string part_title;
  bool part_iscue = false;
  std::u16string sheet_artist;
  std::u16string sheet_title;

  /// Takes the values of the current part. A document is open.
  void begin() override;

  /// The title of the part's group: "Part #3".
  [[nodiscard]] std::string group_title() const;

  /// Takes an undo step and writes the values to the document. An empty text means none.
  bool accept() override;

 private:
  [[nodiscard]] Outcome write() const;
};

}  // namespace corvelin

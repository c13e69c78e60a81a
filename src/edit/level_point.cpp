// SPDX-License-Identifier: GPL-2.0-or-later
// Cues beside levels.
#include "edit/level_point.h"

#include "edit/editor.h"

namespace corvelin {

void clear_cues_round_level(Editor& editor, PartIndex index) {
  if (editor.document.parts.empty() || index > part_count(editor.document)) return;
  touch(editor.document);
  if (index == part_count(editor.document)) {
    editor.document.parts.back().part_iscue = 0;
    return;
  }
  if (editor.document.parts[index].part_gainbeg == 0) return;
  const std::size_t first = index > 0 ? index - std::size_t{1} : 0;
  const std::size_t behind = index + std::size_t{2};
  for (std::size_t i = first; i < behind && i < editor.document.parts.size(); ++i)
    editor.document.parts[i].part_iscue = 0;
}

}  // namespace corvelin

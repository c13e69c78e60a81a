// SPDX-License-Identifier: GPL-2.0-or-later
// Checks of the tables and places.
#include "support/soundness.h"

#include <cstdio>
#include <cstdlib>

#include "edit/editor.h"
#include "model/document.h"
#include "model/selection.h"

namespace corvelin::test {

namespace {

std::string fault_of_parts(const Editor& editor) {
  EditPosition pos = 0;
  for (const Part& part : editor.document.parts) {
    if (part.part_beg != pos) return "parts that don't touch";
    if (part.part_size == 0) return "an empty part";
    if (part.part_file >= editor.document.files.size()) return "a part without a file";
    pos += part.part_size;
  }
  return editor.document.total_size == pos ? "" : "a wrong total size";
}

std::string fault_of_selection(const Editor& editor) {
  if ((editor.selection.sel_beg == no_position) != (editor.selection.sel_end == no_position))
    return "one end of a selection";
  if (editor.selection.sel_beg == no_position) return {};
  if (editor.selection.sel_beg > editor.selection.sel_end)
    return "a selection that ends before it begins";
  return editor.selection.sel_end <= editor.document.total_size ? "" : "a selection behind the end";
}

}  // namespace

std::string document_fault(const Editor& editor) {
  if (editor.document.parts.size() > most_parts || editor.document.files.size() > most_files)
    return "a table beyond its limit";
  if (!editor.document.parts.empty() &&
      editor.document.current_part >= editor.document.parts.size())
    return "a current part that is not there";
  if (editor.selection.cursor > editor.document.total_size) return "a cursor behind the end";
  const std::string parts = fault_of_parts(editor);
  return parts.empty() ? fault_of_selection(editor) : parts;
}

void require(bool holds) {
  if (!holds) std::abort();
}

void require_sound_document(const Editor& editor) {
  const std::string fault = document_fault(editor);
  std::fputs(fault.c_str(), stderr);
  require(fault.empty());
}

}  // namespace corvelin::test

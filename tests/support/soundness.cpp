// SPDX-License-Identifier: GPL-2.0-or-later
// Checks of the tables and places.
#include "support/soundness.h"

#include <cstdio>
#include <cstdlib>

#include "model/document.h"
#include "model/selection.h"
#include "model/the_document.h"

namespace corvelin::test {

namespace {

std::string fault_of_parts() {
  EditPosition pos = 0;
  for (const Part& part : document.parts) {
    if (part.part_beg != pos) return "parts that don't touch";
    if (part.part_size == 0) return "an empty part";
    if (part.part_file >= document.files.size()) return "a part without a file";
    pos += part.part_size;
  }
  return document.total_size == pos ? "" : "a wrong total size";
}

std::string fault_of_selection() {
  if ((selection.sel_beg == no_position) != (selection.sel_end == no_position))
    return "one end of a selection";
  if (selection.sel_beg == no_position) return {};
  if (selection.sel_beg > selection.sel_end) return "a selection that ends before it begins";
  return selection.sel_end <= document.total_size ? "" : "a selection behind the end";
}

}  // namespace

std::string document_fault() {
  if (document.parts.size() > most_parts || document.files.size() > most_files)
    return "a table beyond its limit";
  if (!document.parts.empty() && document.current_part >= document.parts.size())
    return "a current part that is not there";
  if (selection.cursor > document.total_size) return "a cursor behind the end";
  const std::string parts = fault_of_parts();
  return parts.empty() ? fault_of_selection() : parts;
}

void require(bool holds) {
  if (!holds) std::abort();
}

void require_sound_document() {
  const std::string fault = document_fault();
  std::fputs(fault.c_str(), stderr);
  require(fault.empty());
}

}  // namespace corvelin::test

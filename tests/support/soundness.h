// SPDX-License-Identifier: GPL-2.0-or-later
// What holds of the document and the places in it between any two operations.
#pragma once

#include <string>

#include "edit/editor.h"

namespace corvelin::test {

/// What doesn't hold, in words; empty when all is sound.
std::string document_fault(const Editor& editor);

/// For fuzz targets: ends the process when something doesn't hold.
void require(bool holds);
void require_sound_document(const Editor& editor);

}  // namespace corvelin::test

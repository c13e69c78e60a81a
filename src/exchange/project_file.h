// SPDX-License-Identifier: GPL-2.0-or-later
// The edit state of a document as a text: its source files, all parts, the closing gain, cursor,
// selection and album names, as project files (".cvp") have it. It holds no audio: the sources are
// named by their paths, relative to the project's folder where they lie in it, so that a folder may
// move as a whole.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "model/document.h"
#include "model/selection.h"
#include "opening/file_fault.h"
#include "opening/open_state.h"

namespace corvelin {

/// The project text of the document as it stands, with the place `cursor`. Paths in `folder` (with
/// its
/// "/") or below it are written relative to it; without one all paths are whole.
std::string project_text(const Document& document, const Selection& selection, EditPosition cursor,
                         const std::string& folder = {});

/// Builds the document from a project text, into tables that are empty. The first source is probed
/// afresh; the bounds of the others are those of the text.
///
/// Where but the tag in front of a source's audio has another length since the text was made, the
/// parts and bounds are moved along. That, and a source with other audio, is told in a box.
///
/// A fault when a source can't be opened, and when the text describes what no document can be: a
/// file that isn't there, a range that runs beyond 4 GiB, too many parts. The document then stands
/// as far as it was built.
OpenFault parse_project(Document& document, Selection& selection, OpenState& open_state,
                        std::string_view text);

/// Writes the document, with the place `cursor`, to a file, where none stands or one of a project:
/// beside the old one and then over it. It then counts as unmodified.
std::error_code write_project(const Document& document, const Selection& selection,
                              OpenState& open_state, const std::string& name, EditPosition cursor);

/// Reads `open_state.project_name`. A fault closes the document.
OpenFault read_project(Document& document, Selection& selection, OpenState& open_state);

}  // namespace corvelin

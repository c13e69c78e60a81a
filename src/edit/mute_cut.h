// SPDX-License-Identifier: GPL-2.0-or-later
// Mute cut: a short dip of the level around a cut, for one that clicks.
#pragma once

namespace corvelin {

struct Editor;

/// Lets the level fall to -48 dB within the frame in front of the cut and climb back over the
/// frames behind it. There is a real cut at the current part's start, and the stream's level can be
/// changed.
void mute_cut(Editor& editor);

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Audio that is not silent, from the shipped samples.
#pragma once

#include "support/mp3_builder.h"

namespace corvelin::test {

/// Frames of a tone (128 kbit/s, 44.1 kHz, peaks at 12000), to stand among frames of the builder.
Bytes tone_frames(int count);

}  // namespace corvelin::test

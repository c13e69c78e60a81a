// SPDX-License-Identifier: GPL-2.0-or-later
// Cutting of the samples.
#include "support/sample_audio.h"

#include <algorithm>
#include <string>

#include "support/test_folder.h"

namespace corvelin::test {

Bytes tone_frames(int count) {
  const Bytes file = read_file(CORVELIN_SAMPLES "/cbr128.mp3");
  const Bytes header = {0xFF, 0xFB};
  auto begin = std::search(file.begin(), file.end(), header.begin(), header.end());
  const auto pass_frames = [](auto at, int frames) {
    for (; frames > 0; --frames) at += 417 + (at[2] >> 1 & 1);  // a padding byte
    return at;
  };
  begin = pass_frames(begin, 5);  // the Info frame, and where the tone is faded in
  return {begin, pass_frames(begin, count)};
}

}  // namespace corvelin::test

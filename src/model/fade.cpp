// SPDX-License-Identifier: GPL-2.0-or-later
// The curve of a fade.
#include "model/fade.h"

#include <cmath>

namespace corvelin {

int gain_at(const Document& document, EditPosition pos, PartIndex part) {
  const Part& range = document.parts[part];
  const double start = range.part_gainbeg;
  const double target = gain_behind(document, part);
  const double change = target - start;
  if (change == 0) return range.part_gainbeg;  // a level, which a save asks for at every frame
  const double t = 1.5 * (pos - range.part_beg) / range.part_size;
  const double gain = change > 0 ? target + (std::cos(t - 1.6) - 1) * change
                                 : start - (std::cos(t + 0.1) - 1) * change;
  return static_cast<int>(static_cast<float>(gain));  // truncates
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// What a save leaves out of its range: bytes that no frame could be made of, as bad data and the
// end of a file that was cut off leave them. Owns what of that the user has to be told.
//
// A re-sync at a joint or a broken last frame costs up to a tenth of a second, or two frames where
// those take longer. That is usual at each joint; elsewhere it is all that may be missing in all.
// Tags in the middle of a stream, as files have that were put behind one another, are no loss.
#pragma once

#include <cstdint>
#include <string>

#include "model/document.h"

namespace corvelin {

class LeftOut {
 public:
  /// A reader that delivered all up to `begin` went on at `end`. `frame_length` is that of the
  /// frame it looked at last, in bytes. Adjoining places are one.
  void add(const Document& document, EditPosition begin, EditPosition end,
           std::uint32_t frame_length);

  /// At the end of the range: "3.2 seconds are missing, the first of them at 1'05.50." Empty when
  /// there is no more than the usual loss.
  [[nodiscard]] std::string text(const Document& document);

 private:
  void settle(const Document& document);

  EditPosition begin_ = 0;  // of the place that is still growing
  EditPosition end_ = 0;
  std::uint32_t frame_length_ = 0;
  std::uint64_t missing_ = 0;  // bytes, of the places before
  EditPosition first_ = no_position;
};

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Puts controls into rows from left to right, as many into each as fit.
#pragma once

#include <vector>

#include "edit/commands.h"
#include "shell/canvas.h"

namespace corvelin {

struct PlacedButton {
  CommandId id = 0;
  Rect area;
};

/// A control on its way to a place: the button of a command, or one whose place is noted in `area`.
/// One that stretches takes a share of what is left of its row; without a command and an area it
/// only parts what stands on its sides.
struct FlowItem {
  CommandId id = 0;
  Rect* area = nullptr;
  int width = 0;  // at least
  int height = 0;
  bool stretches = false;
};

class RowFlow {
 public:
  /// Rows from the top of `space` down, as wide as it is. `gap` lies between groups, `row_gap`
  /// between rows. Buttons are added to `buttons` in their order.
  RowFlow(const Rect& space, int gap, int row_gap, std::vector<PlacedButton>& buttons)
      : space_(space), gap_(gap), row_gap_(row_gap), buttons_(buttons), bottom_(space.top) {}

  /// Items that stand side by side without a gap, in one row, unless that is too narrow for them.
  void add_group(const std::vector<FlowItem>& group);
  void add(const FlowItem& item) { add_group({item}); }
  void end_row();

  /// Whether an item of its own with that width still goes into the row.
  [[nodiscard]] bool has_room_for(int width) const {
    return row_.empty() || row_width_ + gap_ + width <= space_.width();
  }

  [[nodiscard]] int bottom() const { return bottom_; }

 private:
  void place(const FlowItem& item, const Rect& area);

  Rect space_;
  int gap_;
  int row_gap_;
  std::vector<PlacedButton>& buttons_;
  std::vector<std::vector<FlowItem>> row_;
  int row_width_ = 0;
  int bottom_;
};

}  // namespace corvelin

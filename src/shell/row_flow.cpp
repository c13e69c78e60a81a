// SPDX-License-Identifier: GPL-2.0-or-later
// Breaking into rows, and the places in each.
#include "shell/row_flow.h"

#include <algorithm>

namespace corvelin {

void RowFlow::add_group(const std::vector<FlowItem>& group) {
  int width = 0;
  for (const FlowItem& item : group) width += item.width;
  if (width > space_.width() && group.size() > 1) {
    for (const FlowItem& item : group) add(item);
    return;
  }
  if (!has_room_for(width)) end_row();
  row_width_ += width + (row_.empty() ? 0 : gap_);
  row_.push_back(group);
}

void RowFlow::end_row() {
  if (row_.empty()) return;
  int height = 0;
  int stretching = 0;
  for (const auto& group : row_) {
    for (const FlowItem& item : group) {
      height = std::max(height, item.height);
      stretching += item.stretches ? 1 : 0;
    }
  }
  int spare = std::max(space_.width() - row_width_, 0);
  if (bottom_ > space_.top) bottom_ += row_gap_;
  int x = space_.left;
  for (const auto& group : row_) {
    for (const FlowItem& item : group) {
      int width = item.width;
      if (item.stretches) {
        const int share = spare / stretching--;
        width += share;
        spare -= share;
      }
      const int y = bottom_ + (height - item.height) / 2;
      place(item, {x, y, x + width, y + item.height});
      x += width;
    }
    x += gap_;
  }
  bottom_ += height;
  row_.clear();
  row_width_ = 0;
}

void RowFlow::place(const FlowItem& item, const Rect& area) {
  if (item.area != nullptr) {
    *item.area = area;
  } else if (item.id != 0) {
    buttons_.push_back({item.id, area});
  }
}

}  // namespace corvelin

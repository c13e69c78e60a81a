// SPDX-License-Identifier: GPL-2.0-or-later
// A host for work that nobody looks at: there is no one to close a box, so that it gets its default
// answer, and what it says is kept. What is on screen is still kept up to date.
#pragma once

#include <utility>
#include <vector>

#include "platform/host.h"

namespace corvelin {

/// Stands in front of the installed host for as long as it lives.
class QuietHost : public Host {
 public:
  QuietHost() : behind_(host()) { install_host(this); }
  ~QuietHost() override { install_host(&behind_); }
  QuietHost(const QuietHost&) = delete;
  QuietHost& operator=(const QuietHost&) = delete;

  BoxAnswer show_message_box(const MessageBox& box) override {
    boxes_.push_back(box);
    return box.default_answer;
  }
  void refresh_view(Refresh level) override { behind_.refresh_view(level); }
  void rebuild_part_list() override { behind_.rebuild_part_list(); }
  void rebuild_recent_menu() override { behind_.rebuild_recent_menu(); }
  void update_menu_state(std::uint8_t mask) override { behind_.update_menu_state(mask); }
  void show_transport() override { behind_.show_transport(); }

  /// The boxes since the last call.
  std::vector<MessageBox> take_boxes() { return std::exchange(boxes_, {}); }

 private:
  Host& behind_;
  std::vector<MessageBox> boxes_;
};

}  // namespace corvelin

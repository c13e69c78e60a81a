// SPDX-License-Identifier: GPL-2.0-or-later
// What sound needs of a desktop: events of the devices out of the event loop, the volume of the
// slider from the start, and Escape, which ends a play.
#pragma once

#include <QObject>

class QShortcut;
class QWidget;

namespace corvelin {

struct Editor;

class SoundEvents : public QObject {
 public:
  /// Belongs to the window.
  SoundEvents(Editor& editor, QWidget& window);

  /// What plays has changed.
  void follow_playback();

 private:
  Editor& editor_;
  QShortcut* escape_;
};

}  // namespace corvelin

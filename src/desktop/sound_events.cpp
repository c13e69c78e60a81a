// SPDX-License-Identifier: GPL-2.0-or-later
// Sound devices and the event loop.
#include "desktop/sound_events.h"

#include <QShortcut>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include "audio/playback.h"
#include "edit/editor.h"
#include "platform/devices/wave_device.h"

namespace corvelin {

SoundEvents::SoundEvents(Editor& editor, QWidget& window)
    : QObject(&window), editor_(editor), escape_(new QShortcut(Qt::Key_Escape, &window)) {
  const auto deliver = [] { deliver_wave_events(); };
  auto* const notifier = new QSocketNotifier(wave_event_descriptor(), QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, deliver);
  auto* const timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, deliver);
  timer->start(wave_look_interval);
  connect(escape_, &QShortcut::activated, this,
          [this] { editor_.playback.stops_at_buffer = true; });
  escape_->setEnabled(false);
  apply_volume();
}

void SoundEvents::follow_playback() { escape_->setEnabled(editor_.playback.is_playing); }

}  // namespace corvelin

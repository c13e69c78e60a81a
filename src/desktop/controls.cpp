// SPDX-License-Identifier: GPL-2.0-or-later
// Keys and texts of the controls.
#include "desktop/controls.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <utility>

#include "desktop/qt_text.h"
#include "edit/time_fields.h"
#include "model/document.h"
#include "platform/host.h"
#include "shell/status_display.h"
#include "shell/window_events.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

bool is_return(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// In a line of Hebrew or Arabic the digits on both sides of a "'" would change places. A mark that
// is not seen keeps them as they are.
constexpr QChar left_to_right_mark(0x200E);

QString with_marked_numbers(QString text) {
  static const QRegularExpression number(QStringLiteral("([0-9][0-9:'.]*)"));
  return text.isRightToLeft() ? text.replace(number, left_to_right_mark + QStringLiteral("\\1"))
                              : text;
}

}  // namespace

CommandButton::CommandButton(CommandId id, const RunCommand& run, QWidget* parent)
    : QToolButton(parent), id_(id) {
  setObjectName(QStringLiteral("command_%1").arg(id));
  setAutoRaise(true);
  setFocusPolicy(Qt::TabFocus);
  // Later, as a screen reader that presses the button waits for the answer, and must not wait for
  // the end of a dialog.
  const auto press = [this, run] {
    if (!isCheckable()) run(id_);
  };
  const auto toggle = [this, run] { run(id_); };
  connect(this, &QToolButton::clicked, this, press, Qt::QueuedConnection);
  connect(this, &QToolButton::toggled, this, toggle, Qt::QueuedConnection);
}

void CommandButton::show_checked(bool is_checked) {
  const QSignalBlocker quiet(this);
  setChecked(is_checked);
}

void CommandButton::keyPressEvent(QKeyEvent* event) {
  if (is_return(*event)) {
    animateClick();
  } else {
    event->ignore();
  }
}

TimeField::TimeField(Editor& editor, Meaning meaning, RunCommand run, QWidget* parent)
    : QLineEdit(parent), editor_(editor), meaning_(meaning), run_(std::move(run)) {
  setObjectName(meaning == Meaning::position ? QStringLiteral("position_field")
                                             : QStringLiteral("range_field"));
}

void TimeField::show_status(const QString& status) {
  const QString text = with_marked_numbers(status);
  status_ = status;
  if (hasFocus() && isModified()) return;
  if (text == this->text()) return;
  const int place = cursorPosition();
  setText(text);
  setCursorPosition(hasFocus() ? place : 0);
}

void TimeField::enter() { setFocus(Qt::ShortcutFocusReason); }

// Typing replaces the time alone: without its labels a field means nothing.
void TimeField::select_time() {
  static const QRegularExpression time(QStringLiteral("[0-9][0-9:'.]*"));
  const std::string_view label = ui_text(win, meaning_ == Meaning::position ? 21 : 22);
  const qsizetype from = std::max<qsizetype>(text().lastIndexOf(as_qstring(label)), 0);
  const QRegularExpressionMatch match = time.match(text(), from);
  if (match.hasMatch())
    setSelection(static_cast<int>(match.capturedStart()), static_cast<int>(match.capturedLength()));
}

// All keys are the field's own, whatever they mean elsewhere in the window.
bool TimeField::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
      keyPressEvent(key);
      return true;
    }
  }
  return QLineEdit::event(event);
}

void TimeField::keyPressEvent(QKeyEvent* event) {
  const bool is_tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
  if (is_return(*event) || is_tab) {
    apply();
    leave();
  } else if (event->key() == Qt::Key_Escape) {
    leave();
  } else {
    QLineEdit::keyPressEvent(event);
  }
}

void TimeField::apply() {
  if (is_busy()) return;
  const std::string typed = as_utf8(text().remove(left_to_right_mark));
  setModified(false);
  if (meaning_ == Meaning::position) {
    apply_now_field(editor_, typed);
  } else {
    apply_selection_field(editor_, typed);
  }
}

void TimeField::leave() { window()->setFocus(Qt::OtherFocusReason); }

void TimeField::focusInEvent(QFocusEvent* event) {
  if (meaning_ == Meaning::range) run_(command::begin_selection_for_field);
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
    select_time();
}

void TimeField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() == Qt::PopupFocusReason) return;  // its own menu
  setModified(false);
  show_status(status_);
}

InfoBar::InfoBar(QWidget* parent) : QLineEdit(parent) {
  setObjectName(QStringLiteral("info_bar"));
  setReadOnly(true);
  setFrame(false);
}

bool InfoBar::event(QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return QLineEdit::event(event);
  event->ignore();
  return false;
}

PositionBar::PositionBar(Editor& editor, RunCommand run, QWidget* parent)
    : QScrollBar(Qt::Horizontal, parent), run_(std::move(run)) {
  setObjectName(QStringLiteral("position_bar"));
  setRange(0, scroll_end);
  setPageStep(scroll_page);
  setFocusPolicy(Qt::TabFocus);
  connect(this, &QScrollBar::actionTriggered, [this](int action) { act(action); });
  connect(this, &QScrollBar::valueChanged, [&editor](int position) {
    if (!is_busy()) scroll_to(editor, position);
  });
}

void PositionBar::show_position(int position) {
  const QSignalBlocker blocker(this);  // only a move by somebody else is one of the cursor
  if (!isSliderDown()) setValue(position);
}

// The thumb alone moves by itself; all else is a command, which brings it to its place.
void PositionBar::act(int action) {
  if (action == SliderMove) return;
  setSliderPosition(value());
  if (is_busy()) return;
  switch (action) {
    case SliderSingleStepSub:
      run_(command::frame_back);
      break;
    case SliderSingleStepAdd:
      run_(command::frame_forward);
      break;
    case SliderPageStepSub:
      run_(command::skip_back_large);
      break;
    case SliderPageStepAdd:
      run_(command::skip_forward_large);
      break;
    default:
      break;
  }
}

}  // namespace corvelin

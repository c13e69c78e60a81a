// SPDX-License-Identifier: GPL-2.0-or-later
// The controls of the main window beside the view: buttons for commands, the two time fields, the
// bar of the stream's parameters, the position scroll bar. Each knows how it deals with keys: all
// those of the accelerator table belong to the window, but in the time fields.
#pragma once

#include <QLineEdit>
#include <QScrollBar>
#include <QToolButton>
#include <functional>

#include "edit/commands.h"

namespace corvelin {

struct Editor;

/// What a control does with its command. Tests look who asks for which.
using RunCommand = std::function<void(CommandId)>;

/// A button that runs a command. It can be reached by Tab and pressed by Return.
class CommandButton : public QToolButton {
 public:
  CommandButton(CommandId id, const RunCommand& run, QWidget* parent);

  [[nodiscard]] CommandId id() const { return id_; }

  /// What its command has made of the state that it holds.
  void show_checked(bool is_checked);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  CommandId id_;
};

/// A field of the status in which a time can be typed. Tab and Return apply the text; they and Esc
/// give the focus back.
class TimeField : public QLineEdit {
 public:
  enum class Meaning { position, range };

  TimeField(Editor& editor, Meaning meaning, RunCommand run, QWidget* parent);

  /// What the status says. A text that is being typed stays.
  void show_status(const QString& status);

  /// Goes into the field by a key: the first time in it that can be typed over is selected.
  void enter();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void apply();
  void leave();
  void select_time();

  Editor& editor_;
  Meaning meaning_;
  RunCommand run_;
  QString status_;
};

/// A text to be read, one line.
class InfoBar : public QLineEdit {
 public:
  explicit InfoBar(QWidget* parent);

 protected:
  bool event(QEvent* event) override;
};

/// The place in the stream, 0 to 1000.
class PositionBar : public QScrollBar {
 public:
  PositionBar(Editor& editor, RunCommand run, QWidget* parent);

  void show_position(int position);

 private:
  void act(int action);

  RunCommand run_;
};

}  // namespace corvelin

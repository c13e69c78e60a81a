// SPDX-License-Identifier: GPL-2.0-or-later
// What all dialogs are made of: labels in the user's language with the fields beside them as their
// buddies, and the buttons at the bottom.
#pragma once

#include <QDialog>
#include <QString>
#include <QWidget>
#include <string>

#include "text/ui_text.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSlider;

namespace corvelin {

/// The text of a control.
QString label(TextRow row);

/// A dialog over `parent` that knows the name of its record for outside programs.
class DialogWindow : public QDialog {
 public:
  DialogWindow(const QString& name, const QString& title, QWidget* parent);

  /// Appears as large as its texts are in the user's language and font. By itself the toolkit gives
  /// it two thirds of the screen at most. What the screen has no room for is scrolled to.
  void setVisible(bool visible) override;

 private:
  void scroll_content();
};

/// A row of a grid: a label, and beside it the field that it names.
void add_field(QGridLayout& grid, const QString& text, QWidget* field, const char* name);

QCheckBox* new_box(const QString& text, bool is_checked, const char* name);
QLineEdit* new_line(const QString& text, int most_characters);

/// A list to choose from, by a screen reader too.
QComboBox* new_list();

QProgressBar* new_progress_bar(const QString& accessible_name);

/// A slider, and the way to hand its value on. Its accessible name is that of the label beside it.
QSlider* new_slider(Qt::Orientation orientation, int lowest, int highest, int value,
                    const char* name);

/// What a slider's value means, in words on the label beside it and for those who can't see that.
void show_meaning(QSlider& slider, QLabel& beside, const std::string& meaning);

/// The button that sets the fields of a dialog to their defaults, which its record asks about.
QPushButton* new_defaults_button();

/// OK and Cancel. OK is the default.
QDialogButtonBox* ok_and_cancel(QPushButton** ok = nullptr);

}  // namespace corvelin

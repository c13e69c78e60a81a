// SPDX-License-Identifier: GPL-2.0-or-later
// The window "High speed" recording.
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class SpeedWindow : public DialogWindow {
 public:
  SpeedWindow(SpeedDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("speed_dialog"),
                     as_qstring(menu_text_plain(ui_text(row::high_speed_recording))), parent),
        dialog_(dialog) {
    auto* const note = new QLabel(label(row::note_on_speed));
    note->setWordWrap(true);
    factor_ = new QLabel;
    factor_->setObjectName(QStringLiteral("factor"));
    QDialogButtonBox* const buttons = ok_and_cancel();
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
      if (dialog_.accept()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const rows = new QVBoxLayout(this);
    rows->setSpacing(12);
    rows->addWidget(note);
    rows->addLayout(fields());
    rows->addLayout(presets());
    rows->addStretch();
    rows->addWidget(buttons);
    setMinimumWidth(420);
    show_speeds();
    original_->setFocus();
  }

 private:
  QGridLayout* fields() {
    auto* const grid = new QGridLayout;
    original_ =
        add_speed(*grid, as_qstring(ui_text(row::original_speed)), dialog_.original, "original");
    recording_ =
        add_speed(*grid, as_qstring(ui_text(row::recording_speed)), dialog_.recording, "recording");
    grid->addWidget(factor_, grid->rowCount() - 1, 2);
    grid->setColumnStretch(2, 1);
    return grid;
  }

  QLineEdit* add_speed(QGridLayout& grid, const QString& text, std::string& speed,
                       const char* name) {
    constexpr int longest_number = 12;
    QLineEdit* const field = new_line({}, longest_number);
    field->setMaximumWidth(field->fontMetrics().averageCharWidth() * (longest_number + 4));
    connect(field, &QLineEdit::textChanged, this, [this, &speed](const QString& typed) {
      speed = as_utf8(typed);
      show_factor();
    });
    add_field(grid, text, field, name);
    return field;
  }

  QHBoxLayout* presets() {
    auto* const row = new QHBoxLayout;
    for (const SpeedDialog::Preset& preset : SpeedDialog::presets) {
      auto* const button = new QPushButton(as_qstring(preset.text));
      button->setObjectName(button->text());
      button->setAutoDefault(false);
      connect(button, &QPushButton::clicked, this, [this, &preset] {
        dialog_.fill(preset);
        show_speeds();
      });
      row->addWidget(button);
    }
    return row;
  }

  void show_speeds() {
    original_->setText(as_qstring(dialog_.original));
    recording_->setText(as_qstring(dialog_.recording));
    show_factor();
  }

  void show_factor() { factor_->setText(as_qstring(dialog_.factor_text())); }

  SpeedDialog& dialog_;
  QLabel* factor_ = nullptr;
  QLineEdit* original_ = nullptr;
  QLineEdit* recording_ = nullptr;
};

}  // namespace

bool show_window(SpeedDialog& dialog, QWidget* parent) {
  return SpeedWindow(dialog, parent).exec() == QDialog::Accepted;
}

}  // namespace corvelin

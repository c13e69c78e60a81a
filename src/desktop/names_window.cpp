// SPDX-License-Identifier: GPL-2.0-or-later
// The window "Names and part properties".
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class NamesWindow : public DialogWindow {
 public:
  NamesWindow(NamesDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("names_dialog"),
                     as_qstring(menu_text_plain(ui_text(row::part_names))), parent),
        dialog_(dialog),
        part_artist_(new_text(dialog.part_artist)),
        part_title_(new_text(dialog.part_title)),
        part_iscue_(new_box(label(row::is_cue), dialog.part_iscue, "part_iscue")),
        sheet_artist_(new_text(dialog.sheet_artist)),
        sheet_title_(new_text(dialog.sheet_title)) {
    auto* const part = new QGroupBox(as_qstring(dialog.group_title()));
    auto* const part_grid = new QGridLayout(part);
    add_field(*part_grid, label(row::artist), part_artist_, "part_artist");
    add_field(*part_grid, label(row::title), part_title_, "part_title");
    part_grid->addWidget(part_iscue_, part_grid->rowCount(), 1);

    auto* const sheet = new QGroupBox(as_qstring(ui_text(row::album_or_sheet)));
    auto* const sheet_grid = new QGridLayout(sheet);
    add_field(*sheet_grid, label(row::artist), sheet_artist_, "sheet_artist");
    add_field(*sheet_grid, label(row::title), sheet_title_, "sheet_title");

    QDialogButtonBox* const buttons = ok_and_cancel();
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { take(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(part);
    rows->addWidget(sheet);
    rows->addWidget(buttons);
    part_title_->setFocus();
    setMinimumWidth(440);
  }

 private:
  static QLineEdit* new_text(const std::u16string& text) {
    return new_line(as_qstring(text), static_cast<int>(NamesDialog::text_limit));
  }

  void take() {
    dialog_.part_artist = part_artist_->text().toStdU16String();
    dialog_.part_title = part_title_->text().toStdU16String();
    dialog_.part_iscue = part_iscue_->isChecked();
    dialog_.sheet_artist = sheet_artist_->text().toStdU16String();
    dialog_.sheet_title = sheet_title_->text().toStdU16String();
    if (dialog_.accept()) accept();
  }

  NamesDialog& dialog_;
  QLineEdit* part_artist_;
  QLineEdit* part_title_;
  QCheckBox* part_iscue_;
  QLineEdit* sheet_artist_;
  QLineEdit* sheet_title_;
};

}  // namespace

bool show_window(NamesDialog& dialog, QWidget* parent) {
  if (NamesWindow(dialog, parent).exec() == QDialog::Accepted) return true;
  dialog.cancel();
  return false;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The window of the first start's choice of a language.
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "platform/processes/program.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class LanguageWindow : public DialogWindow {
 public:
  LanguageWindow(LanguageDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("language_dialog"), as_qstring(program_name), parent),
        dialog_(dialog),
        question_(new QLabel),
        list_(new QListWidget),
        portable_(new_box({}, dialog.is_portable, "portable")),
        portable_words_(new QLabel),
        buttons_(ok_and_cancel(&ok_)) {
    list_->setObjectName(QStringLiteral("language"));
    list_->setSpacing(2);
    for (const Language& language : dialog.languages) list_->addItem(as_qstring(language.entry()));
    list_->setCurrentRow(static_cast<int>(dialog.chosen));
    question_->setBuddy(list_);
    portable_words_->setWordWrap(true);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(question_);
    rows->addWidget(list_, 1);
    rows->addSpacing(8);
    rows->addWidget(portable_);
    rows->addWidget(portable_words_);
    rows->addSpacing(8);
    rows->addWidget(buttons_);
    show_texts();
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
      dialog_.choose(static_cast<std::size_t>(std::max(row, 0)));
      show_texts();
    });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
    connect(portable_, &QCheckBox::toggled, this, [this](bool is_set) {
      dialog_.set_portable(is_set);
      const QSignalBlocker quiet(portable_);
      portable_->setChecked(dialog_.is_portable);
    });
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    list_->setFocus();
  }

  void accept() override {
    if (dialog_.accept()) QDialog::accept();
  }

 private:
  void show_texts() {
    question_->setText(label(row::select_language));
    list_->setAccessibleName(question_->text());
    portable_->setText(label(row::portable_forced));
    portable_words_->setText(label(row::note_on_portable));
    portable_->setAccessibleDescription(portable_words_->text());
    ok_->setText(label(row::ok));
    buttons_->findChild<QPushButton*>(QStringLiteral("cancel"))->setText(label(row::cancel));
  }

  LanguageDialog& dialog_;
  QLabel* question_;
  QListWidget* list_;
  QCheckBox* portable_;
  QLabel* portable_words_;
  QPushButton* ok_ = nullptr;
  QDialogButtonBox* buttons_;
};

}  // namespace

bool show_window(LanguageDialog& dialog, QWidget* parent) {
  if (LanguageWindow(dialog, parent).exec() == QDialog::Accepted) return true;
  dialog.cancel();
  return false;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The window of split save, and the run behind its OK.
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

QLabel* new_words(const QString& text) {
  auto* const words = new QLabel(text);
  words->setTextFormat(Qt::PlainText);
  words->setWordWrap(true);
  words->setAlignment(Qt::AlignTop | Qt::AlignLeading);
  return words;
}

class SplitWindow : public DialogWindow {
 public:
  SplitWindow(SplitDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("split_dialog"),
                     as_qstring(menu_text_plain(ui_text(row::save_split))), parent),
        dialog_(dialog) {
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(folder_group());
    rows->addWidget(names_group());
    rows->addWidget(options_group());
    rows->addWidget(new_words(label(row::note_on_split)));
    rows->addLayout(progress_row());
    report_ = new_words({});
    report_->setObjectName(QStringLiteral("report"));
    report_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    report_->hide();
    rows->addWidget(report_);
    rows->addWidget(buttons());
    setMinimumWidth(620);
    show_fields();
    connect(&timer_, &QTimer::timeout, this, [this] { step(); });
  }

  // A run that waits for the disk can't be cancelled at once: it is asked again until it can.
  void reject() override {
    is_unwanted_ = true;
    if (dialog_.run && !dialog_.run->try_cancel()) return timer_.start(slice_patience);
    timer_.stop();
    take_fields();
    dialog_.cancel();
    QDialog::reject();
  }

 private:
  QGroupBox* folder_group() {
    auto* const group = new QGroupBox(label(row::destination_folder));
    auto* const row = new QHBoxLayout(group);
    folder_ = new_line({}, static_cast<int>(longest_setting));
    folder_->setObjectName(QStringLiteral("folder"));
    folder_->setAccessibleName(label(row::destination_folder));
    auto* const choose = new QPushButton(QStringLiteral("..."));
    choose->setObjectName(QStringLiteral("choose_folder"));
    choose->setAccessibleName(label(row::destination_folder) + QStringLiteral(" ..."));
    choose->setAutoDefault(false);
    choose->setFixedWidth(36);
    connect(choose, &QPushButton::clicked, this, [this] {
      const QString folder =
          QFileDialog::getExistingDirectory(this, label(row::destination_folder), folder_->text());
      if (!folder.isEmpty()) folder_->setText(folder);
    });
    row->addWidget(folder_);
    row->addWidget(choose);
    return group;
  }

  QGroupBox* names_group() {
    auto* const group = new QGroupBox(label(row::filename_creation));
    auto* const grid = new QGridLayout(group);
    pattern_ = new_line({}, static_cast<int>(longest_setting));
    pattern_->setObjectName(QStringLiteral("pattern"));
    pattern_->setAccessibleName(label(row::filename_creation));
    first_number_ = new QSpinBox;
    first_number_->setObjectName(QStringLiteral("first_number"));
    first_number_->setRange(0, 9999);
    auto* const words = new QLabel(label(row::number_begins_with));
    words->setBuddy(first_number_);
    grid->addWidget(pattern_, 0, 0, 1, 3);
    grid->addWidget(words, 1, 0);
    grid->addWidget(first_number_, 1, 1);
    auto* const texts = new QHBoxLayout;
    texts->addWidget(new_words(label(row::split_variables)), 1);
    texts->addSpacing(12);
    texts->addWidget(new_words(label(row::note_on_numbers)), 1);
    grid->addLayout(texts, 2, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    return group;
  }

  QGroupBox* options_group() {
    auto* const group = new QGroupBox(label(row::save_options));
    auto* const grid = new QGridLayout(group);
    id3v11_ = new_box(label(row::create_tags), false, "split_id3v11");
    id3v2_ = new_box(label(row::copy_id3v2), false, "split_id3v2");
    overlap_ = new_box(label(row::overlap), false, "overlaps");
    seconds_ = new QSpinBox;
    seconds_->setObjectName(QStringLiteral("overlap_seconds"));
    seconds_->setAccessibleName(label(row::overlap).remove(u'&'));
    seconds_->setRange(0, 127);
    connect(overlap_, &QCheckBox::toggled, seconds_, &QWidget::setEnabled);
    grid->addWidget(id3v11_, 0, 0, 1, 3);
    grid->addWidget(id3v2_, 1, 0, 1, 3);
    grid->addWidget(overlap_, 2, 0);
    grid->addWidget(seconds_, 2, 1);
    grid->setColumnStretch(2, 1);
    return group;
  }

  QHBoxLayout* progress_row() {
    auto* const row = new QHBoxLayout;
    auto* const cues = new QLabel(as_qstring(dialog_.cues_text));
    cues->setObjectName(QStringLiteral("cues"));
    bar_ = new_progress_bar(windowTitle());
    status_ = new QLabel;
    status_->setObjectName(QStringLiteral("status"));
    status_->setMinimumWidth(status_->fontMetrics().averageCharWidth() * 16);
    row->addWidget(cues);
    row->addWidget(bar_, 1);
    row->addWidget(status_);
    return row;
  }

  QDialogButtonBox* buttons() {
    QDialogButtonBox* const box = ok_and_cancel(&ok_);
    QPushButton* const defaults = new_defaults_button();
    box->addButton(defaults, QDialogButtonBox::ResetRole);
    connect(defaults, &QPushButton::clicked, this, [this] {
      take_fields();
      dialog_.restore_defaults();
      show_fields();
    });
    connect(box, &QDialogButtonBox::accepted, this, [this] { start(); });
    connect(box, &QDialogButtonBox::rejected, this, [this] { reject(); });
    return box;
  }

  void show_fields() {
    folder_->setText(QFile::decodeName(dialog_.folder.c_str()));
    pattern_->setText(as_qstring(dialog_.pattern));
    first_number_->setValue(dialog_.first_number);
    id3v11_->setChecked(dialog_.creates_id3v11);
    id3v2_->setChecked(dialog_.copies_id3v2);
    overlap_->setChecked(dialog_.overlaps);
    seconds_->setValue(dialog_.overlap_seconds);
    seconds_->setEnabled(dialog_.overlaps);
  }

  // A folder that was not touched keeps its bytes, whatever they are as a text.
  void take_fields() {
    if (folder_->text() != QFile::decodeName(dialog_.folder.c_str()))
      dialog_.folder = QFile::encodeName(folder_->text()).toStdString();
    dialog_.pattern = pattern_->text().toStdU16String();
    dialog_.first_number = static_cast<std::uint16_t>(first_number_->value());
    dialog_.creates_id3v11 = id3v11_->isChecked();
    dialog_.copies_id3v2 = id3v2_->isChecked();
    dialog_.overlaps = overlap_->isChecked();
    dialog_.overlap_seconds = static_cast<std::uint8_t>(seconds_->value());
  }

  void start() {
    timer_.stop();
    take_fields();
    if (!dialog_.accept()) return;
    ok_->setEnabled(false);
    status_->clear();
    report_->hide();
    bar_->setValue(0);
    timer_.start(0);
  }

  void step() {
    if (is_unwanted_) return reject();
    const bool has_more = dialog_.run->step();
    bar_->setValue(dialog_.run->percent_done());
    status_->setText(as_qstring(dialog_.run->progress_text()));
    if (has_more) return;
    timer_.stop();
    ok_->setEnabled(true);
    if (dialog_.run->result() == SplitResult::finished) return accept();
    status_->setText(as_qstring(dialog_.run->status()));
    report_->setText(as_qstring(dialog_.run->report()).remove(u'\r').trimmed());
    report_->show();
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
  }

  SplitDialog& dialog_;
  QTimer timer_;
  bool is_unwanted_ = false;
  QLineEdit* folder_ = nullptr;
  QLineEdit* pattern_ = nullptr;
  QSpinBox* first_number_ = nullptr;
  QCheckBox* id3v11_ = nullptr;
  QCheckBox* id3v2_ = nullptr;
  QCheckBox* overlap_ = nullptr;
  QSpinBox* seconds_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QLabel* status_ = nullptr;
  QLabel* report_ = nullptr;
  QPushButton* ok_ = nullptr;
};

}  // namespace

bool show_window(SplitDialog& dialog, QWidget* parent) {
  return SplitWindow(dialog, parent).exec() == QDialog::Accepted;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// Stepping of a run.
#include "desktop/run_window.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/qt_text.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

RunWindow::RunWindow(LongRun& run, bool batch_active, QWidget* parent)
    : DialogWindow(QStringLiteral("run_window"), label(row::create_audio_file), parent),
      run_(run),
      batch_active_(batch_active),
      bar_(new_progress_bar(windowTitle())),
      progress_(new QLabel),
      log_(new QPlainTextEdit),
      closes_(
          new_box(label(row::close_on_messages), settings.nokeep_savewin != 0, "nokeep_savewin")),
      button_(new QPushButton(label(row::cancel))) {
  progress_->setObjectName(QStringLiteral("progress"));
  progress_->setTextFormat(Qt::PlainText);
  log_->setObjectName(QStringLiteral("log"));
  log_->setReadOnly(true);
  log_->setTabChangesFocus(true);
  log_->setAccessibleName(windowTitle());
  log_->setFixedHeight(log_->fontMetrics().lineSpacing() * 6 + 12);
  button_->setObjectName(QStringLiteral("cancel"));
  button_->setAutoDefault(false);
  connect(button_, &QPushButton::clicked, this, [this] { reject(); });
  connect(closes_, &QCheckBox::toggled,
          [](bool is_set) { settings.nokeep_savewin = is_set ? 1 : 0; });

  auto* const bottom = new QHBoxLayout;
  bottom->addWidget(closes_, 1);
  bottom->addWidget(button_);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(progress_);
  rows->addWidget(bar_);
  rows->addWidget(log_);
  rows->addLayout(bottom);
  setMinimumWidth(460);
  button_->setFocus();
  show_progress();
  connect(&timer_, &QTimer::timeout, this, [this] { step(); });
  timer_.start(0);
}

void RunWindow::step() {
  if (is_unwanted_) return cancel();
  if (!run_.step()) end();
  show_progress();
}

void RunWindow::show_progress() {
  bar_->setValue(run_.percent_done());
  const QString progress = as_qstring(run_.progress_text());
  if (progress_->text() != progress) progress_->setText(progress);
  const QString log = as_qstring(run_.log()).remove(u'\r');
  if (log_->toPlainText() != log) log_->setPlainText(log);
}

// A run that has something to say stays on screen, unless nobody wants to read it.
void RunWindow::end() {
  timer_.stop();
  is_over_ = true;
  const bool is_read = settings.nokeep_savewin == 0 && !batch_active_;
  if (run_.report().empty() || !is_read) return accept();
  button_->setText(label(row::close));
  button_->setObjectName(QStringLiteral("close"));
  button_->setDefault(true);
}

void RunWindow::reject() {
  if (is_over_) return QDialog::reject();
  is_unwanted_ = true;
  button_->setEnabled(false);
  cancel();
}

void RunWindow::cancel() {
  if (!run_.try_cancel()) return timer_.start(slice_patience);
  timer_.stop();
  is_over_ = true;
  QDialog::reject();
}

}  // namespace corvelin

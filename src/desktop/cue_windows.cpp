// SPDX-License-Identifier: GPL-2.0-or-later
// The windows "Pause detection" and "Auto cue".
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "edit/editor.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class PauseWindow : public DialogWindow {
 public:
  PauseWindow(PauseDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("pause_dialog"), label(row::dialog_pause_detection), parent),
        dialog_(dialog) {
    auto* const words = new QLabel(label(row::note_on_pauses));
    words->setWordWrap(true);
    bar_ = new_progress_bar(windowTitle());
    found_ = new QLabel;
    found_->setObjectName(QStringLiteral("pause_found"));
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(words);
    rows->addLayout(fields());
    rows->addWidget(bar_);
    rows->addWidget(found_);
    rows->addWidget(buttons());
    setMinimumWidth(460);
    show_settings();
    show_progress();
    connect(&timer_, &QTimer::timeout, this, [this] { step(); });
    if (dialog_.editor.batch_active) QTimer::singleShot(0, this, [this] { start_or_stop(); });
  }

  void reject() override {
    stop();
    QDialog::reject();
  }

 private:
  QGridLayout* fields() {
    auto* const grid = new QGridLayout;
    level_ = add_slider(*grid, label(row::dialog_level), &Settings::silence_level, 1, 100,
                        "silence_level");
    duration_ = add_slider(*grid, label(row::min_duration), &Settings::silence_duration, 1, 30,
                           "silence_duration");
    offset_ = add_slider(*grid, label(row::cue_offset), &Settings::silence_offset, 0, 100,
                         "silence_offset");
    skip_ = new QSpinBox;
    skip_->setRange(0, 65535);
    connect(skip_, &QSpinBox::valueChanged, this,
            [](int seconds) { settings.silence_skip = static_cast<std::uint16_t>(seconds); });
    add_field(*grid, label(row::skip_after_pause), skip_, "silence_skip");
    cut_ = new_box(label(row::cut_whole_pause), false, "silence_cut");
    connect(cut_, &QCheckBox::toggled, this,
            [](bool is_set) { settings.silence_cut = is_set ? 1 : 0; });
    grid->addWidget(cut_, grid->rowCount(), 1);
    grid->setColumnStretch(1, 1);
    return grid;
  }

  QSlider* add_slider(QGridLayout& grid, const QString& text, std::uint16_t Settings::*setting,
                      int lowest, int highest, const char* name) {
    QSlider* const slider = new_slider(Qt::Horizontal, lowest, highest, settings.*setting, name);
    connect(slider, &QSlider::valueChanged, this, [this, setting](int value) {
      settings.*setting = static_cast<std::uint16_t>(value);
      show_texts();
    });
    add_field(grid, text, slider, name);
    auto* const value = new QLabel;
    value->setMinimumWidth(value->fontMetrics().averageCharWidth() * 12);
    grid.addWidget(value, grid.rowCount() - 1, 2);
    texts_.push_back(value);
    return slider;
  }

  QDialogButtonBox* buttons() {
    auto* const box = new QDialogButtonBox;
    start_ = box->addButton(label(row::start), QDialogButtonBox::ActionRole);
    start_->setObjectName(QStringLiteral("start"));
    start_->setDefault(true);
    QPushButton* const close = box->addButton(label(row::close), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("close"));
    defaults_ = new_defaults_button();
    box->addButton(defaults_, QDialogButtonBox::ResetRole);
    connect(start_, &QPushButton::clicked, this, [this] { start_or_stop(); });
    connect(box, &QDialogButtonBox::rejected, this, [this] { reject(); });
    connect(defaults_, &QPushButton::clicked, this, [this] {
      PauseDialog::restore_defaults();
      show_settings();
    });
    return box;
  }

  void show_settings() {
    const auto show = [](auto* control, int value) {
      const QSignalBlocker is_quiet(control);
      control->setValue(value);
    };
    show(level_, settings.silence_level);
    show(duration_, settings.silence_duration);
    show(offset_, settings.silence_offset);
    show(skip_, settings.silence_skip);
    const QSignalBlocker is_quiet(cut_);
    cut_->setChecked(settings.silence_cut != 0);
    show_texts();
  }

  void show_texts() {
    if (texts_.size() < 3) return;  // while they are made
    show_meaning(*level_, *texts_[0], PauseDialog::level_text());
    show_meaning(*duration_, *texts_[1], dialog_.duration_text());
    show_meaning(*offset_, *texts_[2], PauseDialog::offset_text());
  }

  void start_or_stop() {
    if (dialog_.pause_running) return stop();
    if (dialog_.accept()) {
      timer_.start(0);
    } else if (dialog_.editor.batch_active) {
      return reject();
    }
    show_progress();
  }

  void step() {
    const bool has_more = dialog_.step();
    show_progress();
    if (has_more) return;
    stop();
    if (dialog_.editor.batch_active) reject();
  }

  void stop() {
    timer_.stop();
    dialog_.cancel();
    show_progress();
  }

  void show_progress() {
    bar_->setValue(dialog_.percent_done());
    found_->setText(as_qstring(dialog_.progress_text()));
    start_->setText(label(dialog_.pause_running ? row::stop_work : row::start));
    for (QWidget* const control :
         std::initializer_list<QWidget*>{level_, duration_, offset_, skip_, cut_, defaults_})
      control->setEnabled(!dialog_.pause_running);
  }

  PauseDialog& dialog_;
  QTimer timer_;
  QProgressBar* bar_;
  QLabel* found_;
  QSlider* level_ = nullptr;
  QSlider* duration_ = nullptr;
  QSlider* offset_ = nullptr;
  std::vector<QLabel*> texts_;
  QSpinBox* skip_ = nullptr;
  QCheckBox* cut_ = nullptr;
  QPushButton* start_ = nullptr;
  QPushButton* defaults_ = nullptr;
};

class AutoCueWindow : public DialogWindow {
 public:
  AutoCueWindow(AutoCueDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("auto_cue_dialog"), label(row::auto_cue), parent),
        dialog_(dialog) {
    constexpr int longest_time = 20;
    interval_ = new_line(as_qstring(dialog.interval), longest_time);
    last_length_ = new_line(as_qstring(dialog.last_length), longest_time);
    names_ = new_box(label(row::create_time_names), dialog.creates_names, "autocue_names");
    auto* const grid = new QGridLayout;
    add_field(*grid, label(row::cue_interval), interval_, "autocue");
    add_field(*grid, label(row::least_last_part), last_length_, "autocue_last");
    grid->addWidget(names_, grid->rowCount(), 0, 1, 2);
    QDialogButtonBox* const buttons = ok_and_cancel();
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { take(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(grid);
    rows->addWidget(buttons);
    if (dialog_.editor.batch_active) QTimer::singleShot(0, this, [this] { take(); });
  }

 private:
  void take() {
    dialog_.interval = as_utf8(interval_->text());
    dialog_.last_length = as_utf8(last_length_->text());
    dialog_.creates_names = names_->isChecked();
    if (dialog_.accept()) accept();
  }

  AutoCueDialog& dialog_;
  QLineEdit* interval_;
  QLineEdit* last_length_;
  QCheckBox* names_;
};

}  // namespace

// What was found stays when it is closed.
bool show_window(PauseDialog& dialog, QWidget* parent) {
  PauseWindow(dialog, parent).exec();
  return true;
}

bool show_window(AutoCueDialog& dialog, QWidget* parent) {
  if (AutoCueWindow(dialog, parent).exec() == QDialog::Accepted) return true;
  dialog.cancel();
  return false;
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The windows "Change level" and "Normalize level".
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
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
#include "model/selection.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

// The levels of a slider, in steps of 1.5 dB.
constexpr int lowest_level = -60;
constexpr int highest_level = 32;

class LevelWindow : public DialogWindow {
 public:
  LevelWindow(LevelDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("level_dialog"), as_qstring(ui_text(row::change_level)),
                     parent),
        dialog_(dialog) {
    auto* const columns = new QHBoxLayout;
    columns->addLayout(sliders());
    columns->addSpacing(16);
    columns->addLayout(buttons_column());
    auto* const note = new QLabel(label(row::note_on_bottom_level));
    note->setWordWrap(true);
    QDialogButtonBox* const buttons = ok_and_cancel();
    QPushButton* const defaults = new_defaults_button();
    buttons->addButton(defaults, QDialogButtonBox::ResetRole);
    connect(defaults, &QPushButton::clicked, this, [this] {
      dialog_.restore_defaults();
      show_levels();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
      if (dialog_.accept()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(columns, 1);
    rows->addWidget(note);
    rows->addWidget(buttons);
    setMinimumWidth(380);
    show_levels();
  }

 private:
  QGridLayout* sliders() {
    auto* const grid = new QGridLayout;
    from_text_ = new QLabel;
    to_text_ = new QLabel;
    from_ = new_slider(Qt::Vertical, lowest_level, highest_level, 0, "sel_gain");
    to_ = new_slider(Qt::Vertical, lowest_level, highest_level, 0, "sel_gain_end");
    from_->setAccessibleName(label(row::from));
    to_->setAccessibleName(label(row::to));
    connect(from_, &QSlider::valueChanged, this, [this](int gain) {
      dialog_.set_from(gain);
      show_levels();
    });
    connect(to_, &QSlider::valueChanged, this, [this](int gain) {
      dialog_.set_to(gain);
      show_levels();
    });
    int column = 0;
    for (auto [text, slider] : {std::pair(from_text_, from_), std::pair(to_text_, to_)}) {
      text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 16);
      text->setAlignment(Qt::AlignCenter);
      slider->setMinimumHeight(180);
      slider->setTickPosition(QSlider::NoTicks);
      grid->addWidget(text, 0, column);
      grid->addWidget(slider, 1, column, Qt::AlignHCenter);
      ++column;
    }
    lock_ = new_box(label(row::lock_sliders), dialog_.locks_sliders, "locks_sliders");
    connect(lock_, &QCheckBox::toggled, this,
            [this](bool is_set) { dialog_.locks_sliders = is_set; });
    grid->addWidget(lock_, 2, 0, 1, 2, Qt::AlignHCenter);
    return grid;
  }

  QVBoxLayout* buttons_column() {
    const struct {
      TextRow text;
      const char* name;
      void (LevelDialog::*set)();
    } presets[] = {{row::fade_in, "fade_in", &LevelDialog::fade_in},
                   {row::fade_out, "fade_out", &LevelDialog::fade_out},
                   {row::flat, "flat", &LevelDialog::flat},
                   {row::silent, "silence", &LevelDialog::silence}};
    auto* const column = new QVBoxLayout;
    for (const auto& preset : presets) {
      auto* const button = new QPushButton(label(preset.text));
      button->setObjectName(QString::fromLatin1(preset.name));
      button->setAutoDefault(false);
      connect(button, &QPushButton::clicked, this, [this, set = preset.set] {
        (dialog_.*set)();
        show_levels();
      });
      column->addWidget(button);
    }
    column->addStretch();
    auto* const row = new QHBoxLayout;
    bottom_ = new QSpinBox;
    bottom_->setObjectName(QStringLiteral("lowest_gain"));
    bottom_->setRange(0, 90);
    bottom_->setSuffix(QStringLiteral(" dB"));
    connect(bottom_, &QSpinBox::valueChanged, this, [](int decibels) {
      LevelDialog::set_bottom_level(static_cast<std::uint32_t>(decibels));
    });
    auto* const words = new QLabel(label(row::bottom_level));
    words->setBuddy(bottom_);
    row->addWidget(words);
    row->addWidget(bottom_);
    column->addLayout(row);
    return column;
  }

  void show_levels() {
    const QSignalBlocker from_is_quiet(from_);
    const QSignalBlocker to_is_quiet(to_);
    const QSignalBlocker bottom_is_quiet(bottom_);
    from_->setValue(dialog_.editor.selection.sel_gain);
    to_->setValue(dialog_.editor.selection.sel_gain_end);
    bottom_->setValue(settings.lowest_gain);
    show_meaning(*from_, *from_text_, dialog_.from_text());
    show_meaning(*to_, *to_text_, dialog_.to_text());
  }

  LevelDialog& dialog_;
  QLabel* from_text_ = nullptr;
  QLabel* to_text_ = nullptr;
  QSlider* from_ = nullptr;
  QSlider* to_ = nullptr;
  QCheckBox* lock_ = nullptr;
  QSpinBox* bottom_ = nullptr;
};

class NormalizeWindow : public DialogWindow {
 public:
  NormalizeWindow(NormalizeDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("normalize_dialog"), as_qstring(ui_text(row::normalize_level)),
                     parent),
        dialog_(dialog) {
    bar_ = new_progress_bar(windowTitle());
    peak_ = new QLabel;
    change_text_ = new QLabel;
    peak_->setObjectName(QStringLiteral("norm_peak"));
    change_text_->setObjectName(QStringLiteral("change_text"));
    change_ = new_slider(Qt::Horizontal, NormalizeDialog::lowest_change,
                         NormalizeDialog::highest_change, 0, "norm_change");
    connect(change_, &QSlider::valueChanged, this, [this](int steps) {
      dialog_.set_change(steps);
      show_result();
    });
    auto* const change_label = new QLabel(label(row::level_change));
    change_label->setBuddy(change_);
    auto* const grid = new QGridLayout;
    grid->addWidget(new QLabel(label(row::peak_found)), 0, 0);
    grid->addWidget(peak_, 0, 1);
    grid->addWidget(change_label, 1, 0);
    grid->addWidget(change_text_, 1, 1);
    grid->setColumnStretch(1, 1);

    QDialogButtonBox* const buttons = ok_and_cancel(&ok_);
    stop_ = buttons->addButton(label(row::stop_work), QDialogButtonBox::ActionRole);
    stop_->setObjectName(QStringLiteral("stop"));
    stop_->setAutoDefault(false);
    connect(stop_, &QPushButton::clicked, this, [this] { stop(); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
      stop();
      if (dialog_.accept()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(bar_);
    rows->addLayout(grid);
    rows->addWidget(change_);
    rows->addStretch();
    rows->addWidget(buttons);
    setMinimumWidth(420);
    show_result();
    stop_->setEnabled(dialog_.state == NormalizeDialog::State::scanning);
    connect(&timer_, &QTimer::timeout, this, [this] { step(); });
    if (dialog_.state == NormalizeDialog::State::scanning) timer_.start(0);
  }

  void reject() override {
    stop();
    QDialog::reject();
  }

 private:
  void step() {
    const bool has_more = dialog_.step();
    show_result();
    if (has_more) return;
    stop();
    if (!dialog_.editor.batch_active) return;
    if (dialog_.close_unattended()) {
      accept();
    } else {
      reject();
    }
  }

  void stop() {
    timer_.stop();
    dialog_.cancel();
    stop_->setEnabled(false);
  }

  void show_result() {
    const QSignalBlocker is_quiet(change_);
    bar_->setValue(dialog_.percent_done());
    change_->setValue(dialog_.norm_change);
    peak_->setText(as_qstring(dialog_.peak_text()));
    show_meaning(*change_, *change_text_, dialog_.change_text());
  }

  NormalizeDialog& dialog_;
  QTimer timer_;
  QProgressBar* bar_;
  QLabel* peak_;
  QLabel* change_text_;
  QSlider* change_;
  QPushButton* ok_ = nullptr;
  QPushButton* stop_ = nullptr;
};

}  // namespace

bool show_window(LevelDialog& dialog, QWidget* parent) {
  if (LevelWindow(dialog, parent).exec() == QDialog::Accepted) return true;
  dialog.cancel();
  return false;
}

bool show_window(NormalizeDialog& dialog, QWidget* parent) {
  return NormalizeWindow(dialog, parent).exec() == QDialog::Accepted;
}

}  // namespace corvelin

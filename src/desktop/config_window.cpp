// SPDX-License-Identifier: GPL-2.0-or-later
// The window of the configuration: the controls of the page in sight, built from their table and
// shown anew after every change.
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/look.h"
#include "desktop/qt_text.h"
#include "settings/settings.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

QString name_of_control(const ConfigControl& control) { return as_qstring(control.name); }

QIcon sample_of(std::int64_t colour, const QColor& border) {
  QPixmap picture(32, 16);
  QPainter painter(&picture);
  painter.fillRect(picture.rect(), from_setting(static_cast<std::uint32_t>(colour)));
  painter.setPen(border);
  painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
  return picture;
}

void fill_list(QComboBox& list, const std::vector<EncoderChoice>& choices) {
  bool is_same = std::cmp_equal(list.count(), choices.size());
  for (int i = 0; is_same && i < list.count(); ++i)
    is_same = list.itemText(i) == as_qstring(choices[static_cast<std::size_t>(i)].text);
  if (is_same) return;
  list.clear();
  for (const EncoderChoice& choice : choices) list.addItem(as_qstring(choice.text), choice.value);
}

// The controls of one page. Each that shows something has a way to be brought up to date.
class ConfigPage : public QWidget {
 public:
  ConfigPage(ConfigDialog& dialog, std::function<void()> changed)
      : dialog_(dialog), changed_(std::move(changed)), rows_(new QVBoxLayout(this)) {
    for (const ConfigControl& control : config_controls())
      if (control.page == dialog.page) add(control);
    rows_->addStretch();
    show_values();
  }

  void show_values() {
    for (const auto& show : shows_) show();
  }

  /// Takes what was typed and not finished.
  void finish() {
    for (QSpinBox* field : numbers_) field->interpretText();
  }

 private:
  void add(const ConfigControl& control) {
    switch (control.kind) {
      case ControlKind::group:
        return add_group(control);
      case ControlKind::words:
        return add_words(control);
      case ControlKind::box:
        return add_box(control);
      case ControlKind::radio:
        return add_radio(control);
      case ControlKind::number:
        return add_number(control);
      case ControlKind::line:
        return add_line(control);
      case ControlKind::slider:
        return add_slider(control);
      case ControlKind::list:
      case ControlKind::presets:
        return add_list(control);
      case ControlKind::colour:
      case ControlKind::button:
        return add_button(control);
    }
  }

  QString text(const ConfigControl& control) const { return as_qstring(dialog_.label_of(control)); }

  void add_wide(QWidget* widget) { grid_->addWidget(widget, grid_->rowCount(), 0, 1, 2); }

  // A wheel that scrolls the page changes nothing on its way.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }

  void prepare(QWidget* widget, const ConfigControl& control) {
    widget->setObjectName(name_of_control(control));
    if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
    widget->installEventFilter(this);
    shows_.emplace_back([this, widget, &control] { widget->setEnabled(dialog_.is_live(control)); });
  }

  void change(const ConfigControl& control, std::int64_t value) {
    dialog_.set(control, value);
    changed_();
  }

  void add_group(const ConfigControl& control) {
    auto* const frame = new QGroupBox(text(control));
    frame->setObjectName(name_of_control(control));
    grid_ = new QGridLayout(frame);
    grid_->setColumnStretch(1, 1);
    half_row_ = -1;
    rows_->addWidget(frame);
  }

  void add_words(const ConfigControl& control) {
    auto* const words = new QLabel;
    words->setObjectName(name_of_control(control));
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(true);
    words->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    shows_.emplace_back([this, words, &control] { words->setText(text(control)); });
    add_wide(words);
  }

  void add_box(const ConfigControl& control) {
    auto* const box = new QCheckBox(text(control));
    prepare(box, control);
    shows_.emplace_back([this, box, &control] {
      const QSignalBlocker quiet(box);
      box->setChecked(dialog_.value_of(control) != 0);
    });
    connect(box, &QCheckBox::toggled, this,
            [this, &control](bool is_set) { change(control, is_set ? 1 : 0); });
    add_wide(box);
  }

  void add_radio(const ConfigControl& control) {
    auto* const radio = new QRadioButton(text(control));
    prepare(radio, control);
    shows_.emplace_back([this, radio, &control] {
      const QSignalBlocker quiet(radio);
      radio->setAutoExclusive(false);  // none of them may be set
      radio->setChecked(dialog_.value_of(control) != 0);
      radio->setAutoExclusive(true);
    });
    connect(radio, &QRadioButton::toggled, this, [this, &control](bool is_set) {
      if (is_set) change(control, 1);
    });
    if (control.page == SettingPage::layout) {
      add_half(radio);
    } else {
      add_wide(radio);
    }
  }

  // Two of these share a row.
  void add_half(QWidget* widget) {
    if (half_row_ < 0) {
      half_row_ = grid_->rowCount();
      grid_->addWidget(widget, half_row_, 0);
    } else {
      grid_->addWidget(widget, std::exchange(half_row_, -1), 1);
    }
  }

  void add_number(const ConfigControl& control) {
    auto* const field = new QSpinBox;
    prepare(field, control);
    field->setRange(0, std::numeric_limits<std::uint16_t>::max());
    field->setKeyboardTracking(false);
    const QString behind = as_qstring(ConfigDialog::words_behind(control));
    if (!behind.isEmpty()) field->setSuffix(u' ' + behind);
    shows_.emplace_back([this, field, &control] {
      const auto value = static_cast<int>(dialog_.value_of(control));
      const QSignalBlocker quiet(field);
      if (field->value() != value) field->setValue(value);  // or what is being typed would go
    });
    connect(field, &QSpinBox::valueChanged, this,
            [this, &control](int value) { change(control, value); });
    numbers_.push_back(field);
    add_labelled(control, field);
  }

  void add_labelled(const ConfigControl& control, QWidget* field) {
    auto* const words = new QLabel(text(control));
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(words->text().size() > 40);
    words->setBuddy(field);
    field->setAccessibleName(words->text());
    if (control.kind == ControlKind::line) {  // its label is a paragraph
      add_wide(words);
      return add_wide(field);
    }
    const int row = grid_->rowCount();
    grid_->addWidget(words, row, 0);
    grid_->addWidget(field, row, 1);
  }

  void add_line(const ConfigControl& control) {
    auto* const field = new QLineEdit;
    prepare(field, control);
    field->setMaxLength(static_cast<int>(longest_setting));
    shows_.emplace_back([this, field, &control] {
      const QString value = as_qstring(dialog_.text_of(control));
      const QSignalBlocker quiet(field);
      if (field->text() != value) field->setText(value);
    });
    connect(field, &QLineEdit::textChanged, this,
            [this, &control](const QString& value) { dialog_.set_text(control, as_utf8(value)); });
    add_labelled(control, field);
  }

  void add_slider(const ConfigControl& control) {
    auto* const slider =
        new_slider(Qt::Horizontal, static_cast<int>(control.lowest),
                   static_cast<int>(control.highest), 0, std::string(control.name).c_str());
    auto* const words = new QLabel;
    words->setTextFormat(Qt::PlainText);
    words->setBuddy(slider);
    prepare(slider, control);
    shows_.emplace_back([this, slider, words, &control] {
      const QSignalBlocker quiet(slider);
      slider->setValue(static_cast<int>(dialog_.value_of(control)));
      words->setText(text(control));
      slider->setAccessibleName(words->text());
      words->setEnabled(slider->isEnabled());
    });
    connect(slider, &QSlider::valueChanged, this,
            [this, &control](int value) { change(control, value); });
    add_wide(words);
    add_wide(slider);
  }

  void add_list(const ConfigControl& control) {
    QComboBox* const list = new_list();
    prepare(list, control);
    list->setMinimumContentsLength(12);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    const bool is_editable = control.kind == ControlKind::presets;
    list->setEditable(is_editable);
    list->setInsertPolicy(QComboBox::NoInsert);
    if (is_editable) list->lineEdit()->setAccessibleName(text(control));
    shows_.emplace_back([this, list, is_editable, &control] {
      const QSignalBlocker quiet(list);
      fill_list(*list, control.choices(dialog_));
      const QVariant value(static_cast<int>(dialog_.value_of(control)));
      const int index = list->findData(value);
      if (list->currentIndex() != index) list->setCurrentIndex(index);
      const QString name = as_qstring(dialog_.text_of(control));
      if (is_editable && !name.isEmpty() && list->currentText() != name) list->setEditText(name);
    });
    // Set from outside, too, not by a person alone.
    connect(list, &QComboBox::currentIndexChanged, this, [this, list, &control](int index) {
      if (index >= 0) change(control, list->itemData(index).toInt());
    });
    if (is_editable) {
      connect(list, &QComboBox::editTextChanged, this, [this, &control](const QString& value) {
        dialog_.set_text(control, as_utf8(value));
        QTimer::singleShot(0, this, changed_);
      });
    }
    add_labelled(control, list);
  }

  void add_button(const ConfigControl& control) {
    const bool is_colour = control.kind == ControlKind::colour;
    auto* const button = new QPushButton;
    prepare(button, control);
    button->setAutoDefault(false);
    const QString group = static_cast<QGroupBox*>(grid_->parentWidget())->title();
    shows_.emplace_back([this, button, is_colour, group, &control] {
      button->setText(text(control));
      if (label_text(control.row).empty()) button->setAccessibleDescription(group);  // of a path
      if (!is_colour) return;
      const std::int64_t colour = dialog_.value_of(control);
      button->setAccessibleDescription(from_setting(static_cast<std::uint32_t>(colour)).name());
      button->setIconSize({32, 16});
      button->setIcon(sample_of(colour, palette().color(QPalette::WindowText)));
    });
    connect(button, &QPushButton::clicked, this, [this, &control] {
      dialog_.press(control);
      changed_();
    });
    if (is_colour || control.page == SettingPage::layout || control.name.ends_with("_preset")) {
      add_half(button);
    } else {
      add_wide(button);
    }
  }

  ConfigDialog& dialog_;
  std::function<void()> changed_;
  QVBoxLayout* rows_;
  QGridLayout* grid_ = nullptr;  // of the present group
  int half_row_ = -1;            // the row with one half free
  std::vector<std::function<void()>> shows_;
  std::vector<QSpinBox*> numbers_;
};

class ConfigWindow : public DialogWindow {
 public:
  ConfigWindow(ConfigDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("config_dialog"), as_qstring(ConfigDialog::title()), parent),
        dialog_(dialog),
        tabs_(new QTabWidget),
        defaults_(new_defaults_button()),
        close_(new QPushButton(label(row::close))),
        restart_(new QPushButton(as_qstring(ConfigDialog::restart_label()))) {
    tabs_->setObjectName(QStringLiteral("pages"));
    for (std::size_t i = 0; i < ConfigDialog::page_count; ++i) {
      auto* const area = new QScrollArea;  // a large font must not push a control off the screen
      area->setWidgetResizable(true);
      area->setFrameShape(QFrame::NoFrame);
      area->setFocusPolicy(Qt::NoFocus);
      tabs_->addTab(area, as_qstring(ConfigDialog::page_title(static_cast<SettingPage>(i))));
    }
    restart_->setObjectName(QStringLiteral("restart"));
    restart_->setAutoDefault(false);
    close_->setObjectName(QStringLiteral("close"));
    close_->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(defaults_);
    buttons->addWidget(restart_);
    buttons->addStretch();
    buttons->addWidget(close_);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(tabs_, 1);
    rows->addLayout(buttons);
    connect(defaults_, &QPushButton::clicked, this, [this] {
      dialog_.restore_defaults();
      show_values();
    });
    connect(restart_, &QPushButton::clicked, this, [this] {
      page_->finish();
      if (dialog_.restart()) accept();
    });
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);
    tabs_->setCurrentIndex(static_cast<int>(dialog_.page));
    build_page();
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
      leave_page();
      dialog_.open_page(static_cast<SettingPage>(index));
      build_page();
    });
    // What plays or is recorded behind the window ends by itself.
    auto* const clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, [this] { page_->show_values(); });
    constexpr int period = 500;  // milliseconds
    clock->start(period);
    resize(560, 620);
  }

  void setVisible(bool visible) override {
    ensurePolished();
    make_room();
    DialogWindow::setVisible(visible);
  }

  /// Any way to close the window keeps what was typed.
  void done(int result) override {
    page_->finish();
    DialogWindow::done(result);
  }

 private:
  void build_page() {
    page_ = new ConfigPage(dialog_, [this] { show_values(); });
    static_cast<QScrollArea*>(tabs_->currentWidget())->setWidget(page_);
    for (QWidget* const button : {defaults_, restart_, close_})  // behind the new page
      setTabOrder(previousInFocusChain(), button);
    show_values();
    if (isVisible()) make_room();
  }

  // The window grows to the largest page that was seen; what the screen has no room for is
  // scrolled.
  void make_room() {
    constexpr QSize around(100, 200);  // the window's own rows and what the desktop shows
    auto* const area = static_cast<QScrollArea*>(tabs_->currentWidget());
    const QSize room = screen()->availableSize() - around;
    QSize needed = page_->minimumSizeHint();
    needed.setHeight(std::max(needed.height(), page_->heightForWidth(needed.width())));
    if (needed.height() > room.height())
      needed.rwidth() += area->verticalScrollBar()->sizeHint().width();
    area->setMinimumSize(needed.boundedTo(room));
    tabs_->setMinimumWidth(std::min(tabs_->tabBar()->sizeHint().width(), room.width()));
  }

  void leave_page() {
    page_->finish();
    page_->hide();
    page_->deleteLater();
  }

  void show_values() {
    page_->show_values();
    restart_->setVisible(dialog_.offers_restart);
  }

  ConfigDialog& dialog_;
  QTabWidget* tabs_;
  QPushButton* defaults_;
  QPushButton* close_;
  QPushButton* restart_;
  ConfigPage* page_ = nullptr;
};

}  // namespace

bool show_window(ConfigDialog& dialog, QWidget* parent) {
  ConfigWindow(dialog, parent).exec();
  return dialog.accept();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// The kit of the dialogs.
#include "desktop/dialog_kit.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/qt_text.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

// Tab comes to the first of the buttons and then leaves them all: a box of buttons hands the focus
// on to the one that stands first, and the toolkit has it last in the order of Tab.
void order_buttons(const QDialogButtonBox& box) {
  QWidget* before = nullptr;
  for (int i = 0; i < box.layout()->count(); ++i) {
    QWidget* const button = box.layout()->itemAt(i)->widget();
    if (button == nullptr) continue;
    if (before != nullptr) QWidget::setTabOrder(before, button);
    before = button;
  }
}

// A dialog knows the default button only of which it hears when the button is in it. Else the last
// one that had the focus stays it, and Enter in a field means Cancel.
void tell_of_default(const QDialog& dialog) {
  for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
    if (!button->isDefault()) continue;
    button->setDefault(false);
    button->setDefault(true);
  }
}

}  // namespace

QString label(TextRow row) { return as_qstring(label_text(row)); }

DialogWindow::DialogWindow(const QString& name, const QString& title, QWidget* parent)
    : QDialog(parent) {
  setObjectName(name);
  setWindowTitle(title);
}

void DialogWindow::setVisible(bool visible) {
  if (visible && !isVisible() && layout() != nullptr) {
    ensurePolished();
    if (!testAttribute(Qt::WA_Resized)) adjustSize();
    QSize needed = size().expandedTo(sizeHint());
    if (layout()->hasHeightForWidth())
      needed.setHeight(std::max(height(), layout()->totalHeightForWidth(needed.width())));
    constexpr QSize around(40, 80);  // what the desktop shows round a window
    const QSize room = screen()->availableSize() - around;
    if (needed.width() > room.width() || needed.height() > room.height()) {
      scroll_content();
      needed.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    }
    resize(needed.boundedTo(room));
    for (const QDialogButtonBox* const box : findChildren<QDialogButtonBox*>()) order_buttons(*box);
    tell_of_default(*this);
  }
  QDialog::setVisible(visible);
}

// A large font must not push a control off the screen.
void DialogWindow::scroll_content() {
  QWidget* const focus = focusWidget();
  auto* const area = new QScrollArea(this);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  auto* const content = new QWidget(area);
  content->setLayout(layout());  // and all that is in it
  area->setWidget(content);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(area);
  rows->activate();  // or the window keeps the least size that the content had
  if (focus != nullptr) focus->setFocus();
}

void add_field(QGridLayout& grid, const QString& text, QWidget* field, const char* name) {
  auto* const words = new QLabel(text);
  words->setBuddy(field);
  words->setTextFormat(Qt::PlainText);
  field->setObjectName(QString::fromLatin1(name));
  const int row = grid.rowCount();
  grid.addWidget(words, row, 0);
  grid.addWidget(field, row, 1);
}

QCheckBox* new_box(const QString& text, bool is_checked, const char* name) {
  auto* const box = new QCheckBox(text);
  box->setObjectName(QString::fromLatin1(name));
  box->setChecked(is_checked);
  return box;
}

QLineEdit* new_line(const QString& text, int most_characters) {
  auto* const line = new QLineEdit;
  line->setMaxLength(most_characters);
  line->setText(text);
  line->setCursorPosition(0);
  return line;
}

// A screen reader can only mark an entry; in a list that isn't open that means to choose it.
QComboBox* new_list() {
  auto* const list = new QComboBox;
  QAbstractItemView* const entries = list->view();
  QObject::connect(entries->selectionModel(), &QItemSelectionModel::selectionChanged, list,
                   [list, entries](const QItemSelection& marked) {
                     if (entries->isVisible() || marked.isEmpty()) return;
                     const int row = marked.first().top();
                     if (row == list->currentIndex()) return;
                     list->setCurrentIndex(row);
                     entries->clearSelection();  // it can be marked again
                   });
  return list;
}

QProgressBar* new_progress_bar(const QString& accessible_name) {
  auto* const bar = new QProgressBar;
  bar->setObjectName(QStringLiteral("progress_bar"));
  bar->setAccessibleName(accessible_name);
  bar->setRange(0, 100);
  bar->setValue(0);
  bar->setTextVisible(false);
  return bar;
}

QSlider* new_slider(Qt::Orientation orientation, int lowest, int highest, int value,
                    const char* name) {
  auto* const slider = new QSlider(orientation);
  slider->setObjectName(QString::fromLatin1(name));
  slider->setRange(lowest, highest);
  slider->setPageStep(4);
  slider->setValue(value);
  return slider;
}

void show_meaning(QSlider& slider, QLabel& beside, const std::string& meaning) {
  const QString words = as_qstring(meaning);
  beside.setText(words);
  if (slider.accessibleDescription() != words) slider.setAccessibleDescription(words);
}

// The question stands behind the label.
QPushButton* new_defaults_button() {
  auto* const button = new QPushButton(label(row::defaults).section(u'\n', 0, 0));
  button->setObjectName(QStringLiteral("defaults"));
  button->setAutoDefault(false);
  return button;
}

QDialogButtonBox* ok_and_cancel(QPushButton** ok) {
  auto* const buttons = new QDialogButtonBox;
  QPushButton* const accept = buttons->addButton(label(row::ok), QDialogButtonBox::AcceptRole);
  QPushButton* const reject = buttons->addButton(label(row::cancel), QDialogButtonBox::RejectRole);
  accept->setObjectName(QStringLiteral("ok"));
  reject->setObjectName(QStringLiteral("cancel"));
  accept->setDefault(true);
  if (ok != nullptr) *ok = accept;
  return buttons;
}

}  // namespace corvelin

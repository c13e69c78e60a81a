// SPDX-License-Identifier: GPL-2.0-or-later
// Controls of the debug window.
#include "desktop/debug_window.h"

#include <QFontDatabase>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/qt_text.h"
#include "shell/debug_text.h"

namespace corvelin {

DebugWindow::DebugWindow(Editor& editor, QWidget* parent)
    : DialogWindow(QStringLiteral("debug_window"), QStringLiteral("Debug"), parent),
      editor_(editor),
      report_(new QPlainTextEdit) {
  setAttribute(Qt::WA_DeleteOnClose);
  report_->setObjectName(QStringLiteral("report"));
  report_->setAccessibleName(windowTitle());
  report_->setReadOnly(true);
  report_->setTabChangesFocus(true);
  report_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  QSlider* const bit = new_slider(Qt::Horizontal, 0, last_gain_bit, 0, "gain_bit");
  bit->setAccessibleName(QStringLiteral("GG bit"));
  connect(bit, &QSlider::valueChanged, this, [this](int value) {
    set_gain_bit(editor_, static_cast<std::uint16_t>(value));
    show_report();
  });
  auto* const refresh = new QPushButton(QStringLiteral("Refresh"));
  refresh->setObjectName(QStringLiteral("refresh"));
  connect(refresh, &QPushButton::clicked, this, [this] { show_report(); });
  auto* const variables = new QTreeWidget;
  variables->setAccessibleName(QStringLiteral("Variables"));
  variables->setHeaderLabels({QStringLiteral("Var 1"), QStringLiteral("Var 2")});
  variables->setMaximumHeight(80);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(bit);
  rows->addWidget(report_, 1);
  rows->addWidget(variables);
  rows->addWidget(refresh);
  resize(460, 480);
  show_report();
}

void DebugWindow::show_report() { report_->setPlainText(as_qstring(debug_text(editor_))); }

}  // namespace corvelin

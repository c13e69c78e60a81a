// SPDX-License-Identifier: GPL-2.0-or-later
// The window "About".
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/look.h"
#include "desktop/qt_text.h"
#include "desktop/signs.h"
#include "platform/processes/program.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class AboutWindow : public DialogWindow {
 public:
  AboutWindow(const AboutDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("about_dialog"),
                     as_qstring(menu_text_plain(ui_text(row::about))), parent) {
    setPalette(palette_on(QColor(0x3C, 0x3C, 0x3C), Qt::white));
    constexpr int picture_size = 64;
    auto* const picture = new QLabel;
    picture->setPixmap(
        program_icon().pixmap(QSize(picture_size, picture_size), devicePixelRatioF()));
    picture->setAccessibleName(as_qstring(program_name));
    auto* const name = new QLabel(as_qstring(program_name));
    QFont font = name->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.8);
    name->setFont(font);
    auto* const titles = new QVBoxLayout;
    titles->addStretch();
    titles->addWidget(name);
    titles->addWidget(new QLabel(QStringLiteral("Fast MPEG audio editing")));
    titles->addStretch();
    auto* const head = new QHBoxLayout;
    head->addWidget(picture);
    head->addSpacing(12);
    head->addLayout(titles, 1);

    auto* const text = new QPlainTextEdit(as_qstring(dialog.text));
    text->setObjectName(QStringLiteral("text"));
    text->setAccessibleName(windowTitle());
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    auto* const buttons = new QDialogButtonBox;
    QPushButton* const ok = buttons->addButton(label(row::ok), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 16, 20, 16);
    rows->setSpacing(12);
    rows->addLayout(head);
    rows->addWidget(text, 1);
    rows->addWidget(buttons);
    resize(560, 480);
    ok->setFocus();
  }
};

}  // namespace

bool show_window(AboutDialog& dialog, QWidget* parent) {
  AboutWindow(dialog, parent).exec();
  return dialog.accept();
}

}  // namespace corvelin

// SPDX-License-Identifier: GPL-2.0-or-later
// All windows in all languages: no text is cut, every control has a name, and Tab goes through them
// as one reads.
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <set>

#include "desktop/main_window.h"
#include "desktop/qt_host.h"
#include "desktop/qt_text.h"
#include "edit/config_dialog.h"
#include "edit/language_dialog.h"
#include "settings/settings.h"
#include "support/core_test.h"
#include "text/language_file.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin::test {

namespace {

bool is_cut(const QWidget& widget) {
  // What no screen has room for is scrolled by buttons.
  const auto* const tabs = qobject_cast<const QTabBar*>(
      qobject_cast<const QTabBar*>(&widget) != nullptr ? &widget : widget.parentWidget());
  if (tabs != nullptr && tabs->sizeHint().width() > tabs->screen()->availableSize().width())
    return false;
  constexpr int rounding = 1;  // at scales that are no whole number
  if (const auto* const words = qobject_cast<const QLabel*>(&widget)) {
    if (words->wordWrap())
      return words->heightForWidth(words->width()) > words->height() + rounding;
  } else if (const auto* const group = qobject_cast<const QGroupBox*>(&widget)) {
    return group->fontMetrics().horizontalAdvance(group->title()) > group->width();
  } else if (const auto* const button = qobject_cast<const QPushButton*>(&widget)) {
    return button->fontMetrics().horizontalAdvance(button->text().remove(u'&')) >
           button->width() - 8;
  } else if (qobject_cast<const QAbstractButton*>(&widget) == nullptr &&
             qobject_cast<const QTabBar*>(&widget) == nullptr) {
    return false;
  }
  return widget.sizeHint().width() > widget.width() + rounding ||
         widget.sizeHint().height() > widget.height() + rounding;
}

bool is_named(QWidget& widget) {
  const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widget);
  return accessible != nullptr && (!accessible->text(QAccessible::Name).isEmpty() ||
                                   !accessible->relations(QAccessible::Label).isEmpty());
}

std::string told(const QWidget& widget) {
  return as_utf8(widget.objectName() + QStringLiteral(" \"") + widget.property("text").toString() +
                 u'"');
}

bool takes_tab(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isVisible() && widget.isEnabled();
}

// The way of Tab through a window, from its first control on.
std::vector<QWidget*> way_of_tab(QWidget& window) {
  std::vector<QWidget*> way;
  for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain())
    if (takes_tab(*next) && next->focusProxy() == nullptr) way.push_back(next);
  return way;
}

// Where the key itself comes to: a widget that hands the focus on may lose the way.
std::set<const QWidget*> reached_by_tab(QWidget& window) {
  std::set<const QWidget*> reached;
  while (reached.insert(window.focusWidget()).second)
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  return reached;
}

const QPushButton* default_button(const QWidget& window) {
  const QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
  const auto found = std::ranges::find_if(buttons, &QPushButton::isDefault);
  return found == buttons.end() ? nullptr : *found;
}

// Whether `after` lies above what the way came from, in the same column.
bool goes_back(const QWidget& before, const QWidget& after) {
  if (before.visibleRegion().isEmpty() || after.visibleRegion().isEmpty()) return false;
  const QRect from(before.mapToGlobal(QPoint()), before.size());
  const QRect to(after.mapToGlobal(QPoint()), after.size());
  return to.bottom() <= from.top() && to.left() <= from.right();
}

// Whether one sees that the control has the focus.
bool shows_focus(QWidget& control) {
  control.window()->setAttribute(Qt::WA_KeyboardFocusChange);  // as Tab does
  control.window()->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(control.window()));
  if (QWidget* const other = QApplication::focusWidget()) other->clearFocus();
  const QImage without = control.grab().toImage();
  control.setFocus(Qt::TabFocusReason);
  return control.grab().toImage() != without;
}

void inspect(QWidget& window) {
  for (QWidget* const widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible()) continue;
    EXPECT_FALSE(is_cut(*widget)) << told(*widget) << " has " << widget->width() << " by "
                                  << widget->height() << " and needs " << widget->sizeHint().width()
                                  << " by " << widget->sizeHint().height();
    // What is inside of another control speaks by that one's name.
    const bool needs_name = widget->focusPolicy() != Qt::NoFocus && widget->focusProxy() == nullptr;
    EXPECT_TRUE(!needs_name || is_named(*widget))
        << widget->metaObject()->className() << told(*widget);
  }
  const std::vector<QWidget*> way = way_of_tab(window);
  for (std::size_t i = 1; i < way.size(); ++i)
    EXPECT_FALSE(goes_back(*way[i - 1], *way[i]))
        << told(*way[i]) << " behind " << told(*way[i - 1]);
  for (QWidget* const control : way)
    EXPECT_TRUE(control->objectName() == QStringLiteral("view") || shows_focus(*control))
        << told(*control);
}

class EndlessRun : public LongRun {
 public:
  bool step() override { return true; }
  void cancel() override {}
  [[nodiscard]] int percent_done() const override { return 50; }
  [[nodiscard]] std::string progress_text() const override { return "a.mp3"; }
  [[nodiscard]] std::string report() const override { return {}; }
};

class DialogsTest : public CoreTest, public ::testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    settings.msg_hide = 0xFFFF;
    load_ui_text(GetParam());
    ASSERT_TRUE(open("a.mp3", frames(200)));
    window = std::make_unique<MainWindow>(editor, look_of_settings());
    window_host = std::make_unique<QtHost>(editor, *window);
    install_host(window_host.get());
    window->resize(1150, 560);
    window->show();
  }
  void TearDown() override {
    install_host(&host);
    ui_text_free();
  }

  // Runs `open`, which shows a window, and looks at it.
  static void look_at(const char* name, const std::function<void()>& open) {
    SCOPED_TRACE(name);
    bool was_shown = false;
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog));
      QApplication::processEvents();
      was_shown = true;
      EXPECT_LE(dialog->height(), dialog->screen()->availableSize().height());
      inspect(*dialog);
      const QPushButton* const standard = default_button(*dialog);
      const std::set<const QWidget*> reached = reached_by_tab(*dialog);
      EXPECT_EQ(default_button(*dialog), standard);
      for (const QWidget* const widget : way_of_tab(*dialog)) {
        const bool is_choice = qobject_cast<const QRadioButton*>(widget) != nullptr;
        EXPECT_TRUE(is_choice || reached.contains(widget)) << told(*widget);
      }
      if (qEnvironmentVariableIsSet("PICTURES"))
        dialog->grab().save(qEnvironmentVariable("PICTURES") +
                            QStringLiteral("/%1-%2.png").arg(name, GetParam()));
      dialog->reject();
    });
    open();
    EXPECT_TRUE(was_shown);
  }
  void look_at(const char* name, CommandId id) {
    look_at(name, [this, id] { dispatch_command(editor, id); });
  }

  void look_at_all();

  std::unique_ptr<MainWindow> window;
  std::unique_ptr<QtHost> window_host;
};

void DialogsTest::look_at_all() {
  dispatch_command(editor, 1024);  // all is selected
  look_at("names", 1028);
  look_at("file_info", 1027);
  look_at("level", 1021);
  look_at("normalize", 1025);
  look_at("pause", 1026);
  look_at("auto_cue", 1042);
  look_at("split", 1014);
  look_at("speed", 1043);
  look_at("about", 1082);
  for (std::uint16_t page = 0; page < ConfigDialog::page_count; ++page) {
    settings.tabsel = page;
    look_at(("config_" + std::to_string(page)).c_str(), 1050);
  }
  look_at("language", [this] { language_dialog(editor); });
  load_ui_text(GetParam());
  look_at("batch", 1071);
  EndlessRun run;
  look_at("run", [&run] { drive(run); });
  dispatch_command(editor, 230);
  auto* const debug = window->findChild<QDialog*>(QStringLiteral("debug_window"));
  inspect(*debug);
  debug->close();
}

}  // namespace

TEST_P(DialogsTest, CutNoTextNameAllControlsAndAreReadByTab) {
  inspect(*window);
  look_at_all();
}

TEST_P(DialogsTest, AreReadWithAFontOfTwiceTheSize) {
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSizeF(usual.pointSizeF() * 2);
  QApplication::setFont(large);
  inspect(*window);
  look_at_all();
  QApplication::setFont(usual);
}

TEST_P(DialogsTest, PanelsHaveRoomForTheirTexts) {
  constexpr std::uint16_t layouts[] = {1, 3, 4, 16, 17, 18};
  for (const std::uint16_t layout : layouts) {
    settings.layout = layout;
    MainWindow form(editor, look_of_settings());
    form.resize(1150, 560);
    form.show();
    form.refresh(Refresh::all);
    QApplication::processEvents();
    if (qEnvironmentVariableIsSet("PICTURES"))
      form.grab().save(qEnvironmentVariable("PICTURES") +
                       QStringLiteral("/layout_%1-%2.png").arg(layout).arg(GetParam()));
    for (const QAbstractButton* const button : form.findChildren<QAbstractButton*>())
      EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()),
                std::max(button->width() - 4, 0))
          << layout << told(*button);
  }
}

TEST_P(DialogsTest, BoxesAreAnsweredByTheFirstLetterOfYesAndNo) {
  for (const BoxAnswer answer : {BoxAnswer::yes, BoxAnswer::no}) {
    const TextRow word = answer == BoxAnswer::yes ? row::yes : row::no;
    QTimer::singleShot(0, [word] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowActive(box));
      std::set<QKeySequence> letters;
      for (const QAbstractButton* const button : box->buttons()) letters.insert(button->shortcut());
      EXPECT_EQ(letters.size(), 3);
      QTest::keyClick(box, ui_text(word).front(), Qt::AltModifier);
      if (!QTest::qWaitFor([box] { return !box->isVisible(); }, 1000)) box->reject();
    });
    EXPECT_EQ(window_host->show_message_box({.text = "?", .buttons = BoxButtons::yes_no_cancel}),
              answer);
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, DialogsTest,
                         ::testing::Values("", "German", "French", "Spanish"));

}  // namespace corvelin::test

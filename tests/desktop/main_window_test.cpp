// SPDX-License-Identifier: GPL-2.0-or-later
// The main window with real events, without a screen.
#include "desktop/main_window.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QTextLayout>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>
#include <QtEvents>
#include <algorithm>
#include <set>

#include "audio/playback.h"
#include "desktop/accessibility.h"
#include "desktop/command_line.h"
#include "desktop/keys.h"
#include "desktop/qt_host.h"
#include "desktop/qt_text.h"
#include "desktop/style.h"
#include "edit/editor.h"
#include "edit/menu_state.h"
#include "edit/undo.h"
#include "edit/window_commands.h"
#include "platform/files/file.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "shell/window_layout.h"
#include "support/core_test.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin::test {

namespace {

// Files are named and boxes answered by the test; all else is the window's.
class TestHost : public QtHost {
 public:
  using QtHost::QtHost;

  BoxAnswer show_message_box(const MessageBox& box) override {
    boxes.push_back(box);
    return answer.value_or(box.default_answer);
  }
  std::optional<std::string> ask_for_new_file(const FileDialog&) override { return new_file; }

  std::vector<MessageBox> boxes;
  std::optional<BoxAnswer> answer;
  std::optional<std::string> new_file;
};

class MainWindowTest : public CoreTest {
 protected:
  void SetUp() override { settings.msg_hide = 0xFFFF; }
  void TearDown() override { install_host(&host); }

  // A window whose commands are only written down.
  void show_recording_window() {
    show_window([this](CommandId id) { asked.push_back(id); });
  }

  void show_window(RunCommand run = nullptr) {
    window = std::make_unique<MainWindow>(editor, look_of_settings(), std::move(run));
    window_host = std::make_unique<TestHost>(editor, *window);
    install_host(window_host.get());
    window->resize(1150, 560);
    window->show();
    activate();
    window->refresh(Refresh::all);
    window->update_menu_state(all_states);
    QApplication::processEvents();  // the first drawing
  }

  // Without a window manager a window that got over a box is not active by itself.
  void activate() const {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window->setFocus();
  }

  void press(const QKeySequence& keys) const {
    QTest::keyClick(QApplication::focusWidget(), keys[0].key(), keys[0].keyboardModifiers());
  }
  void press(const char* keys) const { press(QKeySequence(QString::fromLatin1(keys))); }

  template <typename Widget>
  Widget* find(const char* name) const {
    auto* const widget = window->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  void open_frames(int count) {
    ASSERT_TRUE(open("a.mp3", frames(count)));
    show_window();
  }

  // In the column of a frame, while the cursor is at the stream's start and a frame has one column.
  [[nodiscard]] QPoint point_of_frame(int frame) const {
    constexpr int y = 100;
    return {window->view().width() / 2 + 1 + frame, y};
  }

  std::unique_ptr<MainWindow> window;
  std::unique_ptr<TestHost> window_host;
  std::vector<CommandId> asked;
};

using Ids = std::vector<CommandId>;

// As a screen reader presses or toggles it.
void act(QObject& control) {
  QAccessibleActionInterface* const actions =
      QAccessible::queryAccessibleInterface(&control)->actionInterface();
  actions->doAction(actions->actionNames().front());
  QApplication::processEvents();
}

TEST(CommandLineTest, TakesASwitchInEachForm) {
  const std::vector<std::vector<std::string>> lines = {
      {"/home/a.mp3", "/split", "x y", "--settings", "s"},
      {"--settings=s", "--split=x y", "/home/a.mp3"},
      {"/home/a.mp3", "--split", "x y", "--unknown", "--settings=s"}};
  for (const auto& words : lines) {
    const CommandLine line = parse_command_line(words);
    ASSERT_NE(line.work, nullptr);
    EXPECT_EQ(line.work->name, "split");
    EXPECT_EQ(line.request.folder, "x y");
    EXPECT_EQ(line.file, "/home/a.mp3");
    EXPECT_EQ(line.settings_path, "s");
  }
}

}  // namespace

TEST_F(MainWindowTest, EachKeyOfTheTableReachesItsCommandAndNoOther) {
  show_recording_window();
  std::set<std::string> seen;
  for (const Command& command : command_table()) {
    for (const QKeySequence& keys : key_sequences(command.keys)) {
      ASSERT_EQ(keys.count(), 1) << command.keys;
      EXPECT_TRUE(seen.insert(as_utf8(keys.toString())).second) << as_utf8(keys.toString());
      press(keys);
      EXPECT_EQ(asked, Ids{command.id}) << as_utf8(keys.toString());
      asked.clear();
    }
  }
  EXPECT_GT(seen.size(), 80U);
  // With or without the mark of the keypad: the platforms differ in what a shortcut is matched to.
  for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Asterisk})
    for (const Qt::KeyboardModifier mark : {Qt::NoModifier, Qt::KeypadModifier})
      press(QKeySequence(QKeyCombination(mark, key)));
  EXPECT_EQ(asked, (Ids{1061, 1061, 1062, 1062, 1063, 1063}));
}

TEST_F(MainWindowTest, KeysAreTheWindowsWhereverTheFocusIsButInItsTimeFields) {
  ASSERT_TRUE(open("a.mp3", frames(20)));
  show_recording_window();
  for (const char* const name : {"command_1012", "position_bar", "volume", "info_bar", "view"}) {
    find<QWidget>(name)->setFocus();
    for (const char* const key : {"Space", "Left", "C", "Ctrl+C", "Home"}) press(key);
    EXPECT_EQ(asked, (Ids{136, 113, 152, 1032, 133})) << name;
    asked.clear();
  }
  for (const char* const name : {"position_field", "range_field"}) {
    auto* const field = find<QLineEdit>(name);
    field->setFocus();
    asked.clear();  // the range has one of its own for that
    field->selectAll();
    for (const char* const key : {"1", "C", "Left", "Del", "F5", "Ctrl+S"}) press(key);
    EXPECT_EQ(asked, Ids{}) << name;
    EXPECT_EQ(as_utf8(field->text()), "1");
    press("Esc");
    EXPECT_FALSE(field->hasFocus());
  }
}

TEST_F(MainWindowTest, EachMenuEntryAndButtonReachesItsCommandAndNoOther) {
  for (const std::uint16_t layout : {std::uint16_t{1}, std::uint16_t{16}}) {
    settings.layout = layout;
    ASSERT_TRUE(open("a.mp3", frames(20)));
    show_recording_window();
    std::size_t entries = 0;
    for (const Command& command : command_table()) {
      const QString name = QStringLiteral("command_%1").arg(command.id);
      for (QAction* const action : window->findChildren<QAction*>(name)) {
        action->trigger();
        QApplication::processEvents();
        EXPECT_EQ(asked, action->isEnabled() ? Ids{command.id} : Ids{});
        EXPECT_FALSE(action->text().isEmpty());
        asked.clear();
        ++entries;
      }
      for (CommandButton* const button : window->findChildren<CommandButton*>(name)) {
        button->setEnabled(true);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(asked, Ids{});  // not before the click is answered
        QApplication::processEvents();
        EXPECT_EQ(asked, Ids{command.id}) << layout;
        EXPECT_FALSE(button->hasFocus());
        EXPECT_NE(button->icon().isNull(), button->text().isEmpty()) << command.id;
        asked.clear();
        act(*button);
        EXPECT_EQ(asked, Ids{command.id});
        asked.clear();
      }
    }
    EXPECT_EQ(entries, layout < 16 ? 60U : 61U);
  }
}

TEST_F(MainWindowTest, ButtonsWithSymbolsAreGreyWithoutADocument) {
  for (const std::uint16_t layout : {std::uint16_t{1}, std::uint16_t{16}}) {
    settings.layout = layout;
    show_recording_window();
    EXPECT_FALSE(find<CommandButton>("command_1012")->isEnabled());
    EXPECT_EQ(find<CommandButton>("command_152")->isEnabled(), layout == 16);
  }
}

TEST_F(MainWindowTest, TheWheelIsACommandOverAllButTheTimeFields) {
  show_recording_window();
  const auto turn = [](QWidget* over, int delta, Qt::KeyboardModifiers held) {
    const QPointF at = over->rect().center();
    QWheelEvent event(at, over->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, held,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // or what lies below isn't asked
    qApp->notify(over, &event);
  };
  turn(&window->view(), 120, Qt::NoModifier);
  turn(&window->view(), -240, Qt::ShiftModifier);
  turn(find<QWidget>("volume"), 60, Qt::ControlModifier);  // a step in two halves
  turn(find<QWidget>("volume"), 60, Qt::ControlModifier);
  turn(find<QWidget>("range_field"), 120, Qt::NoModifier);
  EXPECT_EQ(asked, (Ids{113, 115, 115, 120}));
  turn(&window->view(), 60, Qt::NoModifier);
  turn(&window->view(), -60, Qt::NoModifier);  // what was left of the other way is gone
  turn(&window->view(), -60, Qt::NoModifier);
  EXPECT_EQ(asked.size(), 5U);
}

TEST_F(MainWindowTest, KeepsItsSizeAndNoneInWhichTheViewIsLost) {
  show_window();
  const QRect place(30, 40, 700, 560);
  window->setGeometry(place);
  window->keep_geometry();
  window->resize(600, 500);
  window->restore_geometry();
  EXPECT_EQ(window->geometry(), place);
  for (const std::uint16_t layout : {std::uint16_t{1}, std::uint16_t{16}}) {
    settings.layout = layout;
    show_window();
    window->resize(200, 150);
    QApplication::processEvents();
    EXPECT_GE(window->view().height(), 130) << layout;
    EXPECT_TRUE(window->rect().contains(window->view().geometry()));
  }
}

TEST_F(MainWindowTest, AnotherThemeHoldsAtOnce) {
  show_window();
  settings.layout = 2;
  settings.rgb_win = 0xF8F8F8;
  const QImage dark = find<CommandButton>("command_1010")->icon().pixmap(20).toImage();
  window->refresh(Refresh::all);
  for (const char* const name : {"client", "menu_1", "position_field"})
    EXPECT_GT(find<QWidget>(name)->palette().color(QPalette::Window).lightness(), 200) << name;
  EXPECT_GT(QApplication::palette().color(QPalette::Window).lightness(), 200);
  EXPECT_NE(find<CommandButton>("command_1010")->icon().pixmap(20).toImage(), dark);
}

TEST_F(MainWindowTest, EditsByMouseAndKeysAndSaves) {
  open_frames(400);
  QWidget* const view = &window->view();
  QTest::mousePress(view, Qt::LeftButton, {}, point_of_frame(100));
  QTest::mouseMove(view, point_of_frame(150));
  QTest::mouseRelease(view, Qt::LeftButton, {}, point_of_frame(150));
  EXPECT_EQ(selection.sel_beg, 100 * length);
  EXPECT_EQ(selection.sel_end, 150 * length);

  press("Del");
  ASSERT_EQ(document.parts.size(), 2U);
  EXPECT_EQ(document.total_size, 350 * length);
  QApplication::processEvents();

  // The handle of the second part is drawn up to the top: the highest level.
  ASSERT_GE(window->view().view().handles.size(), 2U);
  const Rect handle = window->view().view().handles[1];
  const QPoint grip((handle.left + handle.right) / 2, (handle.top + handle.bottom) / 2);
  QTest::mouseMove(view, grip);
  EXPECT_EQ(view->cursor().shape(), Qt::PointingHandCursor);
  QTest::mousePress(view, Qt::LeftButton, {}, grip);
  QTest::mouseMove(view, {grip.x(), 0});
  QTest::mouseRelease(view, Qt::LeftButton, {}, {grip.x(), 0});
  EXPECT_EQ(document.parts[1].part_gainbeg, 32);

  press("Ctrl+Z");
  EXPECT_EQ(document.parts[1].part_gainbeg, 0);
  EXPECT_TRUE(find<QLineEdit>("range_field")->text().contains(QStringLiteral("2")));

  QApplication::processEvents();
  QTest::mousePress(view, Qt::LeftButton, {}, grip);
  QTest::mousePress(view, Qt::LeftButton, {}, point_of_frame(20));  // the release went elsewhere
  QTest::mouseRelease(view, Qt::LeftButton, {}, point_of_frame(20));
  EXPECT_EQ(document.parts[1].part_gainbeg, 0);

  window_host->new_file = folder.path("b.mp3");
  press("Ctrl+W");
  EXPECT_EQ(file_facts(folder.path("b.mp3")).size, 350 * length);
  EXPECT_TRUE(window_host->boxes.empty());
}

TEST_F(MainWindowTest, ASaveThatIsCancelledLeavesTheDocumentOpen) {
  open_frames(100'000);
  window_host->new_file = folder.path("b.mp3");
  QTimer::singleShot(0, [] {
    auto* const run = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(run, nullptr);
    QTest::mouseClick(run->findChild<QPushButton*>(QStringLiteral("cancel")), Qt::LeftButton);
  });
  press("Ctrl+W");
  EXPECT_LT(file_facts(folder.path("b.mp3")).size, 100'000 * length);
  EXPECT_EQ(document.total_size, 100'000 * length);
  EXPECT_FALSE(is_busy());
}

TEST_F(MainWindowTest, AnEndFromOutsideWaitsForNoDialogNorForTheNextOne) {
  show_window();
  QTimer::singleShot(0, [this] { window_host->end(); });
  {
    const Busy busy;
    for (int i = 0; i < 2; ++i) {
      AboutDialog dialog;
      show_dialog(dialog);
    }
  }
  EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindowTest, ADropOnTheGraphAppendsAndOneBesideItOpens) {
  open_frames(40);
  const std::string other = folder.file("other song.mp3", frames(30));
  const auto drop = [&](const QPoint& at) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(as_qstring(other))});
    const QPoint place = window->view().mapTo(window.get(), at);
    QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(window.get(), &enter);
    QDropEvent event(place, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(window.get(), &event);
    QApplication::processEvents();
  };
  window_host->answer = BoxAnswer::yes;
  drop({20, 20});
  EXPECT_EQ(document.total_size, 70 * length);
  EXPECT_EQ(selection.cursor, 70 * length);

  window_host->answer = BoxAnswer::no;  // to the question about unsaved changes
  drop({20, window->view().height() + 20});
  EXPECT_EQ(document.total_size, 30 * length);
  EXPECT_EQ(as_utf8(find<QAction>("command_1100")->text()), "&1 other song.mp3");
  EXPECT_EQ(set_setting("max_recent", "0"), SetResult::done);
  EXPECT_TRUE(window->findChildren<QAction*>(QStringLiteral("command_1100")).isEmpty());
}

TEST_F(MainWindowTest, ABatchIsChosenRunAndTold) {
  for (const char* const name : {"1.mp3", "2.mp3", "3.mp3"}) folder.file(name, frames(30));
  folder.file("2.mp3.mp3", "mine");
  settings.working_dir = folder.path("");
  show_window();
  bool was_shown = false;
  QTimer::singleShot(0, [&] {
    auto* const batch = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(batch, nullptr);
    was_shown = true;
    const auto click = [batch](const char* name) {
      batch->findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
    };
    click("option_2");  // Normalize goes when Only save comes
    click("option_1");
    EXPECT_FALSE(batch->findChild<QAbstractButton*>(QStringLiteral("option_2"))->isChecked());
    batch->findChild<QLineEdit*>(QStringLiteral("mask"))->setText(QStringLiteral("?.mp3"));
    Q_EMIT batch->findChild<QLineEdit*>(QStringLiteral("mask"))->editingFinished();
    auto* const source = batch->findChild<QLineEdit*>(QStringLiteral("source_folder"));
    source->setText(QStringLiteral("/not/there"));
    Q_EMIT source->editingFinished();
    EXPECT_EQ(batch->findChild<QTreeWidget*>(QStringLiteral("items"))->topLevelItemCount(), 0);
    source->setText(as_qstring(folder.path("")));
    Q_EMIT source->editingFinished();
    click("start");
    auto* const results = batch->findChild<QListWidget*>(QStringLiteral("results"));
    EXPECT_EQ(as_utf8(results->item(0)->text()), "Processing file: 3 / 3  (written: 2)");
    EXPECT_EQ(as_utf8(results->item(1)->text()), "2: File exists:  2.mp3");

    // Files that are dropped are the ones to be worked on; those chosen can be moved by keys.
    auto* const list = batch->findChild<QTreeWidget*>(QStringLiteral("items"));
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(as_qstring(folder.path("3.mp3")))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(list->viewport(), &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(list->viewport(), &drop);
    QTest::keyClick(list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(as_utf8(list->topLevelItem(1)->text(0)), "3.mp3");
    EXPECT_EQ(list->selectedItems(), QList{list->topLevelItem(1)});
    click("close");
  });
  press("Ctrl+B");
  EXPECT_TRUE(was_shown);
  EXPECT_EQ(read_text(folder.path("2.mp3.mp3")), "mine");
  EXPECT_TRUE(file_facts(folder.path("3.mp3.mp3")).found);
}

TEST_F(MainWindowTest, TypedTimesMoveTheCursorAndTheSelection) {
  open_frames(400);
  press("Ctrl+P");
  QApplication::processEvents();
  auto* const position = find<QLineEdit>("position_field");
  EXPECT_EQ(as_utf8(position->selectedText()), "0'00.00");
  QTest::keyClicks(position, QStringLiteral("0'02.61"));
  press("Return");
  EXPECT_EQ(selection.cursor, 100 * length);
  EXPECT_FALSE(position->hasFocus());

  press("Ctrl+L");  // makes a selection to be edited
  QApplication::processEvents();
  auto* const range = find<QLineEdit>("range_field");
  EXPECT_EQ(selection.sel_beg, 100 * length);
  QTest::keyClicks(range, QStringLiteral("0'01.31"));
  press("Tab");
  EXPECT_EQ(selection.sel_beg, 51 * length);
}

// In a line of Hebrew the digits of a time would change places round its "'".
TEST_F(MainWindowTest, TimesKeepTheirOrderInALineThatGoesToTheLeft) {
  set_ui_text(win, row::total.number, "\u05E1\u05DA");
  set_ui_text(win, row::now.number, "\u05E2\u05DB");
  open_frames(400);
  auto* const position = find<QLineEdit>("position_field");
  QTextLayout line(position->text(), position->font());
  line.beginLayout();
  line.createLine();
  line.endLayout();
  const auto x_of = [&](const char* text) {
    return line.lineAt(0).cursorToX(
        static_cast<int>(position->text().lastIndexOf(QString::fromLatin1(text))));
  };
  EXPECT_LT(x_of("0'00.00"), x_of(".00"));
  press("Ctrl+P");
  QApplication::processEvents();
  QTest::keyClicks(position, QStringLiteral("0'02.61"));
  press("Return");
  EXPECT_EQ(selection.cursor, 100 * length);
  ui_text_free();
}

// As a screen reader does it.
TEST_F(MainWindowTest, SlidersSetAndShowWhatTheyStandFor) {
  open_frames(400);
  find<QScrollBar>("position_bar")->setValue(500);
  EXPECT_EQ(selection.cursor, 200 * length);
  press("Home");
  EXPECT_EQ(selection.cursor, 0U);
  press(",");
  EXPECT_EQ(find<QSlider>("volume")->value(), 71);
  find<QSlider>("volume")->setValue(30);
  EXPECT_EQ(settings.volume, 30);
}

// Nobody is told when the sound ends, so what needs silence must not have become grey meanwhile.
TEST_F(MainWindowTest, EditingWhileAudioPlaysLeavesOpenLive) {
  open_frames(40);
  playback.is_playing = true;
  for (const char* const key : {"B", "Ctrl+J"}) press(key);
  playback.is_playing = false;
  EXPECT_TRUE(find<QAction>("command_1022")->isEnabled());
  EXPECT_TRUE(find<QAction>("command_1010")->isEnabled());
  EXPECT_TRUE(find<CommandButton>("command_1010")->isEnabled());
}

TEST_F(MainWindowTest, SurvivesAnySizeAndASourceThatIsGone) {
  open_frames(400);
  remove_file(folder.path("a.mp3"));
  for (const QSize& size : {QSize(1, 1), QSize(8000, 300), QSize(1150, 560)}) {
    window->resize(size);
    press("Right");
    QApplication::processEvents();
  }
  EXPECT_EQ(window->view().image().size(), window->view().size());
}

TEST_F(MainWindowTest, FollowsTheRatioOfTheScreenThatItComesTo) {
  open_frames(40);
  const QSize size = window->view().image().size();
  window->windowHandle()->setScreen(QApplication::screens().last());
  QTest::qWait(50);
  EXPECT_EQ(window->view().devicePixelRatioF(), 2);
  EXPECT_EQ(window->view().image().width(), 2 * size.width());
  EXPECT_EQ(window->view().image().size(), window->view().size() * 2);
}

TEST_F(MainWindowTest, TextsCanBeReadOnAnyGround) {
  for (std::uint32_t grey = 0; grey < 256; ++grey) {
    settings.rgb_win = grey * 0x010101;
    for (const std::uint16_t layout : {std::uint16_t{1}, std::uint16_t{2}}) {
      settings.layout = layout;
      const QPalette palette = window_palette(look_of_settings());
      const int text = qGray(palette.color(QPalette::Text).rgb());
      EXPECT_GT(std::abs(text - qGray(palette.color(QPalette::Window).rgb())), 90) << grey;
      EXPECT_GT(std::abs(text - qGray(palette.color(QPalette::Base).rgb())), 90) << grey;
    }
  }
}

TEST_F(MainWindowTest, EverythingThatTakesTheFocusIsCalledSomething) {
  open_frames(40);
  for (const QWidget* const widget : window->findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()) continue;
    QAccessibleInterface* const accessible =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    ASSERT_NE(accessible, nullptr);
    EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << as_utf8(widget->objectName());
  }
  const QAccessibleInterface* const view = QAccessible::queryAccessibleInterface(&window->view());
  std::vector<std::string> names;
  for (int i = 0; i < view->childCount(); ++i) {
    EXPECT_EQ(view->child(i)->role(), QAccessible::Graphic);
    EXPECT_FALSE(view->child(i)->text(QAccessible::Description).isEmpty());
    names.push_back(as_utf8(view->child(i)->text(QAccessible::Name)));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Graph", "Overview", "Level meter"}));
  EXPECT_FALSE(QAccessible::queryAccessibleInterface(find<QWidget>("info_bar"))->state().editable);
}

TEST_F(MainWindowTest, MarksOfTheMenusAreTold) {
  show_window();
  EXPECT_FALSE(find<QMenu>("menu_74")->menuAction()->isEnabled());  // there is no document
  open_frames(40);
  EXPECT_TRUE(find<QMenu>("menu_74")->menuAction()->isEnabled());
  const struct {
    CommandId id;
    QAccessible::Role role;
  } marks[] = {{command::toggle_big_timer, QAccessible::CheckBox},
               {command::text_is_ansi, QAccessible::RadioButton}};
  for (const auto& mark : marks) {
    auto* const entry = find<QAction>(("command_" + std::to_string(mark.id)).c_str());
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(entry);
    const bool was_checked = told->state().checked;
    act(*entry);
    EXPECT_EQ(told->role(), mark.role);
    EXPECT_NE(told->state().checked, was_checked) << mark.id;
    EXPECT_EQ(told->state().checked, is_checked(*command_of(editor, mark.id)));
  }
  const Busy busy;  // a dialog is open
  act(*find<CommandButton>("command_212"));
  EXPECT_EQ(find<CommandButton>("command_212")->isChecked(), settings.keep_id3v2 != 0);
}

}  // namespace corvelin::test

int main(int argc, char** argv) {
  // Other screens, scales and fonts come from the environment.
  for (const auto& [name, value] :
       {std::pair("QT_QPA_PLATFORM", "offscreen:configfile=" CORVELIN_TWO_SCREENS),
        {"QT_SCALE_FACTOR", "1"}})
    if (!qEnvironmentVariableIsSet(name)) qputenv(name, value);
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication application(argc, argv);
  QApplication::setStyle(new corvelin::Style);
  corvelin::install_accessibility();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

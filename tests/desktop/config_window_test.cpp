// SPDX-License-Identifier: GPL-2.0-or-later
// Each control of the configuration, found by the words that a person or a screen reader finds it
// by and moved the same way: what becomes of the file.
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <functional>
#include <ranges>

#include "desktop/main_window.h"
#include "desktop/qt_host.h"
#include "desktop/qt_text.h"
#include "edit/config_dialog.h"
#include "platform/text/text.h"
#include "settings/setting_table.h"
#include "settings/settings_file.h"
#include "support/core_test.h"
#include "support/scripted_wave_system.h"

namespace corvelin::test {

namespace {

class AnsweringHost : public QtHost {
 public:
  using QtHost::QtHost;
  BoxAnswer show_message_box(const MessageBox&) override { return BoxAnswer::ok; }
  std::optional<std::uint32_t> ask_for_colour(std::uint32_t) override { return 0x808080; }
  std::optional<std::string> ask_for_folder(const std::string&) override { return "/chosen"; }
  std::optional<std::string> ask_for_existing_file(const FileDialog&) override { return "/tool"; }
  std::optional<std::string> ask_for_new_file(const FileDialog&) override { return "/a/b.c.mp3"; }
};

class ConfigWindowTest : public CoreTest {
 protected:
  ConfigWindowTest() { install_host(&window_host); }
  ~ConfigWindowTest() override { install_host(&host); }

  // Opens the page that `tabsel` names, does something with its window and closes that.
  void with_window(const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
      dialog->reject();
    });
    dispatch_command(editor, 1050);
  }

  ScriptedWaveSystem devices;
  MainWindow window{editor, look_of_settings()};
  AnsweringHost window_host{editor, window};
};

QString name_of(QWidget& widget, const QWidget& page) {
  for (const QLabel* const label : page.findChildren<QLabel*>())
    if (label->buddy() == &widget) return label->text();
  const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widget);
  return accessible == nullptr ? QString() : accessible->text(QAccessible::Name);
}

// The control of this name, or of one that begins so.
QWidget* find_control(const QWidget& page, const QString& name) {
  QWidget* beginning = nullptr;
  for (QWidget* const widget : page.findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || qobject_cast<QLabel*>(widget) != nullptr) continue;
    if (name_of(*widget, page) == name) return widget;
    if (beginning == nullptr && name_of(*widget, page).startsWith(name)) beginning = widget;
  }
  return beginning;
}

void change(QWidget& control, const QString& value) {
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&control);
  if (auto* const list = qobject_cast<QComboBox*>(&control)) {
    const int index = list->findText(value, Qt::MatchStartsWith);
    EXPECT_GE(index, 0) << as_utf8(value);
    QAccessible::queryAccessibleInterface(list->view())
        ->child(index)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
  } else if (auto* const button = qobject_cast<QAbstractButton*>(&control)) {
    button->click();
  } else if (accessible->valueInterface() != nullptr) {
    accessible->valueInterface()->setCurrentValue(value.toInt());
  } else {
    accessible->editableTextInterface()->insertText(0, value);
  }
}

// The lines that are new in the file, in a row.
std::string changed_lines(std::string_view before, std::string_view after) {
  std::set<std::string_view> known;
  std::string_view line;
  while (take_line(before, line)) known.insert(line);
  std::string changed;
  while (take_line(after, line))
    if (!known.contains(line)) changed += (changed.empty() ? "" : " ") + std::string(line);
  return changed;
}

struct ControlCase {
  std::uint16_t page;
  const char* name;
  const char* value;  // nothing for what is pressed
  std::vector<std::pair<const char*, const char*>> given;
  const char* changes;
};

// clang-format off
const ControlCase cases[] = {
    {0, "Language appears", "German", {}, "language=German"},
    {0, "<  >  skips", "0", {}, "frameskiplo=1"},
    {0, "<  >  skips", "1001", {}, "frameskiplo=1000"},
    {0, "<<  >>  skips", "5", {}, "frameskiphi=10"},
    {0, "<<  >>  skips", "20000", {}, "frameskiphi=10000"},
    {0, "Cut prelisten time", "35", {}, "prelisten_time=35"},
    {0, "Left = set begin / Right = set end", "", {}, "mouse_method=0"},
    {0, "Left = new + drag", "", {{"mouse_method", "0"}}, "mouse_method=1"},
    {1, "Default dark theme", "", {{"no_padding", "1"}}, "darkmode=1 no_padding=0"},
    {1, "Default bright theme", "", {}, "rgb_background=13218183 rgb_mpeg=5584640 rgb_cuts=5395026 rgb_selection=16776960 rgb_actual=9079434 rgb_win=16316664 layout=2"},
    {1, "Dark window mode", "", {}, "darkmode=1"},
    {1, "Arrows on scrollbar", "", {}, "scrollbar_arrows=1"},
    {1, "Maximum height of big time display:", "55", {}, "timer_height=55"},
    {1, "Audio background", "", {}, "rgb_background=9737364"},
    {1, "Audio graph", "", {}, "rgb_mpeg=9737364"},
    {1, "Edits (cut, cue, level)", "", {}, "rgb_cuts=9737364"},
    {1, "Cursor, big timer", "", {}, "rgb_cursor=9737364"},
    {1, "Level meter", "", {}, "rgb_vumeter=8421504"},
    {1, "Selection", "", {}, "rgb_selection=9737364"},
    {1, "Active edit part / names", "", {}, "rgb_actual=9737364"},
    {1, "Window background", "", {}, "rgb_win=8421504"},
    {1, "Bright symbols 1", "", {{"layout", "3"}}, "layout=1"},
    {1, "Bright symbols 2", "", {}, "layout=4"},
    {1, "Dark symbols 1", "", {}, "layout=2"},
    {1, "Dark symbols 2", "", {}, "layout=5"},
    {1, "Classic symbols", "", {}, "layout=3"},
    {1, "Text buttons", "", {}, "layout=16"},
    {1, "Text buttons, navigation left", "", {}, "layout=17"},
    {1, "Text buttons, extra slim", "", {}, "layout=18"},
    {1, "Large symbols", "", {{"no_padding", "1"}}, "layout=4 no_padding=0 large_symbols=1"},
    {1, "No button padding", "", {}, "no_padding=1"},
    {2, "Output device", "Quiet", {}, "device_out=2"},
    {2, "Maximum wave buffer size:", "48", {}, "buffer_max=48"},
    {2, "Max. frames/buffer", "8", {}, "buffer_max=40 buffer_frm=8"},
    {2, "Maximum wave buffer size:", "33", {{"buffer_max", "64"}, {"buffer_frm", "8"}}, "buffer_max=33 buffer_frm=6"},
    {2, "Keep device open", "", {}, "keep_dev_open=1"},
    {2, "Input device", "Loud", {}, "device_in=1"},
    {2, "Beep on reaching peak", "", {}, "peakbeep=1"},
    {2, "Level activated recording", "", {}, "rec_level_act=1"},
    {2, "Threshold:", "64", {}, "rec_threshold=1088"},
    {2, "Pause after (seconds):", "30", {}, "rec_threshold=7696"},
    {3, "mpglib.dll", "", {}, "use_mpglib=1"},
    {3, "System (ACM)", "", {{"use_mpglib", "1"}}, "use_mpglib=0"},
    {3, "Use ffmpeg", "/opt/ff", {}, "ffmpeg=/opt/ff"},
    {3, "...", "", {}, "ffmpeg=/tool"},
    {4, "Use Lame", "", {{"enc_type", "1"}}, "enc_type=2"},
    {4, "Method", "CBR", {}, "enc_lam_vbr_method=-1"},
    {4, "Method", "ABR", {}, "enc_lam_vbr_method=4"},
    {4, "Bit rate", "64", {}, "enc_lam_bitrate=64"},
    {4, "Maximum bit rate", "Max 256", {}, "enc_lam_bitrate_max=256"},
    {4, "VBR quality", "VBR quality 1", {}, "enc_lam_vbr_quality=1"},
    {4, "ABR (kbps):", "500", {{"enc_lam_vbr_method", "4"}}, "enc_lam_abr_bitrate=320"},
    {4, "Sample rate", "48000", {}, "enc_lam_samplerate=48000"},
    {4, "Mode", "Mono", {}, "enc_lam_mode=3"},
    {4, "Quality", "Normal", {}, "enc_lam_quality=0"},
    {4, "Use ACM", "", {}, "enc_type=1"},
    {4, "Format", "64 kbps, 22 kHz, Mono", {{"enc_type", "1"}}, "enc_acm_bitrate=64000 enc_acm_samplerate=22050 enc_acm_channels=1 enc_acm_blocksize=208"},
    {4, "High quality", "", {{"enc_type", "1"}}, "enc_acm_highquality=1"},
    {5, "...", "", {}, "working_dir=/chosen/"},
    {5, "Use on save", "", {{"working_dir", "/w/"}}, "workdir_onsave=1"},
    {5, "Delete", "", {{"working_dir", "/w/"}}, "working_dir="},
    {5, "/x/Recording", "", {{"file_savepath", "/x/Recording"}}, "file_savepath=/a/b"},
    {5, "Add date and time", "", {{"rec_appenddata", "1"}}, "rec_adddate=1 rec_appenddata=0"},
    {5, "Add date and time", "", {{"rec_adddate", "1"}, {"rec_split", "1"}}, "rec_adddate=0 rec_split=0"},
    {5, "Append", "", {{"rec_adddate", "1"}, {"rec_split", "1"}}, "rec_adddate=0 rec_appenddata=1 rec_split=0"},
    {5, "Limit recording time", "1000", {}, "rec_time=900"},
    {5, "At limit continue", "", {{"rec_appenddata", "1"}}, "rec_adddate=1 rec_appenddata=0 rec_split=1"},
    {5, "Txt file remote control", "", {}, ""},
    {6, "Max. number of recent files:", "12", {{"max_recent", "3"}}, "max_recent=9"},
    {6, "Max. undo steps:", "70", {}, "max_undo=50"},
    {6, "Max. undo steps:", "0", {}, "max_undo=1"},
    {6, "Bottom level", "91", {}, "lowest_gain=90"},
    {6, "Warn of unsaved changes", "", {}, "warn=2"},
    {6, "Warn of overwriting", "", {}, "warn=1"},
    {6, "Warn of selecting existing", "", {}, "warn_existing=0"},
    {6, "Close save window", "", {}, "nokeep_savewin=1"},
    {6, "Quit after saving audio", "", {}, "save_quit=1"},
    {6, "Higher task priority", "", {}, "high_pri=1"},
    {6, "Show tooltips", "", {}, "showtt=0"},
    {6, "Show all warnings", "", {{"msg_hide", "7"}}, "msg_hide=0"},
};
// clang-format on

}  // namespace

TEST_F(ConfigWindowTest, EachControlChangesWhatItSaysInTheFile) {
  for (const ControlCase& row : cases) {
    SCOPED_TRACE(std::string(row.name) + " " + row.value);
    settings = default_settings();
    complete_settings();
    settings.enc_lam_vbr_method = 0;  // as its page writes it
    for (const auto& [key, value] : row.given) set_setting(key, value);
    settings.tabsel = row.page;
    const std::string before = format_settings();
    with_window([&](QDialog& dialog) {
      QWidget* const control = find_control(*dialog.findChild<QTabWidget*>()->currentWidget(),
                                            QString::fromUtf8(row.name));
      ASSERT_NE(control, nullptr);
      ASSERT_TRUE(control->isEnabled());
      change(*control, QString::fromUtf8(row.value));
    });
    EXPECT_EQ(changed_lines(before, format_settings()), row.changes);
  }
}

TEST_F(ConfigWindowTest, WhatIsBeingTypedStaysWhenThePageIsShownAnew) {
  settings.tabsel = 6;
  with_window([](QDialog& dialog) {
    auto* const field = dialog.findChild<QSpinBox*>(QStringLiteral("max_undo"));
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("3"));
    dialog.findChild<QAbstractButton*>(QStringLiteral("save_quit"))->click();
    QTest::keyClicks(field, QStringLiteral("5"));
  });
  EXPECT_EQ(settings.max_undo, 35);
}

TEST_F(ConfigWindowTest, AWheelThatScrollsThePageChangesNothing) {
  for (const char* const name : {"rec_threshold", "device_out"}) {
    settings.tabsel = 2;
    const std::string before = format_settings();
    with_window([name](QDialog& dialog) {
      auto* const control = dialog.findChild<QWidget*>(QString::fromLatin1(name));
      const QPointF at = control->rect().center();
      QWheelEvent event(at, control->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(control, &event);
    });
    EXPECT_EQ(changed_lines(before, format_settings()), "") << name;
  }
}

TEST_F(ConfigWindowTest, RestartIsOfferedForWhatNeedsItAndDefaultsAreShown) {
  settings.tabsel = 1;
  bool restarts = false;
  window_host.restart_program = [&] { restarts = true; };
  with_window([&](QDialog& dialog) {
    auto* const restart = dialog.findChild<QPushButton*>(QStringLiteral("restart"));
    auto* const large = dialog.findChild<QAbstractButton*>(QStringLiteral("large_symbols"));
    auto* const padding = dialog.findChild<QAbstractButton*>(QStringLiteral("no_padding"));
    EXPECT_FALSE(restart->isVisible());
    large->setFocus();
    large->click();
    EXPECT_TRUE(restart->isVisible());
    EXPECT_EQ(dialog.focusWidget(), large);
    EXPECT_FALSE(padding->isEnabled());
    dialog.findChild<QPushButton*>(QStringLiteral("defaults"))->click();
    EXPECT_FALSE(large->isChecked());
    EXPECT_TRUE(padding->isEnabled());
    restart->click();
  });
  EXPECT_TRUE(restarts);
}

}  // namespace corvelin::test

// SPDX-License-Identifier: GPL-2.0-or-later
// The main window: the menu bar, and below it toolbar, view, position scroll bar, control panel and
// information bar, placed by the core's layout. It shows what the records say and hands events on.
#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>

#include "desktop/controls.h"
#include "desktop/look.h"
#include "desktop/view_widget.h"
#include "platform/host.h"
#include "shell/status_display.h"
#include "shell/window_layout.h"

class QLabel;
class QSlider;

namespace corvelin {

struct Editor;

class Menus;

class MainWindow : public QMainWindow {
 public:
  /// `run` stands for the dispatcher where one is given.
  MainWindow(Editor& editor, const Look& look, RunCommand run = nullptr);
  ~MainWindow() override;

  // What the host is told to bring up to date.
  void refresh(Refresh level);
  void rebuild_part_list();
  void rebuild_recent_menu();
  void update_menu_state(std::uint8_t mask);
  void show_pressed_buttons();
  void lay_out();
  void enter_field(StatusField field);

  /// Asked when the user closes the window: whether it may go.
  std::function<bool()> may_close;

  /// The place of the window as the settings have it, in logical pixels, moved onto the screens;
  /// and back into the settings, unless the window is maximized or minimized.
  void restore_geometry();
  void keep_geometry() const;

  [[nodiscard]] ViewWidget& view() { return *view_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void make_controls();
  void take_look();
  void require_room(const WindowLayout& layout);
  void make_buttons(const std::vector<PlacedButton>& places);
  void show_status();
  void show_button_marks();
  void show_button_states(std::uint8_t mask);
  void show_undo_label();
  bool turn_wheel(const QWheelEvent& event);
  [[nodiscard]] WindowSpace space() const;
  [[nodiscard]] double ratio() const { return client_->devicePixelRatioF(); }
  [[nodiscard]] QRect logical(const Rect& area) const;
  [[nodiscard]] QIcon icon_of(CommandId id) const;
  [[nodiscard]] QString panel_text(CommandId id) const;

  Editor& editor_;
  Look look_;
  RunCommand run_;
  StatusDisplay status_;
  QWidget* client_;  // the window's inside, below the menu bar
  ViewWidget* view_;
  PositionBar* position_bar_;
  TimeField* position_field_;
  TimeField* range_field_;
  InfoBar* info_bar_;
  QSlider* volume_;
  QLabel* margin_ = nullptr;                // in the forms with symbols,
  CommandButton* margin_button_ = nullptr;  // and in those with words
  std::map<CommandId, CommandButton*> buttons_;
  std::unique_ptr<Menus> menus_;
  double placed_ratio_ = 0;  // of pixels, at which everything has its place
  bool has_fast_labels_ = false;
  int wheel_turned_ = 0;  // eighths of a degree that don't make a step yet
};

}  // namespace corvelin

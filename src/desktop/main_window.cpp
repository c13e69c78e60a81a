// SPDX-License-Identifier: GPL-2.0-or-later
// The controls of the window, their places and what they show.
#include "desktop/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSlider>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "audio/playback.h"
#include "desktop/accessibility.h"
#include "desktop/keys.h"
#include "desktop/menus.h"
#include "desktop/qt_text.h"
#include "edit/menu_state.h"
#include "model/document.h"
#include "platform/processes/program.h"
#include "platform/processes/system.h"
#include "settings/settings.h"
#include "shell/button_texts.h"
#include "shell/panel_buttons.h"
#include "shell/window_events.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

// The paths as the other program wrote them: a name need not be valid text in any encoding.
std::vector<std::string> dropped_paths(const QMimeData& data) {
  std::vector<std::string> paths;
  for (QByteArray line : data.data(QStringLiteral("text/uri-list")).split('\n')) {
    line = line.trimmed();
    if (!line.startsWith("file:")) continue;
    line.remove(0, line.startsWith("file://") ? 7 : 5);
    const qsizetype path = line.indexOf('/');  // behind the name of this machine, if it is there
    if (path >= 0) paths.push_back(QByteArray::fromPercentEncoding(line.mid(path)).toStdString());
  }
  return paths;
}

}  // namespace

MainWindow::MainWindow(Editor& editor, const Look& look, RunCommand run)
    : editor_(editor), look_(look), run_(std::move(run)), client_(new QWidget) {
  if (!run_) run_ = [&editor](CommandId id) { dispatch_command(editor, id); };
  setObjectName(QStringLiteral("main_window"));
  setWindowTitle(QStringLiteral("Corvelin"));
  setAcceptDrops(true);
  setCentralWidget(client_);
  client_->setObjectName(QStringLiteral("client"));
  client_->setAccessibleName(as_qstring(program_name));
  client_->setPalette(window_palette(look));
  client_->setAutoFillBackground(true);
  client_->setLayoutDirection(Qt::LeftToRight);  // time runs to the right in every language
  client_->installEventFilter(this);
  qApp->installEventFilter(this);  // the wheel is the window's, whatever it is turned over
  make_controls();
  menus_ = std::make_unique<Menus>(editor, *menuBar(), look, run_);
  make_shortcuts(this, run_);
  setFocusProxy(view_);
  view_->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::make_controls() {
  const WindowLayout layout = window_layout(space());
  make_buttons(layout.toolbar_buttons);
  view_ = new ViewWidget(editor_, client_);
  position_bar_ = new PositionBar(editor_, run_, client_);
  position_bar_->stackUnder(view_);  // at high ratios it would lie over the map's last rows
  position_field_ = new TimeField(editor_, TimeField::Meaning::position, run_, client_);
  range_field_ = new TimeField(editor_, TimeField::Meaning::range, run_, client_);
  make_buttons(layout.panel_buttons);
  if (has_text_buttons(panel_form())) {
    make_buttons({{.id = command::margin_button, .area = layout.margin}});
    margin_button_ = buttons_[command::margin_button];
  } else {
    margin_ = new QLabel(client_);
    margin_->setObjectName(QStringLiteral("margin"));
    margin_->setAlignment(Qt::AlignCenter);
    margin_->setAccessibleName(as_qstring(label_text(row::margin)).remove(u'&'));
  }
  volume_ = new QSlider(has_text_buttons(panel_form()) ? Qt::Vertical : Qt::Horizontal, client_);
  volume_->setObjectName(QStringLiteral("volume"));
  volume_->setRange(0, 100);
  volume_->setPageStep(10);
  volume_->setFocusPolicy(Qt::TabFocus);
  volume_->setValue(settings.volume);
  connect(volume_, &QSlider::valueChanged, [](int value) {
    settings.volume = static_cast<std::uint16_t>(value);
    apply_volume();
  });
  info_bar_ = new InfoBar(client_);
  position_field_->setAccessibleName(as_qstring(ui_text(row::position)));
  range_field_->setAccessibleName(as_qstring(ui_text(row::selection_or_part)));
  info_bar_->setAccessibleName(as_qstring(ui_text(row::stream)));
  position_bar_->setAccessibleName(as_qstring(ui_text(row::position_in_stream)));
  volume_->setAccessibleName(as_qstring(ui_text(row::volume)));
  show_button_marks();
  show_button_states(all_states);
}

void MainWindow::make_buttons(const std::vector<PlacedButton>& places) {
  const bool is_toolbar = buttons_.empty();
  const PanelForm form = panel_form();
  for (const PlacedButton& place : places) {
    auto* const button = new CommandButton(place.id, run_, client_);
    if (!is_toolbar && has_text_buttons(form)) {
      button->setText(panel_text(place.id));
    } else {
      button->setIcon(icon_of(place.id));
    }
    button->setAutoRaise(is_toolbar || form < PanelForm::classic_symbols);
    if (settings.showtt != 0) button->setToolTip(as_qstring(button_tooltip(editor_, place.id)));
    button->setToolTipDuration(20000);
    button->setAccessibleName(as_qstring(button_name(editor_, place.id)));
    button->setCheckable(place.id == command::toggle_keep_id3v2 ||
                         place.id == command::toggle_save_id3v1);
    // What the command was refused is not so.
    connect(
        button, &CommandButton::toggled, this, [this] { show_button_marks(); },
        Qt::QueuedConnection);
    buttons_[place.id] = button;
  }
}

WindowSpace MainWindow::space() const {
  const double ratio = this->ratio();
  const auto device = [ratio](int logical) {
    return static_cast<int>(std::lround(logical * ratio));
  };
  // The screen gives a window whole pixels, which at a ratio with a fraction may be one less than
  // its size rounded up.
  return {.width = static_cast<int>(client_->width() * ratio),
          .height = static_cast<int>(client_->height() * ratio),
          .display_scale = static_cast<float>(logicalDpiX() / 96.0 * ratio),
          .arrow_width = device(style()->pixelMetric(QStyle::PM_ScrollBarExtent)),
          .text_width =
              [this, device](std::string_view text) {
                return device(client_->fontMetrics().horizontalAdvance(as_qstring(text)));
              },
          .text_height = device(client_->fontMetrics().height())};
}

QRect MainWindow::logical(const Rect& area) const {
  const double ratio = this->ratio();
  const auto place = [ratio](int device) { return static_cast<int>(std::lround(device / ratio)); };
  return {QPoint(place(area.left), place(area.top)),
          QPoint(place(area.right) - 1, place(area.bottom) - 1)};
}

// What the rows of controls need, and something of the view; no more than a screen has.
void MainWindow::require_room(const WindowLayout& layout) {
  constexpr QSize around(40, 120);  // the menu bar and what the desktop shows round a window
  const QSize room = screen()->availableSize() - around;
  const auto place = [this](int device) { return static_cast<int>(std::ceil(device / ratio())); };
  client_->setMinimumSize(
      QSize(place(layout.least_width), place(layout.least_height)).boundedTo(room));
}

void MainWindow::lay_out() {
  placed_ratio_ = ratio();
  const WindowSpace space = this->space();
  const WindowLayout layout = window_layout(space);
  require_room(layout);
  view_->place(layout.view, space.display_scale, ratio());
  position_bar_->setGeometry(logical(layout.scroll_bar));
  position_field_->setGeometry(logical(layout.position_field));
  range_field_->setGeometry(logical(layout.range_field));
  volume_->setGeometry(logical(layout.volume_slider));
  info_bar_->setGeometry(logical(layout.info_bar));
  if (margin_ != nullptr) margin_->setGeometry(logical(layout.margin));
  if (margin_button_ != nullptr) margin_button_->setGeometry(logical(layout.margin));
  const SymbolSize symbol = symbol_size(space.display_scale);
  const QSize picture(static_cast<int>(std::lround(symbol.picture_w / ratio())),
                      static_cast<int>(std::lround(symbol.picture_h / ratio())));
  for (const auto* const places : {&layout.toolbar_buttons, &layout.panel_buttons}) {
    for (const PlacedButton& place : *places) {
      const auto button = buttons_.find(place.id);
      if (button == buttons_.end()) continue;  // of a form that comes with the next start
      button->second->setIconSize(picture);
      button->second->setGeometry(logical(place.area));
    }
  }
}

// The colours hold at once, in dialogs that are open too; another form of the panel only comes with
// the next start.
void MainWindow::take_look() {
  const Look look = look_of_settings();
  menus_->take_look(look);
  if (look == look_) return;
  look_ = look;
  QApplication::setPalette(dialog_palette(look));
  client_->setPalette(window_palette(look));
  for (const auto& [id, button] : buttons_)
    if (!button->icon().isNull()) button->setIcon(icon_of(id));
}

void MainWindow::refresh(Refresh level) {
  refresh_status(editor_, status_, level);
  show_status();
  if (level == Refresh::all) {
    take_look();
    show_button_marks();
    menus_->show_marks();
  }
  show_pressed_buttons();
  view_->refresh();
  announce_view(*view_);
}

void MainWindow::show_status() {
  setWindowTitle(as_qstring(status_.title));
  position_field_->show_status(as_qstring(status_.position_field));
  range_field_->show_status(as_qstring(status_.range_field));
  const QString info = as_qstring(status_.info_bar);
  if (info_bar_->text() != info) {
    info_bar_->setText(info);
    info_bar_->setCursorPosition(0);
  }
  position_bar_->setVisible(status_.has_scroll_bar);
  position_bar_->show_position(status_.scroll_position);
  const QString margin = as_qstring(status_.margin);
  if (margin_ != nullptr && margin_->text() != margin) {
    margin_->setText(margin);
    margin_->setAccessibleDescription(margin);
  }
  if (margin_button_ != nullptr && !margin.isEmpty() && margin_button_->text() != margin) {
    margin_button_->setText(margin);
    margin_button_->setAccessibleDescription(margin);
  }
  if (volume_->value() != settings.volume) volume_->setValue(settings.volume);
}

void MainWindow::show_button_marks() {
  buttons_[command::toggle_keep_id3v2]->show_checked(settings.keep_id3v2 != 0);
  buttons_[command::toggle_save_id3v1]->show_checked(settings.save_id3v1 != 0);
  if (margin_ != nullptr) margin_->setEnabled(settings.margin != 0);
  if (margin_button_ != nullptr) margin_button_->setEnabled(settings.margin != 0);
}

// Buttons with words stay live, as keys do: the command itself sees what it lacks.
void MainWindow::show_button_states(std::uint8_t mask) {
  for (const auto& [id, button] : buttons_) {
    const bool is_asked_for = (state_bit(*command_of(editor_, id)) & mask) != 0;
    if (is_asked_for && button->text().isEmpty())
      button->setEnabled(is_command_enabled(editor_, id));
  }
}

// What plays, or is recorded, and what its buttons mean meanwhile.
void MainWindow::show_pressed_buttons() {
  for (const auto& [id, button] : buttons_)
    if (!button->isCheckable()) button->setDown(is_button_pressed(editor_, id));
  if (std::exchange(has_fast_labels_, has_fast_labels(editor_)) == has_fast_labels_) return;
  for (const CommandId id : {command::prelisten_to_end, command::prelisten_from_end}) {
    if (has_text_buttons(panel_form())) {
      buttons_[id]->setText(panel_text(id));
    } else {
      buttons_[id]->setIcon(icon_of(id));
    }
  }
}

QIcon MainWindow::icon_of(CommandId id) const {
  if (has_fast_labels_ && id == command::prelisten_to_end) id = slower_icon;
  if (has_fast_labels_ && id == command::prelisten_from_end) id = faster_icon;
  return command_icon(id, look_.icon_colours());
}

// The letters that are underlined elsewhere would take keys from the menu bar.
QString MainWindow::panel_text(CommandId id) const {
  return as_qstring(panel_label(id, has_fast_labels_)).remove(u'&');
}

void MainWindow::show_undo_label() {
  if (settings.showtt != 0)
    buttons_[command::undo]->setToolTip(as_qstring(button_tooltip(editor_, command::undo)));
}

void MainWindow::rebuild_part_list() { menus_->rebuild_part_list(); }
void MainWindow::rebuild_recent_menu() { menus_->rebuild_recent_menu(); }

void MainWindow::update_menu_state(std::uint8_t mask) {
  menus_->show_states(mask);
  show_button_states(mask);
  if ((mask & undo_states) != 0) show_undo_label();
}

void MainWindow::enter_field(StatusField field) {
  (field == StatusField::position ? position_field_ : range_field_)->enter();
}

void MainWindow::restore_geometry() {
  const QRect desktop = screen()->virtualGeometry();
  move_window_onto({desktop.left(), desktop.top(), desktop.right() + 1, desktop.bottom() + 1});
  resize(settings.window_w, settings.window_h);
  move(settings.window_x, settings.window_y);
}

void MainWindow::keep_geometry() const {
  if (isMaximized() || isMinimized() || isFullScreen()) return;
  settings.window_x = x();
  settings.window_y = y();
  settings.window_w = width();
  settings.window_h = height();
}

// A window that comes to a screen of another ratio keeps its size in logical pixels: it is painted
// anew, and that is all that tells of it.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) lay_out();
  if (watched == client_ && event->type() == QEvent::Paint && placed_ratio_ != ratio())
    QMetaObject::invokeMethod(
        this, [this] { lay_out(); }, Qt::QueuedConnection);
  if (event->type() != QEvent::Wheel || !watched->isWidgetType()) return false;
  const auto* const widget = static_cast<QWidget*>(watched);
  if (widget->window() != this) return false;
  if (dynamic_cast<const TimeField*>(widget) == nullptr)
    return turn_wheel(*static_cast<QWheelEvent*>(event));
  event->accept();  // or what lies below the field would be asked
  return true;
}

bool MainWindow::turn_wheel(const QWheelEvent& event) {
  if (is_busy()) return true;
  // With Alt some platforms turn the wheel sideways.
  const int turned = event.angleDelta().y() != 0 ? event.angleDelta().y() : event.angleDelta().x();
  if ((turned > 0) != (wheel_turned_ > 0)) wheel_turned_ = 0;
  wheel_turned_ += turned;
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  const bool ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  constexpr int step = QWheelEvent::DefaultDeltasPerStep;
  for (; std::abs(wheel_turned_) >= step; wheel_turned_ -= wheel_turned_ > 0 ? step : -step)
    run_(wheel_command(wheel_turned_ > 0, shift, ctrl));
  return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (is_busy() || (may_close && !may_close())) {
    event->ignore();
  } else {
    event->accept();
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!is_busy() && event->mimeData()->hasUrls()) event->acceptProposedAction();
}

// The other program waits until the drop is taken, so the work begins after that.
void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  const QPoint at = view_->mapFrom(this, event->position().toPoint());
  const int graph_h = static_cast<int>(view_->view().layout.graph_h / ratio());
  const bool in_graph = view_->rect().contains(at) && at.y() < graph_h;
  const std::vector<std::string> paths = dropped_paths(*event->mimeData());
  QMetaObject::invokeMethod(
      this,
      [this, paths, in_graph] {
        activateWindow();
        drop_files(editor_, paths, in_graph);
      },
      Qt::QueuedConnection);
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) lay_out();
}

}  // namespace corvelin

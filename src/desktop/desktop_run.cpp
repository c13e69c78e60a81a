// SPDX-License-Identifier: GPL-2.0-or-later
// The order of a run with a window.
#include "desktop/desktop_run.h"

#include <fmt/format.h>

#include <QApplication>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QScreen>
#include <QSessionManager>
#include <QTimer>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

#include "audio/recorder.h"
#include "desktop/accessibility.h"
#include "desktop/command_line.h"
#include "desktop/end_signals.h"
#include "desktop/look.h"
#include "desktop/main_window.h"
#include "desktop/qt_host.h"
#include "desktop/qt_text.h"
#include "desktop/signs.h"
#include "desktop/style.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/language_dialog.h"
#include "edit/open_files.h"
#include "edit/record_commands.h"
#include "edit/save_project.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "platform/processes/process.h"
#include "platform/processes/program.h"
#include "platform/processes/system.h"
#include "platform/quiet_host.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "settings/settings_storage.h"
#include "shell/start_up.h"
#include "text/boxes.h"
#include "text/language_list.h"
#include "text/text_rows.h"
#include "text/ui_text.h"
#include "unattended/remote_control.h"

namespace corvelin {

namespace {

void measure_display() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  const double ratio = screen->devicePixelRatio();
  const QSize size = screen->size();
  display = {.scale = static_cast<float>(screen->logicalDotsPerInch() / 96 * ratio),
             .width = size.width(),
             .height = size.height(),
             .ratio = static_cast<float>(ratio)};
}

// The end can't wait for an answer, so the cues of a recording are kept without a question.
void keep_recording(Editor& editor) {
  if (!editor.recorder.rec_writing) return;
  stop_recording(editor);
  if (editor.open_state.document_modified) keep_recording_project(editor);
}

class DesktopRun {
 public:
  /// `boxes` are those that nobody could show yet.
  DesktopRun(Editor& editor, CommandLine line, std::vector<MessageBox> boxes)
      : editor_(editor),
        line_(std::move(line)),
        boxes_(std::move(boxes)),
        window_(editor, look_of_settings()),
        host_(editor, window_) {
    install_host(&host_);
    window_.may_close = [this] {
      if (editor_.recorder.rec_writing) stop_recording(editor_);  // its cues are then asked about
      if (restarts_ || confirm_discard_changes(editor_)) return true;
      forget_end_signal();
      return false;
    };
    host_.restart_program = [this] {
      restarts_ = true;
      const OpenState& names = editor_.open_state;
      if (!editor_.document.files.empty())
        reopens_ = names.project_name.empty() ? names.audio_name : names.project_name;
      request_close();
    };
    QObject::connect(&remote_timer_, &QTimer::timeout, &window_, [this] { scan_remote_file(); });
    remote_timer_.start(remote_scan_interval);
    watch_end_signals(window_, [this] { end_by_signal(); });
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &window_,
                     [this](QSessionManager& session) { end_of_session(session); });
  }
  ~DesktopRun() { install_host(nullptr); }
  DesktopRun(const DesktopRun&) = delete;
  DesktopRun& operator=(const DesktopRun&) = delete;

  int run() {
    window_.restore_geometry();
    window_.show();
    QTimer::singleShot(0, &window_, [this] { begin(); });
    const int status = QApplication::exec();
    shut_down(editor_);
    end_remote_control(editor_);
    store();
    if (restarts_) start_again();
    return end_signal() != 0 ? 128 + end_signal() : status;
  }

 private:
  void begin() {
    show_early_boxes();
    if (end_signal() != 0) return;
    host_.rebuild_recent_menu();
    const bool records = line_.records && record();
    if (!records && open() && line_.work != nullptr) return work();
    if (as_utf8(as_qstring(settings.version)) != program_version) welcome();
  }

  void show_early_boxes() {
    const Busy busy;
    for (const MessageBox& box : boxes_) host_.show_message_box(box);
  }

  // The program is another version than the last time, or was never started here.
  void welcome() {
    constexpr std::chrono::milliseconds pause(1000);
    host_.call_later(pause, [this] {
      if (is_busy()) return welcome();
      dispatch_command(editor_, command::about);
      const bool is_first_start = settings.version.empty() && keeps_settings();
      if (is_first_start && end_signal() == 0) language_dialog(editor_);
    });
  }

  // False when the recorder can't be made ready: the program then starts as without the switch.
  [[nodiscard]] bool record() const {
    if (!initialize_recording(editor_)) return false;
    start_recording_unattended(editor_, line_.file);
    return true;
  }

  bool open() {
    const bool is_open = !line_.file.empty() && open_file(editor_, line_.file);
    host_.rebuild_part_list();
    host_.update_menu_state(all_states);
    host_.refresh_view(is_open ? Refresh::all : Refresh::no_document);
    return is_open;
  }

  // The program ends whatever became of the work, and is silent about a stream that has none.
  void work() const {
    do_work(editor_, *line_.work, line_.request);
    editor_.open_state.document_modified = false;
    request_close();
  }

  // A box that nobody closed doesn't keep a command waiting: it gets the answer that does least.
  void scan_remote_file() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !is_remote_command_there(editor_)) {
      remote_scan(editor_);
      return;
    }
    constexpr std::chrono::milliseconds pause(50);  // in which what showed the box goes on
    box->reject();
    host_.call_later(pause, [this] { scan_remote_file(); });
  }

  // Whoever ends the program may not wait for an answer, so what is to be kept is kept at once.
  void end_by_signal() {
    store();
    keep_recording(editor_);
    host_.end();
  }

  void end_of_session(QSessionManager& session) {
    store();
    keep_recording(editor_);
    if (!editor_.open_state.document_modified || !session.allowsInteraction()) return;
    const bool may_end = !is_busy() && confirm_discard_changes(editor_);
    session.release();
    if (!may_end) session.cancel();
  }

  void start_again() const {
    std::vector<std::string> words = {program_path()};
    if (line_.settings_path) words.insert(words.end(), {"--settings", *line_.settings_path});
    if (line_.localini) words.emplace_back("/localini");
    if (!reopens_.empty()) words.push_back(reopens_);
    if (const std::error_code error = start_program(words))
      fmt::print(stderr, "corvelin: {}: {}\n", words.front(), error.message());
  }

  static bool keeps_settings() { return settings_storage != SettingsStorage::removed; }

  void store() {
    window_.keep_geometry();
    if (!keeps_settings()) return;
    const std::error_code error =
        line_.settings_path ? write_settings(*line_.settings_path) : store_settings();
    if (error) fmt::print(stderr, "corvelin: the settings were not written: {}\n", error.message());
  }

  Editor& editor_;
  CommandLine line_;
  std::vector<MessageBox> boxes_;
  bool restarts_ = false;
  std::string reopens_;  // the document of the new start
  MainWindow window_;
  QtHost host_;
  QTimer remote_timer_;
};

// The toolkit's own dialogs and menus, where its translations are installed.
void translate_toolkit(QTranslator& translator) {
  const std::string locale = locale_of_language(wide_to_bytes(settings.language, true));
  if (!locale.empty() && translator.load(as_qstring("qtbase_" + locale),
                                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&translator);
}

bool has_display() {
  constexpr std::array names = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::ranges::any_of(names, [](const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
  });
}

[[noreturn]] void end_without_display(const char* reason) {
  fmt::print(stderr, "corvelin: {}; corvelin-cli works without one\n", reason);
  std::fflush(stderr);
  std::_Exit(1);
}

// Of a display that can't be opened the toolkit would make an abort, as if the program had a fault.
void hear_toolkit(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg) end_without_display("the display can't be opened");
  fmt::print(stderr, "corvelin: {}\n", as_utf8(text));
}

// What takes more memory than there is leaves the document as far as it came, and its undo step.
// Edits are worth more than the end that the toolkit would make.
class Application : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
      show_error(std::string(ui_text(row::no_memory)));
      return true;
    }
  }
};

}  // namespace

int run_desktop(Editor& editor, int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (std::ranges::find(words, "--help") != words.end()) {
    fmt::print("{}", command_line_help());
    return 0;
  }
  if (std::ranges::find(words, "--man") != words.end()) {  // for the build
    fmt::print("{}", manual_page());
    return 0;
  }
  if (std::ranges::find(words, "--version") != words.end()) {
    fmt::print("{} {}\n", program_name, program_version);
    return 0;
  }
  if (!has_display()) end_without_display("there is no display");
  const QtMessageHandler usual = qInstallMessageHandler(hear_toolkit);
  const Application application(argc, argv);
  qInstallMessageHandler(usual);
  if (QFontInfo(QApplication::font()).family().isEmpty())
    fmt::print(stderr, "corvelin: no fonts are installed, so no text can be shown\n");
  QApplication::setApplicationName(as_qstring(program_name));
  QApplication::setWindowIcon(program_icon());
  measure_display();
  const CommandLine line = parse_command_line(words);
  QuietHost early;  // until there is a window
  const bool is_read = start_up(
      editor, line.settings_path ? *line.settings_path : choose_settings_file(line.localini));
  if (line.settings_path && !is_read) {
    fmt::print(stderr, "corvelin: {} can't be read as a settings file\n", *line.settings_path);
    return 1;
  }
  load_language();
  QTranslator translator;
  translate_toolkit(translator);
  if (as_qstring(ui_text(row::file_menu)).isRightToLeft())
    QApplication::setLayoutDirection(Qt::RightToLeft);
  QApplication::setStyle(new Style);
  QApplication::setPalette(dialog_palette(look_of_settings()));
  install_accessibility();
  return DesktopRun(editor, line, early.take_boxes()).run();
}

}  // namespace corvelin

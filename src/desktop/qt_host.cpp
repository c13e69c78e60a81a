// SPDX-License-Identifier: GPL-2.0-or-later
// Windows for what the core asks and shows.
#include "desktop/qt_host.h"

#include <fmt/format.h>
#include <unistd.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "desktop/debug_window.h"
#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/look.h"
#include "desktop/qt_text.h"
#include "desktop/run_window.h"
#include "edit/editor.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "platform/text/path.h"
#include "settings/note.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

QMessageBox::Icon icon_of(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::none:
      return QMessageBox::NoIcon;
    case BoxIcon::information:
      return QMessageBox::Information;
    case BoxIcon::warning:
      return QMessageBox::Warning;
    case BoxIcon::error:
      return QMessageBox::Critical;
    case BoxIcon::question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

std::vector<BoxAnswer> answers_of(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok:
      return {BoxAnswer::ok};
    case BoxButtons::ok_cancel:
      return {BoxAnswer::ok, BoxAnswer::cancel};
    case BoxButtons::yes_no:
      return {BoxAnswer::yes, BoxAnswer::no};
    case BoxButtons::yes_no_cancel:
      return {BoxAnswer::yes, BoxAnswer::no, BoxAnswer::cancel};
  }
  return {BoxAnswer::ok};
}

// Yes and No also stand in sentences, so their rows have no mark: each is reached by its first
// letter.
QString label_with_letter(TextRow row) { return u'&' + label(row); }

QPushButton* add_button(QMessageBox& window, BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::ok:
      return window.addButton(label(row::ok), QMessageBox::AcceptRole);
    case BoxAnswer::yes:
      return window.addButton(label_with_letter(row::yes), QMessageBox::YesRole);
    case BoxAnswer::no:
      return window.addButton(label_with_letter(row::no), QMessageBox::NoRole);
    case BoxAnswer::cancel:
      return window.addButton(label(row::cancel), QMessageBox::RejectRole);
  }
  return nullptr;
}

void fill(QMessageBox& window, const MessageBox& box) {
  window.setWindowTitle(as_qstring(box.caption));
  window.setIcon(icon_of(box.icon));
  window.setTextFormat(Qt::PlainText);  // names of files are in it
  window.setText(as_qstring(box.cause.empty() ? box.text : box.text + "\n\n" + box.cause));
}

// What closing a box by Esc means: the answer that does least. A plain Yes or No has none.
BoxAnswer answer_of_escape(BoxButtons buttons) { return answers_of(buttons).back(); }

// "MP3 (*.mp3)"; our patterns are parted by ";".
QString filter_of(const FileType& type) {
  std::string patterns = type.pattern == "*.*" ? "*" : type.pattern;  // names without a point too
  std::ranges::replace(patterns, ';', ' ');
  std::string name = type.name.substr(0, type.name.find(" ("));
  return as_qstring(name + " (" + patterns + ")");
}

// The extension of a type's first pattern, without its point.
QString extension_of_type(const FileType& type) {
  const std::string first = type.pattern.substr(0, type.pattern.find(';'));
  return as_qstring(first.substr(std::min(first.find('.') + 1, first.size())));
}

class FileQuestion {
 public:
  FileQuestion(const FileDialog& dialog, QFileDialog::FileMode mode, QWidget* parent)
      : window_(parent) {
    window_.setWindowTitle(as_qstring(menu_text_plain(dialog.title)));
    window_.setFileMode(mode);
    QStringList filters;
    for (const FileType& type : dialog.types) filters << filter_of(type);
    window_.setNameFilters(filters);
    const QString folder = QFile::decodeName(std::string(folder_of(dialog.path)).c_str());
    if (!folder.isEmpty()) window_.setDirectory(folder);
    if (mode == QFileDialog::AnyFile) prepare_for_new_file(dialog);
  }

  std::vector<std::string> ask() {
    if (window_.exec() != QDialog::Accepted) return {};
    std::vector<std::string> names;
    for (const QString& name : window_.selectedFiles())
      names.push_back(QFile::encodeName(name).toStdString());
    return names;
  }

 private:
  void prepare_for_new_file(const FileDialog& dialog) {
    window_.setAcceptMode(QFileDialog::AcceptSave);
    window_.setOption(QFileDialog::DontConfirmOverwrite, !dialog.warn_existing);
    const QString name = QFile::decodeName(std::string(name_of(dialog.path)).c_str());
    std::size_t chosen = 0;
    for (std::size_t i = 0; i < dialog.types.size(); ++i)
      if (has_extension(dialog.path, "." + as_utf8(extension_of_type(dialog.types[i])))) chosen = i;
    if (!dialog.types.empty()) {
      window_.selectNameFilter(filter_of(dialog.types[chosen]));
      window_.setDefaultSuffix(extension_of_type(dialog.types[chosen]));
    }
    QObject::connect(&window_, &QFileDialog::filterSelected, [&](const QString& filter) {
      for (const FileType& type : dialog.types)
        if (filter_of(type) == filter) window_.setDefaultSuffix(extension_of_type(type));
    });
    if (!name.isEmpty()) window_.selectFile(name);
  }

  QFileDialog window_;
};

std::optional<std::string> first_of(std::vector<std::string> names) {
  if (names.empty()) return std::nullopt;
  return std::move(names.front());
}

QWidget* parent_of_next_window(MainWindow& window) {
  QWidget* const modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : &window;
}

}  // namespace

BoxAnswer QtHost::show_message_box(const MessageBox& box) {
  const Busy busy;
  QMessageBox window(parent_of_next_window(window_));
  fill(window, box);
  BoxAnswer answer = answer_of_escape(box.buttons);
  for (const BoxAnswer choice : answers_of(box.buttons)) {
    QPushButton* const button = add_button(window, choice);
    if (choice == box.default_answer) window.setDefaultButton(button);
    if (choice == answer) window.setEscapeButton(button);
    QObject::connect(button, &QPushButton::clicked, [&answer, choice] { answer = choice; });
  }
  window.exec();
  return answer;
}

bool QtHost::show_note(const MessageBox& note) {
  const Busy busy;
  QMessageBox window(parent_of_next_window(window_));
  fill(window, note);
  window.setIcon(QMessageBox::NoIcon);
  add_button(window, BoxAnswer::ok);
  auto* const hide = new QCheckBox(label(row::hide_note));
  hide->setObjectName(QStringLiteral("hide_note"));
  window.setCheckBox(hide);
  window.exec();
  return hide->isChecked();
}

void QtHost::beep() { QApplication::beep(); }

std::optional<std::string> QtHost::ask_for_new_file(const FileDialog& dialog) {
  return first_of(FileQuestion(dialog, QFileDialog::AnyFile, parent_of_next_window(window_)).ask());
}

std::optional<std::string> QtHost::ask_for_existing_file(const FileDialog& dialog) {
  return first_of(
      FileQuestion(dialog, QFileDialog::ExistingFile, parent_of_next_window(window_)).ask());
}

std::vector<std::string> QtHost::ask_for_existing_files(const FileDialog& dialog) {
  return FileQuestion(dialog, QFileDialog::ExistingFiles, parent_of_next_window(window_)).ask();
}

std::optional<std::string> QtHost::ask_for_folder(const std::string& path) {
  const QString folder = QFileDialog::getExistingDirectory(parent_of_next_window(window_), {},
                                                           QFile::decodeName(path.c_str()));
  if (folder.isEmpty()) return std::nullopt;
  return QFile::encodeName(folder).toStdString();
}

std::optional<std::uint32_t> QtHost::ask_for_colour(std::uint32_t colour) {
  const QColor chosen =
      QColorDialog::getColor(from_setting(colour), parent_of_next_window(window_));
  if (!chosen.isValid()) return std::nullopt;
  const auto channel = [](int value) { return static_cast<std::uint32_t>(value); };
  return channel(chosen.red()) | channel(chosen.green()) << 8 | channel(chosen.blue()) << 16;
}

bool QtHost::show(Dialog& dialog) {
  const Busy busy;
  QWidget* const parent = parent_of_next_window(window_);
  std::optional<bool> result;
  const auto try_as = [&]<typename Record>(Record* record) {
    if (record != nullptr) result = show_window(*record, parent);
  };
  try_as(dynamic_cast<NamesDialog*>(&dialog));
  try_as(dynamic_cast<FileInfoDialog*>(&dialog));
  try_as(dynamic_cast<SplitDialog*>(&dialog));
  try_as(dynamic_cast<LevelDialog*>(&dialog));
  try_as(dynamic_cast<NormalizeDialog*>(&dialog));
  try_as(dynamic_cast<PauseDialog*>(&dialog));
  try_as(dynamic_cast<AutoCueDialog*>(&dialog));
  try_as(dynamic_cast<SpeedDialog*>(&dialog));
  try_as(dynamic_cast<ConfigDialog*>(&dialog));
  try_as(dynamic_cast<LanguageDialog*>(&dialog));
  try_as(dynamic_cast<AboutDialog*>(&dialog));
  try_as(dynamic_cast<BatchDialog*>(&dialog));
  return result ? *result : Host::show(dialog);
}

void QtHost::drive(LongRun& run) {
  RunWindow(run, editor_.batch_active, parent_of_next_window(window_)).exec();
}

void QtHost::close() {
  is_ending_ = false;  // a question that comes now is for the user
  window_.close();
}

void QtHost::end() {
  is_ending_ = true;
  request_close();
  close_dialogs();
}

// Again and again until the program has ended: behind a dialog that is closed another one may come
// up, and a run takes a while to stop.
void QtHost::close_dialogs() {
  if (!is_ending_) return;
  if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
    dialog->reject();
  constexpr std::chrono::milliseconds pause(50);
  call_later(pause, [this] { close_dialogs(); });
}

void QtHost::refresh_view(Refresh level) {
  window_.refresh(level);
  if (level != Refresh::all || editor_.document.files.empty() || editor_.batch_active) return;
  if (std::exchange(noted_, editor_.open_state.audio_name) != editor_.open_state.audio_name)
    offer_graph_note();
}

// The note on what the graph is, once it can be seen.
void QtHost::offer_graph_note() {
  constexpr std::chrono::milliseconds pause(50);
  call_later(pause, [this] {
    if (is_busy()) return offer_graph_note();
    if (!editor_.document.files.empty()) show_note_once(Note::audio_graph);
  });
}

// Later, as a field that is entered runs a command itself, which must not begin inside this one.
void QtHost::enter_field(StatusField field) {
  QMetaObject::invokeMethod(
      &window_, [this, field] { window_.enter_field(field); }, Qt::QueuedConnection);
}

void QtHost::show_debug_window() {
  if (debug_window_ == nullptr) debug_window_ = new DebugWindow(editor_, &window_);
  debug_window_->show();
  debug_window_->raise();
}

bool QtHost::set_clipboard_text(std::string_view text) {
  QClipboard* const clipboard = QApplication::clipboard();
  if (text.empty()) {
    clipboard->clear();
    return true;
  }
  // In the form of plain text for everybody, byte for byte also where a name is no valid text.
  auto* const data = new QMimeData;
  data->setData(QStringLiteral("text/plain;charset=utf-8"),
                QByteArray(text.data(), static_cast<qsizetype>(text.size())));
  data->setText(as_qstring(text));
  clipboard->setMimeData(data);
  return true;
}

ClipboardContent QtHost::get_clipboard_text(std::string& text) {
  const QMimeData* const data = QApplication::clipboard()->mimeData();
  if (data == nullptr) return ClipboardContent::unavailable;
  if (!data->hasText()) return ClipboardContent::no_text;
  text = as_utf8(data->text());
  return ClipboardContent::text;
}

// What is started may only hand the file on and end, or be the viewer itself and run for hours. An
// end with a failure within the first seconds means that no program opens the file.
std::error_code QtHost::open_in_viewer(const std::string& path) {
  constexpr qint64 early = 10'000;  // milliseconds
  auto* const process = new QProcess;
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  process->setStandardInputFile(QProcess::nullDevice());
  process->setChildProcessModifier([] { ::setsid(); });  // lives on behind this program
  QElapsedTimer age;
  age.start();
  QObject::connect(process, &QProcess::finished, &window_, [=](int status) {
    process->deleteLater();
    if (status != 0 && !age.hasExpired(early))
      show_no_viewer(path, fmt::format("exit status {}", status));
  });
  process->start(QString::fromLatin1(viewer), {QFile::decodeName(path.c_str())});
  if (process->waitForStarted()) return {};
  process->deleteLater();
  return std::make_error_code(std::errc::no_such_file_or_directory);
}

void QtHost::show_transport() {
  sound_events_->follow_playback();
  window_.show_pressed_buttons();
}

void QtHost::call_later(std::chrono::milliseconds pause, const std::function<void()>& operation) {
  QTimer::singleShot(pause, &window_, operation);
}

}  // namespace corvelin

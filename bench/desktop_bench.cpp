// SPDX-License-Identifier: GPL-2.0-or-later
// Measures the window without a screen: the start to a window that shows a file of 400 MB, drawings
// of it with their texts, how long an event waits at most while 2 GB are split, saved to a new file
// and in the place of the source, and the memory of each. Needs 4.4 GB below TMPDIR.
#include <fmt/format.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "audio/playback.h"
#include "desktop/desktop_run.h"
#include "desktop/qt_canvas.h"
#include "desktop/view_widget.h"
#include "edit/editor.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/processes/program.h"
#include "settings/settings.h"
#include "shell/editor_view.h"
#include "support/mp3_builder.h"

namespace {

using namespace corvelin;
using Clock = std::chrono::steady_clock;

double milliseconds_since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double peak_megabytes() {
  rusage usage = {};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void report(const char* name, double milliseconds, double limit) {
  fmt::print("{:44} {:8.1f} ms (limit {:.0f})  {:6.1f} MB (limit 60)\n", name, milliseconds, limit,
             peak_megabytes());
}

const Clock::time_point process_start = Clock::now();

struct Work {
  std::string_view name;
  const char* title;  // of what is measured
  const char* file;
  std::vector<std::string> switches;  // of the command line
};

const Work works[] = {
    {"show", "start to a shown file of 400 MB", "small.mp3", {}},
    {"split", "longest wait of an event in a split of 2 GB", "large.cue", {"/split", "pieces"}},
    {"save", "longest wait of an event in a save of 2 GB", "large.mp3", {"/save"}},
    {"replace",
     "longest wait while 2 GB replace their source",
     "large.mp3",
     {"/save", "/overwrite"}},
};
Editor editor;               // of the program
const Work* work = nullptr;  // of this process

// As it is drawn while it plays, on an image of its own.
void report_drawings(std::uint16_t zoom, double limit) {
  constexpr int rounds = 50;
  settings.zoom = zoom;
  EditorView view;
  lay_out_view(view, 1600, 500, 1);
  QImage image(view.layout.width, view.layout.height, QImage::Format_RGB32);
  seek_to(editor.playback, editor.document.total_size / 2);
  const EditPosition middle = editor.selection.cursor;
  double all = 0;
  for (int round = -1; round < rounds; ++round) {  // the first one reads the file
    const Clock::time_point start = Clock::now();
    editor.selection.cursor = middle + static_cast<EditPosition>(round + 1) * 2 * 417;
    QtCanvas canvas(image);
    view_redraw(editor, view, canvas);
    if (round >= 0) all += milliseconds_since(start);
  }
  fmt::print("{:44} {:8.2f} ms (limit {:.0f})\n", fmt::format("a drawing at zoom {}", zoom),
             all / rounds, limit);
}

// Ends the program behind the first drawing of the document and some more.
class FirstDrawing : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool is_view = dynamic_cast<ViewWidget*>(watched) != nullptr;
    if (is_view && event->type() == QEvent::Paint && editor.document.total_size != 0)
      QTimer::singleShot(0, this, [] {
        report(work->title, milliseconds_since(process_start), 400);
        report_drawings(32, 2);
        report_drawings(8, 2);
        report_drawings(1, 4);
        QApplication::quit();
      });
    return false;
  }
};

// Looks how late a timer of 2 ms is from the run's window on.
class Latency : public QObject {
 public:
  explicit Latency(QObject* parent) : QObject(parent) {
    connect(&timer_, &QTimer::timeout, this, [this] {
      if (is_running_) worst_ = std::max(worst_, milliseconds_since(last_));
      is_running_ = is_running_ || QApplication::activeModalWidget() != nullptr;
      last_ = Clock::now();
    });
    timer_.start(2);
  }
  ~Latency() override { report(work->title, worst_, 50); }

 private:
  QTimer timer_;
  Clock::time_point last_ = Clock::now();
  double worst_ = 0;
  bool is_running_ = false;
};

void watch() {
  if (work->switches.empty()) {
    qApp->installEventFilter(new FirstDrawing(qApp));
  } else {
    new Latency(qApp);
  }
}
Q_COREAPP_STARTUP_FUNCTION(watch)

void write_audio(const std::string& path, std::size_t size) {
  test::Mp3Builder builder;
  builder.frames(2000);
  std::ofstream out(path, std::ios::binary);
  for (std::size_t written = 0; written < size; written += builder.size())
    out.write(reinterpret_cast<const char*>(builder.bytes().data()),
              static_cast<std::streamsize>(builder.size()));
}

int run_window(const std::filesystem::path& folder) {
  std::filesystem::current_path(folder);
  std::vector<std::string> words = {"corvelin", "--settings", "bench.ini", work->file};
  words.insert(words.end(), work->switches.begin(), work->switches.end());
  std::vector<char*> arguments;
  arguments.reserve(words.size());
  for (std::string& word : words) arguments.push_back(word.data());
  return run_desktop(editor, static_cast<int>(arguments.size()), arguments.data());
}

void run_child(const char* program, std::string_view name, const std::string& folder) {
  const std::string line = fmt::format("'{}' {} '{}'", program, name, folder);
  if (std::system(line.c_str()) != 0) std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (argc == 3) {
    work = std::ranges::find(works, std::string_view(argv[1]), &Work::name);
    return work == std::end(works) ? 1 : run_window(argv[2]);
  }
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / fmt::format("corvelin-bench-{}", ::getpid());
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "bench.ini", std::ios::binary)
      << "[Corvelin]\r\nutf8=1\r\nversion=" << program_version << "\r\nmsg_hide=255\r\n";
  write_audio(folder / "small.mp3", 400'000'000);
  write_audio(folder / "large.mp3", 2'000'000'000);
  std::ofstream(folder / "large.cue") << "FILE \"large.mp3\" MP3\n"
                                         "  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
                                         "  TRACK 02 AUDIO\n    INDEX 01 500:00:00\n"
                                         "  TRACK 03 AUDIO\n    INDEX 01 1000:00:00\n";
  ::sync();  // what is still to be written would have the system hold up the save
  for (const Work& each : works) {
    run_child(argv[0], each.name, folder);
    std::filesystem::remove_all(folder / "pieces");
  }
  std::filesystem::remove_all(folder);
}

// The order of a run with a window.
#include "desktop/desktop_run.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include "desktop/look.h"
#include "desktop/main_window.h"
#include "desktop/qt_host.h"
#include "desktop/style.h"
#include "edit/save_project.h"
#include "platform/system.h"
#include "settings/settings.h"
#include "shell/start_up.h"

namespace corvelin {

int run_desktop(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Corvelin"));
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (screen != nullptr) {
    display.scale =
        static_cast<float>(screen->logicalDotsPerInch() / 96 * screen->devicePixelRatio());
    const QSize size = screen->size() * screen->devicePixelRatio();
    display.width = size.width();
    display.height = size.height();
  }
  std::optional<std::string> settings_path;
  std::string file;
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--settings")
      settings_path = argv[++i];
    else
      file = argv[i];
  }
  start_up(settings_path);
  load_language();
  QApplication::setStyle(new Style);
  const Look look = look_of_settings();
  QApplication::setPalette(dialog_palette(look));
  QApplication::setWindowIcon(program_icon());
  MainWindow window(look);
  QtHost host(window);
  install_host(&host);
  window.restore_geometry();
  window.show();
  if (!file.empty()) open_file(file);
  window.refresh(Refresh::all);
  window.update_menu_state(all_states);
  const int status = QApplication::exec();
  install_host(nullptr);
  shut_down();
  return status;
}

}  // namespace corvelin

// SPDX-License-Identifier: MIT
// TILO: the till and its back office. It works in the current folder and reads
// nothing from its command line.
#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <unistd.h>

#include "app/ui/main_window.h"
#include "app/ui/splash.h"
#include "core/startup.h"
#include "core/state.h"
#include "platform/qt/qt_platform.h"

namespace {

// One till per user: a lock named after the program stands for the window class
// a second start would find.
QString InstanceLockPath() {
  QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (dir.isEmpty()) dir = QDir::tempPath();
  return dir + QString("/TILO-%1.lock").arg(getuid());
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QLockFile instance(InstanceLockPath());
  instance.setStaleLockTime(0);
  if (!instance.tryLock(0)) return 0;

  tilo::QtPlatform qt_platform;
  tilo::install_platform(&qt_platform);
  if (!tilo::DesktopIsUsable(qt_platform.desktop())) return 0;

  int result = 0;
  {
    tilo::MainWindow window(qt_platform.desktop());
    if (window.opened()) {
      auto* splash = new tilo::Splash(&window);
      splash->show();
      result = app.exec();
    }
    tilo::Closedown();
  }
  tilo::install_platform(nullptr);
  return result;
}

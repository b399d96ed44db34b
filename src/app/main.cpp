// SPDX-License-Identifier: MIT
// TILO: the till and its back office. It works in the current folder, or with
// --home in the user's own shop folder (the desktop's menu entry starts it so).
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QSocketNotifier>
#include <QStandardPaths>

#include <curl/curl.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "app/ui/home_shop.h"
#include "app/ui/main_window.h"
#include "app/ui/splash.h"
#include "core/startup.h"
#include "core/state.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_service.h"
#include "platform/jobs.h"
#include "platform/qt/qt_platform.h"

namespace {

// One till per user: a lock named after the program stands for the window class
// a second start would find.
QString InstanceLockPath() {
  QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (dir.isEmpty()) dir = QDir::tempPath();
  return dir + QString("/TILO-%1.lock").arg(getuid());
}

// A shutdown of the machine (SIGTERM) or a closed terminal (SIGHUP) ends the run
// as closing the window does, so the close-down still saves the day's totals.
int signal_pipe[2] = {-1, -1};

void OnSignal(int) {
  char one = 1;
  [[maybe_unused]] auto n = write(signal_pipe[0], &one, 1);
}

void QuitOnSignals(QApplication& app) {
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, signal_pipe) != 0) return;
  auto* notifier = new QSocketNotifier(signal_pipe[1], QSocketNotifier::Read, &app);
  QObject::connect(notifier, &QSocketNotifier::activated, &app, [&app] {
    char buffer[16];
    [[maybe_unused]] auto n = read(signal_pipe[1], buffer, sizeof buffer);
    app.quit();
  });
  struct sigaction action {};
  action.sa_handler = OnSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGHUP, &action, nullptr);
}

constexpr char kUsage[] =
    "usage: tilo [--home]\n"
    "\n"
    "Opens the shop in the current folder.\n"
    "  --home     open the shop in $TILO_SHOP, else ~/TILO, making it on the first launch\n"
    "  --version  print the version and end\n";

// Asked before any window: a question about the program needs no desktop.
bool AnswersAtOnce(int argc, char** argv, int* result) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--version") == 0) {
      std::printf("tilo %s\n", TILO_VERSION);
      *result = 0;
      return true;
    }
    if (std::strcmp(argv[i], "--help") == 0) {
      std::fputs(kUsage, stdout);
      *result = 0;
      return true;
    }
  }
  return false;
}

// What is left once Qt has taken its own options: --home or nothing.
bool ReadOptions(const QStringList& args, bool* home) {
  for (qsizetype i = 1; i < args.size(); ++i) {
    if (args[i] != "--home") return false;
    *home = true;
  }
  return true;
}

std::string InstallerPath() {
  return (QCoreApplication::applicationDirPath() + "/tilo-newshop").toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  // Clerk passwords, customers' addresses and the mail credentials: every file
  // and folder the till makes is the user's alone, whatever the desktop's umask.
  umask(077);
  if (int result = 0; AnswersAtOnce(argc, argv, &result)) return result;
  // Before any thread: the mail's secure submission uses libcurl.
  curl_global_init(CURL_GLOBAL_DEFAULT);
  QApplication app(argc, argv);
  // Qt takes the desktop's locale for the C library too; amounts, logs and files
  // are always written with a decimal point, whatever the desktop's language.
  std::setlocale(LC_NUMERIC, "C");
  bool home = false;
  if (!ReadOptions(QCoreApplication::arguments(), &home)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  QLockFile instance(InstanceLockPath());
  instance.setStaleLockTime(0);
  if (!instance.tryLock(0)) return 0;

  QuitOnSignals(app);
  tilo::QtPlatform qt_platform;
  tilo::install_platform(&qt_platform);
  if (!tilo::DesktopIsUsable(qt_platform.desktop())) return 0;
  if (home && !tilo::EnterHomeShop(tilo::HomeShopFolder(), InstallerPath())) {
    tilo::install_platform(nullptr);
    return 1;
  }
  tilo::QtPrintService printers;
  tilo::install_print_service(&printers);

  int result = 0;
  {
    tilo::MainWindow window(qt_platform.desktop());
    if (window.opened()) {
      tilo::Buildlistfont();
      auto* splash = new tilo::Splash(&window);
      splash->show();
      result = app.exec();
    }
    // A mail still going out is broken off: the till doesn't wait on the network.
    tilo::StopJobs();
    tilo::Closedown();
  }
  tilo::install_print_service(nullptr);
  tilo::install_platform(nullptr);
  return result;
}

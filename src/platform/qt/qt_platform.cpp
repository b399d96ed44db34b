// SPDX-License-Identifier: MIT
#include "platform/qt/qt_platform.h"

#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QProgressDialog>
#include <QScreen>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>

#include "platform/sounds.h"

namespace tilo {
namespace {

QString Q(const std::string& s) {
  return QString::fromUtf8(s.data(), qsizetype(s.size()));
}

}  // namespace

Answer QtPlatform::message(const std::string& text, const std::string& title, Buttons buttons) {
  QMessageBox box(QApplication::activeWindow());
  box.setObjectName("messageBox");
  box.setWindowTitle(Q(title));
  box.setText(Q(text));
  switch (buttons) {
    case Buttons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      break;
    case Buttons::OkCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      break;
    case Buttons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      break;
    case Buttons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      break;
  }
  switch (box.exec()) {
    case QMessageBox::Cancel:
      return Answer::Cancel;
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    default:
      return Answer::Ok;
  }
}

void QtPlatform::notify(const std::string& text, const std::string& title) {
  notify_details(text, title, {});
}

void QtPlatform::notify_details(const std::string& text, const std::string& title,
                                const std::string& details) {
  // Queued to the thread of the screen: a box with no parent, not modal, so the
  // till goes on selling while it stands.
  QMetaObject::invokeMethod(
      qApp,
      [text, title, details] {
        auto* box = new QMessageBox(QMessageBox::NoIcon, Q(title), Q(text), QMessageBox::Ok);
        box->setObjectName("noticeBox");
        if (!details.empty()) box->setDetailedText(Q(details));
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setModal(false);
        box->show();
      },
      Qt::QueuedConnection);
}

std::optional<std::string> QtPlatform::prompt(const std::string& text, const std::string& title,
                                              const std::string& initial, bool hidden) {
  bool ok = false;
  QString reply =
      QInputDialog::getText(QApplication::activeWindow(), Q(title), Q(text),
                            hidden ? QLineEdit::Password : QLineEdit::Normal, Q(initial), &ok);
  if (!ok) return std::nullopt;
  return reply.toStdString();
}

LocalTime QtPlatform::now() {
  QDateTime t = QDateTime::currentDateTime();
  QDate d = t.date();
  QTime h = t.time();
  return {d.year(), d.month(), d.dayOfWeek() % 7, d.day(), h.hour(), h.minute(), h.second()};
}

uint64_t QtPlatform::tick_count() {
  static QElapsedTimer timer;
  if (!timer.isValid()) timer.start();
  return uint64_t(timer.elapsed());
}

// The till's sounds go to `aplay` of alsa-utils, fed the wave through a pipe: the
// call returns at once, and where there is no player or no sound card nothing
// is heard and nothing fails. A new sound cuts the one still playing.
void QtPlatform::play_sound(int sound_id) {
  static const QString player = QStandardPaths::findExecutable("aplay");
  static QPointer<QProcess> playing;
  QCoreApplication* app = QCoreApplication::instance();
  if (player.isEmpty() || !app) return;
  const std::string wave = WaveSound(sound_id);
  if (wave.empty()) return;
  if (playing) playing->kill();
  auto* process = new QProcess(app);
  process->setProgram(player);
  process->setArguments({"-q", "-t", "wav", "-"});
  process->setStandardOutputFile(QProcess::nullDevice());
  process->setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
  QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError e) {
    if (e == QProcess::FailedToStart) process->deleteLater();
  });
  process->start();
  process->write(wave.data(), qint64(wave.size()));
  process->closeWriteChannel();
  playing = process;
}

DesktopSize QtPlatform::desktop() {
  QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen) return {1024, 768};
  QRect r = screen->geometry();
  return {r.width(), r.height()};
}

std::string QtPlatform::currency_symbol() {
  return QLocale::system().currencySymbol().toStdString();
}

std::string QtPlatform::short_date(int year, int month, int day) {
  return QLocale::system().toString(QDate(year, month, day), "ddd d MMM yy").toStdString();
}

std::string QtPlatform::long_date(int year, int month, int day) {
  return QLocale::system().toString(QDate(year, month, day), "dddd MMMM d yyyy").toStdString();
}

std::string QtPlatform::month_date(int year, int month, int day) {
  return QLocale::system().toString(QDate(year, month, day), "MMM d yyyy").toStdString();
}

std::optional<std::string> QtPlatform::choose_file(const std::string& title, bool for_saving,
                                                   const std::string& filter) {
  QString path =
      for_saving
          ? QFileDialog::getSaveFileName(QApplication::activeWindow(), Q(title), {}, Q(filter))
          : QFileDialog::getOpenFileName(QApplication::activeWindow(), Q(title), {}, Q(filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

std::optional<std::string> QtPlatform::choose_folder(const std::string& title,
                                                     const std::string& initial) {
  QString path =
      QFileDialog::getExistingDirectory(QApplication::activeWindow(), Q(title), Q(initial));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

namespace {

// The busy box: a QProgressDialog that shows itself after 0.3 s. Steps come far
// more often than the screen needs painting, so events are let through at most
// every 50 ms.
class QtProgress : public Progress {
 public:
  QtProgress(const std::string& text, const std::string& title, bool can_cancel)
      : dialog_(Q(text), can_cancel ? QStringLiteral("Cancel") : QString(), 0, 0,
                QApplication::activeWindow()) {
    dialog_.setWindowTitle(Q(title));
    dialog_.setWindowModality(Qt::ApplicationModal);
    dialog_.setMinimumDuration(300);
    dialog_.setAutoClose(false);
    dialog_.setAutoReset(false);
    clock_.start();
    dialog_.setValue(0);
  }
  bool step(int64_t done, int64_t total) override {
    if (clock_.elapsed() - last_ < 50) return !dialog_.wasCanceled();
    last_ = clock_.elapsed();
    // The bar counts in thousandths so that 64-bit totals fit its int range.
    if (total > 0) {
      dialog_.setMaximum(1000);
      dialog_.setValue(static_cast<int>(std::min<int64_t>(done * 1000 / total, 999)));
    } else {
      dialog_.setMaximum(0);
      dialog_.setValue(0);
    }
    QCoreApplication::processEvents();
    return !dialog_.wasCanceled();
  }

 private:
  QProgressDialog dialog_;
  QElapsedTimer clock_;
  qint64 last_ = 0;
};

}  // namespace

std::unique_ptr<Progress> QtPlatform::begin_progress(const std::string& text,
                                                     const std::string& title, bool can_cancel) {
  return std::make_unique<QtProgress>(text, title, can_cancel);
}

bool QtPlatform::wait(const std::string& text, const std::string& title, int interval_ms,
                      const std::function<bool()>& poll) {
  if (poll()) return true;
  QMessageBox box(QMessageBox::NoIcon, Q(title), Q(text), QMessageBox::Cancel,
                  QApplication::activeWindow());
  box.setObjectName("wait_box");
  bool done = false;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &box, [&] {
    if (!done && poll()) {
      done = true;
      box.accept();
    }
  });
  timer.start(interval_ms);
  box.exec();
  return done;
}

}  // namespace tilo

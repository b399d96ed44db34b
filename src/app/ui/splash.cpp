// SPDX-License-Identifier: MIT
#include "app/ui/splash.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include "app/ui/main_window.h"

namespace tilo {

Splash::Splash(MainWindow* main, int milliseconds) : main_(main) {
  setObjectName("splash");
  setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedSize(400, 198);
  if (QScreen* screen = QGuiApplication::primaryScreen())
    move(screen->geometry().center() - rect().center());
  QTimer::singleShot(milliseconds, this, [this] {
    close();
    main_->afterSplash();
  });
}

void Splash::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QRectF card = rect().adjusted(6, 6, -6, -6);
  QLinearGradient fill(card.topLeft(), card.bottomRight());
  fill.setColorAt(0, QColor(0x1f, 0x4e, 0x79));
  fill.setColorAt(1, QColor(0x12, 0x2b, 0x45));
  p.setPen(Qt::NoPen);
  p.setBrush(fill);
  p.drawRoundedRect(card, 22, 22);
  p.setPen(Qt::white);
  QFont big("DejaVu Sans", 54, QFont::Bold);
  p.setFont(big);
  p.drawText(card.adjusted(0, -20, 0, 0), Qt::AlignCenter, "TILO");
  QFont small("DejaVu Sans", 12);
  p.setFont(small);
  p.setPen(QColor(0xcf, 0xe3, 0xf5));
  p.drawText(card.adjusted(0, 100, 0, 0), Qt::AlignHCenter | Qt::AlignTop, "Retail point of sale");
}

}  // namespace tilo

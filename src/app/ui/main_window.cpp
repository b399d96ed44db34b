// SPDX-License-Identifier: MIT
#include "app/ui/main_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/state.h"

namespace tilo {

MainWindow::MainWindow(DesktopSize desktop, bool open_store) : desktop_(desktop) {
  setObjectName("mainWindow");
  setWindowTitle("TILO Retail");
  WindowGeometry g = CreatedWindow(desktop);
  if (g.fixed_size) {
    setFixedSize(g.width, g.height);
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    move((desktop.width - g.width) / 2, (desktop.height - g.height) / 2);
  } else {
    resize(g.width, g.height);
  }
  // The window never grows beyond the large layout.
  setMaximumSize(kWindowWidth, kWindowHeight);
  buildScreen();
  if (open_store) opened_ = OpenStore();
  item_box_->setFocus();
}

void MainWindow::buildScreen() {
  auto* central = new QWidget(this);
  central->setObjectName("saleScreen");
  auto* layout = new QVBoxLayout(central);
  item_box_ = new QLineEdit(central);
  item_box_->setObjectName("itemBox");
  item_box_->setMaxLength(39);
  layout->addWidget(item_box_);
  layout->addStretch(1);
  setCentralWidget(central);
}

void MainWindow::afterSplash() {
  WindowGeometry g = WindowAfterSplash(desktop_);
  if (g.width != 0) {
    if (g.fixed_size) setFixedSize(g.width, g.height);
    else resize(g.width, g.height);
    move(g.x, g.y);
  }
  show();
  activateWindow();
  item_box_->setFocus();
  // Seam: the log-on form is forced here once clerks exist.
}

}  // namespace tilo

// SPDX-License-Identifier: MIT
// The main window, "TILO Retail". Its creation opens the store.
#pragma once

#include <QMainWindow>

#include "core/startup.h"

class QLineEdit;

namespace tilo {

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  // Sized by the screen rule for `desktop`; runs the opening sequence when
  // `open_store` is set (tests build the window over a store they opened).
  explicit MainWindow(DesktopSize desktop, bool open_store = true);

  bool opened() const { return opened_; }
  QLineEdit* itemBox() const { return item_box_; }
  // What the splash does when it ends: the final place, then show, then log-on.
  void afterSplash();

 private:
  void buildScreen();

  DesktopSize desktop_;
  QLineEdit* item_box_ = nullptr;
  bool opened_ = false;
};

}  // namespace tilo

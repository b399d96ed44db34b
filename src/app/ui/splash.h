// SPDX-License-Identifier: MIT
// The splash: the logo standing free on the desktop for two seconds.
#pragma once

#include <QWidget>

namespace tilo {

class MainWindow;

class Splash : public QWidget {
  Q_OBJECT
 public:
  explicit Splash(MainWindow* main, int milliseconds = 2000);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MainWindow* main_;
};

}  // namespace tilo

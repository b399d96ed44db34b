// SPDX-License-Identifier: MIT
// The main window, "TILO Retail": the menu, the tool bar and the sale screen.
// Its creation opens the store.
#pragma once

#include <QMainWindow>

#include "core/startup.h"

class QLineEdit;
class QMenu;
class QToolBar;

namespace tilo {

class SaleScreen;

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  // Sized by the screen rule for `desktop`; runs the opening sequence when
  // `open_store` is set (tests build the window over a store they opened).
  explicit MainWindow(DesktopSize desktop, bool open_store = true);
  ~MainWindow() override;

  bool opened() const { return opened_; }
  QLineEdit* itemBox() const;
  SaleScreen* saleScreen() const { return sale_; }
  QToolBar* toolBar() const { return tool_bar_; }
  // What the splash does when it ends: the final place, then show, then log-on.
  void afterSplash();
  // The greyed entries, the two menus a restricted clerk may lose, and the ticks,
  // from the settings and the clerk logged on.
  void refreshMenus();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void buildMenus();
  void buildToolBar();

  DesktopSize desktop_;
  SaleScreen* sale_ = nullptr;
  QToolBar* tool_bar_ = nullptr;
  bool opened_ = false;
};

}  // namespace tilo

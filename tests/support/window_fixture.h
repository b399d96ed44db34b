// SPDX-License-Identifier: MIT
// A fresh shop under the real main window, for the tests of the forms (Qt only:
// the logic tests never include it).
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <memory>

#include "app/ui/main_window.h"
#include "core/state.h"
#include "sale/commands.h"
#include "support/shop_fixture.h"
#include "tender/ui/clerk_forms.h"

namespace tilo {

class WindowTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
  }
  void TearDown() override {
    window_.reset();
    ClearHandlers();
    ShopTest::TearDown();
  }

  // The main window as a start makes it; `log_on` passes the log-on form that
  // follows the splash as the Administrator.
  MainWindow& OpenWindow(bool log_on = false, DesktopSize desktop = {1280, 1024}) {
    window_ = std::make_unique<MainWindow>(desktop);
    EXPECT_TRUE(window_->opened());
    // The forms' tests don't want the tip of the day over them.
    G().settings.tips_at_startup_off = 2;
    if (log_on) {
      window_->afterSplash();
      if (LogonDialog* logon = Openlogonform()) {
        logon->password()->setText("7351");
        logon->ok()->click();
      }
    }
    window_->show();
    QApplication::processEvents();
    return *window_;
  }

  // Runs `command`, hands the modal form it opens to `look`, then closes it by
  // `close`; fails when no such form came up.
  template <typename Form, typename Look, typename Close>
  void WithModal(Command command, Look look, Close close) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
      auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
      ASSERT_NE(form, nullptr);
      seen = true;
      look(*form);
      close(*form);
    });
    Dispatch(command);
    EXPECT_TRUE(seen);
  }

  std::unique_ptr<MainWindow> window_;
};

}  // namespace tilo

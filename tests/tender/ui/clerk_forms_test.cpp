// SPDX-License-Identifier: MIT
#include "tender/ui/clerk_forms.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "core/activity_log.h"
#include "core/state.h"
#include "sale/commands.h"
#include "support/window_fixture.h"

namespace tilo {
namespace {

class ClerkFormsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    platform_.set_now(2024, 3, 1, 9, 30);
    OpenWindow();
  }
  QAction* Entry(Command c) {
    return window_->findChild<QAction*>(QString("command%1").arg(int(c)));
  }
};

TEST_F(ClerkFormsTest, LogOnRefusesAWrongPasswordAndCannotBeLeftAnyOtherWay) {
  Dispatch(Command::LogOff);
  LogonDialog* form = Openlogonform();
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), form);
  EXPECT_EQ(form->password()->echoMode(), QLineEdit::Password);
  QTest::keyClick(form->password(), Qt::Key_Up);
  QTest::mouseClick(form->up(), Qt::LeftButton);
  EXPECT_EQ(form->clerkLine()->text(), "3 Clerk 3");
  QTest::keyClicks(form->password(), "1234abc");
  EXPECT_EQ(form->password()->text(), "1234");
  QTest::mouseClick(form->ok(), Qt::LeftButton);
  EXPECT_EQ(form->clerkLine()->text(), "1 Administrator");
  EXPECT_EQ(form->password()->text(), "");
  // No way out: Escape does nothing, and there is no title bar to close it by.
  QTest::keyClick(form->password(), Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_TRUE(form->isVisible());
  EXPECT_TRUE(form->windowFlags() & Qt::FramelessWindowHint);
  EXPECT_TRUE(platform_.shown().empty());

  QTest::keyClick(form->password(), Qt::Key_Up);
  QTest::keyClick(form->password(), Qt::Key_Up);
  for (const char* key : {"9", "C", "7", "3", "5", "5", "CE", "1"})
    QTest::mouseClick(form->key(key), Qt::LeftButton);
  QTest::keyClick(form->password(), Qt::Key_Return);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Openlogonform(), nullptr);
  EXPECT_EQ(window_->windowTitle(), "TILO Retail    Assoc: 3, Clerk 3");
  EXPECT_NE(Bytes(kActivityLog).find("Log on.\r\nClerk: 3, Clerk 3\r\n"), std::string::npos);
}

// Which right greys or refuses which command is the command logic's table; here
// the menus follow it.
TEST_F(ClerkFormsTest, TheMenusGreyWhatTheRightsKeepFromRestrictedClerks) {
  RightsForm tax{};
  tax[kRightTaxSetup] = true;
  Acceptrightsform(tax);
  for (int clerk : {3, 2}) {
    Logonclerk(clerk);
    QApplication::processEvents();
    EXPECT_EQ(Entry(Command::TaxSetup)->isEnabled(), clerk != 3);
  }
  RightsForm menus{};
  menus[kRightReportMenu] = menus[kRightActivityMenu] = true;
  Acceptrightsform(menus);
  Logonclerk(3);
  QApplication::processEvents();
  for (QAction* top : window_->menuBar()->actions())
    EXPECT_EQ(top->isEnabled(), top->text() != "&Reports" && top->text() != "Activity")
        << top->text().toStdString();
  Logonclerk(1);
  QApplication::processEvents();
  for (QAction* top : window_->menuBar()->actions()) {
    EXPECT_TRUE(top->isEnabled());
    for (QAction* a : top->menu()->actions())
      EXPECT_TRUE(a->isEnabled()) << a->text().toStdString();
  }
}

}  // namespace
}  // namespace tilo

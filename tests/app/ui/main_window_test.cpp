// SPDX-License-Identifier: MIT
#include "app/ui/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "config/ui/tip_form.h"
#include "core/state.h"
#include "sale/commands.h"
#include "support/shop_fixture.h"
#include "tender/ui/clerk_forms.h"

namespace tilo {
namespace {

using MainWindowTest = ShopTest;

TEST_F(MainWindowTest, OpensTheStoreAndFocusesTheItemBoxAtTheSizeOfTheScreenRule) {
  MakeFreshShop();
  MainWindow large({1280, 1024});
  ASSERT_TRUE(large.opened());
  G().settings.tips_at_startup_off = 2;
  EXPECT_EQ(large.windowTitle(), "TILO Retail");
  EXPECT_EQ(large.size(), QSize(1024, 746));
  EXPECT_FALSE(large.windowFlags() & Qt::WindowMaximizeButtonHint);
  large.afterSplash();
  QApplication::processEvents();
  EXPECT_TRUE(large.isVisible());
  // The log-on form comes first; the item box has the focus once a clerk is on.
  ASSERT_NE(Openlogonform(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), Openlogonform()->password());
  QTest::keyClicks(Openlogonform()->password(), "7351");
  QTest::keyClick(Openlogonform()->password(), Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(large.windowTitle(), "TILO Retail    Assoc: 1, Administrator");
  EXPECT_EQ(QApplication::focusWidget(), large.itemBox());
  large.close();

  // A short desktop: the large window is moved to the top, centred. The sizes
  // for every desktop are the screen rule's logic test.
  MainWindow wide({1280, 768}, false);
  wide.afterSplash();
  EXPECT_EQ(wide.pos(), QPoint(128, 2));
  wide.close();
}

TEST_F(MainWindowTest, AFailedOpeningLeavesTheWindowUnopened) {
  MainWindow window({1280, 1024});  // an empty folder: no film.dat
  EXPECT_FALSE(window.opened());
  EXPECT_TRUE(G().open_failed);
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Fatal error: Unable to open film.dat in Opendata"});
}

// Every menu entry, tool button and key of the item box does something once the
// main window stands.
TEST_F(MainWindowTest, EveryMenuEntryToolButtonAndKeyHasItsWork) {
  MakeFreshShop();
  MainWindow window({1280, 1024});
  ASSERT_TRUE(window.opened());
  std::vector<std::string> idle;
  for (const CommandEntry& e : CommandTable())
    if (!HasHandler(e.command)) idle.push_back(std::string(e.menu) + " " + e.entry);
  for (const ToolButton& b : ToolBar())
    if (b.command != Command::None && !HasHandler(b.command))
      idle.push_back(std::string("tool bar ") + b.tip);
  for (const KeyBinding& k : KeyTable())
    if (!HasHandler(k.command)) idle.push_back(std::string("key ") + k.key);
  EXPECT_TRUE(idle.empty()) << ::testing::PrintToString(idle);
  ClearHandlers();
}

// The tip of the day follows the first log-on; each showing moves the series on,
// and Close keeps the tick as the settings code it.
TEST_F(MainWindowTest, TheTipOfTheDayFollowsTheFirstLogOnAndCarriesTheSeriesOn) {
  MakeFreshShop();
  MainWindow window({1280, 1024});
  ASSERT_TRUE(window.opened());
  G().settings.tip_number = 25;
  window.afterSplash();
  ASSERT_NE(Openlogonform(), nullptr);
  EXPECT_EQ(Opentipform(), nullptr);
  Openlogonform()->password()->setText("7351");
  Openlogonform()->ok()->click();
  QApplication::processEvents();
  TipDialog* tip = Opentipform();
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->windowTitle(), "TIP OF THE DAY");
  EXPECT_TRUE(tip->tip()->text().startsWith("To add a professional look"));
  EXPECT_EQ(G().settings.tip_number, 0);
  tip->nextTip()->click();
  EXPECT_TRUE(tip->tip()->text().startsWith("Use the keyboard arrow keys"));
  EXPECT_EQ(G().settings.tip_number, 1);
  tip->atStartup()->setChecked(false);
  tip->closeButton()->click();
  QApplication::processEvents();
  EXPECT_EQ(G().settings.tips_at_startup_off, 2);
  EXPECT_EQ(Opentipform(), nullptr);
  window.close();
  ClearHandlers();
}

}  // namespace
}  // namespace tilo

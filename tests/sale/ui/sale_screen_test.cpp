// SPDX-License-Identifier: MIT
// The sale screen driven as the operator drives it: keys into the item box,
// clicks on its buttons, at both layouts.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>

#include "app/ui/main_window.h"
#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "sale/commands.h"
#include "sale/ui/help_window.h"
#include "sale/ui/sale_screen.h"
#include "sale/ui/till_widgets.h"
#include "support/window_fixture.h"

namespace tilo {
namespace {

class SaleScreenTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(G().films.Load());
    for (int n = 1; n <= 20; ++n) {
      FilmRecord r{};
      r.number = 1000 + n;
      SetField(r.description, "ITEM " + std::to_string(n));
      r.retail_price = 1.5f;
      r.quantity = 99;
      r.display_category = 14;  // the category a fresh shop opens on
      ASSERT_TRUE(Insertnumber(r));
    }
    ResetState();
  }
  MainWindow& Open(DesktopSize desktop = {1280, 1024}) {
    OpenWindow(true, desktop);
    platform_.clear_record();
    return *window_;
  }
  template <typename T>
  T* Find(const char* name) {
    T* w = window_->findChild<T*>(name);
    EXPECT_NE(w, nullptr) << name;
    return w;
  }
  // Every command only records that it came, with its argument.
  void RecordCommands() {
    for (const CommandEntry& e : CommandTable())
      SetHandler(e.command, [this, c = e.command](int argument) {
        came_.push_back({c, argument});
      });
  }
  // Where an element stands, counted from the bottom of the tool bar.
  QRect FromTop(const char* name) {
    QWidget* w = Find<QWidget>(name);
    if (!w) return {};
    QPoint at = w->mapTo(window_.get(), QPoint(0, 0));
    const int top = window_->toolBar()->geometry().bottom() + 1;
    return QRect(at.x(), at.y() - top, w->width(), w->height());
  }
  int ClientHeight() const { return window_->height() - window_->menuBar()->height(); }

  std::vector<std::pair<Command, int>> came_;
};

TEST_F(SaleScreenTest, EveryKeyOfTheKeyTableReachesItsCommand) {
  MainWindow& w = Open();
  RecordCommands();
  QWidget* box = w.itemBox();
  for (const KeyBinding& k : KeyTable()) {
    came_.clear();
    QKeySequence seq(k.key);
    QTest::keyClick(box, Qt::Key(seq[0].key()), seq[0].keyboardModifiers());
    ASSERT_EQ(came_.size(), 1u) << k.key;
    EXPECT_EQ(came_[0].first, k.command) << k.key;
  }
  came_.clear();
  QTest::keyClick(box, Qt::Key_F10);
  EXPECT_TRUE(came_.empty());
  // A letter typed with Ctrl never stays in the box, and the clipboard keys are
  // the till's.
  w.itemBox()->setText("123");
  QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(w.itemBox()->text(), "");
  EXPECT_EQ(came_, (std::vector<std::pair<Command, int>>{{Command::Configuration, 0}}));
  QTest::keyClick(box, Qt::Key_G, Qt::ControlModifier);
  EXPECT_EQ(came_.size(), 1u);

  // With a tender form up no key acts.
  G().tender_form_open = 2;
  came_.clear();
  QTest::keyClick(box, Qt::Key_F2);
  QTest::keyClick(box, Qt::Key_Left);
  EXPECT_TRUE(came_.empty());
}

TEST_F(SaleScreenTest, ButtonsReachTheirCommandsAndTheKeypadTypes) {
  MainWindow& w = Open();
  RecordCommands();
  const std::vector<std::pair<const char*, Command>> buttons = {
      {"addButton", Command::AddItem},
      {"cashButton", Command::Cash},
      {"creditButton", Command::CustomerCredit},
      {"weightButton", Command::AdjustByWeight},
      {"nonInventoryButton", Command::NonInventory},
      {"eftButton", Command::Eft},
      {"voidButton", Command::VoidItem},
      {"emptyButton", Command::EmptyBasket},
      {"drawerButton", Command::OpenDrawer},
      {"tradeButton", Command::TradeToggle},
      {"repeatButton", Command::RepeatItem},
      {"noteButton", Command::AddNote},
      {"refundButton", Command::Refund},
      {"adjustButton", Command::AdjustPrice},
      {"scrollBackButton", Command::ScrollBack},
      {"scrollForwardButton", Command::ScrollForward},
      {"previousCategoryButton", Command::PreviousCategory},
      {"nextCategoryButton", Command::NextCategory},
      {"saveButton", Command::SaveBasket},
      {"reloadButton", Command::ReloadBasket}};
  for (const auto& [name, command] : buttons) {
    came_.clear();
    QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton);
    EXPECT_EQ(came_, (std::vector<std::pair<Command, int>>{{command, 0}})) << name;
  }
  came_.clear();
  QTest::mouseClick(Find<QAbstractButton>("category3"), Qt::LeftButton);
  QTest::mouseClick(Find<QAbstractButton>("categoryAll"), Qt::LeftButton);
  QTest::mouseClick(Find<QAbstractButton>("quick2"), Qt::LeftButton);
  EXPECT_EQ(came_, (std::vector<std::pair<Command, int>>{{Command::CategoryButton, 3},
                                                         {Command::CategoryButton, 18},
                                                         {Command::QuickSelect, 2}}));

  QLineEdit* box = w.itemBox();
  for (const char* key : {"key4", "key0", "key7", "keyCE", "key1"})
    QTest::mouseClick(Find<QAbstractButton>(key), Qt::LeftButton);
  EXPECT_EQ(box->text(), "401");
  EXPECT_EQ(box->cursorPosition(), 3);
  QTest::mouseClick(Find<QAbstractButton>("keyCA"), Qt::LeftButton);
  EXPECT_EQ(box->text(), "");

  // With the cash form open the keypad types into its amount, not the item box,
  // and a sale button only gives the amount the focus back.
  QLineEdit amount(window_.get());
  amount.show();
  SetTenderAmountField(&amount);
  G().tender_form_open = 2;
  came_.clear();
  for (const char* key : {"key2", "key0", "key0", "key0"})
    QTest::mouseClick(Find<QAbstractButton>(key), Qt::LeftButton);
  QTest::mouseClick(Find<QAbstractButton>("voidButton"), Qt::LeftButton);
  EXPECT_EQ(amount.text(), "2000");
  EXPECT_EQ(box->text(), "");
  EXPECT_TRUE(came_.empty());
  EXPECT_EQ(QApplication::focusWidget(), &amount);
  SetTenderAmountField(nullptr);
}

TEST_F(SaleScreenTest, TheLargeLayoutPlacesEveryElement) {
  MainWindow& w = Open();
  ASSERT_GT(ClientHeight(), 684);
  EXPECT_EQ(FromTop("itemBox"), QRect(20, 68, 172, 32));
  EXPECT_EQ(FromTop("addButton"), QRect(200, 36, 48, 48));
  EXPECT_EQ(FromTop("cashButton"), QRect(260, 36, 48, 48));
  EXPECT_EQ(FromTop("creditButton"), QRect(20, 116, 68, 40));
  EXPECT_EQ(FromTop("drawerButton"), QRect(172, 166, 68, 40));
  EXPECT_EQ(FromTop("adjustButton"), QRect(247, 216, 68, 40));
  EXPECT_EQ(FromTop("key1"), QRect(325, 35, 54, 54));
  EXPECT_EQ(FromTop("keyCE"), QRect(435, 200, 54, 54));
  EXPECT_EQ(FromTop("quick0"), QRect(31, 276, 200, 50));
  EXPECT_EQ(FromTop("quick6"), QRect(31, 276 + 6 * 52, 200, 50));
  EXPECT_EQ(FromTop("quick7"), QRect(233, 276, 200, 50));
  EXPECT_EQ(FromTop("quick13"), QRect(233, 276 + 6 * 52, 200, 50));
  EXPECT_EQ(FromTop("scrollBackButton"), QRect(435, 276, 54, 54));
  EXPECT_EQ(FromTop("nextCategoryButton"), QRect(435, 432, 54, 54));
  EXPECT_EQ(FromTop("category0"), QRect(502, 34, 48, 48));
  EXPECT_EQ(FromTop("category17"), QRect(562, 34 + 8 * 60, 48, 48));
  EXPECT_EQ(FromTop("categoryAll"), QRect(531, 574, 48, 48));
  EXPECT_EQ(FromTop("saveButton"), QRect(642, 452, 92, 92));
  EXPECT_EQ(FromTop("reloadButton"), QRect(642, 546, 92, 92));
  QRect basket = FromTop("basketList");
  EXPECT_EQ(basket.topLeft(), QPoint(622, 65));
  EXPECT_EQ(basket.right(), w.width() - 9);
  EXPECT_LE(basket.bottom(), 452);
  EXPECT_TRUE(Find<QWidget>("quick13")->isVisible());
  EXPECT_TRUE(Find<QWidget>("categoryAll")->isVisible());
  EXPECT_EQ(G().screen.page_size, 14);
}

TEST_F(SaleScreenTest, TheSmallLayoutStartsAtAClientHeightOf684) {
  MainWindow& w = Open({900, 500});
  ASSERT_LE(ClientHeight(), 684);
  EXPECT_FALSE(Find<QWidget>("quick8")->isVisible());
  EXPECT_FALSE(Find<QWidget>("category0")->isVisible());
  EXPECT_FALSE(Find<QWidget>("categoryAll")->isVisible());
  EXPECT_FALSE(Find<QWidget>("saveButton")->isVisible());
  EXPECT_EQ(FromTop("quick3"), QRect(31, 276 + 3 * 52, 200, 50));
  EXPECT_EQ(FromTop("quick4"), QRect(233, 276, 200, 50));
  EXPECT_EQ(FromTop("itemBox"), QRect(20, 68, 172, 32));
  QRect basket = FromTop("basketList");
  EXPECT_EQ(basket.width(), 262);
  EXPECT_EQ(basket.right(), w.width() - 9);
  EXPECT_EQ(basket.height(), ClientHeight() - 320);
  EXPECT_EQ(G().screen.page_size, 8);
  EXPECT_EQ(G().screen.quick_number[7], 1008);
  EXPECT_EQ(G().screen.quick_number[8], 0);

  // Exactly 684 is still small; one more and the large layout appears, its
  // page refilled to fourteen.
  w.setFixedHeight(684 + w.menuBar()->height());
  QApplication::processEvents();
  EXPECT_EQ(ClientHeight(), 684);
  EXPECT_FALSE(Find<QWidget>("category0")->isVisible());
  w.setFixedHeight(685 + w.menuBar()->height());
  QApplication::processEvents();
  EXPECT_TRUE(Find<QWidget>("category0")->isVisible());
  EXPECT_TRUE(Find<QWidget>("quick13")->isVisible());
  EXPECT_EQ(G().screen.quick_number[13], 1014);
}

TEST_F(SaleScreenTest, QuickSelectPagesByButtonsAndArrows) {
  MainWindow& w = Open();
  auto first = [&] { return Find<QuickButton>("quick0")->number(); };
  EXPECT_EQ(first(), 1001);
  EXPECT_EQ(Find<QuickButton>("quick0")->description(), "ITEM 1");
  QTest::mouseClick(Find<QAbstractButton>("scrollForwardButton"), Qt::LeftButton);
  EXPECT_EQ(first(), 1015);
  EXPECT_EQ(Find<QuickButton>("quick6")->number(), 0);
  QTest::keyClick(w.itemBox(), Qt::Key_Up);
  EXPECT_EQ(first(), 1001);
  QTest::keyClick(w.itemBox(), Qt::Key_Down);
  EXPECT_EQ(first(), 1015);
  // Left and right change the category, the category buttons follow.
  QTest::keyClick(w.itemBox(), Qt::Key_Right);
  EXPECT_EQ(G().settings.current_category, 15);
  EXPECT_EQ(first(), 0);
  EXPECT_TRUE(Find<TillButton>("category15")->highlighted());
  EXPECT_FALSE(Find<TillButton>("category14")->highlighted());
  EXPECT_EQ(Find<TillButton>("previousCategoryButton")->caption(), "POP");
  EXPECT_EQ(Find<TillButton>("nextCategoryButton")->caption(), "SWE");
  QTest::mouseClick(Find<QAbstractButton>("categoryAll"), Qt::LeftButton);
  EXPECT_EQ(first(), 1001);
  EXPECT_EQ(Find<TillButton>("nextCategoryButton")->caption(), "ALC");
  // A press on a quick-select button sells its item.
  QTest::mouseClick(Find<QAbstractButton>("quick1"), Qt::LeftButton);
  EXPECT_EQ(G().basket.line_count, 1);
  EXPECT_EQ(G().basket.number[0], 1002);
}

TEST_F(SaleScreenTest, EnterInTheItemBoxSellsOrShowsTheTextAsInvalid) {
  MainWindow& w = Open();
  QLineEdit* box = w.itemBox();
  QTest::keyClicks(box, "12");
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Invalid entry: 12"});
  EXPECT_EQ(box->text(), "");
  QTest::keyClicks(box, "1003");
  QTest::keyClick(box, Qt::Key_Enter);
  auto* list = Find<QListWidget>("basketList");
  ASSERT_EQ(list->count(), 1);
  EXPECT_EQ(list->item(0)->text(), "1003  ITEM 3 (99)  1.50");
  EXPECT_EQ(list->currentRow(), 0);
  EXPECT_TRUE(Find<TotalsView>("totalsPanel")->totals().show);
  EXPECT_EQ(Find<TotalsView>("totalsPanel")->totals().total, "1.50");
  EXPECT_EQ(Find<LineCount>("lineCount")->count(), 1);
  EXPECT_TRUE(Find<LineCount>("lineCount")->isVisible());
  EXPECT_EQ(platform_.sounds, std::vector<int>{8004});
  // Void of the selected line empties the basket and hides the count.
  QTest::mouseClick(Find<QAbstractButton>("voidButton"), Qt::LeftButton);
  EXPECT_EQ(list->count(), 0);
  EXPECT_FALSE(Find<LineCount>("lineCount")->isVisible());
  EXPECT_FALSE(Find<TotalsView>("totalsPanel")->totals().show);
  EXPECT_EQ(QApplication::focusWidget(), box);
}

TEST_F(SaleScreenTest, TheMenuShowsItsKeysAndTheToolBarItsTips) {
  MainWindow& w = Open();
  auto* exit = w.findChild<QAction*>(QString("command%1").arg(int(Command::Exit)));
  ASSERT_NE(exit, nullptr);
  EXPECT_EQ(exit->shortcut(), QKeySequence("Alt+X"));
  auto* new_line = w.findChild<QAction*>(QString("command%1").arg(int(Command::NewLine)));
  EXPECT_EQ(new_line->text(), "New line\tF4");
  // Greying for a restricted clerk is the clerk forms' test, right by right.

  // The tool bar: twenty buttons in five groups, each tip as it stands.
  QList<QAction*> tools = w.toolBar()->actions();
  EXPECT_EQ(tools.size(), 24);
  EXPECT_EQ(tools[0]->toolTip(), "Amend inventory (F3)");
  EXPECT_TRUE(tools[4]->isSeparator());
  EXPECT_EQ(tools[22]->toolTip(), "Log off (Shortcut F9)");
  // The sale buttons' tips go with the Button tips entry.
  EXPECT_EQ(Find<QWidget>("voidButton")->toolTip(), "Remove highlighted item");
  Dispatch(Command::ButtonTips);
  EXPECT_EQ(Find<QWidget>("voidButton")->toolTip(), "");
}

TEST_F(SaleScreenTest, F1OpensTheHelpPagesShippedWithTheProgram) {
  MainWindow& w = Open();
  QTest::keyClick(w.itemBox(), Qt::Key_F1);
  auto* help = w.findChild<HelpWindow*>("helpWindow");
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  EXPECT_TRUE(help->browser()->toPlainText().contains("Taking the money"));
  Dispatch(Command::UsingHelp);
  EXPECT_TRUE(help->browser()->toPlainText().contains("^W is Ctrl+W"));
  help->close();
}

}  // namespace
}  // namespace tilo

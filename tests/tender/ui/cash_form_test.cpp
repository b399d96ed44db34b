// SPDX-License-Identifier: MIT
#include "tender/ui/cash_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "core/history.h"
#include "sale/basket.h"
#include "sale/sale_fixture.h"
#include "sale/ui/sale_screen.h"
#include "tender/cash.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

struct CountingBox : TenderView {
  void summary_box() override { ++opened; }
  int opened = 0;
};

class CashFormTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_tender_view(&box_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(1001, 4.50f);
    Stock(1002, 3.00f);
  }
  void TearDown() override {
    delete form_.data();
    QApplication::processEvents();
    install_tender_view(nullptr);
    SaleTest::TearDown();
  }
  // "Cash F5" on a basket of these items.
  CashForm* Open(std::initializer_list<int64_t> numbers) {
    for (int64_t n : numbers) Addtobasket(n, 0);
    platform_.clear_record();
    Cashcommand();
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* f = qobject_cast<CashForm*>(w); f && f->isVisible()) form_ = f;
    return form_;
  }
  QString Background() const { return form_->change()->palette().color(QPalette::Base).name(); }
  // Lets the form's deferred deletion run.
  static void Settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  CountingBox box_;
  QPointer<CashForm> form_;
};

TEST_F(CashFormTest, OpensOnTheTotalAndTheChangeFollowsTheTypingInColour) {
  ASSERT_NE(Open({1001, 1002}), nullptr);
  EXPECT_EQ(form_->total()->text(), "7.50");
  EXPECT_EQ(form_->note(0)->text(), "10.00");
  EXPECT_EQ(form_->note(1)->text(), "20.00");
  EXPECT_EQ(form_->note(2)->text(), "50.00");
  EXPECT_TRUE(form_->change()->text().isEmpty());
  EXPECT_EQ(TenderAmountField(), form_->tendered());
  EXPECT_EQ(G().tender_form_open, 2);

  // Enter on nothing keeps the form.
  QTest::keyClick(form_->tendered(), Qt::Key_Return);
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Less than total"));
  ASSERT_TRUE(form_);
  EXPECT_TRUE(form_->isVisible());

  QTest::keyClicks(form_->tendered(), "7x4");
  EXPECT_EQ(form_->tendered()->text(), "74");  // digits only
  EXPECT_EQ(form_->change()->text(), "");
  EXPECT_EQ(Background(), QColor(200, 40, 40).name());
  QTest::keyClicks(form_->tendered(), "9");
  EXPECT_EQ(form_->change()->text(), "");
  QTest::keyClick(form_->tendered(), Qt::Key_Backspace);
  QTest::keyClick(form_->tendered(), Qt::Key_Backspace);
  QTest::keyClicks(form_->tendered(), "50");
  EXPECT_EQ(form_->change()->text(), "0.00");
  EXPECT_EQ(Background(), QColor(240, 240, 200).name());
  EXPECT_STREQ(G().amount_text, "7.50");
  QTest::keyClicks(form_->tendered(), "0");
  EXPECT_EQ(form_->change()->text(), "67.50");
}

// Enter on enough money commits: the cash-sale run of the real program types it.
TEST_F(CashFormTest, EscapeCancelsAndTheBasketStays) {
  Open({1001});
  QTest::keyClicks(form_->tendered(), "1000");
  QTest::keyClick(form_->tendered(), Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(form_);
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().line_count, 1);
  EXPECT_EQ(box_.opened, 0);
  // And the cash form opens again.
  Cashcommand();
  EXPECT_EQ(G().tender_form_open, 2);
  for (QWidget* w : QApplication::topLevelWidgets())
    if (auto* f = qobject_cast<CashForm*>(w); f && f->isVisible()) form_ = f;
  form_->note(0)->click();  // 5.00 on a total of 4.50
  Settle();
  EXPECT_FALSE(form_);
  EXPECT_DOUBLE_EQ(G().amount_tendered, 5.00);
  EXPECT_DOUBLE_EQ(G().change_due, 0.50);
  EXPECT_EQ(box_.opened, 1);
  EXPECT_EQ(B().line_count, 0);
  EXPECT_EQ(TenderAmountField(), nullptr);
}

TEST_F(CashFormTest, TheSummaryShowsTheSaleAndCashBack) {
  Addtobasket(1001, 0);
  G().amount_tendered = 10.00;
  G().change_due = 5.50;
  SummaryBox box(nullptr);
  EXPECT_EQ(box.windowTitle(), "Transaction committed, summary");
  EXPECT_EQ(box.totalDue()->text(), "4.50");
  EXPECT_EQ(box.tendered()->text(), "10.00");
  EXPECT_EQ(box.change()->text(), "5.50");
  B().cash_back = 2.00f;
  SummaryBox with_cash_back(nullptr);
  EXPECT_EQ(with_cash_back.change()->text(), "CB: 2.00");
}

}  // namespace
}  // namespace tilo

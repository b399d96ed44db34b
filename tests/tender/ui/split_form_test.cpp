// SPDX-License-Identifier: MIT
#include "tender/ui/split_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "core/history.h"
#include "sale/basket.h"
#include "sale/sale_fixture.h"
#include "sale/ui/sale_screen.h"
#include "tender/tender_view.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

struct CountingBox : TenderView {
  void summary_box() override { ++opened; }
  int opened = 0;
};

class SplitFormTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_tender_view(&box_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(3000, 30.00f);
  }
  void TearDown() override {
    delete split_.data();
    delete cash_.data();
    QApplication::processEvents();
    install_tender_view(nullptr);
    SaleTest::TearDown();
  }
  template <typename Form>
  static Form* Shown() {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* f = qobject_cast<Form*>(w); f && f->isVisible()) return f;
    return nullptr;
  }
  static void Settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  // "Split Cash Other", the cash part typed, OK: the cash form that follows.
  CashForm* ToCashStep(const char* cash, bool cheque) {
    Splitcommand();
    split_ = Shown<SplitForm>();
    if (!split_) return nullptr;
    if (cheque) split_->cheque()->click();
    QTest::keyClicks(split_->cash(), cash);
    split_->ok()->click();
    Settle();
    cash_ = Shown<CashForm>();
    return cash_;
  }

  CountingBox box_;
  QPointer<SplitForm> split_;
  QPointer<CashForm> cash_;
};

TEST_F(SplitFormTest, TheRestFollowsTheCashAndTooMuchCashIsRefused) {
  Addtobasket(3000, 0);
  Splitcommand();
  split_ = Shown<SplitForm>();
  ASSERT_TRUE(split_);
  EXPECT_EQ(split_->windowTitle(), "Split payment");
  EXPECT_TRUE(split_->card()->isChecked());
  EXPECT_EQ(split_->total()->text(), "30.00");
  EXPECT_EQ(split_->rest()->text(), "");
  EXPECT_EQ(TenderAmountField(), split_->cash());
  QTest::keyClicks(split_->cash(), "1x0");
  EXPECT_EQ(split_->rest()->text(), "29.90");  // digits only
  QTest::keyClicks(split_->cash(), "00");
  EXPECT_EQ(split_->rest()->text(), "20.00");
  QTest::keyClicks(split_->cash(), "0");
  EXPECT_EQ(split_->rest()->text(), "");

  split_->ok()->click();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Cash exceeds total"));
  EXPECT_TRUE(split_->isVisible());
  EXPECT_EQ(split_->cash()->text(), "");
  QTest::keyClick(split_->cash(), Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(split_);
  EXPECT_EQ(G().tender_form_open, 0);
}

TEST_F(SplitFormTest, TheCashStepAsksForTheCashPartWithFixedNotes) {
  Addtobasket(3000, 0);
  ASSERT_TRUE(ToCashStep("1000", false));
  EXPECT_FALSE(split_);
  EXPECT_EQ(G().tender_form_open, 2);
  EXPECT_EQ(cash_->total()->text(), "10.00");
  EXPECT_EQ(cash_->note(0)->text(), "5.00");
  EXPECT_EQ(cash_->note(1)->text(), "10.00");
  EXPECT_EQ(cash_->note(2)->text(), "20.00");
  QTest::keyClicks(cash_->tendered(), "2000");
  EXPECT_EQ(cash_->change()->text(), "10.00");
  cash_->note(0)->click();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Less than total"));
  // Cancel here takes the parts back.
  cash_->cancel()->click();
  Settle();
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().tender_cash, 0.0f);
  EXPECT_EQ(B().tender_eft, 0.0f);
  EXPECT_EQ(B().line_count, 1);

  ASSERT_TRUE(ToCashStep("1000", true));
  QTest::keyClicks(cash_->tendered(), "2000");
  QTest::keyClick(cash_->tendered(), Qt::Key_Return);
  Settle();
  EXPECT_EQ(box_.opened, 1);
  EXPECT_DOUBLE_EQ(G().amount_tendered, 40.00);
  const std::vector<SalesLogRecord> sales = ReadSalesLog(2024, 3, 15);
  ASSERT_EQ(sales.size(), 1u);
  EXPECT_STREQ(sales[0].payment_type, "Split");
  EXPECT_EQ(sales[0].tender_ch, 20.0f);
}

}  // namespace
}  // namespace tilo
